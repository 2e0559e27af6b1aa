#pragma once

#include "platform/headless/desktop.h"
#include "platform/headless/files.h"
#include "platform/headless/port_list.h"
#include "platform/headless/profile_store.h"
#include "platform/headless/serial_port.h"
#include "platform/headless/shell.h"
#include "platform/headless/system_info.h"
#include "platform/headless/virtual_time.h"
#include "tests/support/forwarded_port.h"
#include "tests/support/simulated_line.h"
#include "tests/support/temp_folder.h"
#include "window/orvane.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
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
    std::filesystem::create_directory(folder_.Path() + "/Images");
    for (const char* name : {"OVFace.ovl", "OVFace120.ovl", "OVFaceSm.ovl", "OVFaceSm120.ovl",
                             "TamskLogo.ovl", "TamskLogoBW.ovl"}) {
      files_.CreateEmpty(folder_.Path() + "/Images/" + name);
      desktop_.pictures[std::string("/") + name] = Grey();
    }
    orvane_ = std::make_unique<Orvane>(platform_);
    orvane_->Form_Load();
    streaming_ = time_.RunUntil([this] { return orvane_->Link().Flags().MeterFound; }, 60000);
    client.taken = 0;  // replies are shown as well
  }

  bool Streaming() const { return streaming_; }
  Orvane& Get() { return *orvane_; }
  const MeterControls& Meter() const { return orvane_->Meter(); }

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
      time_.Post(EventKind::kArrival, 0, [this, piece] { port_.Feed(piece); });
    time_.DeliverPending();
  }
  /// VSWR dip mode and back, by a click on its button.
  void ClickMode(std::size_t index) {
    const CommandButton& button = *orvane_->Meter().cmdMode[index];
    for (HeadlessWindow* panel : desktop_.Main()->Children()) {
      if (panel->Place() != orvane_->Meter().pbxModePanel->Bounds()) continue;
      for (HeadlessWindow* child : panel->Children()) {
        if (child->Place() == button.Bounds()) return child->Click();
      }
    }
  }
  std::size_t EventsWaiting() const { return time_.Waiting(); }
  static int Lit(const GraphControls& graph) {
    int lit = 0;
    for (const auto& shape : graph.shpGraph)
      lit += shape->BackStyle() == Shape::kOpaque ? 1 : 0;
    return lit;
  }

  TakingClient client;

 private:
  static Picture Grey() {
    auto picture = std::make_shared<PictureData>();
    picture->width = 8;
    picture->height = 8;
    picture->pixels.assign(64, 0xFF22282E);
    return picture;
  }
  static sim::MeterOptions FastMeter() {
    sim::MeterOptions options;
    options.Baud = 38400;
    return options;
  }

  TempFolder folder_;
  VirtualTime time_;
  ForwardedClock clock_{time_};
  HeadlessSerialPort line_{time_};
  FedPort port_{line_};
  HeadlessDesktop desktop_{time_};
  HeadlessFiles files_{folder_.Path()};
  HeadlessProfileStore profiles_{files_};
  HeadlessInstance instance_;
  HeadlessShell shell_;
  HeadlessPortList ports_;
  HeadlessSystemInfo system_;
  Platform platform_{clock_,    time_,  port_,  profiles_, files_, desktop_,
                     instance_, shell_, client, ports_,    system_};
  SimulatedLine meter_{time_, line_, FastMeter()};
  std::unique_ptr<Orvane> orvane_;
  bool streaming_ = false;
};

}  // namespace orvane
