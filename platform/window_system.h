#pragma once

#include "platform/accessible.h"
#include "platform/canvas.h"
#include "platform/geometry.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;

enum class MouseAction { kDown, kUp, kMove, kDoubleClick, kLeave };

struct MouseEvent {
  MouseAction action = MouseAction::kMove;
  int button = 0;        ///< the button pressed or released; 0 when the pointer moves
  Point at;              ///< twips from the widget's corner
  bool by_keys = false;  ///< made of a key or by a screen reader; there is no pointer at that place
};

/// Keys that the program acts on; all others are none of its business.
enum class Key { kSpace, kEnter, kEscape, kLeft, kRight, kUp, kDown, kF1, kF2, kF3, kF4, kMenu };

struct KeyEvent {
  Key key = Key::kSpace;
  bool down = true;  ///< pressed; a held key comes again and again
};

/// What a widget tells its owner. All on the program's thread.
struct WidgetClient {
  virtual ~WidgetClient() = default;
  virtual void OnPaint(Canvas& canvas) = 0;
  virtual void OnMouse(const MouseEvent& event) = 0;
  /// @return true when the key was for this widget; otherwise the window around it is asked
  virtual bool OnKey(const KeyEvent& event) = 0;
  /// The keyboard came to this widget, or left it.
  virtual void OnFocus(bool has_focus) = 0;
  /// What a screen reader is told; asked for when somebody wants to know.
  virtual Accessible Describe() const { return {}; }
  /// A screen reader presses the widget.
  virtual void OnAction() {}
};

/// A real child window. Its text is what it shows or what it is for.
struct Widget {
  virtual ~Widget() = default;
  virtual void SetText(std::string_view text) = 0;
  /// Twips from the corner of the window that holds it.
  virtual void SetBounds(const Rect& bounds) = 0;
  virtual void SetVisible(bool visible) = 0;
  virtual void SetToolTip(std::string_view text) = 0;
  /// Asks for `area` (twips from the widget's corner) to be painted again soon; calls are merged.
  virtual void Invalidate(const Rect& area) = 0;
  /// Moves it into another window, in front of what is there.
  virtual void SetContainer(Widget& container) = 0;
  /// Lets the Tab key stop here. The order is that in which the widgets were made.
  virtual void SetTabStop(bool on) = 0;
  virtual void SetFocus() = 0;
  /// Lets screen readers know that what WidgetClient::Describe says changed.
  virtual void TellChanged(AccessibleChange change) = 0;
};

enum class WindowState { kNormal = 0, kMinimized = 1 };

struct TopWindowClient : WidgetClient {
  /// The system or the user wants the window closed.
  virtual void OnClose() = 0;
  /// The notification area was made anew and has lost its icons; the order of windows may be another one.
  virtual void OnShellRestarted() = 0;
  /// Screens came, went or changed, or the window was restored: where it stands may not be on any of them.
  virtual void OnDisplayChanged() = 0;
  /// An adapter of any kind came or went.
  virtual void OnDevicesChanged() = 0;
  /// The system took the serial port of this number away.
  virtual void OnPortRemoved(int number) = 0;
  /// The computer slept and is awake again: what was open may be dead.
  virtual void OnResumed() = 0;
  /// The session ends; the process does when this returns.
  virtual void OnSessionEnd() = 0;
};

enum class WindowLook {
  kFace,    ///< no frame of the system around it
  kDialog,  ///< the system's frame with caption and close button around the given size; no entry in the
            ///< taskbar
};

/// A window of its own on the desktop.
struct TopWindow : Widget {
  virtual void Show() = 0;
  /// Where the window stands on the screen, twips.
  virtual Rect Bounds() = 0;
  virtual void MoveTo(Point corner) = 0;
  virtual WindowState State() = 0;
  virtual void SetState(WindowState state) = 0;
  /// True when some part of the window is on a screen.
  virtual bool OnScreen() = 0;
  /// Moves it into the middle of the screen on which `other` is, or was before it was minimised.
  virtual void CenterOnScreenOf(TopWindow& other) = 0;
  virtual void SetTopMost(bool on) = 0;
  /// Gives the window a shape: the union of rectangles, pixels from the window's corner. None at all: nothing
  /// is seen.
  virtual void SetShape(const std::vector<Rect>& runs) = 0;
  /// Width of the system's left border and height of its top border with caption, pixels; zero without a
  /// frame.
  virtual Size BorderPixels() const = 0;
  /// Lets the pointer, whose left button is down, move the window until the button is released.
  virtual void BeginDrag() = 0;
};

/// The icon in the notification area. Its mouse messages come to the main window as a released right button
/// whose horizontal position, in pixels, is the message's number.
struct TrayIcon {
  virtual ~TrayIcon() = default;
  /// @return false when the system refuses it for now; it may be tried again
  virtual bool Add(TopWindow& window, std::string_view tip) = 0;
  virtual void Remove() = 0;
};

/// A ticking timer; ticks come as events until it is destroyed.
struct TimerHandle {
  virtual ~TimerHandle() = default;
};

/// One line of a popup menu. A line with lines below it opens them as a menu of their own.
struct MenuItem {
  int id = 0;
  std::string text;
  bool checked = false;
  bool separator = false;
  std::vector<MenuItem> submenu = {};
};

enum class BoxStyle { kPlain, kOkCancel, kInformation = 64, kCritical = 16 };
enum class BoxAnswer { kOk = 1, kCancel = 2 };

struct PanelControls;  // platform/panel_controls.h

/// The desktop: windows, boxes, timers, the screen.
struct WindowSystem {
  virtual ~WindowSystem() = default;
  /// The first one with the look of a face is the program's main window.
  /// @throws RuntimeError kOverflow when the system has no window left; so do CreateChild and PanelControls
  virtual std::unique_ptr<TopWindow> CreateTopWindow(TopWindowClient& client, std::string_view caption,
                                                     Size size, WindowLook look) = 0;
  virtual std::unique_ptr<Widget> CreateChild(Widget& container, WidgetClient& client,
                                              const Rect& bounds) = 0;
  virtual PanelControls& Panels() = 0;
  /// @throws RuntimeError kOverflow when the system has no timer left
  virtual std::unique_ptr<TimerHandle> StartTimer(int milliseconds, std::function<void()> tick) = 0;
  /// Shows a box and waits for its button. Events go on meanwhile.
  virtual BoxAnswer ShowMessageBox(std::string_view text, std::string_view title, BoxStyle style) = 0;
  /// Opens a menu and waits until it is closed. Events go on meanwhile. @param at the menu opens below this
  /// widget; without one at the pointer, its right edge there
  /// @return the chosen line's id, 0 when the menu was dismissed
  virtual int ShowPopupMenu(const std::vector<MenuItem>& items, Widget* at) = 0;
  /// True while a menu or a message box has the keyboard and the pointer: a handler that runs now must not
  /// wait, for a wait would deliver their keys to the windows behind them.
  virtual bool InModalLoop() = 0;
  virtual Size ScreenSize() = 0;                                          ///< twips
  virtual Size PixelsPerInch() = 0;                                       ///< horizontal and vertical
  virtual Size MeasureText(std::string_view text, const Font& font) = 0;  ///< twips
  virtual void Beep() = 0;
  /// The pointer over all our windows: the hourglass, or each window's own.
  virtual void SetHourglass(bool on) = 0;
  virtual TrayIcon& Tray() = 0;
  /// Decodes a picture file, PNG or BMP by its content whatever its name says.
  /// @throws RuntimeError kFileNotFound, kInvalidPicture when it cannot be decoded
  virtual Picture LoadPicture(const std::string& path) = 0;
};

/// Keeps other copies of the program away, for one user's session.
struct SingleInstance {
  virtual ~SingleInstance() = default;
  /// True when no other copy runs; the claim holds until the process ends.
  virtual bool Claim() = 0;
};

}  // namespace orvane
