// What the meter keeps: its settings, the fixed texts of its model, and the rules for changing them.
// docs/protocol.md, "Replies" and "Changing a parameter", has the letters.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::sim {

// The fixed facts of one meter model.
struct MeterFacts {
  std::string Version = "Orvane Meter Version 2.14";
  // Full-scale watts, three rows for each of the four range settings.
  std::vector<int> Ranges = {50, 250, 1250, 100, 500, 2500, 200, 1000, 3000, 400, 2000, 3000};
  // Low-power alarm thresholds in watts; element 0 is the alarm switched off.
  std::vector<int> LowPowerWatts = {0, 1, 2, 5, 10, 25, 50, 100};
  int TrimLow = -20;
  int TrimHigh = 20;
  std::string CouplerText = "Coupler 3000 W";    // letter W
  std::string FrequencyText = "1.8-54 MHz 50R";  // letter w
};

// The settings a user can change; kept over a reset of the meter.
struct MeterSettings {
  std::string CallText = "ORVANE";  // at most 16 characters
  int ForwardTrim = 0;              // percent
  int ReflectedTrim = 0;            // percent
  int RelayPolarity = 0;            // 0..1
  int ShowMessage = 1;              // 0..1
  int RangeScale = 1;               // 0..3
  int Intensity = 4;                // 1..4
  int LowPowerAlarm = 0;            // 0..7, 0 is off
  int VSWRAlarm = 4;                // 0..4, 0 is off
  int Mode = 0;                     // 0 fast, 1 medium, 2 slow, 3 VSWR dip
};

// What became of a command.
enum class Verdict {
  kAnswered,    // a query, answered with its value
  kAccepted,    // carried out, acknowledged with "A"
  kBadCrc,      // the check digits do not fit; "N"
  kMalformed,   // no ETX and two digits where they belong; "N"
  kUnknown,     // no such command; "N"
  kOutOfRange,  // a value the meter refuses, the old one stays; "N"
  kNoise,       // bytes at another line speed or with the meter restarting; no answer
};

// "answered", "accepted", "bad-crc"... for logs.
std::string_view VerdictName(Verdict verdict);

// VSWR alarm threshold of setting 1..4 in hundredths (150, 200, 250, 300); 0 for setting 0.
int VSWRThreshold(int setting);

// The settings with their query and set commands.
class SettingsBank {
 public:
  SettingsBank(MeterFacts facts, MeterSettings settings);

  const MeterFacts& Facts() const { return facts_; }
  const MeterSettings& Values() const { return settings_; }

  // The text of the reply to the query of `letter` (letter and payload), or nothing for a letter that asks
  // for no setting of this bank.
  std::optional<std::string> Answer(char letter) const;

  // Carries out a set command such as "T-3", "M2" or "2M". kAccepted, kOutOfRange or kUnknown; only
  // kAccepted changes anything.
  Verdict Set(std::string_view command);

 private:
  struct Numeric;
  const Numeric* FindNumeric(char letter) const;
  Verdict SetNumeric(char letter, std::string_view digits);
  Verdict SetCallText(std::string_view text);

  MeterFacts facts_;
  MeterSettings settings_;
};

}  // namespace orvane::sim
