#pragma once

#include "forms/label.h"
#include "forms/timer.h"
#include "link/link_context.h"
#include "link/meter_state.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace orvane {

/// Tells screen readers what an operator must hear wherever the keyboard is: alarms that come and go, and
/// whether there are readings. Only the change is told, and the same words not sooner again than half a
/// minute later: an alarm that flutters would drown everything else. What stands by then is told by then.
class Announcer {
 public:
  static constexpr int kAgainMs = 30000;

  /// @param voice a label that nobody sees; its text is what was told last
  Announcer(WindowSystem& windows, Clock& clock, Label& voice);
  /// Looks at the meter and the link; cheap when nothing changed.
  void Update(const MeterState& meter, const LinkFlags& link);

 private:
  enum Subject : std::size_t { kLink, kSWRAlarm, kPowerAlarm, kSubjects };
  struct Topic {
    std::string_view wanted;  // what is so; empty when there is nothing to say
    std::string_view told;
  };
  struct Told {
    std::string_view words;
    std::uint32_t at;
  };
  void Want(Subject subject, std::string_view words);
  void Alarm(Subject subject, bool live, bool on, std::string_view raised, std::string_view cleared);
  bool MayTell(std::string_view words);
  void Speak();

  Clock& clock_;
  Label& voice_;
  Timer again_;
  std::array<Topic, kSubjects> topics_;
  std::vector<Told> recent_;
  bool changed_ = false;
};

}  // namespace orvane
