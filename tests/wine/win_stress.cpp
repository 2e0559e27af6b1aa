// Wears the program out from inside Wine: opens and closes its menus and panels as fast as it takes them, and
// counts what it holds of the system.
//
// Reads one command a line and answers with one JSON object a line.
//
// clang-format off
//   open COUNT MAIN BUTTON...   COUNT openings in turn: the menu of each button, the panels, again and again;
//                               tells how many came up and went
//   count MAIN                  {"handles":..., "drawing":..., "windows":...} of the program
// clang-format on
#include <cstdint>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>
#include <windows.h>
#include <winternl.h>

namespace {

constexpr DWORD kPatienceMs = 5000;

template <typename Condition>
bool Soon(Condition condition) {
  for (const DWORD start = GetTickCount(); GetTickCount() - start < kPatienceMs;) {
    if (condition()) return true;
    Sleep(1);
  }
  return false;
}

DWORD ProcessOf(HWND window) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  return id;
}

bool MenuIsOpen() {
  const HWND menu = FindWindowW(L"#32768", nullptr);
  return menu != nullptr && IsWindowVisible(menu) != 0;
}

/// The program has worked off what was sent before.
void WaitForAnswer(HWND window) {
  DWORD_PTR ignored = 0;
  SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, kPatienceMs, &ignored);
}

void Press(HWND window, WPARAM key) {
  PostMessageW(window, WM_KEYDOWN, key, 1);
  PostMessageW(window, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

bool OpenMenu(HWND main, HWND button) {
  RECT area{};
  GetClientRect(button, &area);
  const LPARAM middle = MAKELPARAM(area.right / 2, area.bottom / 2);
  PostMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, middle);
  PostMessageW(button, WM_LBUTTONUP, 0, middle);
  if (!Soon(MenuIsOpen)) return false;
  Press(main, VK_ESCAPE);
  if (!Soon([] { return !MenuIsOpen(); })) return false;
  WaitForAnswer(main);
  return true;
}

BOOL CALLBACK NotePanel(HWND window, LPARAM found) {
  wchar_t name[32]{};
  GetClassNameW(window, name, 32);
  if (std::wstring(name) != L"OrvanePanel" || IsWindowVisible(window) == 0) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

HWND PanelOf(HWND main) {
  HWND found = nullptr;
  EnumChildWindows(main, &NotePanel, reinterpret_cast<LPARAM>(&found));
  return found;
}

bool OpenPanel(HWND main, WPARAM key) {
  Press(main, key);
  if (!Soon([=] { return PanelOf(main) != nullptr; })) return false;
  Press(PanelOf(main), VK_ESCAPE);
  if (!Soon([=] { return PanelOf(main) == nullptr; })) return false;
  WaitForAnswer(main);
  return true;
}

/// The panel of the meter's settings asks the meter for all of them, so it has its turn less often.
int Open(int count, HWND main, const std::vector<HWND>& buttons) {
  constexpr int kMeterPanelEach = 100;
  int opened = 0;
  for (int i = 0; i < count; ++i) {
    const auto turn = static_cast<std::size_t>(i) % (buttons.size() + 1);
    bool worked = false;
    if (i % kMeterPanelEach == kMeterPanelEach - 1) {
      worked = OpenPanel(main, VK_F2);
    } else if (turn == buttons.size()) {
      worked = OpenPanel(main, VK_F3);
    } else {
      worked = OpenMenu(main, buttons[turn]);
    }
    if (!worked) return opened;
    ++opened;
  }
  return opened;
}

// All handles of the system, of which those of one process are counted: Wine answers the direct question by
// 0.
int HandlesOf(DWORD process_id) {
  struct Entry {
    void* object;
    ULONG_PTR process;
    ULONG_PTR handle;
    ULONG rest[4];
  };
  struct Table {
    ULONG_PTR count;
    ULONG_PTR reserved;
    Entry entries[1];
  };
  // Asked for by its number, which the header does not list.
  using Query = LONG(NTAPI*)(int, void*, ULONG, ULONG*);
  constexpr int kExtendedHandles = 64;
  const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(&NtQuerySystemInformation));
  std::vector<char> bytes(1 << 20);
  ULONG needed = 0;
  if (query(kExtendedHandles, bytes.data(), static_cast<ULONG>(bytes.size()), &needed) != 0) return -1;
  const auto* table = reinterpret_cast<const Table*>(bytes.data());
  int count = 0;
  for (ULONG_PTR i = 0; i < table->count; ++i)
    count += table->entries[i].process == process_id ? 1 : 0;
  return count;
}

// Each process has its table of drawing objects where its environment block says.
int DrawingObjectsOf(DWORD process_id) {
  struct Entry {
    std::uint64_t object;
    std::uint32_t owner;
    std::uint16_t unique;
    std::uint8_t type;
    std::uint8_t flags;
    std::uint64_t user;
  };
  constexpr std::size_t kTableInBlock = 0xF8;
  constexpr std::size_t kMostObjects = 0x4000;
  const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process_id);
  PROCESS_BASIC_INFORMATION info{};
  std::uint64_t at = 0;
  std::vector<Entry> entries(kMostObjects);
  const bool read =
      process != nullptr &&
      NtQueryInformationProcess(process, ProcessBasicInformation, &info, sizeof(info), nullptr) == 0 &&
      ReadProcessMemory(process, reinterpret_cast<const char*>(info.PebBaseAddress) + kTableInBlock, &at,
                        sizeof(at), nullptr) != 0 &&
      ReadProcessMemory(process, reinterpret_cast<const void*>(at), entries.data(),
                        entries.size() * sizeof(Entry), nullptr) != 0;
  if (process != nullptr) CloseHandle(process);
  if (!read) return -1;
  int count = 0;
  for (const Entry& entry : entries)
    count += entry.type != 0 ? 1 : 0;
  return count;
}

struct Counting {
  DWORD process;
  int windows;
};

BOOL CALLBACK CountChild(HWND, LPARAM counting) {
  ++reinterpret_cast<Counting*>(counting)->windows;
  return TRUE;
}

BOOL CALLBACK CountWindow(HWND window, LPARAM counting) {
  auto* count = reinterpret_cast<Counting*>(counting);
  if (ProcessOf(window) != count->process) return TRUE;
  ++count->windows;
  EnumChildWindows(window, &CountChild, counting);
  return TRUE;
}

int WindowsOf(DWORD process_id) {
  Counting counting{process_id, 0};
  EnumWindows(&CountWindow, reinterpret_cast<LPARAM>(&counting));
  return counting.windows;
}

HWND NextWindow(std::istream& words) {
  std::uintptr_t number = 0;
  words >> number;
  return reinterpret_cast<HWND>(number);
}

void Carry(const std::string& line) {
  std::istringstream words(line);
  std::string verb;
  int count = 0;
  words >> verb;
  if (verb == "open") words >> count;
  const HWND main = NextWindow(words);
  if (verb == "open") {
    std::vector<HWND> buttons;
    for (HWND button = NextWindow(words); words; button = NextWindow(words))
      buttons.push_back(button);
    std::cout << "{\"opened\":" << Open(count, main, buttons) << "}" << std::endl;
    return;
  }
  const DWORD process = ProcessOf(main);
  std::cout << "{\"handles\":" << HandlesOf(process) << ",\"drawing\":" << DrawingObjectsOf(process)
            << ",\"windows\":" << WindowsOf(process) << "}" << std::endl;
}

}  // namespace

int main() {
  for (std::string line; std::getline(std::cin, line);)
    Carry(line);
  return 0;
}
