// What a screen reader finds in a window: prints the accessible object of the window and of every child
// window that can be seen, as JSON, one object a line, closed by {"end":true}.
//
// clang-format off
//   tree HWND        the window and all below it: level, class, role, name, value, description, action, state words
//   object HWND      one window
//   act HWND         carries out its default action
//   watch            from now on reports events of all programs: {"event":"value","hwnd":...}
// clang-format on
#include <array>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <iostream>
#include <mutex>
#include <oleacc.h>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>
#include <windows.h>

namespace {

constexpr UINT kCommandMessage = WM_APP + 1;

std::string Escaped(std::wstring_view text) {
  std::string out = "\"";
  for (const wchar_t c : text) {
    char piece[8];
    const bool plain = c != L'"' && c != L'\\' && c >= 0x20 && c <= 0x7E;
    std::snprintf(piece, sizeof piece, plain ? "%c" : "\\u%04x", static_cast<unsigned>(c));
    out += piece;
  }
  return out + "\"";
}

std::string RoleName(LONG role) {
  constexpr std::array<std::pair<LONG, const char*>, 15> kNames{{{ROLE_SYSTEM_CLIENT, "client"},
                                                                 {ROLE_SYSTEM_TEXT, "text"},
                                                                 {ROLE_SYSTEM_PROGRESSBAR, "bar"},
                                                                 {ROLE_SYSTEM_PUSHBUTTON, "button"},
                                                                 {ROLE_SYSTEM_BUTTONMENU, "menu button"},
                                                                 {ROLE_SYSTEM_RADIOBUTTON, "choice"},
                                                                 {ROLE_SYSTEM_LINK, "link"},
                                                                 {ROLE_SYSTEM_ALERT, "alert"},
                                                                 {ROLE_SYSTEM_GROUPING, "group"},
                                                                 {ROLE_SYSTEM_DIALOG, "dialog"},
                                                                 {ROLE_SYSTEM_STATICTEXT, "label"},
                                                                 {ROLE_SYSTEM_GRAPHIC, "picture"},
                                                                 {ROLE_SYSTEM_COMBOBOX, "list"},
                                                                 {ROLE_SYSTEM_CHECKBUTTON, "check box"},
                                                                 {ROLE_SYSTEM_SCROLLBAR, "scroll bar"}}};
  for (const auto& [number, name] : kNames) {
    if (number == role) return name;
  }
  return std::to_string(role);
}

std::string StateWords(LONG state) {
  constexpr std::array<std::pair<LONG, const char*>, 8> kWords{{{STATE_SYSTEM_FOCUSABLE, "focusable"},
                                                                {STATE_SYSTEM_FOCUSED, "focused"},
                                                                {STATE_SYSTEM_CHECKED, "checked"},
                                                                {STATE_SYSTEM_READONLY, "readonly"},
                                                                {STATE_SYSTEM_HASPOPUP, "popup"},
                                                                {STATE_SYSTEM_LINKED, "linked"},
                                                                {STATE_SYSTEM_UNAVAILABLE, "unavailable"},
                                                                {STATE_SYSTEM_INVISIBLE, "invisible"}}};
  std::string words;
  for (const auto& [bit, word] : kWords) {
    if ((state & bit) != 0) words += (words.empty() ? "" : " ") + std::string(word);
  }
  return words;
}

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

void PrintText(const char* key, IAccessible& object, TextOf method) {
  BSTR text = nullptr;
  const HRESULT result = (object.*method)(Self(), &text);
  std::cout << ",\"" << key << "\":";
  if (result == S_OK && text != nullptr) {
    std::cout << Escaped({text, SysStringLen(text)});
  } else {
    std::cout << "null";
  }
  SysFreeString(text);
}

LONG Number(IAccessible& object, NumberOf method) {
  VARIANT value{};
  return SUCCEEDED((object.*method)(Self(), &value)) && value.vt == VT_I4 ? value.lVal : -1;
}

void PrintObject(HWND window, int level) {
  std::array<wchar_t, 64> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  std::cout << "{\"hwnd\":" << reinterpret_cast<std::uintptr_t>(window) << ",\"level\":" << level
            << ",\"class\":" << Escaped(name.data());
  if (IAccessible* object = ObjectOf(window)) {
    std::cout << ",\"role\":\"" << RoleName(Number(*object, &IAccessible::get_accRole)) << "\",\"state\":\""
              << StateWords(Number(*object, &IAccessible::get_accState)) << "\"";
    PrintText("name", *object, &IAccessible::get_accName);
    PrintText("value", *object, &IAccessible::get_accValue);
    PrintText("description", *object, &IAccessible::get_accDescription);
    PrintText("action", *object, &IAccessible::get_accDefaultAction);
    object->Release();
  }
  std::cout << "}\n";
}

void PrintTree(HWND window, int level) {
  if (!IsWindowVisible(window)) return;
  PrintObject(window, level);
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
    PrintTree(child, level + 1);
}

bool Act(HWND window) {
  IAccessible* object = ObjectOf(window);
  if (object == nullptr) return false;
  const HRESULT result = object->accDoDefaultAction(Self());
  object->Release();
  return SUCCEEDED(result);
}

void CALLBACK OnEvent(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG, DWORD, DWORD) {
  const char* word = event == EVENT_OBJECT_VALUECHANGE   ? "value"
                     : event == EVENT_OBJECT_NAMECHANGE  ? "name"
                     : event == EVENT_OBJECT_STATECHANGE ? "state"
                     : event == EVENT_SYSTEM_ALERT       ? "alert"
                                                         : nullptr;
  if (word == nullptr || object != OBJID_CLIENT) return;
  std::cout << "{\"event\":\"" << word << "\",\"hwnd\":" << reinterpret_cast<std::uintptr_t>(window)
            << ",\"tick\":" << GetTickCount() << "}\n"
            << std::flush;
}

bool Obey(const std::string& command) {
  std::istringstream line(command);
  std::string verb;
  std::uintptr_t number = 0;
  line >> verb >> number;
  const HWND window = reinterpret_cast<HWND>(number);
  if (verb == "watch") {
    SetWinEventHook(EVENT_SYSTEM_ALERT, EVENT_SYSTEM_ALERT, nullptr, OnEvent, 0, 0, WINEVENT_OUTOFCONTEXT);
    return SetWinEventHook(EVENT_OBJECT_STATECHANGE, EVENT_OBJECT_VALUECHANGE, nullptr, OnEvent, 0, 0,
                           WINEVENT_OUTOFCONTEXT) != nullptr;
  }
  if (!IsWindow(window)) return false;
  if (verb == "tree") PrintTree(window, 0);
  if (verb == "object") PrintObject(window, 0);
  return verb != "act" || Act(window);
}

/// Commands on their way from the thread that reads them.
class Queue {
 public:
  void Put(std::string command) {
    const std::lock_guard lock(mutex_);
    commands_.push_back(std::move(command));
  }
  std::string Take() {
    const std::lock_guard lock(mutex_);
    std::string command = std::move(commands_.front());
    commands_.pop_front();
    return command;
  }

 private:
  std::mutex mutex_;
  std::deque<std::string> commands_;
};

}  // namespace

// Events come to a thread that looks for messages, so the commands are read by another one.
int main() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  MSG message;
  PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // from here on the thread has a queue
  Queue queue;
  std::thread reader([&queue, main_thread = GetCurrentThreadId()] {
    std::string command;
    while (std::getline(std::cin, command)) {
      queue.Put(command);
      PostThreadMessageW(main_thread, kCommandMessage, 0, 0);
    }
    PostThreadMessageW(main_thread, WM_QUIT, 0, 0);
  });
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (message.message != kCommandMessage) {
      DispatchMessageW(&message);
      continue;
    }
    const bool done = Obey(queue.Take());
    std::cout << "{\"end\":true,\"ok\":" << (done ? "true" : "false") << "}\n" << std::flush;
  }
  reader.join();
  return 0;
}
