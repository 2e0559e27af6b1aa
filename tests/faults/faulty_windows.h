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
class FaultyWidget : public Kind, public Fronted {
 public:
  FaultyWidget(FaultSwitch& faults, std::unique_ptr<Kind> behind)
      : faults_(faults), behind_(std::move(behind)) {}
  Kind& Behind() override { return *behind_; }

  void SetText(std::string_view text) override {
    faults_.said.emplace(text);
    faults_.Do("Widget::SetText", [&] { behind_->SetText(text); });
  }
  void SetBounds(const Rect& bounds) override {
    faults_.Do("Widget::SetBounds", [&] { behind_->SetBounds(bounds); });
  }
  void SetVisible(bool visible) override {
    faults_.Do("Widget::SetVisible", [&] { behind_->SetVisible(visible); });
  }
  void SetToolTip(std::string_view text) override {
    faults_.Do("Widget::SetToolTip", [&] { behind_->SetToolTip(text); });
  }
  void Invalidate(const Rect& area) override {
    faults_.Do("Widget::Invalidate", [&] { behind_->Invalidate(area); });
  }
  void SetContainer(Widget& container) override {
    faults_.Do("Widget::SetContainer", [&] { behind_->SetContainer(BehindOf(container)); });
  }
  void SetTabStop(bool on) override {
    faults_.Do("Widget::SetTabStop", [&] { behind_->SetTabStop(on); });
  }
  void SetFocus() override {
    faults_.Do("Widget::SetFocus", [&] { behind_->SetFocus(); });
  }
  void TellChanged(AccessibleChange change) override {
    faults_.Do("Widget::TellChanged", [&] { behind_->TellChanged(change); });
  }

 protected:
  FaultSwitch& faults_;
  std::unique_ptr<Kind> behind_;
};

struct FaultyList : FaultyWidget<ListWidget> {
  using FaultyWidget::FaultyWidget;
  void SetItems(const std::vector<std::string>& items) override {
    faults_.Do("ListWidget::SetItems", [&] { behind_->SetItems(items); });
  }
  void Select(int index) override {
    faults_.Do("ListWidget::Select", [&] { behind_->Select(index); });
  }
  int Selected() const override {
    return faults_.OrElse("ListWidget::Selected", -1, [&] { return behind_->Selected(); });
  }
};

struct FaultyCheck : FaultyWidget<CheckWidget> {
  using FaultyWidget::FaultyWidget;
  void SetChecked(bool on) override {
    faults_.Do("CheckWidget::SetChecked", [&] { behind_->SetChecked(on); });
  }
  bool Checked() const override {
    return faults_.Do("CheckWidget::Checked", [&] { return behind_->Checked(); });
  }
};

struct FaultyTextBox : FaultyWidget<TextWidget> {
  using FaultyWidget::FaultyWidget;
  std::string Text() const override {
    return faults_.Do("TextWidget::Text", [&] { return behind_->Text(); });
  }
};

struct FaultyScrollBar : FaultyWidget<ScrollWidget> {
  using FaultyWidget::FaultyWidget;
  void SetRange(int least, int most) override {
    faults_.Do("ScrollWidget::SetRange", [&] { behind_->SetRange(least, most); });
  }
  void SetPosition(int position) override {
    faults_.Do("ScrollWidget::SetPosition", [&] { behind_->SetPosition(position); });
  }
  int Position() const override {
    return faults_.Do("ScrollWidget::Position", [&] { return behind_->Position(); });
  }
};

struct FaultyTopWindow : FaultyWidget<TopWindow> {
  using FaultyWidget::FaultyWidget;
  void Show() override {
    faults_.Do("TopWindow::Show", [&] { behind_->Show(); });
  }
  Rect Bounds() override {
    return faults_.Do("TopWindow::Bounds", [&] { return behind_->Bounds(); });
  }
  void MoveTo(Point corner) override {
    faults_.Do("TopWindow::MoveTo", [&] { behind_->MoveTo(corner); });
  }
  WindowState State() override {
    return faults_.Do("TopWindow::State", [&] { return behind_->State(); });
  }
  void SetState(WindowState state) override {
    faults_.Do("TopWindow::SetState", [&] { behind_->SetState(state); });
  }
  bool OnScreen() override {
    return faults_.Do("TopWindow::OnScreen", [&] { return behind_->OnScreen(); });
  }
  void CenterOnScreenOf(TopWindow& other) override {
    faults_.Do("TopWindow::CenterOnScreenOf",
               [&] { behind_->CenterOnScreenOf(dynamic_cast<TopWindow&>(BehindOf(other))); });
  }
  void SetTopMost(bool on) override {
    faults_.Do("TopWindow::SetTopMost", [&] { behind_->SetTopMost(on); });
  }
  void SetShape(const std::vector<Rect>& runs) override {
    faults_.Do("TopWindow::SetShape", [&] { behind_->SetShape(runs); });
  }
  Size BorderPixels() const override {
    return faults_.Do("TopWindow::BorderPixels", [&] { return behind_->BorderPixels(); });
  }
  void BeginDrag() override {
    faults_.Do("TopWindow::BeginDrag", [&] { behind_->BeginDrag(); });
  }
};

/// A control that the system does not make is a fault: out of handles.
class FaultyPanels : public PanelControls {
 public:
  FaultyPanels(FaultSwitch& faults, PanelControls& behind) : faults_(faults), behind_(behind) {}
  std::unique_ptr<Widget> CreateFrame(Widget& container, WidgetClient& client, const Rect& bounds,
                                      std::string_view caption, FrameKind kind) override {
    return Make<FaultyWidget<Widget>>("PanelControls::CreateFrame", [&] {
      return behind_.CreateFrame(BehindOf(container), client, bounds, caption, kind);
    });
  }
  std::unique_ptr<Widget> CreateButton(Widget& container, PanelControlClient& client, const Rect& bounds,
                                       std::string_view caption) override {
    return Make<FaultyWidget<Widget>>("PanelControls::CreateButton", [&] {
      return behind_.CreateButton(BehindOf(container), client, bounds, caption);
    });
  }
  std::unique_ptr<Widget> CreateLabel(Widget& container, const Rect& bounds,
                                      std::string_view caption) override {
    return Make<FaultyWidget<Widget>>("PanelControls::CreateLabel", [&] {
      return behind_.CreateLabel(BehindOf(container), bounds, caption);
    });
  }
  std::unique_ptr<ListWidget> CreateList(Widget& container, PanelControlClient& client,
                                         const Rect& bounds) override {
    return Make<FaultyList>("PanelControls::CreateList",
                            [&] { return behind_.CreateList(BehindOf(container), client, bounds); });
  }
  std::unique_ptr<CheckWidget> CreateCheckBox(Widget& container, PanelControlClient& client,
                                              const Rect& bounds, std::string_view caption) override {
    return Make<FaultyCheck>("PanelControls::CreateCheckBox", [&] {
      return behind_.CreateCheckBox(BehindOf(container), client, bounds, caption);
    });
  }
  std::unique_ptr<TextWidget> CreateTextBox(Widget& container, PanelControlClient& client, const Rect& bounds,
                                            bool read_only) override {
    return Make<FaultyTextBox>("PanelControls::CreateTextBox", [&] {
      return behind_.CreateTextBox(BehindOf(container), client, bounds, read_only);
    });
  }
  std::unique_ptr<ScrollWidget> CreateScrollBar(Widget& container, PanelControlClient& client,
                                                const Rect& bounds) override {
    return Make<FaultyScrollBar>("PanelControls::CreateScrollBar", [&] {
      return behind_.CreateScrollBar(BehindOf(container), client, bounds);
    });
  }

 private:
  template <typename Front, typename Step>
  std::unique_ptr<Front> Make(std::string_view name, Step step) {
    return std::make_unique<Front>(faults_, faults_.OrThrow(name, Fault::kOverflow, step));
  }
  FaultSwitch& faults_;
  PanelControls& behind_;
};

struct FaultyTray : TrayIcon {
  FaultyTray(FaultSwitch& the_faults, TrayIcon& the_tray) : faults(the_faults), tray(the_tray) {}
  bool Add(TopWindow& window, std::string_view tip) override {
    return faults.Do("TrayIcon::Add",
                     [&] { return tray.Add(dynamic_cast<TopWindow&>(BehindOf(window)), tip); });
  }
  void Remove() override {
    faults.Do("TrayIcon::Remove", [&] { tray.Remove(); });
  }
  FaultSwitch& faults;
  TrayIcon& tray;
};

class FaultyWindows : public WindowSystem {
 public:
  FaultyWindows(FaultSwitch& faults, WindowSystem& behind)
      : faults_(faults), behind_(behind), panels_(faults, behind.Panels()), tray_(faults, behind.Tray()) {}

  std::unique_ptr<TopWindow> CreateTopWindow(TopWindowClient& client, std::string_view caption, Size size,
                                             WindowLook look) override {
    return std::make_unique<FaultyTopWindow>(
        faults_, faults_.OrThrow("WindowSystem::CreateTopWindow", Fault::kOverflow,
                                 [&] { return behind_.CreateTopWindow(client, caption, size, look); }));
  }
  std::unique_ptr<Widget> CreateChild(Widget& container, WidgetClient& client, const Rect& bounds) override {
    return std::make_unique<FaultyWidget<Widget>>(
        faults_, faults_.OrThrow("WindowSystem::CreateChild", Fault::kOverflow,
                                 [&] { return behind_.CreateChild(BehindOf(container), client, bounds); }));
  }
  PanelControls& Panels() override { return panels_; }
  /// Ticks are trapped as the real system's are.
  std::unique_ptr<TimerHandle> StartTimer(int milliseconds, std::function<void()> tick) override {
    return faults_.OrThrow("WindowSystem::StartTimer", Fault::kOverflow, [&] {
      return behind_.StartTimer(milliseconds, [tick = std::move(tick)] { Attempt(tick); });
    });
  }
  BoxAnswer ShowMessageBox(std::string_view text, std::string_view title, BoxStyle style) override {
    return faults_.OrElse("WindowSystem::ShowMessageBox", BoxAnswer::kCancel,
                          [&] { return behind_.ShowMessageBox(text, title, style); });
  }
  int ShowPopupMenu(const std::vector<MenuItem>& items, Widget* at) override {
    return faults_.Do("WindowSystem::ShowPopupMenu",
                      [&] { return behind_.ShowPopupMenu(items, at == nullptr ? nullptr : &BehindOf(*at)); });
  }
  bool InModalLoop() override {
    return faults_.Do("WindowSystem::InModalLoop", [&] { return behind_.InModalLoop(); });
  }
  Size ScreenSize() override {
    return faults_.Do("WindowSystem::ScreenSize", [&] { return behind_.ScreenSize(); });
  }
  Size PixelsPerInch() override {
    return faults_.Do("WindowSystem::PixelsPerInch", [&] { return behind_.PixelsPerInch(); });
  }
  Size MeasureText(std::string_view text, const Font& font) override {
    return faults_.Do("WindowSystem::MeasureText", [&] { return behind_.MeasureText(text, font); });
  }
  void Beep() override {
    faults_.Do("WindowSystem::Beep", [&] { behind_.Beep(); });
  }
  void SetHourglass(bool on) override {
    faults_.Do("WindowSystem::SetHourglass", [&] { behind_.SetHourglass(on); });
  }
  TrayIcon& Tray() override { return tray_; }
  Picture LoadPicture(const std::string& path) override {
    return faults_.OrThrow("WindowSystem::LoadPicture", Fault::kInvalidPicture,
                           [&] { return behind_.LoadPicture(path); });
  }

 private:
  FaultSwitch& faults_;
  WindowSystem& behind_;
  FaultyPanels panels_;
  FaultyTray tray_;
};

}  // namespace orvane
