#include "simulator/console.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <iomanip>
#include <sstream>
#include <system_error>

namespace orvane::sim {
namespace {

const char* const kOk = "ok";

std::string Error(std::string_view what) {
  return "error: " + std::string(what);
}

std::optional<double> ReadReal(std::string_view text) {
  double value = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
  // The comparison refuses "nan" and "inf", which the reader would take.
  const bool sound = fault == std::errc() && end == text.data() + text.size() && value >= 0 && value <= 1e9;
  return sound ? std::optional<double>(value) : std::nullopt;
}

std::optional<int> ReadWhole(std::string_view text) {
  const std::optional<double> value = ReadReal(text);
  return value ? std::optional<int>(static_cast<int>(*value)) : std::nullopt;
}

std::optional<bool> ReadSwitch(std::string_view text) {
  if (text == "on") return true;
  if (text == "off") return false;
  return std::nullopt;
}

// Words parted by blanks; what follows the first word also as one text in words[1] when `whole` is set.
std::vector<std::string> SplitWords(std::string_view line, bool whole) {
  std::vector<std::string> words;
  std::size_t at = line.find_first_not_of(" \t\r\n");
  while (at != std::string_view::npos) {
    const bool rest = whole && words.size() == 1;
    const std::size_t end = rest ? line.find_last_not_of("\r\n") + 1 : line.find_first_of(" \t\r\n", at);
    words.emplace_back(line.substr(at, end == std::string_view::npos ? end : end - at));
    at = line.find_first_not_of(" \t\r\n", std::min(end, line.size()));
  }
  return words;
}

std::string PacketLine(const PacketRecord& packet) {
  std::array<char, 128> text = {};
  std::snprintf(text.data(), text.size(), "%9lld fwd %d ref %d vswr %.2f swr-alarm %d pwr-alarm %d",
                static_cast<long long>(packet.TimeMs), packet.ForwardPower, packet.ReflectedPower,
                packet.VSWR, packet.SWRAlarm ? 1 : 0, packet.PwrAlarm ? 1 : 0);
  std::string line = text.data();
  if (packet.Fault) line += " fault " + std::string(NameOfFault(*packet.Fault));
  return line;
}

// The newest records of a list as lines, oldest first.
template <typename Records, typename Print>
std::string Tail(const Records& records, const std::vector<std::string>& words, Print print) {
  const int asked = words.size() > 1 ? ReadWhole(words[1]).value_or(10) : 10;
  const std::size_t count = std::min(records.size(), static_cast<std::size_t>(asked));
  std::string text;
  for (std::size_t i = records.size() - count; i < records.size(); ++i) {
    if (!text.empty()) text += '\n';
    text += print(records[i]);
  }
  return text.empty() ? "none" : text;
}

}  // namespace

std::string Escaped(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    if (byte == '\r') {
      text += "\\r";
    } else if (byte == '\n') {
      text += "\\n";
    } else if (byte == '\\') {
      text += "\\\\";
    } else if (code < 0x20 || code > 0x7E) {
      text += "\\x";
      text += kDigits[code >> 4];
      text += kDigits[code & 0x0F];
    } else {
      text += byte;
    }
  }
  return text;
}

std::string Unescaped(std::string_view text) {
  std::string bytes;
  while (!text.empty()) {
    unsigned code = 0;
    if (text.size() >= 4 && text.starts_with("\\x") &&
        std::from_chars(text.data() + 2, text.data() + 4, code, 16).ptr == text.data() + 4) {
      bytes += static_cast<char>(code);
      text.remove_prefix(4);
      continue;
    }
    std::size_t used = 2;
    if (text.starts_with("\\r")) {
      bytes += '\r';
    } else if (text.starts_with("\\n")) {
      bytes += '\n';
    } else if (text.starts_with("\\\\")) {
      bytes += '\\';
    } else {
      bytes += text.front();
      used = 1;
    }
    text.remove_prefix(used);
  }
  return bytes;
}

std::string LogLine(std::int64_t time_ms, std::string_view kind, std::string_view text) {
  std::ostringstream line;
  line << std::setw(9) << time_ms << ' ' << std::left << std::setw(12) << kind << ' ' << Escaped(text);
  return line.str();
}

std::string LogLine(const CommandRecord& record) {
  return LogLine(record.TimeMs, VerdictName(record.Outcome), record.Text);
}

// One command of the table below.
struct Console::Command {
  std::string_view Name;
  std::string_view Usage;
  std::string_view Summary;
  std::size_t Arguments;  // at least
  bool TextArgument;      // the rest of the line is one argument
  std::string (Console::*Do)(const Words&);
};

std::span<const Console::Command> Console::Commands() {
  static constexpr std::array<Command, 16> kCommands = {{
      {"power", "power FWD REF", "steady power in watts", 2, false, &Console::DoPower},
      {"scenario", "scenario NAME", "start a scenario from its beginning", 1, false, &Console::DoScenario},
      {"fault", "fault KIND PERCENT", "or: fault KIND every N; fault none", 1, false, &Console::DoFault},
      {"replies", "replies on|off", "let faults strike replies too", 1, false, &Console::DoReplies},
      {"rate", "rate N", "packets a second; 0: by the mode", 1, false, &Console::DoRate},
      {"silence", "silence MS", "send nothing for a time", 1, false, &Console::DoSilence},
      {"mute", "mute on|off", "send nothing until switched off", 1, false, &Console::DoMute},
      {"reset", "reset", "restart the meter", 0, false, &Console::DoReset},
      {"set", "set COMMAND", "turn a knob on the meter, as in: set M2", 1, true, &Console::DoSet},
      {"say", "say TEXT", "send a message with frame and CRC, as in: say R1", 1, true, &Console::DoSay},
      {"raw", "raw TEXT", "send bytes as they are; \\x02 \\r \\n \\\\ are escapes", 1, true, &Console::DoRaw},
      {"baud", "baud N", "the meter's own line speed; 0: any", 1, false, &Console::DoBaud},
      {"delay", "delay MS", "time from a command to its answer", 1, false, &Console::DoDelay},
      {"packets", "packets [N]", "show the last packets sent", 0, false, &Console::DoPackets},
      {"commands", "commands [N]", "show the last commands heard", 0, false, &Console::DoCommands},
      {"state", "state", "show settings, alarms and counts", 0, false, &Console::DoState},
  }};
  return kCommands;
}

std::string Console::Help() {
  std::ostringstream text;
  text << std::left;
  for (const Command& command : Commands()) {
    text << "  " << std::setw(22) << command.Usage << command.Summary << '\n';
  }
  text << "scenarios:\n";
  for (const Scenario& scenario : Scenarios()) {
    text << "  " << std::setw(22) << scenario.Name << scenario.Summary << '\n';
  }
  text << "fault kinds:\n";
  for (const FaultName& fault : FaultNames()) {
    text << "  " << std::setw(22) << fault.Name << fault.Summary << '\n';
  }
  return text.str();
}

std::optional<std::string> Console::Execute(std::string_view line) {
  const Words words = SplitWords(line, false);
  if (words.empty()) return "";
  const auto commands = Commands();
  const auto found = std::find_if(commands.begin(), commands.end(),
                                  [&words](const Command& command) { return command.Name == words[0]; });
  if (found == commands.end()) return std::nullopt;
  if (words.size() <= found->Arguments) return Error("usage: " + std::string(found->Usage));
  return (this->*found->Do)(SplitWords(line, found->TextArgument));
}

std::string Console::DoPower(const Words& words) {
  const auto forward = ReadReal(words[1]);
  const auto reflected = ReadReal(words[2]);
  if (!forward || !reflected) return Error("power takes two numbers of watts");
  model_.SetPower(*forward, *reflected);
  return kOk;
}

std::string Console::DoScenario(const Words& words) {
  return model_.SetScenario(words[1]) ? kOk : Error("no scenario " + words[1]);
}

std::string Console::DoFault(const Words& words) {
  if (words[1] == "none") {
    model_.ClearFaults();
    return kOk;
  }
  const auto kind = FindFault(words[1]);
  if (!kind) return Error("no fault kind " + words[1]);
  const bool every = words.size() == 4 && words[2] == "every";
  const auto number = words.size() > 2 ? ReadReal(words.back()) : std::nullopt;
  if (!number || words.size() > (every ? 4U : 3U)) return Error("fault KIND PERCENT or fault KIND every N");
  if (every) {
    model_.SetFaultEvery(*kind, static_cast<int>(*number));
  } else {
    model_.SetFault(*kind, *number);
  }
  return kOk;
}

std::string Console::DoReplies(const Words& words) {
  const auto on = ReadSwitch(words[1]);
  if (!on) return Error("on or off");
  model_.SetFaultsOnReplies(*on);
  return kOk;
}

std::string Console::DoRate(const Words& words) {
  const auto rate = ReadReal(words[1]);
  if (!rate) return Error("rate takes a number of packets a second");
  model_.SetStreamRate(*rate);
  return kOk;
}

std::string Console::DoSilence(const Words& words) {
  const auto time = ReadWhole(words[1]);
  if (!time) return Error("silence takes milliseconds");
  model_.Silence(*time);
  return kOk;
}

std::string Console::DoMute(const Words& words) {
  const auto on = ReadSwitch(words[1]);
  if (!on) return Error("on or off");
  model_.SetMute(*on);
  return kOk;
}

std::string Console::DoReset(const Words& /*words*/) {
  model_.Reset();
  return kOk;
}

std::string Console::DoSet(const Words& words) {
  return model_.ChangeAtMeter(Unescaped(words[1])) ? kOk : Error("the meter refuses " + words[1]);
}

std::string Console::DoSay(const Words& words) {
  model_.Say(Unescaped(words[1]));
  return kOk;
}

std::string Console::DoRaw(const Words& words) {
  model_.SendRaw(Unescaped(words[1]));
  return kOk;
}

std::string Console::DoBaud(const Words& words) {
  const auto baud = ReadWhole(words[1]);
  if (!baud) return Error("baud takes a line speed");
  model_.SetBaud(*baud);
  return kOk;
}

std::string Console::DoDelay(const Words& words) {
  const auto delay = ReadWhole(words[1]);
  if (!delay) return Error("delay takes milliseconds");
  model_.SetReplyDelay(*delay);
  return kOk;
}

std::string Console::DoPackets(const Words& words) {
  return Tail(model_.Log().Packets, words, PacketLine);
}

std::string Console::DoCommands(const Words& words) {
  return Tail(model_.Log().Commands, words, [](const CommandRecord& record) { return LogLine(record); });
}

std::string Console::DoState(const Words& /*words*/) {
  const MeterSettings& settings = model_.Settings();
  const MeterLog& log = model_.Log();
  const Power power = model_.PowerNow();
  std::ostringstream text;
  text << "stream " << (model_.Streaming() ? "on" : "off") << ", " << model_.StreamRate()
       << " packets/s; mode " << settings.Mode << ", range " << settings.RangeScale << ", row "
       << model_.Row() << '\n';
  text << "source " << (model_.ScenarioName().empty() ? std::string_view("power") : model_.ScenarioName())
       << ", now " << power.Forward << " W forward, " << power.Reflected << " W reflected\n";
  text << "alarms: swr " << model_.SWRAlarm() << ", power " << model_.PwrAlarm() << "; thresholds V"
       << settings.VSWRAlarm << " l" << settings.LowPowerAlarm << " relay P" << settings.RelayPolarity
       << '\n';
  text << "trims T" << settings.ForwardTrim << " t" << settings.ReflectedTrim << "; intensity I"
       << settings.Intensity << "; message S" << settings.ShowMessage << " \"" << Escaped(settings.CallText)
       << "\"\n";
  text << "commands " << log.CommandTotal << ", packets " << log.PacketTotal << ", lines lost "
       << log.LostLines;
  return text.str();
}

}  // namespace orvane::sim
