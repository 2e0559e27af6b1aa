#include "platform/win32/paint_requests.h"

#include <algorithm>

namespace orvane {
namespace {

constexpr DWORD kFrameMs = 15;  // a screen shows some sixty pictures a second

}  // namespace

void PaintRequests::Ask(PaintTarget& window, const RECT& area) {
  if (gathering_ == 0) {
    window.PaintLater(area);
    return;
  }
  const auto found = std::find_if(requests_.begin(), requests_.end(),
                                  [&](const Request& each) { return each.window == &window; });
  if (found == requests_.end()) {
    requests_.push_back({&window, area});
    return;
  }
  RECT& whole = found->area;
  whole = {std::min(whole.left, area.left), std::min(whole.top, area.top), std::max(whole.right, area.right),
           std::max(whole.bottom, area.bottom)};
}

void PaintRequests::Forget(const PaintTarget& window) {
  std::erase_if(requests_, [&](const Request& each) { return each.window == &window; });
}

// Painting changes nothing in the program, so nothing is asked for and no window goes meanwhile.
void PaintRequests::HandOver() {
  if (requests_.empty()) return;
  const DWORD now = ::GetTickCount();
  const bool at_once = now - painted_at_ >= kFrameMs;
  if (at_once) painted_at_ = now;
  for (const Request& each : requests_) {
    if (at_once) {
      each.window->PaintNow(each.area);
    } else {
      each.window->PaintLater(each.area);
    }
  }
  requests_.clear();
}

}  // namespace orvane
