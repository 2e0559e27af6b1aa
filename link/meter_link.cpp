#include "link/meter_link.h"

#include "base/runtime_error.h"
#include "base/text.h"
#include "link/parameter_load.h"
#include "link/readings.h"
#include "platform/wait.h"

namespace orvane {
namespace {

constexpr std::int32_t kLeaveMs = 100;      // for the last command to leave the port before it is closed
constexpr std::int32_t kLastReplyMs = 125;  // for the reply to the last query

}  // namespace

MeterLink::MeterLink(Clock& clock, EventPump& pump, SerialPort& port, LinkSettings& settings,
                     LinkEvents& events)
    : link_{clock, pump, port, settings, events, state_, flags_},
      classifier_(state_, flags_, events, settings),
      receiver_(link_, classifier_),
      transmitter_(link_),
      update_(link_, transmitter_),
      search_(link_, transmitter_, lists_, update_),
      watch_(link_, search_) {
  port.SetListener(&receiver_);
}

MeterLink::~MeterLink() {
  link_.port.SetListener(nullptr);
}

void MeterLink::ApplyPortSettings() {
  link_.settings.SaveMeterSettings();
  link_.events.EnableFindMeter(false);
  if (link_.port.PortOpen()) {
    SetDataFlow(false);
    Attempt([this] { WaitTicks(link_.clock, link_.pump, kLeaveMs); });
    DropReadings(link_);
  }
  search_.Restart();
  if (KeptPort() != 0) return;
  link_.events.EnableFindMeter(false);
  link_.events.ShowStatus("No Port Selected", StatusTone::kNormal);
}

void MeterLink::StopAndClose() {
  constexpr std::int32_t kStillMs = 250;  // for the meter to take the command, and for the driver to close
  if (EqualNoCase(link_.settings.CommPort(), "0")) return;
  SetDataFlow(false);
  Attempt([this] { BlockTicks(link_.clock, kStillMs); });
  link_.port.Close();
  Attempt([this] { BlockTicks(link_.clock, kStillMs); });
}

bool MeterLink::RefreshParameters() {
  if (!flags_.MeterFound || !link_.port.PortOpen()) return false;
  const std::uint32_t before = flags_.Replies;
  Attempt([this] {
    LoadMeterParameters(0);
    WaitTicks(link_.clock, link_.pump, kLastReplyMs);
  });
  if (flags_.Replies == before) return false;
  lists_.Build(state_);
  return true;
}

void MeterLink::LoadMeterParameters(std::int32_t extra_delay) {
  orvane::LoadMeterParameters(link_, transmitter_, extra_delay);
}

}  // namespace orvane
