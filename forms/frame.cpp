#include "forms/frame.h"

namespace orvane {

Frame::Frame(WindowSystem& windows, WindowedControl& container, const Rect& bounds, std::string_view caption,
             FrameKind kind)
    : WindowedControl(bounds),
      frame_(windows.Panels().CreateFrame(container.AsWidget(), AsClient(), bounds, caption, kind)) {
  Adopt(*frame_);
  SetWindowText(caption);
  if (kind == FrameKind::kPanel) SetVisible(false);
}

}  // namespace orvane
