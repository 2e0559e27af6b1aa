#include "link/parameter_update.h"

#include "base/text.h"

#include <array>
#include <utility>

namespace orvane {
namespace {

constexpr std::int32_t kPaceMs = 125;

struct Setting {
  char letter;
  std::int16_t ParameterRecord::*value;
};
constexpr std::array<Setting, 9> kSettings{{
    {'T', &ParameterRecord::ForwardTrim},
    {'t', &ParameterRecord::ReflectedTrim},
    {'P', &ParameterRecord::RelayPolarity},
    {'S', &ParameterRecord::DisplayMessage},
    {'b', &ParameterRecord::RangeScale},
    {'I', &ParameterRecord::Intensity},
    {'l', &ParameterRecord::LowPowerAlarm},
    {'V', &ParameterRecord::VSWRAlarm},
    {'M', &ParameterRecord::OperationMode},
}};

std::string WithSlashedZeros(std::string_view text) {
  return ReplaceAll(text, '0', kSlashedZero);
}

class Hourglass {
 public:
  explicit Hourglass(LinkEvents& events) : events_(events) { events_.SetHourglass(true); }
  ~Hourglass() { events_.SetHourglass(false); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;

 private:
  LinkEvents& events_;
};

}  // namespace

void ParameterUpdate::UpdateMeterParameters(ParameterRecord pending, ParameterRecord current) {
  {
    const Hourglass hourglass(link_.events);
    link_.events.ShowStatus("Updating Meter Paramaters", StatusTone::kNormal);
    if (pending.CallMessageEdited) SendCallMessage(pending.CallMessage.Field());
    for (const Setting& setting : kSettings) {
      if (pending.*setting.value != current.*setting.value)
        ChangeSetting(setting.letter, pending.*setting.value);
    }
  }
  link_.events.ShowStatus("Paramater Update Complete", StatusTone::kNormal);
  if (link_.state.ParamS != 0) {
    ShowCallMessage(link_.state.MeterCallText.Text(), false);
  } else {
    ShowCallMessage("Orvane", true);
  }
}

void ParameterUpdate::ChangeSetting(char letter, std::int16_t value) {
  std::string command(1, letter);
  command += std::to_string(value);
  SendAndQuery(std::move(command));
}

void ParameterUpdate::SendCallMessage(std::string_view text) {
  SendAndQuery("C" + WithSlashedZeros(TrimRight(text.substr(0, CallText::kSent))));
}

void ParameterUpdate::ShowCallMessage(std::string_view text, bool use_given) {
  CallText& stored = link_.state.MeterCallText;
  std::string shown(text);
  if (use_given) {
    shown = WithSlashedZeros(text);
  } else if (!stored.Empty()) {
    stored.Set(WithSlashedZeros(stored.Field()));
    shown = stored.Text();
  }
  link_.events.ShowMessageText(shown);
}

void ParameterUpdate::SendAndQuery(std::string command) {
  transmitter_.SendCommand(command);
  transmitter_.WaitForAck(kPaceMs);
  transmitter_.SendCommand(std::string{command.front(), '?'});
  transmitter_.WaitForAck(kPaceMs);
}

}  // namespace orvane
