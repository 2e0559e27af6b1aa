#pragma once

#include "tests/support/program.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A clock that can be put forward without any event becoming due, so that holds of readouts are over.
class ForwardedClock : public Clock {
 public:
  explicit ForwardedClock(VirtualTime& time) : time_(time) {}
  std::int32_t GetTickCount() override { return time_.GetTickCount() + ahead_; }
  void Block(std::int32_t ms) override { time_.Block(ms); }
  /// The tick count of a program that runs for long wraps; a test of it stays below that.
  void Forward(std::int32_t ms) { ahead_ = (ahead_ + ms) % 1'000'000'000; }

 private:
  VirtualTime& time_;
  std::int32_t ahead_ = 0;
};

/// The headless line, with a second way in that costs nothing: bytes that are handed to the listener at once.
class FedPort : public ForwardedPort {
 public:
  using ForwardedPort::ForwardedPort;

  /// To be called from the message loop only, as the system does.
  void Feed(std::string_view bytes) {
    fed_.assign(bytes);
    listener_->OnComm(CommEvent::kReceive);
  }

  void SetListener(CommListener* listener) override {
    listener_ = listener;
    ForwardedPort::SetListener(listener);
  }
  void TakeReceived(std::string& buffer) override {
    ForwardedPort::TakeReceived(buffer);
    buffer += fed_;
    fed_.clear();
  }

 private:
  CommListener* listener_ = nullptr;
  std::string fed_;
};

/// A client that takes each reading and keeps the last.
struct TakingClient : ClientWindows {
  Handle Find(std::string_view caption) override { return caption == "OVClient" ? 7 : 0; }
  Answer SendCopyData(Handle, std::uint32_t, std::span<const char> data, int) override {
    ++taken;
    last.assign(data.data());
    return {Outcome::kAnswered, 1};
  }
  int taken = 0;
  std::string last;
};

/// The whole program in memory, streaming, with a line that is fed by hand and parts that cost next to
/// nothing: to measure what the program itself takes for a reading.
class FedProgram {
 public:
  FedProgram() {
    streaming_ = program_.Start(platform_) &&
                 program_.RunUntil([this] { return Get().Link().Flags().MeterFound; }, 60000);
    client.taken = 0;  // replies are shown as well
  }
  ~FedProgram() { program_.orvane.reset(); }  // before what stands in front of its platform
  FedProgram(const FedProgram&) = delete;
  FedProgram& operator=(const FedProgram&) = delete;

  bool Streaming() const { return streaming_; }
  Orvane& Get() { return *program_.orvane; }
  const MeterControls& Meter() const { return program_.orvane->Meter(); }

  /// Bytes of the meter, and the time between them as the program's clock has it.
  void Feed(std::string_view bytes, std::int32_t ms) {
    clock_.Forward(ms);
    port_.Feed(bytes);
  }
  /// Pieces that come in one after the other, each as soon as the program lets arrivals in: also while the
  /// lines of those before are being shown.
  void FeedWhileShown(const std::vector<std::string_view>& pieces, std::int32_t ms) {
    clock_.Forward(ms);
    for (const std::string_view piece : pieces)
      program_.time.Post(EventKind::kArrival, 0, [this, piece] { port_.Feed(piece); });
    program_.time.DeliverPending();
  }
  /// VSWR dip mode and back, by a click on its button.
  void ClickMode(std::size_t index) {
    const CommandButton& button = *Meter().cmdMode[index];
    for (HeadlessWindow* panel : program_.desktop.Main()->Children()) {
      if (panel->Place() != Meter().pbxModePanel->Bounds()) continue;
      for (HeadlessWindow* child : panel->Children()) {
        if (child->Place() == button.Bounds()) return child->Click();
      }
    }
  }
  std::size_t EventsWaiting() const { return program_.time.Waiting(); }
  static int Lit(const GraphControls& graph) { return Program::Lit(graph); }

  TakingClient client;

 private:
  Program program_{MeterAt(38400)};
  ForwardedClock clock_{program_.time};
  FedPort port_{program_.port};
  Platform platform_{clock_,
                     program_.time,
                     port_,
                     program_.profiles,
                     program_.files,
                     program_.desktop,
                     program_.instance,
                     program_.shell,
                     client,
                     program_.ports,
                     program_.system};
  bool streaming_ = false;
};

}  // namespace orvane
