#pragma once

#include "forms/control.h"
#include "platform/panel_controls.h"

#include <string>

namespace orvane {

/// A panel, or a captioned group of controls in one; in the system's look. Its window text is its caption.
class Frame : public WindowedControl {
 public:
  Frame(WindowSystem& windows, WindowedControl& container, const Rect& bounds, std::string_view caption,
        FrameKind kind = FrameKind::kGroup);

  const std::string& Caption() const { return WindowText(); }

 protected:
  Accessible OwnDescription() const override;

 private:
  FrameKind kind_;
  std::unique_ptr<Widget> frame_;
};

}  // namespace orvane
