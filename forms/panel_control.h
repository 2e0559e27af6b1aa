#pragma once

#include "forms/frame.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane {

/// A control of the system's own look inside a frame.
class PanelControl : public Control, protected PanelControlClient {
 public:
  void SetToolTipText(std::string_view text) {
    if (Assign(tool_tip_, std::string(text))) widget_->SetToolTip(text);
  }
  const std::string& ToolTipText() const { return tool_tip_; }
  void SetFocus() { widget_->SetFocus(); }
  /// What a screen reader calls it, where no caption of its own says so; at first the caption of its group.
  void SetSpokenName(std::string_view name) { spoken_name_ = name; }
  /// What stands beside it, at which the Tab key does not stop; told before the tool tip.
  void SetSpokenNote(std::string_view note) { spoken_note_ = note; }

 protected:
  explicit PanelControl(const Rect& bounds, std::string_view spoken_name = {})
      : Control(bounds), spoken_name_(spoken_name) {}
  /// For Describe.
  Accessible Described(Role role, std::string value = {}) const {
    Accessible what;
    what.role = role;
    what.name = spoken_name_;
    what.value = std::move(value);
    what.description = spoken_note_;
    if (!spoken_note_.empty() && !tool_tip_.empty()) what.description += "\n";
    what.description += tool_tip_;
    return what;
  }
  void Adopt(Widget& widget) { widget_ = &widget; }
  void SetWidgetText(std::string_view text) { widget_->SetText(text); }

  void PlaceChanged(const Rect& before) override {
    if (before != Bounds()) widget_->SetBounds(Bounds());
    widget_->SetVisible(Visible());
  }
  void OnChange() override {}
  unsigned char OnKeyPress(unsigned char code) override { return code; }
  void OnKeyUp(bool) override {}

 private:
  Widget* widget_ = nullptr;
  std::string tool_tip_;
  std::string spoken_name_;
  std::string spoken_note_;
};

/// A push button; "&" in its caption marks its mnemonic.
class PanelButton : public PanelControl {
 public:
  PanelButton(WindowSystem& windows, WindowedControl& frame, const Rect& bounds, std::string_view caption,
              std::string_view tool_tip = {})
      : PanelControl(bounds),
        widget_(windows.Panels().CreateButton(frame.AsWidget(), *this, bounds, caption)),
        caption_(caption) {
    Adopt(*widget_);
    if (!tool_tip.empty()) SetToolTipText(tool_tip);
  }
  /// Clicked by the left button or by the keyboard.
  std::function<void()> Click;
  const std::string& Caption() const { return caption_; }

 protected:
  Accessible Describe() const override { return Described(Role::kButton); }
  void OnChange() override {
    if (Click) Click();
  }

 private:
  std::unique_ptr<Widget> widget_;
  std::string caption_;
};

class PanelLabel : public PanelControl {
 public:
  PanelLabel(WindowSystem& windows, WindowedControl& frame, const Rect& bounds, std::string_view caption = {})
      : PanelControl(bounds),
        widget_(windows.Panels().CreateLabel(frame.AsWidget(), bounds, caption)),
        caption_(caption) {
    Adopt(*widget_);
  }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view caption) {
    if (Assign(caption_, std::string(caption))) SetWidgetText(caption);
  }

 private:
  std::unique_ptr<Widget> widget_;
  std::string caption_;
};

/// A drop-down list whose lines carry a number each.
class ComboBox : public PanelControl {
 public:
  struct Item {
    std::string Text;
    std::int16_t Value = 0;
    bool operator==(const Item&) const = default;
  };

  ComboBox(WindowSystem& windows, WindowedControl& frame, const Rect& bounds, std::string_view tool_tip = {})
      : PanelControl(bounds, frame.WindowText()),
        widget_(windows.Panels().CreateList(frame.AsWidget(), *this, bounds)) {
    Adopt(*widget_);
    if (!tool_tip.empty()) SetToolTipText(tool_tip);
  }
  /// The user chose a line.
  std::function<void()> Click;

  const std::vector<Item>& Items() const { return items_; }
  /// None is selected afterwards.
  void SetItems(std::vector<Item> items);
  /// Selects the line that carries `value`; none when no line does.
  void SelectValue(std::int16_t value);
  /// The selected line; null when none is.
  const Item* Selected() const;

 protected:
  Accessible Describe() const override {
    return Described(Role::kList, Selected() == nullptr ? std::string() : Selected()->Text);
  }
  void OnChange() override {
    if (Click) Click();
  }

 private:
  std::unique_ptr<ListWidget> widget_;
  std::vector<Item> items_;
};

class CheckBox : public PanelControl {
 public:
  CheckBox(WindowSystem& windows, WindowedControl& frame, const Rect& bounds, std::string_view caption,
           std::string_view tool_tip = {})
      : PanelControl(bounds),
        widget_(windows.Panels().CreateCheckBox(frame.AsWidget(), *this, bounds, caption)),
        caption_(caption) {
    Adopt(*widget_);
    if (!tool_tip.empty()) SetToolTipText(tool_tip);
  }
  std::function<void()> Click;  ///< the user changed it
  const std::string& Caption() const { return caption_; }
  bool Checked() const { return widget_->Checked(); }
  void SetChecked(bool on) { widget_->SetChecked(on); }

 protected:
  Accessible Describe() const override {
    Accessible what = Described(Role::kCheckBox);
    what.checked = Checked();
    return what;
  }
  void OnChange() override {
    if (Click) Click();
  }

 private:
  std::unique_ptr<CheckWidget> widget_;
  std::string caption_;
};

/// One line of text.
class TextBox : public PanelControl {
 public:
  enum class Use { kEdit, kReadOnly };

  TextBox(WindowSystem& windows, WindowedControl& frame, const Rect& bounds, Use use = Use::kEdit)
      : PanelControl(bounds, frame.WindowText()),
        widget_(windows.Panels().CreateTextBox(frame.AsWidget(), *this, bounds, use == Use::kReadOnly)) {
    Adopt(*widget_);
  }
  std::function<void()> Change;  ///< the user changed the text
  /// A character was typed. @return what is taken instead, 0 for nothing
  std::function<unsigned char(unsigned char code)> KeyPress;
  std::function<void(bool enter)> KeyUp;

  std::string Text() const { return widget_->Text(); }
  void SetText(std::string_view text) {
    if (Text() != text) SetWidgetText(text);
  }

 protected:
  Accessible Describe() const override { return Described(Role::kEdit, Text()); }
  void OnChange() override {
    if (Change) Change();
  }
  unsigned char OnKeyPress(unsigned char code) override { return KeyPress ? KeyPress(code) : code; }
  void OnKeyUp(bool enter) override {
    if (KeyUp) KeyUp(enter);
  }

 private:
  std::unique_ptr<TextWidget> widget_;
};

/// A vertical scroll bar; its value grows downwards.
class VScrollBar : public PanelControl {
 public:
  VScrollBar(WindowSystem& windows, WindowedControl& frame, const Rect& bounds)
      : PanelControl(bounds, frame.WindowText()),
        widget_(windows.Panels().CreateScrollBar(frame.AsWidget(), *this, bounds)) {
    Adopt(*widget_);
    widget_->SetRange(min_, max_);
  }
  std::function<void()> Change;  ///< the user moved it
  /// What its position means, in words.
  std::function<std::string()> SpokenValue;

  int Min() const { return min_; }
  int Max() const { return max_; }
  int Value() const { return widget_->Position(); }
  void SetRange(int least, int most);
  void SetValue(int value) { widget_->SetPosition(value); }

 protected:
  Accessible Describe() const override {
    return Described(Role::kScrollBar, SpokenValue ? SpokenValue() : std::string());
  }
  void OnChange() override {
    if (Change) Change();
  }

 private:
  std::unique_ptr<ScrollWidget> widget_;
  int min_ = 0;
  int max_ = 0;
};

}  // namespace orvane
