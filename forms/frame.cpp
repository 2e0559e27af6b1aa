#include "forms/frame.h"

namespace orvane {

Frame::Frame(WindowSystem& windows, WindowedControl& container, const Rect& bounds, std::string_view caption,
             FrameKind kind)
    : WindowedControl(bounds),
      kind_(kind),
      frame_(windows.Panels().CreateFrame(container.AsWidget(), AsClient(), bounds, caption, kind)) {
  Adopt(*frame_);
  SetWindowText(caption);
  if (kind == FrameKind::kPanel) SetVisible(false);
}

// A group inside a panel is told by the system's own box around it.
Accessible Frame::OwnDescription() const {
  Accessible what;
  if (kind_ != FrameKind::kPanel || Caption().empty()) return what;
  what.role = Role::kGroup;
  what.name = Caption();
  return what;
}

}  // namespace orvane
