#include "platform/win32/accessible_object.h"

#include "base/runtime_error.h"
#include "platform/win32/system_library.h"
#include "platform/win32/text.h"

#include <utility>

namespace orvane {
namespace {

/// The system's numbers for a role, and the states that go with it.
struct SystemRole {
  LONG role;
  LONG states;
};

SystemRole SystemRoleOf(Role role) {
  switch (role) {
    case Role::kText:
      return {ROLE_SYSTEM_TEXT, STATE_SYSTEM_READONLY};
    case Role::kBar:
      return {ROLE_SYSTEM_PROGRESSBAR, STATE_SYSTEM_READONLY};
    case Role::kButton:
      return {ROLE_SYSTEM_PUSHBUTTON, 0};
    case Role::kMenuButton:
      return {ROLE_SYSTEM_BUTTONMENU, STATE_SYSTEM_HASPOPUP};
    case Role::kChoice:
      return {ROLE_SYSTEM_RADIOBUTTON, 0};
    case Role::kLink:
      return {ROLE_SYSTEM_LINK, STATE_SYSTEM_LINKED};
    case Role::kAlert:
      return {ROLE_SYSTEM_ALERT, STATE_SYSTEM_READONLY};
    case Role::kGroup:
      return {ROLE_SYSTEM_GROUPING, 0};
    case Role::kDialog:
      return {ROLE_SYSTEM_DIALOG, 0};
    case Role::kLabel:
      return {ROLE_SYSTEM_STATICTEXT, STATE_SYSTEM_READONLY};
    case Role::kPicture:
      return {ROLE_SYSTEM_GRAPHIC, 0};
    case Role::kList:
      return {ROLE_SYSTEM_COMBOBOX, STATE_SYSTEM_HASPOPUP};
    case Role::kCheckBox:
      return {ROLE_SYSTEM_CHECKBUTTON, 0};
    case Role::kEdit:
      return {ROLE_SYSTEM_TEXT, 0};
    case Role::kScrollBar:
      return {ROLE_SYSTEM_SCROLLBAR, 0};
    case Role::kSystem:
      break;
  }
  return {0, 0};
}

BSTR NewText(const std::string& text) {
  const std::wstring wide = ToWide(text);
  return ::SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

}  // namespace

AccessibleObject::AccessibleObject(HWND window, std::function<Accessible()> describe)
    : window_(window), describe_(std::move(describe)) {
  void* standard = nullptr;
  const auto create = FindCall<decltype(&::CreateStdAccessibleObject)>(SystemLibrary(L"oleacc.dll"),
                                                                       "CreateStdAccessibleObject");
  if (create != nullptr && SUCCEEDED(create(window, OBJID_CLIENT, __uuidof(IAccessible), &standard)))
    standard_ = static_cast<IAccessible*>(standard);
}

AccessibleObject::~AccessibleObject() {
  if (standard_ != nullptr) standard_->Release();
}

void AccessibleObject::Detach() {
  window_ = nullptr;
  describe_ = nullptr;
}

bool AccessibleObject::Ours(const VARIANT& child) const {
  return window_ != nullptr && child.vt == VT_I4 && child.lVal == CHILDID_SELF;
}

Accessible AccessibleObject::Ask() const {
  Accessible what;
  Attempt([&] { what = describe_(); });
  return what;
}

template <typename Method, typename... Arguments>
HRESULT AccessibleObject::Standard(Method method, Arguments... arguments) const {
  if (window_ == nullptr) return CO_E_OBJNOTCONNECTED;
  return standard_ == nullptr ? E_NOTIMPL : (standard_->*method)(arguments...);
}

template <typename Method>
HRESULT AccessibleObject::Text(std::string Accessible::*text, Method method, const VARIANT& child,
                               BSTR* out) const {
  if (out == nullptr) return E_INVALIDARG;
  *out = nullptr;
  if (Ours(child)) {
    const std::string own = Ask().*text;
    if (!own.empty()) return (*out = NewText(own)) != nullptr ? S_OK : E_OUTOFMEMORY;
  }
  return Standard(method, child, out);
}

HRESULT AccessibleObject::QueryInterface(REFIID id, void** object) {
  if (object == nullptr) return E_INVALIDARG;
  const bool known = id == __uuidof(IUnknown) || id == __uuidof(IDispatch) || id == __uuidof(IAccessible);
  *object = known ? static_cast<IAccessible*>(this) : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG AccessibleObject::AddRef() {
  if (references_ == 0) self_ = shared_from_this();
  return ++references_;
}

ULONG AccessibleObject::Release() {
  const ULONG left = --references_;
  if (left == 0) std::exchange(self_, nullptr).reset();  // may be the end of this object
  return left;
}

HRESULT AccessibleObject::GetTypeInfoCount(UINT* count) {
  return Standard(&IAccessible::GetTypeInfoCount, count);
}

HRESULT AccessibleObject::GetTypeInfo(UINT which, LCID locale, ITypeInfo** info) {
  return Standard(&IAccessible::GetTypeInfo, which, locale, info);
}

HRESULT AccessibleObject::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) {
  return standard_ == nullptr ? E_NOTIMPL : standard_->GetIDsOfNames(id, names, count, locale, ids);
}

HRESULT AccessibleObject::Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                 VARIANT* result, EXCEPINFO* exception, UINT* argument) {
  return standard_ == nullptr
             ? E_NOTIMPL
             : standard_->Invoke(member, id, locale, flags, parameters, result, exception, argument);
}

HRESULT AccessibleObject::get_accParent(IDispatch** parent) {
  return Standard(&IAccessible::get_accParent, parent);
}

HRESULT AccessibleObject::get_accChildCount(long* count) {
  return Standard(&IAccessible::get_accChildCount, count);
}

HRESULT AccessibleObject::get_accChild(VARIANT child, IDispatch** object) {
  return Standard(&IAccessible::get_accChild, child, object);
}

HRESULT AccessibleObject::get_accName(VARIANT child, BSTR* text) {
  return Text(&Accessible::name, &IAccessible::get_accName, child, text);
}

HRESULT AccessibleObject::get_accValue(VARIANT child, BSTR* text) {
  return Text(&Accessible::value, &IAccessible::get_accValue, child, text);
}

HRESULT AccessibleObject::get_accDescription(VARIANT child, BSTR* text) {
  return Text(&Accessible::description, &IAccessible::get_accDescription, child, text);
}

HRESULT AccessibleObject::get_accRole(VARIANT child, VARIANT* role) {
  if (role == nullptr) return E_INVALIDARG;
  const LONG own = Ours(child) ? SystemRoleOf(Ask().role).role : 0;
  if (own == 0) return Standard(&IAccessible::get_accRole, child, role);
  role->vt = VT_I4;
  role->lVal = own;
  return S_OK;
}

// The system calls every window one that takes the keyboard.
HRESULT AccessibleObject::get_accState(VARIANT child, VARIANT* state) {
  if (state == nullptr) return E_INVALIDARG;
  const HRESULT result = Standard(&IAccessible::get_accState, child, state);
  if (FAILED(result) || !Ours(child) || state->vt != VT_I4) return result;
  const Accessible what = Ask();
  if (what.role == Role::kSystem) return result;
  if ((::GetWindowLongPtrW(window_, GWL_STYLE) & WS_TABSTOP) == 0 && what.role != Role::kChoice)
    state->lVal &= ~STATE_SYSTEM_FOCUSABLE;
  state->lVal |= SystemRoleOf(what.role).states | (what.checked ? STATE_SYSTEM_CHECKED : 0);
  return S_OK;
}

HRESULT AccessibleObject::get_accHelp(VARIANT child, BSTR* text) {
  return Standard(&IAccessible::get_accHelp, child, text);
}

HRESULT AccessibleObject::get_accHelpTopic(BSTR* file, VARIANT child, long* topic) {
  return Standard(&IAccessible::get_accHelpTopic, file, child, topic);
}

HRESULT AccessibleObject::get_accKeyboardShortcut(VARIANT child, BSTR* text) {
  return Standard(&IAccessible::get_accKeyboardShortcut, child, text);
}

HRESULT AccessibleObject::get_accFocus(VARIANT* child) {
  return Standard(&IAccessible::get_accFocus, child);
}

HRESULT AccessibleObject::get_accSelection(VARIANT* children) {
  return Standard(&IAccessible::get_accSelection, children);
}

HRESULT AccessibleObject::get_accDefaultAction(VARIANT child, BSTR* text) {
  return Text(&Accessible::action, &IAccessible::get_accDefaultAction, child, text);
}

HRESULT AccessibleObject::accSelect(long how, VARIANT child) {
  if (!Ours(child) || how != SELFLAG_TAKEFOCUS) return Standard(&IAccessible::accSelect, how, child);
  ::SetFocus(window_);
  return S_OK;
}

HRESULT AccessibleObject::accLocation(long* left, long* top, long* width, long* height, VARIANT child) {
  return Standard(&IAccessible::accLocation, left, top, width, height, child);
}

HRESULT AccessibleObject::accNavigate(long direction, VARIANT start, VARIANT* end) {
  return Standard(&IAccessible::accNavigate, direction, start, end);
}

HRESULT AccessibleObject::accHitTest(long left, long top, VARIANT* child) {
  return Standard(&IAccessible::accHitTest, left, top, child);
}

HRESULT AccessibleObject::accDoDefaultAction(VARIANT child) {
  if (!Ours(child) || Ask().action.empty()) return Standard(&IAccessible::accDoDefaultAction, child);
  return ::PostMessageW(window_, kActionMessage, 0, 0) != 0 ? S_OK : E_FAIL;
}

HRESULT AccessibleObject::put_accName(VARIANT child, BSTR text) {
  return Standard(&IAccessible::put_accName, child, text);
}

HRESULT AccessibleObject::put_accValue(VARIANT child, BSTR text) {
  return Standard(&IAccessible::put_accValue, child, text);
}

}  // namespace orvane
