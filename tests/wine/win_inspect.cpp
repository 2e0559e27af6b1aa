// The eyes and hands of the end-to-end tests inside Wine: tells what windows there are and what they show, as
// a screen reader or an automation tool would find it, and acts on them.
//
// Reads one command a line and answers with JSON, one object a line, closed by {"end":true}. One process
// serves a whole test, because starting a program in Wine costs more than everything that is asked of it.
//
// clang-format off
//   list 0                every top-level window and all its children, with text, place, style, state
//   window HWND           the same of one window
//   region HWND           the window's shape as rectangles; "shaped":false when it has none
//   focus 0               which window has the keyboard, and which is in the foreground
//   items HWND            the entries of a list of a combo box, and which is chosen
//   front HWND            shows the window and brings it to the front, as a task switcher does
//   post HWND MSG W L     any message
//   tree HWND             the accessible object of the window and of every child window that can be seen
//   object HWND           that of one window
//   watch 0               from now on reports events of all programs: {"event":"value","hwnd":...}
//   open HWND COUNT BUTTON...  COUNT openings in turn: the menu of each button of that main window, the panels,
//                         again and again, as fast as they come up; tells how many came up and went
//   count HWND            how many handles, drawing objects and windows the program has
// clang-format on
#include "tests/wine/inspect.h"

#include <cstdio>
#include <iostream>
#include <map>
#include <mutex>
#include <objbase.h>
#include <queue>
#include <sstream>
#include <thread>
#include <vector>

namespace inspect {

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

HWND NextWindow(std::istream& words) {
  std::uintptr_t number = 0;
  words >> number;
  return reinterpret_cast<HWND>(number);
}

std::wstring ClassOf(HWND window) {
  wchar_t name[256];
  const int length = GetClassNameW(window, name, 256);
  return {name, static_cast<std::size_t>(length)};
}

DWORD ProcessOf(HWND window) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  return id;
}

namespace {

// A window that hangs must not hang the test with it.
DWORD_PTR Ask(HWND window, UINT message, WPARAM wparam = 0, LPARAM lparam = 0) {
  DWORD_PTR result = 0;
  SendMessageTimeoutW(window, message, wparam, lparam, SMTO_ABORTIFHUNG, 500, &result);
  return result;
}

// GetWindowText gives only captions for windows of other programs; the message gives what any control shows.
std::wstring TextOf(HWND window) {
  const auto length = Ask(window, WM_GETTEXTLENGTH);
  std::vector<wchar_t> buffer(static_cast<std::size_t>(length) + 1);
  const auto copied = Ask(window, WM_GETTEXT, buffer.size(), reinterpret_cast<LPARAM>(buffer.data()));
  return {buffer.data(), static_cast<std::size_t>(copied)};
}

std::wstring ProgramOf(DWORD process_id) {
  const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process_id);
  if (process == nullptr) return {};
  wchar_t path[1024];
  DWORD length = 1024;
  const BOOL known = QueryFullProcessImageNameW(process, 0, path, &length);
  CloseHandle(process);
  const std::wstring_view whole(path, known ? length : 0);
  return std::wstring(whole.substr(whole.rfind(L'\\') + 1));
}

void PrintRect(std::ostream& out, const RECT& r) {
  out << "[" << r.left << "," << r.top << "," << r.right << "," << r.bottom << "]";
}

/// Programs by process id. Asked for once in a list: a face has some seventy windows.
using ProgramNames = std::map<DWORD, std::wstring>;

void PrintWindow(std::ostream& out, HWND window, HWND parent, ProgramNames& names) {
  const DWORD process_id = ProcessOf(window);
  if (!names.contains(process_id)) names[process_id] = ProgramOf(process_id);
  RECT place{};
  GetWindowRect(window, &place);
  out << "{\"hwnd\":" << Number(window) << ",\"parent\":" << Number(parent)
      << ",\"owner\":" << Number(GetWindow(window, GW_OWNER)) << ",\"pid\":" << process_id
      << ",\"program\":" << Escaped(names[process_id]) << ",\"class_name\":" << Escaped(ClassOf(window))
      << ",\"text\":" << Escaped(TextOf(window)) << ",\"rect\":";
  PrintRect(out, place);
  out << ",\"visible\":" << (IsWindowVisible(window) != 0)
      << ",\"enabled\":" << (IsWindowEnabled(window) != 0)
      << ",\"style\":" << static_cast<std::uint32_t>(GetWindowLongW(window, GWL_STYLE))
      << ",\"ex_style\":" << static_cast<std::uint32_t>(GetWindowLongW(window, GWL_EXSTYLE)) << "}\n";
}

std::vector<HWND> ChildrenOf(HWND parent) {
  std::vector<HWND> children;
  const auto add = [](HWND window, LPARAM list) -> BOOL {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
  };
  const auto list = reinterpret_cast<LPARAM>(&children);
  parent == nullptr ? EnumWindows(add, list) : EnumChildWindows(parent, add, list);
  return children;
}

bool List(HWND, std::istream&, std::ostream& out) {
  ProgramNames names;
  for (const HWND top : ChildrenOf(nullptr)) {
    PrintWindow(out, top, nullptr, names);
    for (const HWND child : ChildrenOf(top))
      PrintWindow(out, child, GetAncestor(child, GA_PARENT), names);
  }
  return true;
}

bool One(HWND window, std::istream&, std::ostream& out) {
  ProgramNames names;
  const HWND parent = GetAncestor(window, GA_PARENT);
  PrintWindow(out, window, parent == GetDesktopWindow() ? nullptr : parent, names);
  return true;
}

bool Region(HWND window, std::istream&, std::ostream& out) {
  const HRGN region = CreateRectRgn(0, 0, 0, 0);
  const bool shaped = GetWindowRgn(window, region) != ERROR;
  out << "{\"shaped\":" << shaped << ",\"rects\":[";
  const DWORD size = GetRegionData(region, 0, nullptr);
  std::vector<std::uint64_t> storage(size / sizeof(std::uint64_t) + 1);
  auto* data = reinterpret_cast<RGNDATA*>(storage.data());
  if (shaped && GetRegionData(region, size, data) != 0) {
    const auto* rects = reinterpret_cast<const RECT*>(data->Buffer);
    for (DWORD i = 0; i < data->rdh.nCount; ++i) {
      if (i > 0) out << ",";
      PrintRect(out, rects[i]);
    }
  }
  out << "]}\n";
  DeleteObject(region);
  return true;
}

bool Focus(HWND, std::istream&, std::ostream& out) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  const HWND front = GetForegroundWindow();
  GetGUIThreadInfo(GetWindowThreadProcessId(front, nullptr), &info);
  out << "{\"foreground\":" << Number(front) << ",\"focus\":" << Number(info.hwndFocus)
      << ",\"menu\":" << ((info.flags & GUI_INMENUMODE) != 0) << "}\n";
  return true;
}

bool Items(HWND combo, std::istream&, std::ostream& out) {
  const auto count = static_cast<int>(Ask(combo, CB_GETCOUNT));
  out << "{\"chosen\":" << static_cast<int>(Ask(combo, CB_GETCURSEL)) << ",\"items\":[";
  for (int i = 0; i < count; ++i) {
    const auto index = static_cast<WPARAM>(i);
    std::vector<wchar_t> buffer(static_cast<std::size_t>(Ask(combo, CB_GETLBTEXTLEN, index)) + 1);
    Ask(combo, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(buffer.data()));
    out << (i > 0 ? "," : "") << Escaped(buffer.data());
  }
  out << "]}\n";
  return true;
}

bool Front(HWND window, std::istream&, std::ostream&) {
  ShowWindow(window, SW_SHOWNORMAL);
  return SetForegroundWindow(window) != 0;
}

bool Post(HWND window, std::istream& words, std::ostream&) {
  UINT message = 0;
  WPARAM wparam = 0;
  LPARAM lparam = 0;
  words >> message >> wparam >> lparam;
  return PostMessageW(window, message, wparam, lparam) != 0;
}

bool Obey(const std::string& line, std::ostream& out) {
  static const std::map<std::string, Command> commands{{"list", List},   {"window", One},  {"region", Region},
                                                       {"focus", Focus}, {"items", Items}, {"front", Front},
                                                       {"post", Post},   {"tree", Tree},   {"object", Object},
                                                       {"watch", Watch}, {"open", Open},   {"count", Count}};
  std::istringstream words(line);
  std::string verb;
  words >> verb;
  const HWND window = NextWindow(words);
  const auto found = commands.find(verb);
  return found != commands.end() && (window == nullptr || IsWindow(window)) &&
         found->second(window, words, out);
}

/// Lines on their way from the thread that reads them to that which looks for messages: events come to it.
class Lines {
 public:
  static constexpr UINT kNews = WM_APP + 1;
  void Put(std::string line, DWORD thread) {
    const std::lock_guard lock(mutex_);
    lines_.push(std::move(line));
    PostThreadMessageW(thread, kNews, 0, 0);
  }
  std::string Take() {
    const std::lock_guard lock(mutex_);
    std::string line = std::move(lines_.front());
    lines_.pop();
    return line;
  }

 private:
  std::mutex mutex_;
  std::queue<std::string> lines_;
};

}  // namespace
}  // namespace inspect

int main() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  MSG message;
  PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // from here on the thread has a queue
  inspect::Lines lines;
  std::thread reader([&lines, main_thread = GetCurrentThreadId()] {
    for (std::string line; std::getline(std::cin, line);)
      lines.Put(std::move(line), main_thread);
    PostThreadMessageW(main_thread, WM_QUIT, 0, 0);
  });
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (message.message != inspect::Lines::kNews) {
      DispatchMessageW(&message);
      continue;
    }
    std::ostringstream answer;  // in one piece, because events may be told while it is made
    const bool done = inspect::Obey(lines.Take(), answer);
    std::cout << answer.str() << "{\"end\":" << done << "}\n" << std::flush;
  }
  reader.join();
  return 0;
}
