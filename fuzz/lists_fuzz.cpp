// Lists and records made from texts of the meter: each line of the input is a reply with right framing, its
// first character the letter.
#include "fuzz/require.h"
#include "link/frame.h"
#include "link/message_classifier.h"
#include "link/meter_lists.h"
#include "link/parameter_record.h"
#include "tests/support/quiet_link.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvane::fuzz {
namespace {

/// A window that only looks at what it is told.
struct Window : QuietEvents {
  int beeps = 0;
  void ShowStatus(std::string_view text, StatusTone) override {
    Require(text.find_first_of("\x02\x03\r\n") == std::string_view::npos, "the status line has no frames");
  }
  void Beep() override { ++beeps; }
};
struct Kept : QuietSettings {
  bool PktNotify() const override { return true; }
};

bool Within(int value, int low, int high) {
  return value >= low && value <= high;
}

void CheckState(const MeterState& state) {
  Require(Within(state.ParamV, 0, 4) && Within(state.ParamL2, 0, 7) && Within(state.ParamP, 0, 1) &&
              Within(state.ParamI, 0, 4) && Within(state.ParamB2, 0, 3) && Within(state.ParamR, 0, 2) &&
              Within(state.MeterMode, 0, 3),
          "parameters are in their ranges");
  Require(
      (state.ParamVOn == kTrue) == (state.ParamV >= 1) && (state.ParamL2On == kTrue) == (state.ParamL2 >= 1),
      "an alarm is on when its setting is");
  for (const std::string& text : {state.ParamBText, state.ParamLText, state.ParamWText, state.ParamW2Text,
                                  state.FirmwareVersion, std::string(state.MeterCallText.Field())}) {
    Require(text.find_first_of("\x02\x03\r\n") == std::string::npos, "texts have no frames in them");
  }
  const CallText& call = state.MeterCallText;
  Require(call.Field().size() == CallText::kWidth && call.Field().starts_with(call.Text()) &&
              !call.Text().ends_with(' ') && call.Empty() == call.Text().empty(),
          "the call message is its field without blanks");
}

void CheckScales(const AutoScales& scales) {
  for (std::size_t i = 0; i < scales.AutoFullScale.size(); ++i) {
    Require(scales.AutoFullScale[i] >= 1, "a full scale is some watts");
    const double lit = static_cast<double>(scales.AutoScale[i]) * scales.AutoFullScale[i];
    Require(std::fabs(lit - AutoScales::kSegments) < 0.001, "full scale lights the whole bar");
  }
}

void CheckLists(const MeterLists& lists, const MeterState& state) {
  CheckScales(lists.Auto);
  Require(lists.RangeItems.size() <= AutoScales::kRanges, "no more ranges than the meter has");
  for (std::size_t i = 0; i < lists.RangeItems.size(); ++i) {
    const MeterLists::Item& item = lists.RangeItems[i];
    Require(item.Value == static_cast<std::int16_t>(i) &&
                std::count(item.Text.begin(), item.Text.end(), '/') >= 2,
            "each range with its three full scales");
  }
  const auto commas = std::count(state.ParamLText.begin(), state.ParamLText.end(), ',');
  Require(
      lists.LowPowerWatts.size() == (state.ParamLText.empty() ? 0U : static_cast<std::size_t>(commas) + 1),
      "each threshold in its place");
  Require(lists.TrimLow == -state.RangeMinNeg && lists.TrimHigh == -state.RangeMaxNeg, "the meter's limits");
  Require(Within(lists.TrimMenuLimit, 0, 20) &&
              (lists.TrimMenuLimit == 0 ||
               (lists.TrimMenuLimit <= lists.TrimHigh && -lists.TrimMenuLimit >= lists.TrimLow)),
          "menus offer no trim that the meter refuses");
  Require(Within(lists.Selected.Intensity, 0, 3), "the list of intensities has the one that is chosen");
  Require(lists.Selected.CallMessage == state.MeterCallText && !lists.Selected.CallMessageEdited,
          "what is chosen is what the meter has");
}

void Run(std::string_view input) {
  MeterState state;
  LinkFlags flags;
  Window window;
  const Kept kept;
  MessageClassifier classifier(state, flags, window, kept);
  MeterLists lists;
  flags.MeterSearchRunning = !input.empty() && (static_cast<unsigned char>(input[0]) & 1U) != 0;
  std::uint32_t lines = 0;
  while (!input.empty()) {
    const auto end = std::min(input.find('\n'), input.size());
    std::string line = kSTX + std::string(input.substr(0, end)) + kETX;
    classifier.ProcessMessage(line.append("00\r\n"));
    ++lines;
    input.remove_prefix(std::min(end + 1, input.size()));
  }
  CheckState(state);
  Require(flags.Replies <= lines && window.beeps <= static_cast<int>(lines), "a line is one reply at most");
  lists.Build(state);
  CheckLists(lists, state);
  const auto before = lists.RangeItems;
  lists.Build(state);
  Require(lists.RangeItems == before, "made anew they are the same");
}

}  // namespace
}  // namespace orvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orvane::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
