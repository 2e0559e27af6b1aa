#pragma once

#include "platform/clock.h"
#include "platform/event_pump.h"

#include <compare>
#include <cstdint>
#include <functional>
#include <map>

namespace orvane {

/// What EndProcess throws here. Not an exception of the standard family on purpose: no trap of the program
/// may catch the end of the process.
struct ProcessEnded {};

enum class EventKind : std::uint8_t { kArrival, kTimer, kInput };

/// Clock and event loop in memory. Time stands still while code runs and jumps to the next event when the
/// program sleeps, so hours of waiting take milliseconds and every run is alike. Events are delivered in the
/// order of their time, those of one instant in the order in which they were posted.
class VirtualTime final : public Clock, public EventPump {
 public:
  /// Names an event: when it is due, and its place among those of that instant.
  struct EventId {
    std::int64_t due = 0;
    std::uint64_t sequence = 0;  ///< 0 names no event
    auto operator<=>(const EventId&) const = default;
  };

  /// @param start_tick what the tick count reads at the beginning, to come near its wrap for instance
  explicit VirtualTime(std::int32_t start_tick = 0) : now_(start_tick) {}

  std::int32_t GetTickCount() override;
  void Block(std::int32_t ms) override;
  /// @throws std::logic_error when events make each other due without end at one instant, or nest without end
  void DeliverPending() override;
  void DeliverArrivals() override;
  void SleepUntil(std::int32_t tick) override;
  [[noreturn]] void EndProcess() override;

  /// Milliseconds without the wrap of the tick count; starts at the start tick.
  std::int64_t Now() const { return now_; }
  /// Makes `handler` due after `delay_ms` (at once when not positive). Never delivers by itself.
  EventId Post(EventKind kind, std::int64_t delay_ms, std::function<void()> handler);
  /// Takes the event back; one that is due already does not run either. False when it is not waiting.
  bool Cancel(EventId id);
  std::size_t Waiting() const { return events_.size(); }

  /// The message loop: delivers what comes due for `ms` milliseconds, the last of them included.
  void RunFor(std::int64_t ms);
  /// The message loop until `condition` holds, which is asked after every event.
  /// @return false when it did not within `limit_ms`
  bool RunUntil(const std::function<bool()>& condition, std::int64_t limit_ms);

 private:
  struct Event {
    EventKind kind;
    std::function<void()> handler;
  };
  bool SomethingDue() const { return !events_.empty() && events_.begin()->first.due <= now_; }
  bool DeliverOne(bool arrivals_only);
  void DeliverDue(bool arrivals_only);
  void JumpTowards(std::int64_t time);

  std::int64_t now_;
  std::uint64_t last_sequence_ = 0;
  int nesting_ = 0;
  std::map<EventId, Event> events_;
};

}  // namespace orvane
