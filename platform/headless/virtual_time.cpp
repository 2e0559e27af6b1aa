#include "platform/headless/virtual_time.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace orvane {
namespace {

// Far more than any honest burst, and still reported within a second.
constexpr int kMostAtOneInstant = 1'000'000;
// A handler that waits nests the loop; more levels than this are a loop through the handlers.
constexpr int kDeepestNesting = 300;

class Nested {
 public:
  explicit Nested(int& depth) : depth_(depth) {
    if (depth_ >= kDeepestNesting) throw std::logic_error("events nest without end");
    ++depth_;
  }
  ~Nested() { --depth_; }
  Nested(const Nested&) = delete;
  Nested& operator=(const Nested&) = delete;

 private:
  int& depth_;
};

}  // namespace

std::int32_t VirtualTime::GetTickCount() {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(now_));
}

void VirtualTime::Block(std::int32_t ms) {
  now_ += std::max(ms, 0);
}

void VirtualTime::DeliverPending() {
  DeliverDue(false);
}

void VirtualTime::DeliverArrivals() {
  DeliverDue(true);
}

void VirtualTime::SleepUntil(std::int32_t tick) {
  // The distance is taken modulo 2^32, as the tick count itself: a tick behind the clock is no time to sleep.
  const std::uint32_t distance = static_cast<std::uint32_t>(tick) - static_cast<std::uint32_t>(now_);
  JumpTowards(now_ + static_cast<std::int32_t>(distance));
}

void VirtualTime::EndProcess() {
  throw ProcessEnded{};
}

VirtualTime::EventId VirtualTime::Post(EventKind kind, std::int64_t delay_ms, std::function<void()> handler) {
  const EventId id{now_ + std::max<std::int64_t>(delay_ms, 0), ++last_sequence_};
  events_.emplace_hint(events_.end(), id, Event{kind, std::move(handler)});
  return id;
}

bool VirtualTime::Cancel(EventId id) {
  return events_.erase(id) > 0;
}

void VirtualTime::RunFor(std::int64_t ms) {
  const std::int64_t end = now_ + ms;
  for (;;) {
    DeliverPending();
    if (now_ >= end) return;
    JumpTowards(end);
  }
}

bool VirtualTime::RunUntil(const std::function<bool()>& condition, std::int64_t limit_ms) {
  const std::int64_t end = now_ + limit_ms;
  for (;;) {
    if (condition()) return true;
    if (DeliverOne(false)) continue;
    if (now_ >= end) return false;
    JumpTowards(end);
  }
}

bool VirtualTime::DeliverOne(bool arrivals_only) {
  for (auto at = events_.begin(); at != events_.end() && at->first.due <= now_; ++at) {
    if (arrivals_only && at->second.kind != EventKind::kArrival) continue;
    // Taken out first: the handler may post, cancel, and deliver what follows it.
    const auto event = events_.extract(at);
    const Nested nested(nesting_);
    event.mapped().handler();
    return true;
  }
  return false;
}

void VirtualTime::DeliverDue(bool arrivals_only) {
  if (!SomethingDue()) return;
  std::int64_t instant = now_;
  int delivered = 0;
  while (DeliverOne(arrivals_only)) {
    if (now_ != instant) {
      instant = now_;
      delivered = 0;
    } else if (++delivered > kMostAtOneInstant) {
      throw std::logic_error("events make each other due without end");
    }
  }
}

void VirtualTime::JumpTowards(std::int64_t time) {
  if (!events_.empty()) time = std::min(time, events_.begin()->first.due);
  now_ = std::max(now_, time);
}

}  // namespace orvane
