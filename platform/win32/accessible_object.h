#pragma once

#include "platform/win32/accessible_window.h"

#include <atomic>
#include <functional>
#include <memory>
#include <oleacc.h>

namespace orvane {

/// The object that a screen reader gets: the system's standard object of a window, with our answers before
/// its own. It lives as long as somebody holds it, be it its window or a reader. Readers in other processes
/// call it on the program's thread.
class AccessibleObject final : public IAccessible, public std::enable_shared_from_this<AccessibleObject> {
 public:
  AccessibleObject(HWND window, std::function<Accessible()> describe);
  virtual ~AccessibleObject();
  AccessibleObject(const AccessibleObject&) = delete;
  AccessibleObject& operator=(const AccessibleObject&) = delete;

  /// The window is gone.
  void Detach();

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT which, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* argument) override;

  HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
  HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override;
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override;
  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
  HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override;
  HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
  HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override;
  HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE accSelect(long how, VARIANT child) override;
  HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height,
                                        VARIANT child) override;
  HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override;
  HRESULT STDMETHODCALLTYPE accHitTest(long left, long top, VARIANT* child) override;
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
  HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR text) override;
  HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR text) override;

 private:
  bool Ours(const VARIANT& child) const;
  Accessible Ask() const;
  /// What the system's object answers; an error once the window is gone.
  template <typename Method, typename... Arguments>
  HRESULT Standard(Method method, Arguments... arguments) const;
  /// Our text, or the system's when we have none.
  template <typename Method>
  HRESULT Text(std::string Accessible::*text, Method method, const VARIANT& child, BSTR* out) const;

  HWND window_;
  std::function<Accessible()> describe_;
  IAccessible* standard_ = nullptr;
  std::atomic<ULONG> references_ = 0;
  std::shared_ptr<AccessibleObject> self_;  // while a reader holds it
};

}  // namespace orvane
