// The eyes and hands of the end-to-end tests inside Wine: tells what windows there are and what they show, as
// a screen reader or an automation tool would find it, and acts on them.
//
// Reads one command a line and answers with JSON, one object a line, closed by {"end":true}. One process
// serves a whole test, because starting a program in Wine costs more than everything that is asked of it.
//
// clang-format off
//   list                  every top-level window and all its children, with text, place, style, state
//   window HWND           the same of one window
//   region HWND           the window's shape as rectangles; "shaped":false when it has none
//   focus                 which window has the keyboard, and which is in the foreground
//   items HWND            the entries of a list of a combo box, and which is chosen
//   select HWND INDEX     chooses one, and tells the owner as a user's choice does
//   settext HWND TEXT     replaces what stands in an edit field
//   click TEXT            presses and releases the left button over the middle of the child with that text
//   front HWND            shows the window and brings it to the front, as a task switcher does
//   close HWND            asks the window to close
//   post|send HWND MSG W L  any message
//   hold PATH             opens a file so that nobody else can, until `release`
//   client CAPTION        makes a window with that caption and reports each WM_COPYDATA that it receives
// clang-format on
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>
#include <windows.h>

namespace {

// A window that hangs must not hang the test with it.
constexpr UINT kAnswerLimitMs = 500;

std::string Escaped(std::wstring_view text) {
  std::string out = "\"";
  for (const wchar_t c : text) {
    char piece[8];
    if (c == L'"' || c == L'\\' || c < 0x20 || c > 0x7E) {
      std::snprintf(piece, sizeof piece, "\\u%04x", static_cast<unsigned>(c));
    } else {
      std::snprintf(piece, sizeof piece, "%c", static_cast<char>(c));
    }
    out += piece;
  }
  return out + "\"";
}

std::wstring Wide(const std::string& utf8) {
  const int size = static_cast<int>(utf8.size());
  const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, text.data(), length);
  return text;
}

std::uintptr_t Number(HWND window) {
  return reinterpret_cast<std::uintptr_t>(window);
}
HWND Window(std::uintptr_t number) {
  return reinterpret_cast<HWND>(number);
}

DWORD_PTR Ask(HWND window, UINT message, WPARAM wparam = 0, LPARAM lparam = 0) {
  DWORD_PTR result = 0;
  SendMessageTimeoutW(window, message, wparam, lparam, SMTO_ABORTIFHUNG, kAnswerLimitMs, &result);
  return result;
}

// GetWindowText gives only captions for windows of other programs; the message gives what any control shows.
std::wstring TextOf(HWND window) {
  const auto length = Ask(window, WM_GETTEXTLENGTH);
  std::vector<wchar_t> buffer(static_cast<std::size_t>(length) + 1);
  const auto copied = Ask(window, WM_GETTEXT, buffer.size(), reinterpret_cast<LPARAM>(buffer.data()));
  return {buffer.data(), static_cast<std::size_t>(copied)};
}

std::wstring ClassOf(HWND window) {
  wchar_t name[256];
  const int length = GetClassNameW(window, name, 256);
  return {name, static_cast<std::size_t>(length)};
}

std::wstring ProgramOf(DWORD process_id) {
  const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process_id);
  if (process == nullptr) return {};
  wchar_t path[1024];
  DWORD length = 1024;
  const BOOL known = QueryFullProcessImageNameW(process, 0, path, &length);
  CloseHandle(process);
  const std::wstring_view whole(path, known ? length : 0);
  const auto slash = whole.rfind(L'\\');
  return std::wstring(slash == std::wstring_view::npos ? whole : whole.substr(slash + 1));
}

void PrintRect(const RECT& r) {
  std::cout << "[" << r.left << "," << r.top << "," << r.right << "," << r.bottom << "]";
}

/// Programs by process id. Asked for once in a list: a face has some seventy windows.
using ProgramNames = std::map<DWORD, std::wstring>;

const std::wstring& NameOf(DWORD process_id, ProgramNames& names) {
  const auto found = names.find(process_id);
  return found != names.end() ? found->second
                              : names.emplace(process_id, ProgramOf(process_id)).first->second;
}

void PrintWindow(HWND window, HWND parent, ProgramNames& names) {
  DWORD process_id = 0;
  GetWindowThreadProcessId(window, &process_id);
  RECT place{};
  GetWindowRect(window, &place);
  const auto style = static_cast<std::uint32_t>(GetWindowLongW(window, GWL_STYLE));
  const auto ex_style = static_cast<std::uint32_t>(GetWindowLongW(window, GWL_EXSTYLE));
  std::cout << "{\"hwnd\":" << Number(window) << ",\"parent\":" << Number(parent)
            << ",\"owner\":" << Number(GetWindow(window, GW_OWNER)) << ",\"pid\":" << process_id
            << ",\"program\":" << Escaped(NameOf(process_id, names))
            << ",\"class\":" << Escaped(ClassOf(window)) << ",\"text\":" << Escaped(TextOf(window))
            << ",\"rect\":";
  PrintRect(place);
  std::cout << ",\"visible\":" << (IsWindowVisible(window) ? "true" : "false")
            << ",\"enabled\":" << (IsWindowEnabled(window) ? "true" : "false") << ",\"style\":" << style
            << ",\"ex_style\":" << ex_style << ",\"id\":" << (parent != nullptr ? GetDlgCtrlID(window) : 0)
            << "}\n";
}

std::vector<HWND> ChildrenOf(HWND parent) {
  std::vector<HWND> children;
  const auto add = [](HWND window, LPARAM list) -> BOOL {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
  };
  if (parent == nullptr) {
    EnumWindows(add, reinterpret_cast<LPARAM>(&children));
  } else {
    EnumChildWindows(parent, add, reinterpret_cast<LPARAM>(&children));
  }
  return children;
}

void List() {
  ProgramNames names;
  for (const HWND top : ChildrenOf(nullptr)) {
    PrintWindow(top, nullptr, names);
    for (const HWND child : ChildrenOf(top))
      PrintWindow(child, GetAncestor(child, GA_PARENT), names);
  }
}

void PrintOne(HWND window) {
  ProgramNames names;
  const HWND parent = GetAncestor(window, GA_PARENT);
  PrintWindow(window, parent == GetDesktopWindow() ? nullptr : parent, names);
}

void PrintRegion(HWND window) {
  const HRGN region = CreateRectRgn(0, 0, 0, 0);
  const bool shaped = GetWindowRgn(window, region) != ERROR;
  std::cout << "{\"shaped\":" << (shaped ? "true" : "false") << ",\"rects\":[";
  const DWORD size = GetRegionData(region, 0, nullptr);
  std::vector<std::uint64_t> storage(size / sizeof(std::uint64_t) + 1);
  auto* data = reinterpret_cast<RGNDATA*>(storage.data());
  if (shaped && GetRegionData(region, size, data) != 0) {
    const auto* rects = reinterpret_cast<const RECT*>(data->Buffer);
    for (DWORD i = 0; i < data->rdh.nCount; ++i) {
      if (i > 0) std::cout << ",";
      PrintRect(rects[i]);
    }
  }
  std::cout << "]}\n";
  DeleteObject(region);
}

void PrintFocus() {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  const HWND front = GetForegroundWindow();
  GetGUIThreadInfo(GetWindowThreadProcessId(front, nullptr), &info);
  std::cout << "{\"foreground\":" << Number(front) << ",\"focus\":" << Number(info.hwndFocus)
            << ",\"capture\":" << Number(info.hwndCapture)
            << ",\"menu\":" << ((info.flags & GUI_INMENUMODE) != 0 ? "true" : "false") << "}\n";
}

void PrintItems(HWND combo) {
  const auto count = static_cast<int>(Ask(combo, CB_GETCOUNT));
  std::cout << "{\"chosen\":" << static_cast<int>(Ask(combo, CB_GETCURSEL)) << ",\"items\":[";
  for (int i = 0; i < count; ++i) {
    const auto index = static_cast<WPARAM>(i);
    std::vector<wchar_t> buffer(static_cast<std::size_t>(Ask(combo, CB_GETLBTEXTLEN, index)) + 1);
    Ask(combo, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(buffer.data()));
    std::cout << (i > 0 ? "," : "") << Escaped(buffer.data());
  }
  std::cout << "]}\n";
}

void Select(HWND combo, WPARAM index) {
  Ask(combo, CB_SETCURSEL, index);
  const auto id = static_cast<WORD>(GetDlgCtrlID(combo));
  Ask(GetParent(combo), WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
}

bool Click(const std::wstring& text) {
  for (const HWND top : ChildrenOf(nullptr)) {
    for (const HWND child : ChildrenOf(top)) {
      if (!IsWindowVisible(child) || TextOf(child) != text) continue;
      RECT area{};
      GetClientRect(child, &area);
      const LPARAM middle = MAKELPARAM(area.right / 2, area.bottom / 2);
      PostMessageW(child, WM_MOUSEMOVE, 0, middle);
      PostMessageW(child, WM_LBUTTONDOWN, MK_LBUTTON, middle);
      PostMessageW(child, WM_LBUTTONUP, 0, middle);
      return true;
    }
  }
  return false;
}

LRESULT CALLBACK ClientProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message != WM_COPYDATA) return DefWindowProcW(window, message, wparam, lparam);
  const auto& data = *reinterpret_cast<const COPYDATASTRUCT*>(lparam);
  const auto* bytes = static_cast<const unsigned char*>(data.lpData);
  std::ostringstream line;
  line << "{\"from\":" << wparam << ",\"tag\":" << data.dwData << ",\"bytes\":\"";
  for (DWORD i = 0; i < data.cbData; ++i) {
    char piece[3];
    std::snprintf(piece, sizeof piece, "%02x", static_cast<unsigned>(bytes[i]));
    line << piece;
  }
  line << "\"}\n";
  std::cout << line.str() << std::flush;
  return 1;
}

// A client goes on until its input ends.
int Client(const std::wstring& caption) {
  WNDCLASSW window_class{};
  window_class.lpfnWndProc = ClientProcedure;
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.lpszClassName = L"InspectClient";
  RegisterClassW(&window_class);
  const HWND window = CreateWindowExW(0, L"InspectClient", caption.c_str(), WS_OVERLAPPED, 0, 0, 1, 1,
                                      nullptr, nullptr, window_class.hInstance, nullptr);
  std::cout << "{\"end\":true,\"hwnd\":" << Number(window) << "}\n" << std::flush;
  std::thread watch([main_thread = GetCurrentThreadId()] {
    while (std::cin.get() != EOF)
      continue;
    PostThreadMessageW(main_thread, WM_QUIT, 0, 0);
  });
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0)
    DispatchMessageW(&message);
  watch.join();
  return 0;
}

std::wstring RestOf(std::istringstream& line) {
  std::string text;
  std::getline(line >> std::ws, text);
  return Wide(text);
}

bool ActOn(HWND window, const std::string& verb, std::istringstream& line) {
  if (verb == "region") {
    PrintRegion(window);
  } else if (verb == "window") {
    PrintOne(window);
  } else if (verb == "items") {
    PrintItems(window);
  } else if (verb == "select") {
    WPARAM index = 0;
    line >> index;
    Select(window, index);
  } else if (verb == "settext") {
    Ask(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(RestOf(line).c_str()));
  } else if (verb == "front") {
    ShowWindow(window, SW_SHOWNORMAL);
    return SetForegroundWindow(window) != 0;
  } else if (verb == "close") {
    return PostMessageW(window, WM_CLOSE, 0, 0) != 0;
  } else if (verb == "post" || verb == "send") {
    UINT message = 0;
    WPARAM wparam = 0;
    LPARAM lparam = 0;
    line >> message >> wparam >> lparam;
    if (verb == "post") return PostMessageW(window, message, wparam, lparam) != 0;
    std::cout << "{\"result\":" << Ask(window, message, wparam, lparam) << "}\n";
  } else {
    return false;
  }
  return true;
}

// A file that is open here and shared with nobody.
class HeldFile {
 public:
  HeldFile() = default;
  ~HeldFile() { Release(); }
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;

  bool Hold(const std::wstring& path) {
    Release();
    file_ =
        CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    return file_ != INVALID_HANDLE_VALUE;
  }
  void Release() {
    if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
    file_ = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE file_ = INVALID_HANDLE_VALUE;
};

bool Obey(const std::string& command, HeldFile& held) {
  std::istringstream line(command);
  std::string verb;
  line >> verb;
  if (verb == "hold") return held.Hold(RestOf(line));
  if (verb == "release") {
    held.Release();
    return true;
  }
  if (verb == "list") {
    List();
    return true;
  }
  if (verb == "focus") {
    PrintFocus();
    return true;
  }
  if (verb == "click") return Click(RestOf(line));
  std::uintptr_t number = 0;
  line >> number;
  return IsWindow(Window(number)) && ActOn(Window(number), verb, line);
}

}  // namespace

int main() {
  HeldFile held;
  std::string command;
  while (std::getline(std::cin, command)) {
    if (command.starts_with("client ")) return Client(Wide(command.substr(7)));
    const bool done = Obey(command, held);
    std::cout << "{\"end\":true,\"ok\":" << (done ? "true" : "false") << "}\n" << std::flush;
  }
  return 0;
}
