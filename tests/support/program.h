#pragma once

#include "platform/headless/client_windows.h"
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

#include <algorithm>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvane {

/// A meter that understands one line speed only, as real ones do.
inline sim::MeterOptions MeterAt(int baud) {
  sim::MeterOptions options;
  options.Baud = baud;
  return options;
}

/// The whole program on the headless platform with the simulated meter on its line.
class Program {
 public:
  explicit Program(sim::MeterOptions meter = {}, std::int32_t start_tick = 0)
      : time(start_tick), line(time, port, std::move(meter)) {
    files.SetFlushing(false);
    std::filesystem::create_directory(folder.Path() + "/Images");
    for (const auto& [name, size] : {std::pair{"OVFace.ovl", Size{640, 260}},
                                     {"OVFace120.ovl", Size{800, 325}},
                                     {"OVFaceSm.ovl", Size{640, 124}},
                                     {"OVFaceSm120.ovl", Size{800, 155}},
                                     {"TamskLogo.ovl", Size{96, 24}},
                                     {"TamskLogoBW.ovl", Size{96, 24}}}) {
      files.CreateEmpty(ImagePath(name));
      desktop.pictures[std::string("/") + name] = FacePicture(size);
    }
  }

  /// Starts the program; false when it ended during its start.
  bool Start() { return Start(platform); }
  /// The same on a platform that stands before this one.
  bool Start(Platform& front) {
    return StillRuns([&] { orvane = StartProgram(front); });
  }
  /// Lets time pass; false when the program ended.
  bool RunFor(std::int64_t ms) {
    return StillRuns([&] { time.RunFor(ms); });
  }
  bool RunUntil(const std::function<bool()>& condition, std::int64_t limit_ms) {
    bool met = false;
    StillRuns([&] { met = time.RunUntil(condition, limit_ms); });
    return met;
  }
  /// Start-up and search, until the meter is asked for its readings.
  bool StartStreaming() {
    return Start() && RunUntil([this] { return orvane->Link().Flags().MeterFound; }, 60000);
  }
  /// Closes the window as the user does; true when the process ended by it.
  bool Close() {
    return !StillRuns([this] { desktop.Main()->Close(); });
  }
  bool Ended() const { return ended_; }
  /// Does `step`; false when the program ended by it, or had.
  template <typename Step>
  bool StillRuns(Step step) {
    if (ended_) return false;
    try {
      step();
    } catch (const ProcessEnded&) {
      ended_ = true;
    }
    return !ended_;
  }

  std::string ImagePath(const std::string& name) { return folder.Path() + "/Images/" + name; }
  /// A face of one grey with its four corner pixels cut away.
  static Picture FacePicture(Size size) {
    auto picture = std::make_shared<PictureData>();
    picture->width = size.width;
    picture->height = size.height;
    picture->pixels.assign(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height),
                           0xFF22282E);
    const auto at = [&](int x, int y) -> std::uint32_t& {
      return picture->pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) +
                             static_cast<std::size_t>(x)];
    };
    for (const int x : {0, size.width - 1}) {
      for (const int y : {0, size.height - 1})
        at(x, y) = 0xFFFF00FF;
    }
    return picture;
  }

  std::string SettingsPath() { return folder.Path() + "/Orvane.dat"; }
  void PutSettings(const std::string& text) {
    if (!files.Replace(SettingsPath(), text)) throw std::runtime_error("the settings file is not written");
  }
  bool Keeps(const std::string& text) { return SettingsText().find(text) != std::string::npos; }
  std::string SettingsText() { return files.Content(SettingsPath()).value_or("(no file)"); }
  /// Commands as the meter heard them, in order.
  std::vector<std::string> Commands() const {
    std::vector<std::string> texts;
    for (const auto& record : line.Meter.Log().Commands)
      texts.push_back(record.Text);
    return texts;
  }

  /// How often the meter heard a command.
  std::ptrdiff_t Count(const std::string& command) const {
    const auto commands = Commands();
    return std::count(commands.begin(), commands.end(), command);
  }

  const std::string& Fwd() const { return orvane->Meter().forward.dbxPower->digitdisplay(); }
  const std::string& Ref() const { return orvane->Meter().reflected.dbxPower->digitdisplay(); }
  const std::string& Ratio() const { return orvane->Meter().dbxVSWR->digitdisplay(); }
  const std::string& Status() const { return orvane->Meter().lblShowStatus->Caption(); }
  static int Lit(const GraphControls& graph) {
    int lit = 0;
    for (const auto& shape : graph.shpGraph)
      lit += shape->BackStyle();
    return lit;
  }

  TempFolder folder;
  VirtualTime time;
  HeadlessSerialPort port{time};
  TappedPort tap{port};  ///< what the program has for its port
  HeadlessDesktop desktop{time};
  HeadlessFiles files{folder.Path()};
  HeadlessProfileStore profiles{files};
  HeadlessInstance instance;
  HeadlessShell shell;
  HeadlessClientWindows clients;
  HeadlessSystemInfo system;
  HeadlessPortList ports;
  Platform platform{time, time, tap, profiles, files, desktop, instance, shell, clients, ports, system};
  SimulatedLine line;
  std::unique_ptr<Orvane> orvane;

 private:
  bool ended_ = false;
};

}  // namespace orvane
