#pragma once

#include "platform/accessible.h"
#include "platform/win32/windows_api.h"

#include <functional>
#include <memory>
#include <optional>

namespace orvane {

/// Posted to a window whose default action a screen reader carries out: that call has to come back at once,
/// and the action may open a menu.
inline constexpr UINT kActionMessage = WM_APP + 0x101;

class AccessibleObject;

/// Answers screen readers for one window: what its owner tells of it, and the system's own answers for the
/// rest.
class AccessibleWindow {
 public:
  using Describe = std::function<Accessible()>;

  explicit AccessibleWindow(Describe describe) : describe_(std::move(describe)) {}
  /// Readers may hold on to what they got; it answers that its window is gone.
  ~AccessibleWindow();
  AccessibleWindow(const AccessibleWindow&) = delete;
  AccessibleWindow& operator=(const AccessibleWindow&) = delete;

  /// The answer to a WM_GETOBJECT; nothing when it is the system's affair.
  std::optional<LRESULT> Answer(HWND window, WPARAM wparam, LPARAM lparam);
  /// Raises the event that belongs to a change.
  static void Tell(HWND window, AccessibleChange change);

 private:
  Describe describe_;
  std::shared_ptr<AccessibleObject> object_;
};

}  // namespace orvane
