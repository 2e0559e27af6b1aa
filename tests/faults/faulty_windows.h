#pragma once

#include "platform/panel_controls.h"
#include "tests/faults/fault_switch.h"

#include <memory>
#include <string>
#include <utility>

namespace orvane {

/// What a faulty widget stands before.
struct Fronted {
  virtual ~Fronted() = default;
  virtual Widget& Behind() = 0;
};

inline Widget& BehindOf(Widget& widget) {
  return dynamic_cast<Fronted&>(widget).Behind();
}

template <typename Kind>
class FaultyWidget : public Kind, public Fronted, protected Failing<Kind> {
 public:
  FaultyWidget(FaultSwitch& faults, std::unique_ptr<Kind> behind)
      : Failing<Kind>(faults, *behind), owned_(std::move(behind)) {}
  Kind& Behind() override { return *owned_; }

  void SetText(std::string_view text) override {
    this->faults_.said.emplace(text);
    Do("Widget::SetText", &Widget::SetText, text);
  }
  void SetBounds(const Rect& bounds) override { Do("Widget::SetBounds", &Widget::SetBounds, bounds); }
  void SetVisible(bool visible) override { Do("Widget::SetVisible", &Widget::SetVisible, visible); }
  void SetToolTip(std::string_view text) override { Do("Widget::SetToolTip", &Widget::SetToolTip, text); }
  void Invalidate(const Rect& area) override { Do("Widget::Invalidate", &Widget::Invalidate, area); }
  void SetContainer(Widget& container) override {
    Do("Widget::SetContainer", &Widget::SetContainer, BehindOf(container));
  }
  void SetTabStop(bool on) override { Do("Widget::SetTabStop", &Widget::SetTabStop, on); }
  void SetFocus() override { Do("Widget::SetFocus", &Widget::SetFocus); }
  void TellChanged(AccessibleChange change) override {
    Do("Widget::TellChanged", &Widget::TellChanged, change);
  }

 protected:
  using Failing<Kind>::Do;

 private:
  std::unique_ptr<Kind> owned_;
};

struct FaultyList : FaultyWidget<ListWidget> {
  using FaultyWidget::FaultyWidget;
  void SetItems(const std::vector<std::string>& items) override {
    Do("ListWidget::SetItems", &ListWidget::SetItems, items);
  }
  void Select(int index) override { Do("ListWidget::Select", &ListWidget::Select, index); }
  int Selected() const override { return OrElse("ListWidget::Selected", -1, &ListWidget::Selected); }
};

struct FaultyCheck : FaultyWidget<CheckWidget> {
  using FaultyWidget::FaultyWidget;
  void SetChecked(bool on) override { Do("CheckWidget::SetChecked", &CheckWidget::SetChecked, on); }
  bool Checked() const override { return Do("CheckWidget::Checked", &CheckWidget::Checked); }
};

struct FaultyTextBox : FaultyWidget<TextWidget> {
  using FaultyWidget::FaultyWidget;
  std::string Text() const override { return Do("TextWidget::Text", &TextWidget::Text); }
};

struct FaultyScrollBar : FaultyWidget<ScrollWidget> {
  using FaultyWidget::FaultyWidget;
  void SetRange(int least, int most) override {
    Do("ScrollWidget::SetRange", &ScrollWidget::SetRange, least, most);
  }
  void SetPosition(int position) override {
    Do("ScrollWidget::SetPosition", &ScrollWidget::SetPosition, position);
  }
  int Position() const override { return Do("ScrollWidget::Position", &ScrollWidget::Position); }
};

struct FaultyTopWindow : FaultyWidget<TopWindow> {
  using FaultyWidget::FaultyWidget;
  void Show() override { Do("TopWindow::Show", &TopWindow::Show); }
  Rect Bounds() override { return Do("TopWindow::Bounds", &TopWindow::Bounds); }
  void MoveTo(Point corner) override { Do("TopWindow::MoveTo", &TopWindow::MoveTo, corner); }
  WindowState State() override { return Do("TopWindow::State", &TopWindow::State); }
  void SetState(WindowState state) override { Do("TopWindow::SetState", &TopWindow::SetState, state); }
  bool OnScreen() override { return Do("TopWindow::OnScreen", &TopWindow::OnScreen); }
  void CenterOnScreenOf(TopWindow& other) override {
    Do("TopWindow::CenterOnScreenOf", &TopWindow::CenterOnScreenOf,
       dynamic_cast<TopWindow&>(BehindOf(other)));
  }
  void SetTopMost(bool on) override { Do("TopWindow::SetTopMost", &TopWindow::SetTopMost, on); }
  void SetShape(const std::vector<Rect>& runs) override {
    Do("TopWindow::SetShape", &TopWindow::SetShape, runs);
  }
  Size BorderPixels() const override { return Do("TopWindow::BorderPixels", &TopWindow::BorderPixels); }
  void BeginDrag() override { Do("TopWindow::BeginDrag", &TopWindow::BeginDrag); }
};

/// A control that the system does not make is a fault: out of handles.
class FaultyPanels : public PanelControls, Failing<PanelControls> {
 public:
  using Failing::Failing;
  std::unique_ptr<Widget> CreateFrame(Widget& container, WidgetClient& client, const Rect& bounds,
                                      std::string_view caption, FrameKind kind) override {
    return Make<FaultyWidget<Widget>>("PanelControls::CreateFrame", &PanelControls::CreateFrame, container,
                                      client, bounds, caption, kind);
  }
  std::unique_ptr<Widget> CreateButton(Widget& container, PanelControlClient& client, const Rect& bounds,
                                       std::string_view caption) override {
    return Make<FaultyWidget<Widget>>("PanelControls::CreateButton", &PanelControls::CreateButton, container,
                                      client, bounds, caption);
  }
  std::unique_ptr<Widget> CreateLabel(Widget& container, const Rect& bounds,
                                      std::string_view caption) override {
    return Make<FaultyWidget<Widget>>("PanelControls::CreateLabel", &PanelControls::CreateLabel, container,
                                      bounds, caption);
  }
  std::unique_ptr<ListWidget> CreateList(Widget& container, PanelControlClient& client,
                                         const Rect& bounds) override {
    return Make<FaultyList>("PanelControls::CreateList", &PanelControls::CreateList, container, client,
                            bounds);
  }
  std::unique_ptr<CheckWidget> CreateCheckBox(Widget& container, PanelControlClient& client,
                                              const Rect& bounds, std::string_view caption) override {
    return Make<FaultyCheck>("PanelControls::CreateCheckBox", &PanelControls::CreateCheckBox, container,
                             client, bounds, caption);
  }
  std::unique_ptr<TextWidget> CreateTextBox(Widget& container, PanelControlClient& client, const Rect& bounds,
                                            bool read_only) override {
    return Make<FaultyTextBox>("PanelControls::CreateTextBox", &PanelControls::CreateTextBox, container,
                               client, bounds, read_only);
  }
  std::unique_ptr<ScrollWidget> CreateScrollBar(Widget& container, PanelControlClient& client,
                                                const Rect& bounds) override {
    return Make<FaultyScrollBar>("PanelControls::CreateScrollBar", &PanelControls::CreateScrollBar, container,
                                 client, bounds);
  }

 private:
  template <typename Front, typename Method, typename... Args>
  std::unique_ptr<Front> Make(std::string_view name, Method method, Widget& container, Args&&... args) {
    return std::make_unique<Front>(
        faults_, OrThrow(name, Fault::kOverflow, method, BehindOf(container), std::forward<Args>(args)...));
  }
};

struct FaultyTray : TrayIcon, Failing<TrayIcon> {
  using Failing::Failing;
  bool Add(TopWindow& window, std::string_view tip) override {
    return Do("TrayIcon::Add", &TrayIcon::Add, dynamic_cast<TopWindow&>(BehindOf(window)), tip);
  }
  void Remove() override { Do("TrayIcon::Remove", &TrayIcon::Remove); }
};

class FaultyWindows : public WindowSystem, Failing<WindowSystem> {
 public:
  FaultyWindows(FaultSwitch& faults, WindowSystem& behind)
      : Failing(faults, behind), panels_(faults, behind.Panels()), tray_(faults, behind.Tray()) {}

  std::unique_ptr<TopWindow> CreateTopWindow(TopWindowClient& client, std::string_view caption, Size size,
                                             WindowLook look) override {
    return std::make_unique<FaultyTopWindow>(
        faults_, OrThrow("WindowSystem::CreateTopWindow", Fault::kOverflow, &WindowSystem::CreateTopWindow,
                         client, caption, size, look));
  }
  std::unique_ptr<Widget> CreateChild(Widget& container, WidgetClient& client, const Rect& bounds) override {
    return std::make_unique<FaultyWidget<Widget>>(
        faults_, OrThrow("WindowSystem::CreateChild", Fault::kOverflow, &WindowSystem::CreateChild,
                         BehindOf(container), client, bounds));
  }
  PanelControls& Panels() override { return panels_; }
  /// Ticks are trapped as the real system's are.
  std::unique_ptr<TimerHandle> StartTimer(int milliseconds, std::function<void()> tick) override {
    return OrThrow("WindowSystem::StartTimer", Fault::kOverflow, &WindowSystem::StartTimer, milliseconds,
                   [tick = std::move(tick)] { Attempt(tick); });
  }
  BoxAnswer ShowMessageBox(std::string_view text, std::string_view title, BoxStyle style) override {
    return OrElse("WindowSystem::ShowMessageBox", BoxAnswer::kCancel, &WindowSystem::ShowMessageBox, text,
                  title, style);
  }
  int ShowPopupMenu(const std::vector<MenuItem>& items, Widget* at) override {
    return Do("WindowSystem::ShowPopupMenu", &WindowSystem::ShowPopupMenu, items,
              at == nullptr ? nullptr : &BehindOf(*at));
  }
  bool InModalLoop() override { return Do("WindowSystem::InModalLoop", &WindowSystem::InModalLoop); }
  Size ScreenSize() override { return Do("WindowSystem::ScreenSize", &WindowSystem::ScreenSize); }
  Size PixelsPerInch() override { return Do("WindowSystem::PixelsPerInch", &WindowSystem::PixelsPerInch); }
  Size MeasureText(std::string_view text, const Font& font) override {
    return Do("WindowSystem::MeasureText", &WindowSystem::MeasureText, text, font);
  }
  void Beep() override { Do("WindowSystem::Beep", &WindowSystem::Beep); }
  void SetHourglass(bool on) override { Do("WindowSystem::SetHourglass", &WindowSystem::SetHourglass, on); }
  TrayIcon& Tray() override { return tray_; }
  Picture LoadPicture(const std::string& path) override {
    return OrThrow("WindowSystem::LoadPicture", Fault::kInvalidPicture, &WindowSystem::LoadPicture, path);
  }

 private:
  FaultyPanels panels_;
  FaultyTray tray_;
};

}  // namespace orvane
