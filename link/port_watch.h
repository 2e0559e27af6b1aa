#pragma once

#include "link/link_context.h"
#include "link/meter_search.h"

#include <cstdint>

namespace orvane {

/// Watches the port and the stream, and brings both back without asking anybody. docs/protocol.md, "When the
/// line fails".
///
/// - A port that is lost in use is closed at once; its readings count for nothing any more. It is tried again
///   twice a second, without a word; when it opens, the meter is searched at once, so that readings are live
///   within three seconds of the port's return.
/// - A meter from which no packet or reply came for five seconds, although its readings are wanted, is said
///   to give no data, and its readings count for nothing. From ten seconds on it is searched every ten
///   seconds, without any box, at the speed that worked and then at the others; once more when its readings
///   came back by themselves meanwhile.
/// - Readings that the operator stopped are no silence; but what they were is soon old as well.
class PortWatch {
 public:
  static constexpr int kTickMs = 500;  ///< how often Tick wants to be called

  PortWatch(const LinkContext& link, MeterSearch& search) : link_(link), search_(search) {}

  /// Looks at port and stream; may search the meter, which takes seconds with all events going on. A call
  /// from inside that does nothing.
  void Tick();
  /// The computer slept, or the system took the port away: it is not believed, but opened anew.
  void Reopen();

 private:
  void BringBack();
  void MindSilence();
  void Search();
  std::uint32_t Now() const { return static_cast<std::uint32_t>(link_.clock.GetTickCount()); }

  LinkContext link_;
  MeterSearch& search_;
  bool busy_ = false;
  std::uint32_t last_search_ = 0;  // tick at which the last quiet search ended
  int searches_at_once_ = 0;       // quiet searches left that need not wait for their turn
};

}  // namespace orvane
