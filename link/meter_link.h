#pragma once

#include "link/link_context.h"
#include "link/message_classifier.h"
#include "link/meter_lists.h"
#include "link/meter_search.h"
#include "link/parameter_update.h"
#include "link/port_setup.h"
#include "link/port_watch.h"
#include "link/receiver.h"
#include "link/transmitter.h"

#include <cstdint>
#include <string_view>

namespace orvane {

/// The meter at the other end of the serial line: owns what it said last, and everything that talks to it.
/// The road of a reading: SerialPort -> Receiver -> MessageClassifier -> handler -> MeterState ->
/// LinkEvents::LineHandled.
///
/// Everything that waits lets events through: another call may come from inside it, and the state is another
/// one afterwards.
class MeterLink {
 public:
  /// All references must outlive the link. Takes over the port's events.
  MeterLink(Clock& clock, EventPump& pump, SerialPort& port, LinkSettings& settings, LinkEvents& events);
  ~MeterLink();
  MeterLink(const MeterLink&) = delete;
  MeterLink& operator=(const MeterLink&) = delete;

  const MeterState& State() const { return state_; }
  const LinkFlags& Flags() const { return flags_; }
  const MeterLists& Lists() const { return lists_; }
  ParameterRecord CurrentParameters() const { return orvane::CurrentParameters(state_); }

  /// A tick of `TimerFindMeter`: one attempt to find the meter.
  void FindMeter() { search_.FindMeter(); }
  /// After the operator chose another port or speed: keeps them, stops the readings on the port that is open,
  /// and searches with the new ones from the beginning; without a port nothing is searched.
  void ApplyPortSettings();
  /// Searches from the beginning, after a search was given up.
  void SearchAgain() { search_.Restart(); }
  /// The number of the kept port, 0 for none, and whether it is open now.
  int KeptPort() const { return PortNumber(link_.settings.CommPort()); }
  bool PortOpen() const { return link_.port.PortOpen(); }
  /// For the end of the program: stops the readings and closes the port, half a second in all, most of it
  /// without events. Never fails.
  void StopAndClose();

  /// Sends one command; see Transmitter.
  void SendCommand(std::string_view text) { transmitter_.SendCommand(text); }
  /// Starts or stops the readings, after 50 ms, as the operator wants them. None are missed before the meter
  /// was found: the search starts them.
  void SetDataFlow(bool on) {
    flags_.DataFlowWanted = on && !flags_.GoodSpeed.empty();
    flags_.FlowStopped = !on;
    transmitter_.SetDataFlow(on);
  }
  /// To be called every PortWatch::kTickMs: see PortWatch.
  void Watch() { watch_.Tick(); }
  /// The computer slept: the port is not believed, but opened anew.
  void ReopenPort() { watch_.Reopen(); }
  /// The system took a port away.
  void PortRemoved(int number) {
    if (number == link_.port.CommPort()) watch_.Reopen();
  }
  void WaitForAck(std::int32_t delay_ms) { transmitter_.WaitForAck(delay_ms); }

  /// Asks for all parameters; see parameter_load.h. @throws RuntimeError kOverflow
  void LoadMeterParameters(std::int32_t extra_delay);
  /// For a panel that is about to show them: stops the readings, asks for all parameters and makes the lists
  /// anew. @return false when the meter did not answer, or is not found; everything is as it was then
  bool RefreshParameters();
  /// Readings go on after that, unless the operator had stopped them.
  void ResumeDataFlow() {
    if (flags_.MeterFound && flags_.DataFlowWanted) transmitter_.SetDataFlow(true);
  }

  /// Changes of the meter's settings; see ParameterUpdate.
  void UpdateMeterParameters(const ParameterRecord& pending, const ParameterRecord& current) {
    update_.UpdateMeterParameters(pending, current);
  }
  void ChangeSetting(char letter, std::int16_t value) { update_.ChangeSetting(letter, value); }
  void SendCallMessage(std::string_view text) { update_.SendCallMessage(text); }
  void ShowCallMessage(std::string_view text, bool use_given) { update_.ShowCallMessage(text, use_given); }

 private:
  MeterState state_;
  LinkFlags flags_;
  MeterLists lists_;
  LinkContext link_;
  MessageClassifier classifier_;
  Receiver receiver_;
  Transmitter transmitter_;
  ParameterUpdate update_;
  MeterSearch search_;
  PortWatch watch_;
};

}  // namespace orvane
