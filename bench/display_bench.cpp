// From the state to the screen: bars, and the whole road of a reading through the whole program.
#include "bench/floor.h"
#include "display/power_bar.h"
#include "forms/form.h"
#include "tests/support/fed_program.h"
#include "window/face_builder.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <string>

namespace orvane::bench {
namespace {

constexpr std::int32_t kPastHold = 6000;  // ms, longer than readouts are held

void Road(benchmark::State& state, const std::string& one, const std::string& other) {
  FedProgram program;
  if (!program.Streaming()) return state.SkipWithError("the program does not stream");
  const std::array<const std::string*, 2> packets{&one, &other};
  std::size_t next = 0;
  for (auto _ : state)
    program.Feed(*packets[next++ % 2], kPastHold);
  if (program.client.taken != state.iterations()) state.SkipWithError("the client missed readings");
  state.SetItemsProcessed(state.iterations());
}
void RoadFloor(benchmark::State& state, const std::string& one, const std::string& other) {
  FloorReceiver receiver;
  FloorFace face;
  CountingScreen screen;
  const std::array<const std::string*, 2> packets{&one, &other};
  std::size_t next = 0;
  for (auto _ : state) {
    receiver.Receive(*packets[next++ % 2], [&](std::string_view line) {
      FloorReading reading;
      if (FloorPacket(line, reading)) face.Show(reading, screen);
    });
    benchmark::DoNotOptimize(face);
  }
  benchmark::DoNotOptimize(screen.count);
  state.SetItemsProcessed(state.iterations());
}
const std::string kLow = Packet("D,0,0,1.00,0;0");
const std::string kHigh = Packet("D,3000,1000,3.73,1;1");

BENCHMARK_CAPTURE(Road, unchanged, kHigh, kHigh)->Name("road_unchanged");
BENCHMARK_CAPTURE(RoadFloor, unchanged, kHigh, kHigh)->Name("road_unchanged/floor");
BENCHMARK_CAPTURE(Road, changed, kLow, kHigh)->Name("road_changed");
BENCHMARK_CAPTURE(RoadFloor, changed, kLow, kHigh)->Name("road_changed/floor");

// Two watts a segment, because the first one is lit by any power that rounds to none.
std::int16_t WattsFor(std::int64_t lit) {
  return static_cast<std::int16_t>(std::max<std::int64_t>(2 * (lit - 1), 1));
}

// The bar goes up and down between two places around its middle, `range` segments apart.
void Bar(benchmark::State& state) {
  VirtualTime time;
  HeadlessDesktop desktop(time);
  Form form(desktop, "bar", {9600, 3900});
  MeterControls controls = BuildMeterControls(desktop, form);
  PowerBar bar(controls.forward.shpGraph, time);
  bar.SetScale(0.5F);
  const std::int64_t low = 26 - state.range(0) / 2;
  const std::int64_t high = low + state.range(0);
  bool up = false;
  for (auto _ : state) {
    up = !up;
    bar.Show(WattsFor(up ? high : low));
  }
  for (const std::int64_t lit : {low, high}) {
    bar.Show(WattsFor(lit));
    if (FedProgram::Lit(controls.forward) != lit) state.SkipWithError("not the bar that was asked for");
  }
  state.SetItemsProcessed(state.iterations());
}
void BarFloor(benchmark::State& state) {
  FloorBar bar;
  CountingScreen counting;
  FloorScreen* screen = &counting;
  benchmark::DoNotOptimize(screen);  // nobody knows at compile time which screen it is
  const int low = 26 - static_cast<int>(state.range(0) / 2);
  const int high = low + static_cast<int>(state.range(0));
  bool up = false;
  for (auto _ : state) {
    up = !up;
    bar.Show(up ? high : low, *screen);
    benchmark::DoNotOptimize(bar);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(Bar)->Name("bar")->Arg(1)->Arg(10)->Arg(50);
BENCHMARK(BarFloor)->Name("bar/floor")->Arg(1)->Arg(10)->Arg(50);

}  // namespace
}  // namespace orvane::bench
