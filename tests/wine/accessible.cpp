// The inspector as a screen reader.
#include "tests/wine/inspect.h"

#include <iostream>
#include <oleacc.h>

namespace inspect {
namespace {

VARIANT Self() {
  VARIANT self{};
  self.vt = VT_I4;
  self.lVal = CHILDID_SELF;
  return self;
}

IAccessible* ObjectOf(HWND window) {
  void* object = nullptr;
  const HRESULT result =
      AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), &object);
  return SUCCEEDED(result) ? static_cast<IAccessible*>(object) : nullptr;
}

using TextOf = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, BSTR*);
using NumberOf = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, VARIANT*);

std::string Text(IAccessible& object, TextOf method) {
  BSTR text = nullptr;
  const bool told = (object.*method)(Self(), &text) == S_OK && text != nullptr;
  const std::string json = told ? Escaped({text, SysStringLen(text)}) : "null";
  SysFreeString(text);
  return json;
}

LONG Value(IAccessible& object, NumberOf method) {
  VARIANT value{};
  return SUCCEEDED((object.*method)(Self(), &value)) && value.vt == VT_I4 ? value.lVal : -1;
}

void PrintObject(HWND window, int level, std::ostream& out) {
  IAccessible* object = ObjectOf(window);
  if (object == nullptr) return;
  out << "{\"level\":" << level << ",\"role\":" << Value(*object, &IAccessible::get_accRole)
      << ",\"state\":" << Value(*object, &IAccessible::get_accState)
      << ",\"name\":" << Text(*object, &IAccessible::get_accName)
      << ",\"value\":" << Text(*object, &IAccessible::get_accValue)
      << ",\"description\":" << Text(*object, &IAccessible::get_accDescription) << "}\n";
  object->Release();
}

void PrintTree(HWND window, int level, std::ostream& out) {
  if (!IsWindowVisible(window)) return;
  PrintObject(window, level, out);
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
    PrintTree(child, level + 1, out);
}

void CALLBACK OnEvent(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG, DWORD, DWORD) {
  const char* word = event == EVENT_OBJECT_VALUECHANGE  ? "value"
                     : event == EVENT_OBJECT_NAMECHANGE ? "name"
                     : event == EVENT_SYSTEM_ALERT      ? "alert"
                                                        : nullptr;
  if (word == nullptr || object != OBJID_CLIENT) return;
  std::cout << "{\"event\":\"" << word << "\",\"hwnd\":" << Number(window) << ",\"tick\":" << GetTickCount()
            << "}\n"
            << std::flush;
}

}  // namespace

bool Tree(HWND window, std::istream&, std::ostream& out) {
  PrintTree(window, 0, out);
  return true;
}

bool Object(HWND window, std::istream&, std::ostream& out) {
  PrintObject(window, 0, out);
  return true;
}

bool Watch(HWND, std::istream&, std::ostream&) {
  constexpr DWORD kHow = WINEVENT_OUTOFCONTEXT;
  return SetWinEventHook(EVENT_SYSTEM_ALERT, EVENT_SYSTEM_ALERT, nullptr, OnEvent, 0, 0, kHow) != nullptr &&
         SetWinEventHook(EVENT_OBJECT_NAMECHANGE, EVENT_OBJECT_VALUECHANGE, nullptr, OnEvent, 0, 0, kHow) !=
             nullptr;
}

}  // namespace inspect
