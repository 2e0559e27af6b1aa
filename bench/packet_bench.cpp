// From bytes to the meter's state: checksum, packet, framing, and a line that never ends.
#include "bench/floor.h"
#include "link/crc8.h"
#include "link/data_packet.h"
#include "link/message_classifier.h"
#include "link/receiver.h"
#include "platform/headless/serial_port.h"
#include "platform/headless/virtual_time.h"
#include "tests/support/forwarded_port.h"
#include "tests/support/quiet_link.h"

#include <array>
#include <benchmark/benchmark.h>
#include <string>

namespace orvane::bench {
namespace {

// As a meter sends them: numbers of all lengths, so that no branch is learned by heart.
const std::array<std::string, 8>& Packets() {
  static const std::array<std::string, 8> packets{
      Packet("D,0,0,0.00,0;0"),      Packet("D,12.6,0.4,1.43,0;0"), Packet("D,99.5,3.9,1.49,0;0"),
      Packet("D,100,4,1.50,0;0"),    Packet("D,1234,56,1.54,0;1"),  Packet("D,1500.0,60.0,1.50,0;1"),
      Packet("D,2400,600,3.00,1;0"), Packet("D,2999,1,1.04,0;1")};
  return packets;
}

void CRC8(benchmark::State& state) {
  const std::string text(1024, 'D');
  for (auto _ : state)
    benchmark::DoNotOptimize(CalcCRC8(text, true, false));
  state.SetItemsProcessed(state.iterations() * 1024);
}
void CRC8Floor(benchmark::State& state) {
  const std::string text(1024, 'D');
  for (auto _ : state)
    benchmark::DoNotOptimize(FloorCRC(text));
  state.SetItemsProcessed(state.iterations() * 1024);
}
BENCHMARK(CRC8)->Name("crc8");
BENCHMARK(CRC8Floor)->Name("crc8/floor");

void CheckAndStore(benchmark::State& state) {
  MeterState meter;
  std::size_t next = 0;
  for (auto _ : state) {
    ProcessDataPacket(Packets()[next++ % 8], meter);
    benchmark::DoNotOptimize(meter);
  }
  state.SetItemsProcessed(state.iterations());
}
void CheckAndStoreFloor(benchmark::State& state) {
  FloorReading reading;
  std::size_t next = 0;
  for (auto _ : state) {
    if (!FloorPacket(Packets()[next++ % 8], reading)) state.SkipWithError("no packet");
    benchmark::DoNotOptimize(reading);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(CheckAndStore)->Name("packet");
BENCHMARK(CheckAndStoreFloor)->Name("packet/floor");

struct FedLine : ForwardedPort {
  using ForwardedPort::ForwardedPort;
  std::string_view bytes;
  void TakeReceived(std::string& buffer) override { buffer += bytes; }
};

struct CountingEvents : QuietEvents {
  void LineHandled() override { ++lines; }
  std::int64_t lines = 0;
};

/// The receiving half of the link with nothing above it.
struct BareLink {
  void Receive(std::string_view bytes) {
    port.bytes = bytes;
    receiver.OnComm(CommEvent::kReceive);
  }
  VirtualTime time;
  HeadlessSerialPort none{time};
  FedLine port{none};
  QuietSettings settings;
  CountingEvents events;
  MeterState state;
  LinkFlags flags;
  MessageClassifier classifier{state, flags, events, settings};
  Receiver receiver{{time, time, port, settings, events, state, flags}, classifier};
};

void Framing(benchmark::State& state) {
  BareLink link;
  std::size_t next = 0;
  for (auto _ : state) {
    link.Receive(Packets()[next++ % 8]);
    benchmark::DoNotOptimize(link.state);
  }
  if (link.events.lines != state.iterations()) state.SkipWithError("lines were lost");
  state.SetItemsProcessed(state.iterations());
}
void FramingFloor(benchmark::State& state) {
  FloorReceiver receiver;
  FloorReading reading;
  std::size_t next = 0;
  for (auto _ : state) {
    receiver.Receive(Packets()[next++ % 8],
                     [&reading](std::string_view line) { FloorPacket(line, reading); });
    benchmark::DoNotOptimize(reading);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(Framing)->Name("framing");
BENCHMARK(FramingFloor)->Name("framing/floor");

// Arrivals as long as those of a fast line; an LF at the end, because the line is looked at as well then.
constexpr std::size_t kArrival = 32;

template <typename Receive>
void ReceiveWithoutLF(std::size_t size, Receive receive) {
  static const std::string noise = [] {
    std::string bytes;
    for (std::size_t i = 0; i < kArrival; ++i)
      bytes += static_cast<char>(0x80 + i * 37 % 128);
    return bytes;
  }();
  for (std::size_t sent = 0; sent < size; sent += kArrival)
    receive(std::string_view(noise));
  receive(std::string_view("\n"));
}
void NoLF(benchmark::State& state) {
  BareLink link;
  for (auto _ : state) {
    ReceiveWithoutLF(static_cast<std::size_t>(state.range(0)),
                     [&link](std::string_view bytes) { link.Receive(bytes); });
  }
  if (link.events.lines != state.iterations()) state.SkipWithError("lines were lost");
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
void NoLFFloor(benchmark::State& state) {
  FloorReceiver receiver;
  FloorReading reading;
  for (auto _ : state) {
    ReceiveWithoutLF(static_cast<std::size_t>(state.range(0)), [&](std::string_view bytes) {
      receiver.Receive(bytes, [&reading](std::string_view line) { FloorPacket(line, reading); });
    });
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(NoLF)->Name("no_lf")->Arg(1 << 14)->Arg(1 << 20);
BENCHMARK(NoLFFloor)->Name("no_lf/floor")->Arg(1 << 14)->Arg(1 << 20);

}  // namespace
}  // namespace orvane::bench

BENCHMARK_MAIN();
