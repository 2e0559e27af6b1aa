#pragma once

#include "platform/window_system.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

// Controls in the system's own look and colours, for the panels. They paint themselves, take part in the Tab
// order in which they were made, and answer to their mnemonics ("&Apply") while a control of the same panel
// has the keyboard.

/// What a panel's control tells its owner. All on the program's thread, and only what the user did: what the
/// program sets is not told.
struct PanelControlClient {
  virtual ~PanelControlClient() = default;
  /// Clicked, chosen, typed or scrolled: the widget has the new value.
  virtual void OnChange() = 0;
  /// A character (Windows-1252) is about to reach a text box. @return what is taken in its place, 0 for
  /// nothing
  virtual unsigned char OnKeyPress(unsigned char code) = 0;
  /// A key was released in a text box. @param enter it was the Enter key
  virtual void OnKeyUp(bool enter) = 0;
  /// What a screen reader is told beside what the system says of the control by itself.
  virtual Accessible Describe() const { return {}; }
};

/// Drop-down list; one line of it is shown.
struct ListWidget : Widget {
  /// Replaces all lines; none is selected then.
  virtual void SetItems(const std::vector<std::string>& items) = 0;
  /// Counted from 0; -1 selects none.
  virtual void Select(int index) = 0;
  virtual int Selected() const = 0;
};

struct CheckWidget : Widget {
  virtual void SetChecked(bool on) = 0;
  virtual bool Checked() const = 0;
};

/// One line of text to be edited.
struct TextWidget : Widget {
  virtual std::string Text() const = 0;
};

/// Vertical scroll bar with its two buttons; the value grows downwards.
struct ScrollWidget : Widget {
  virtual void SetRange(int least, int most) = 0;
  virtual void SetPosition(int position) = 0;
  virtual int Position() const = 0;
};

enum class FrameKind {
  kPanel,  ///< opaque, with a caption; the keyboard stays among its controls, Escape goes to its client
  kGroup,  ///< part of a panel: a line around, with a caption
};

/// Makes them. Each starts visible, at its place in twips from its container's corner.
struct PanelControls {
  virtual ~PanelControls() = default;
  /// A frame starts hidden when it is a panel. Its client gets keys that no control in it wants; it paints
  /// itself and tells no mouse.
  virtual std::unique_ptr<Widget> CreateFrame(Widget& container, WidgetClient& client, const Rect& bounds,
                                              std::string_view caption, FrameKind kind) = 0;
  /// OnChange tells a click.
  virtual std::unique_ptr<Widget> CreateButton(Widget& container, PanelControlClient& client,
                                               const Rect& bounds, std::string_view caption) = 0;
  virtual std::unique_ptr<Widget> CreateLabel(Widget& container, const Rect& bounds,
                                              std::string_view caption) = 0;
  virtual std::unique_ptr<ListWidget> CreateList(Widget& container, PanelControlClient& client,
                                                 const Rect& bounds) = 0;
  virtual std::unique_ptr<CheckWidget> CreateCheckBox(Widget& container, PanelControlClient& client,
                                                      const Rect& bounds, std::string_view caption) = 0;
  /// @param read_only the text can be copied, not changed
  virtual std::unique_ptr<TextWidget> CreateTextBox(Widget& container, PanelControlClient& client,
                                                    const Rect& bounds, bool read_only) = 0;
  virtual std::unique_ptr<ScrollWidget> CreateScrollBar(Widget& container, PanelControlClient& client,
                                                        const Rect& bounds) = 0;
};

}  // namespace orvane
