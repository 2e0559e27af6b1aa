#pragma once

#include "platform/headless/desktop.h"
#include "platform/panel_controls.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// For controls that neither paint nor hear of the pointer through a WidgetClient.
struct NoWidgetClient : WidgetClient {
  void OnPaint(Canvas&) override {}
  void OnMouse(const MouseEvent&) override {}
  bool OnKey(const KeyEvent&) override { return false; }
  void OnFocus(bool) override {}
};

using HeadlessFrame = HeadlessControl<Widget>;

class HeadlessButton : public HeadlessControl<Widget> {
 public:
  HeadlessButton(NoWidgetClient& none, HeadlessWindow& container, PanelControlClient& client,
                 const Rect& bounds)
      : HeadlessControl(none, &container, bounds), client_(client) {}
  Accessible Describe() const override { return client_.Describe(); }
  void Push() { client_.OnChange(); }

 private:
  PanelControlClient& client_;
};

class HeadlessList : public HeadlessControl<ListWidget> {
 public:
  HeadlessList(NoWidgetClient& none, HeadlessWindow& container, PanelControlClient& client,
               const Rect& bounds)
      : HeadlessControl(none, &container, bounds), client_(client) {}
  Accessible Describe() const override { return client_.Describe(); }
  void SetItems(const std::vector<std::string>& items) override {
    items_ = items;
    selected_ = -1;
  }
  void Select(int index) override { selected_ = index; }
  int Selected() const override { return selected_; }
  const std::vector<std::string>& Items() const { return items_; }
  /// The user chooses a line.
  void Choose(int index) {
    selected_ = index;
    client_.OnChange();
  }

 private:
  PanelControlClient& client_;
  std::vector<std::string> items_;
  int selected_ = -1;
};

class HeadlessCheckBox : public HeadlessControl<CheckWidget> {
 public:
  HeadlessCheckBox(NoWidgetClient& none, HeadlessWindow& container, PanelControlClient& client,
                   const Rect& bounds)
      : HeadlessControl(none, &container, bounds), client_(client) {}
  Accessible Describe() const override { return client_.Describe(); }
  void SetChecked(bool on) override { checked_ = on; }
  bool Checked() const override { return checked_; }
  void Toggle() {
    checked_ = !checked_;
    client_.OnChange();
  }

 private:
  PanelControlClient& client_;
  bool checked_ = false;
};

class HeadlessTextBox : public HeadlessControl<TextWidget> {
 public:
  HeadlessTextBox(NoWidgetClient& none, HeadlessWindow& container, PanelControlClient& client,
                  const Rect& bounds)
      : HeadlessControl(none, &container, bounds), client_(client) {}
  Accessible Describe() const override { return client_.Describe(); }
  std::string Text() const override { return HeadlessWindow::Text(); }
  /// Key by key, at the end of the text.
  void Type(std::string_view keys) {
    for (const char key : keys) {
      const unsigned char taken = client_.OnKeyPress(static_cast<unsigned char>(key));
      if (taken >= ' ') Put(Text() + static_cast<char>(taken));
      client_.OnKeyUp(key == '\r');
    }
  }
  /// Puts a text in place of all, and lets go of the key that did it.
  void Paste(std::string_view text) {
    Put(std::string(text));
    client_.OnKeyUp(false);
  }

 private:
  void Put(const std::string& text) {
    if (text == Text()) return;
    PutText(text);
    client_.OnChange();
  }
  PanelControlClient& client_;
};

class HeadlessScrollBar : public HeadlessControl<ScrollWidget> {
 public:
  HeadlessScrollBar(NoWidgetClient& none, HeadlessWindow& container, PanelControlClient& client,
                    const Rect& bounds)
      : HeadlessControl(none, &container, bounds), client_(client) {}
  Accessible Describe() const override { return client_.Describe(); }
  void SetRange(int least, int most) override {
    least_ = least;
    most_ = most;
    SetPosition(position_);
  }
  void SetPosition(int position) override { position_ = std::clamp(position, least_, most_); }
  int Position() const override { return position_; }
  /// The user moves it; it goes no further than its range.
  void MoveTo(int position) {
    SetPosition(position);
    client_.OnChange();
  }

 private:
  PanelControlClient& client_;
  int least_ = 0;
  int most_ = 0;
  int position_ = 0;
};

class HeadlessPanels : public PanelControls {
 public:
  std::unique_ptr<Widget> CreateFrame(Widget& container, WidgetClient& client, const Rect& bounds,
                                      std::string_view caption, FrameKind kind) override {
    auto frame = std::make_unique<HeadlessFrame>(client, &Window(container), bounds);
    frame->SetText(caption);
    frame->SetVisible(kind != FrameKind::kPanel);
    return frame;
  }
  std::unique_ptr<Widget> CreateButton(Widget& container, PanelControlClient& client, const Rect& bounds,
                                       std::string_view caption) override {
    return Captioned<HeadlessButton>(caption, container, client, bounds);
  }
  std::unique_ptr<Widget> CreateLabel(Widget& container, const Rect& bounds,
                                      std::string_view caption) override {
    auto label = std::make_unique<HeadlessFrame>(none_, &Window(container), bounds);
    label->SetText(caption);
    return label;
  }
  std::unique_ptr<ListWidget> CreateList(Widget& container, PanelControlClient& client,
                                         const Rect& bounds) override {
    return Captioned<HeadlessList>({}, container, client, bounds);
  }
  std::unique_ptr<CheckWidget> CreateCheckBox(Widget& container, PanelControlClient& client,
                                              const Rect& bounds, std::string_view caption) override {
    return Captioned<HeadlessCheckBox>(caption, container, client, bounds);
  }
  std::unique_ptr<TextWidget> CreateTextBox(Widget& container, PanelControlClient& client, const Rect& bounds,
                                            bool) override {
    return Captioned<HeadlessTextBox>({}, container, client, bounds);
  }
  std::unique_ptr<ScrollWidget> CreateScrollBar(Widget& container, PanelControlClient& client,
                                                const Rect& bounds) override {
    auto bar = Captioned<HeadlessScrollBar>({}, container, client, bounds);
    return bar;
  }

 private:
  static HeadlessWindow& Window(Widget& container) { return dynamic_cast<HeadlessWindow&>(container); }
  template <typename Kind>
  std::unique_ptr<Kind> Captioned(std::string_view caption, Widget& container, PanelControlClient& client,
                                  const Rect& bounds) {
    auto control = std::make_unique<Kind>(none_, Window(container), client, bounds);
    control->SetText(caption);
    control->SetTabStop(true);
    return control;
  }

  NoWidgetClient none_;
};

}  // namespace orvane
