// Text commands that steer a MeterModel while it runs; portable, the host brings the lines.
#pragma once

#include "simulator/meter_model.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::sim {

// Bytes as printable text: \xHH, \r, \n and \\ for what cannot be shown as it is.
std::string Escaped(std::string_view bytes);
// The reverse; an escape it does not know stays as it stands.
std::string Unescaped(std::string_view text);

// One line of a log, without a line end: "     1234 accepted     D1".
std::string LogLine(std::int64_t time_ms, std::string_view kind, std::string_view text);
std::string LogLine(const CommandRecord& record);

class Console {
 public:
  explicit Console(MeterModel& model) : model_(model) {}

  // Carries out one line such as "power 100 5". The answer is one or more lines, "ok" when there is nothing
  // to tell, and starts with "error: " when the line was refused; nothing for a word that is no command of
  // this console. Run the model up to the present first.
  std::optional<std::string> Execute(std::string_view line);

  // One line for each command.
  static std::string Help();

 private:
  using Words = std::vector<std::string>;
  struct Command;

  static std::span<const Command> Commands();

  std::string DoPower(const Words& words);
  std::string DoScenario(const Words& words);
  std::string DoFault(const Words& words);
  std::string DoReplies(const Words& words);
  std::string DoRate(const Words& words);
  std::string DoSilence(const Words& words);
  std::string DoMute(const Words& words);
  std::string DoReset(const Words& words);
  std::string DoSet(const Words& words);
  std::string DoSay(const Words& words);
  std::string DoRaw(const Words& words);
  std::string DoBaud(const Words& words);
  std::string DoDelay(const Words& words);
  std::string DoPackets(const Words& words);
  std::string DoCommands(const Words& words);
  std::string DoState(const Words& words);

  MeterModel& model_;
};

}  // namespace orvane::sim
