#pragma once

#include "platform/panel_controls.h"
#include "platform/win32/widget.h"

namespace orvane {

/// Frames of ours filled with the system's own controls.
class Win32PanelControls : public PanelControls {
 public:
  explicit Win32PanelControls(WindowContext& context) : context_(context) {}

  std::unique_ptr<Widget> CreateFrame(Widget& container, WidgetClient& client, const Rect& bounds,
                                      std::string_view caption, FrameKind kind) override;
  std::unique_ptr<Widget> CreateButton(Widget& container, PanelControlClient& client, const Rect& bounds,
                                       std::string_view caption) override;
  std::unique_ptr<Widget> CreateLabel(Widget& container, const Rect& bounds,
                                      std::string_view caption) override;
  std::unique_ptr<ListWidget> CreateList(Widget& container, PanelControlClient& client,
                                         const Rect& bounds) override;
  std::unique_ptr<CheckWidget> CreateCheckBox(Widget& container, PanelControlClient& client,
                                              const Rect& bounds, std::string_view caption) override;
  std::unique_ptr<TextWidget> CreateTextBox(Widget& container, PanelControlClient& client, const Rect& bounds,
                                            bool read_only) override;
  std::unique_ptr<ScrollWidget> CreateScrollBar(Widget& container, PanelControlClient& client,
                                                const Rect& bounds) override;

 private:
  WindowContext& context_;
};

}  // namespace orvane
