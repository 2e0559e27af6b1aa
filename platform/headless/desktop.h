#pragma once

#include "platform/headless/virtual_time.h"
#include "platform/window_system.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace orvane {

class HeadlessDesktop;

/// A window that exists in memory: what it was told stands here to be read, and it can be clicked.
class HeadlessWindow {
 public:
  HeadlessWindow(WidgetClient& client, HeadlessWindow* container, const Rect& bounds)
      : client_(client), container_(container), bounds_(bounds) {
    if (container_ != nullptr) container_->children_.push_back(this);
  }
  virtual ~HeadlessWindow();
  HeadlessWindow(const HeadlessWindow&) = delete;
  HeadlessWindow& operator=(const HeadlessWindow&) = delete;

  const std::string& Text() const { return text_; }
  const Rect& Place() const { return bounds_; }
  bool Shown() const { return visible_; }
  const std::string& Tip() const { return tip_; }
  HeadlessWindow* Container() const { return container_; }
  const std::vector<HeadlessWindow*>& Children() const { return children_; }
  /// How often any part of it was asked to be painted again.
  int Invalidations() const { return invalidations_; }

  /// Pointer actions in the middle of the window, delivered at once.
  void Mouse(MouseAction action, int button);
  void Click(int button = kLeftButton);
  /// A key pressed and released here; true when the widget took it.
  bool Press(Key key);
  void Focus(bool has_focus) { client_.OnFocus(has_focus); }
  /// What has the keyboard in this top window; null when the window itself has it, or none.
  HeadlessWindow* FocusInside() const { return focus_inside_; }
  /// The keyboard goes here, as by the Tab key.
  void TakeFocus();
  /// How often the program put the keyboard here.
  int Focusings() const { return focusings_; }
  bool TabStop() const { return tab_stop_; }
  void DoubleClick();
  /// What a screen reader hears when it asks, and what it was told of by itself.
  virtual Accessible Describe() const { return client_.Describe(); }
  const std::vector<AccessibleChange>& Told() const { return told_; }
  void ForgetTold() { told_.clear(); }
  /// A screen reader presses it.
  void Act() { client_.OnAction(); }

 protected:
  void PutText(std::string_view text) { text_ = text; }
  void PutBounds(const Rect& bounds) { bounds_ = bounds; }
  void PutVisible(bool visible) { visible_ = visible; }
  void PutTip(std::string_view tip) { tip_ = tip; }
  void PutContainer(HeadlessWindow& container);
  void CountInvalidation() { ++invalidations_; }
  void PutTabStop(bool on) { tab_stop_ = on; }
  void PutFocus() {
    ++focusings_;
    TakeFocus();
  }
  void PutChange(AccessibleChange change) { told_.push_back(change); }

 private:
  HeadlessWindow& Root();

  WidgetClient& client_;
  HeadlessWindow* container_;
  std::vector<HeadlessWindow*> children_;
  Rect bounds_;
  std::string text_;
  std::string tip_;
  bool visible_ = true;
  bool tab_stop_ = false;
  int invalidations_ = 0;
  int focusings_ = 0;
  std::vector<AccessibleChange> told_;
  HeadlessWindow* focus_inside_ = nullptr;  // of a top window: what in it has the keyboard
};

/// A control's window in memory, that a test can act on as a user does. `Base` is its interface.
template <typename Base>
class HeadlessControl : public Base, public HeadlessWindow {
 public:
  using HeadlessWindow::HeadlessWindow;
  void SetText(std::string_view text) override { PutText(text); }
  void SetBounds(const Rect& bounds) override { PutBounds(bounds); }
  void SetVisible(bool visible) override { PutVisible(visible); }
  void SetToolTip(std::string_view text) override { PutTip(text); }
  void Invalidate(const Rect&) override { CountInvalidation(); }
  void SetTabStop(bool on) override { PutTabStop(on); }
  void SetFocus() override { PutFocus(); }
  void TellChanged(AccessibleChange change) override { PutChange(change); }
  void SetContainer(Widget& container) override { PutContainer(dynamic_cast<HeadlessWindow&>(container)); }
};

class HeadlessTopWindow : public TopWindow, public HeadlessWindow {
 public:
  HeadlessTopWindow(HeadlessDesktop& desktop, TopWindowClient& client, Size size, WindowLook look);
  ~HeadlessTopWindow() override;

  void SetText(std::string_view text) override { PutText(text); }
  void SetBounds(const Rect& bounds) override { PutBounds(bounds); }
  void SetVisible(bool visible) override { PutVisible(visible); }
  void SetToolTip(std::string_view text) override { PutTip(text); }
  void Invalidate(const Rect&) override { CountInvalidation(); }
  void SetContainer(Widget&) override {}
  void SetTabStop(bool on) override { PutTabStop(on); }
  void SetFocus() override { PutFocus(); }
  void TellChanged(AccessibleChange change) override { PutChange(change); }
  void Show() override { PutVisible(true); }
  Rect Bounds() override { return Place(); }
  void MoveTo(Point corner) override { PutBounds({corner.x, corner.y, Place().width, Place().height}); }
  WindowState State() override { return state_; }
  void SetState(WindowState state) override { state_ = state; }
  bool OnScreen() override { return on_screen; }
  void CenterOnScreenOf(TopWindow& other) override { centered_on = &other; }
  void SetTopMost(bool on) override { top_most_ = on; }

  void SetShape(const std::vector<Rect>& runs) override { shape_ = runs; }
  Size BorderPixels() const override { return border; }
  void BeginDrag() override { ++drags; }

  bool TopMost() const { return top_most_; }
  const std::vector<Rect>& Shape() const { return shape_; }
  int drags = 0;
  bool on_screen = true;
  TopWindow* centered_on = nullptr;
  TopWindowClient& System() { return client_; }
  Size border;
  /// The user closes it by the taskbar.
  void Close() { client_.OnClose(); }
  /// The window or child whose text is `text`; null when there is none.
  HeadlessWindow* Find(std::string_view text);

 private:
  HeadlessDesktop& desktop_;
  TopWindowClient& client_;
  WindowState state_ = WindowState::kNormal;
  bool top_most_ = false;
  std::vector<Rect> shape_;
};

class HeadlessTray : public TrayIcon {
 public:
  bool Add(TopWindow&, std::string_view tip) override {
    ++adds;
    if (refuse_next > 0) return --refuse_next, false;
    tip_ = tip;
    shown_ = true;
    return true;
  }
  void Remove() override { shown_ = false; }
  bool Shown() const { return shown_; }
  const std::string& Tip() const { return tip_; }
  int adds = 0;
  int refuse_next = 0;  ///< so many Adds to come are refused

 private:
  std::string tip_;
  bool shown_ = false;
};

/// A box that was shown.
struct ShownBox {
  std::string text;
  std::string title;
  BoxStyle style;
};

/// Windows, boxes and timers in memory, in virtual time.
class HeadlessDesktop : public WindowSystem {
 public:
  explicit HeadlessDesktop(VirtualTime& time);
  ~HeadlessDesktop() override;

  std::unique_ptr<TopWindow> CreateTopWindow(TopWindowClient& client, std::string_view caption, Size size,
                                             WindowLook look) override;
  PanelControls& Panels() override;
  std::unique_ptr<Widget> CreateChild(Widget& container, WidgetClient& client, const Rect& bounds) override;
  std::unique_ptr<TimerHandle> StartTimer(int milliseconds, std::function<void()> tick) override;
  BoxAnswer ShowMessageBox(std::string_view text, std::string_view title, BoxStyle style) override;
  int ShowPopupMenu(const std::vector<MenuItem>& items, Widget* at) override;
  bool InModalLoop() override { return modal_loops_ > 0; }
  Size ScreenSize() override { return screen; }
  Size PixelsPerInch() override { return pixels_per_inch; }
  Size MeasureText(std::string_view text, const Font& font) override;
  void Beep() override { ++beeps; }
  void SetHourglass(bool on) override { hourglass = on; }
  HeadlessTray& Tray() override { return tray_; }
  Picture LoadPicture(const std::string& path) override;

  /// The main window while it exists.
  HeadlessTopWindow* Main() const { return main_; }
  /// The dialog while one exists.
  HeadlessTopWindow* Dialog() const { return dialog_; }

  Size screen{1920 * 15, 1080 * 15};  ///< twips
  Size pixels_per_inch{96, 96};
  /// What a picture file decodes to, by the end of its path; a file that is there and not named here is
  /// corrupt.
  std::map<std::string, Picture> pictures;
  int beeps = 0;
  bool hourglass = false;
  std::vector<ShownBox> boxes;
  /// What the boxes to come are answered, in turn; kOk when the queue is empty.
  std::deque<BoxAnswer> answers;
  /// How long a box stays open; events go on meanwhile.
  int box_ms = 0;
  /// Menus that were opened, and what is chosen in those to come, in turn; dismissed when the queue is empty.
  std::vector<std::vector<MenuItem>> menus;
  std::deque<int> choices;
  /// Where the last one opened; null at the pointer.
  const Widget* menu_at = nullptr;
  /// How long a menu stays open; events go on meanwhile.
  int menu_ms = 0;
  /// Called while a box is open.
  std::function<void(const ShownBox&)> on_box;

 private:
  friend class HeadlessTopWindow;
  VirtualTime& time_;
  HeadlessTray tray_;
  std::unique_ptr<PanelControls> panels_;
  int modal_loops_ = 0;
  HeadlessTopWindow* main_ = nullptr;
  HeadlessTopWindow* dialog_ = nullptr;
};

/// Whether a copy runs is the test's choice.
class HeadlessInstance : public SingleInstance {
 public:
  bool Claim() override { return !other_copy_runs; }
  bool other_copy_runs = false;
};

}  // namespace orvane
