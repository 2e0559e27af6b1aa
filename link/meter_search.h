#pragma once

#include "link/link_context.h"
#include "link/meter_lists.h"
#include "link/parameter_update.h"
#include "link/transmitter.h"

#include <cstdint>
#include <string>

namespace orvane {

/// Finds the meter: asks for its version at one speed after the other, then loads its parameters and starts
/// the readings. Each attempt is one tick of `TimerFindMeter`, which is switched on for the next one.
/// docs/protocol.md, "The search", has the sequence with its times.
class MeterSearch {
 public:
  MeterSearch(const LinkContext& link, Transmitter& transmitter, MeterLists& lists, ParameterUpdate& update)
      : link_(link), transmitter_(transmitter), lists_(lists), update_(update) {}

  /// One attempt; lasts about two seconds without a meter, with all events going on. A tick that comes while
  /// an attempt runs (the meter's notice switches the timer on) or a menu is open is let pass: the timer goes
  /// on ticking.
  void FindMeter();

  /// One attempt without any box, and without another one to follow: for a meter that was lost in use.
  /// Readings that the operator stopped stay stopped. @return true when the meter is there again
  bool FindMeterQuietly();

  /// An answer that came too late for its attempt switches the timer off while nothing runs: the search would
  /// stand still without a meter. Makes one more attempt then, which takes that answer.
  void GoOnAfterLateAnswer();

  /// The speed to try next, also put into the settings: 38400, 19200, 9600, then 38400 twice, and so on. When
  /// ten attempts have failed before this one, the operator is asked instead whether to go on.
  std::string NextBaudRate(std::int16_t& baud_rate_index);

  /// Forgets the meter and everything tried so far, closes the port and searches anew with the kept settings.
  void Restart();

 private:
  void TryOnce();
  bool LostBetweenAttempts();
  void OpenPort();
  bool Answered() const;
  /// The running attempt has no object any more: another one was asked for, or the port is lost.
  bool Overtaken() const { return restarted_ || link_.flags.PortGone; }
  void Succeed();
  void RestoreRanges();
  void Fail();
  void AskToGoOn();

  LinkContext link_;
  Transmitter& transmitter_;
  MeterLists& lists_;
  ParameterUpdate& update_;
  std::int16_t baud_rate_index_ = 0;  // in the list of speeds, for the attempt after the next failure
  std::int16_t search_attempts_ = 0;  // failures since the operator was asked
  bool attempt_running_ = false;
  bool quiet_ = false;                 // nobody is asked or told in boxes
  bool restarted_ = false;             // since the running attempt began
  std::uint32_t readings_before_ = 0;  // count of readings when the quiet attempt began
};

}  // namespace orvane
