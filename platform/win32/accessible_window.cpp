#include "platform/win32/accessible_window.h"

#include "platform/win32/accessible_object.h"
#include "platform/win32/system_library.h"

namespace orvane {
namespace {

DWORD EventOf(AccessibleChange change) {
  switch (change) {
    case AccessibleChange::kName:
      return EVENT_OBJECT_NAMECHANGE;
    case AccessibleChange::kValue:
      return EVENT_OBJECT_VALUECHANGE;
    case AccessibleChange::kState:
      return EVENT_OBJECT_STATECHANGE;
    case AccessibleChange::kAlert:
      break;
  }
  return EVENT_SYSTEM_ALERT;
}

}  // namespace

AccessibleWindow::~AccessibleWindow() {
  if (object_) object_->Detach();
}

// Of the number of the object asked for only the lower half counts: 64-bit readers send it with and without
// its sign.
std::optional<LRESULT> AccessibleWindow::Answer(HWND window, WPARAM wparam, LPARAM lparam) {
  if (static_cast<LONG>(lparam) != OBJID_CLIENT) return std::nullopt;
  if (!object_) {
    if (describe_() == Accessible{}) return std::nullopt;
    object_ = std::make_shared<AccessibleObject>(window, describe_);
  }
  const auto result_of =
      FindCall<decltype(&::LresultFromObject)>(SystemLibrary(L"oleacc.dll"), "LresultFromObject");
  if (result_of == nullptr) return std::nullopt;
  return result_of(__uuidof(IAccessible), wparam, object_.get());
}

void AccessibleWindow::Tell(HWND window, AccessibleChange change) {
  ::NotifyWinEvent(EventOf(change), window, OBJID_CLIENT, CHILDID_SELF);
}

}  // namespace orvane
