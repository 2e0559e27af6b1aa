#pragma once

#include "platform/win32/paint_requests.h"
#include "platform/win32/windows_api.h"

#include <functional>
#include <memory>
#include <unordered_map>

namespace orvane {

/// A window that nobody sees. Timers and posts of other threads come to it, because messages to a window are
/// delivered in the system's own loops too: while a menu is open, a box is up or a window is dragged.
class EventWindow {
 public:
  using Handler = std::shared_ptr<std::function<void()>>;

  EventWindow();
  ~EventWindow();
  EventWindow(const EventWindow&) = delete;
  EventWindow& operator=(const EventWindow&) = delete;

  HWND hwnd() const { return hwnd_; }
  /// Calls `handler` every `ms`. @return the timer's number
  UINT_PTR StartTimer(int ms, std::function<void()> handler);
  void StopTimer(UINT_PTR id);
  /// What a post of `Post` runs, on the program's thread. What it asks to be painted is asked for in one go
  /// afterwards, so it must not wait for events.
  void SetPostHandler(std::function<void()> handler) { post_handler_ = std::move(handler); }
  PaintRequests& Paints() { return paints_; }
  /// For any thread: one message into the queue. @return false when the queue is full
  static bool Post(HWND hwnd);

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
  void OnTimer(UINT_PTR id);

  HWND hwnd_ = nullptr;
  UINT_PTR last_id_ = 0;
  std::unordered_map<UINT_PTR, Handler> timers_;
  std::function<void()> post_handler_;
  PaintRequests paints_;
};

}  // namespace orvane
