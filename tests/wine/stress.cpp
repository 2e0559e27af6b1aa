// Wears the program out: opens and closes its menus and panels as fast as it takes them, and counts what it
// holds of the system.
#include "tests/wine/inspect.h"

#include <vector>
#include <winternl.h>

namespace inspect {
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

bool MenuIsOpen() {
  const HWND menu = FindWindowW(L"#32768", nullptr);
  return menu != nullptr && IsWindowVisible(menu) != 0;
}

BOOL CALLBACK NotePanel(HWND window, LPARAM found) {
  if (ClassOf(window) != L"OrvanePanel" || IsWindowVisible(window) == 0) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

HWND PanelOf(HWND main) {
  HWND found = nullptr;
  EnumChildWindows(main, &NotePanel, reinterpret_cast<LPARAM>(&found));
  return found;
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
  return Soon([] { return !MenuIsOpen(); });
}

bool OpenPanel(HWND main, WPARAM key) {
  Press(main, key);
  if (!Soon([=] { return PanelOf(main) != nullptr; })) return false;
  Press(PanelOf(main), VK_ESCAPE);
  return Soon([=] { return PanelOf(main) == nullptr; });
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
  if (process == nullptr) return -1;
  PROCESS_BASIC_INFORMATION info{};
  std::uint64_t at = 0;
  std::vector<Entry> entries(kMostObjects);
  const auto read = [&](const void* from, void* to, std::size_t size) {
    return ReadProcessMemory(process, from, to, size, nullptr) != 0;
  };
  const bool known =
      NtQueryInformationProcess(process, ProcessBasicInformation, &info, sizeof(info), nullptr) == 0 &&
      read(reinterpret_cast<const char*>(info.PebBaseAddress) + kTableInBlock, &at, sizeof(at)) &&
      read(reinterpret_cast<const void*>(at), entries.data(), entries.size() * sizeof(Entry));
  CloseHandle(process);
  int count = 0;
  for (const Entry& entry : entries)
    count += entry.type != 0 ? 1 : 0;
  return known ? count : -1;
}

struct Counting {
  DWORD process;
  int windows = 0;
};

BOOL CALLBACK CountWindow(HWND window, LPARAM counting) {
  auto* count = reinterpret_cast<Counting*>(counting);
  if (ProcessOf(window) != count->process) return TRUE;
  ++count->windows;
  if (GetAncestor(window, GA_PARENT) == GetDesktopWindow())
    EnumChildWindows(window, &CountWindow, counting);  // all that is below, at any depth
  return TRUE;
}

}  // namespace

bool Open(HWND main, std::istream& words, std::ostream& out) {
  constexpr int kMeterPanelEach = 100;  // it asks the meter for all its settings: its turn comes less often
  int count = 0;
  words >> count;
  std::vector<HWND> buttons;
  for (HWND button = NextWindow(words); words; button = NextWindow(words))
    buttons.push_back(button);
  int opened = 0;
  for (bool worked = true; worked && opened < count;) {
    const auto turn = static_cast<std::size_t>(opened) % (buttons.size() + 1);
    const bool meter = opened % kMeterPanelEach == kMeterPanelEach - 1;
    worked = meter || turn == buttons.size() ? OpenPanel(main, meter ? VK_F2 : VK_F3)
                                             : OpenMenu(main, buttons[turn]);
    opened += worked ? 1 : 0;
    // until the program has worked off what was sent before
    SendMessageTimeoutW(main, WM_NULL, 0, 0, SMTO_NORMAL, kPatienceMs, nullptr);
  }
  out << "{\"opened\":" << opened << "}\n";
  return true;
}

bool Count(HWND main, std::istream&, std::ostream& out) {
  Counting counting{ProcessOf(main)};
  EnumWindows(&CountWindow, reinterpret_cast<LPARAM>(&counting));
  out << "{\"handles\":" << HandlesOf(counting.process)
      << ",\"drawing\":" << DrawingObjectsOf(counting.process) << ",\"windows\":" << counting.windows
      << "}\n";
  return true;
}

}  // namespace inspect
