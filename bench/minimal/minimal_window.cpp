// The least that shows readings of the meter in a window: COM2 at 38400 bits per second, a read of one byte
// that is waited for beside the messages, and bars and readouts painted anew on every line. No search, no
// settings, no face, no range: what this costs is the price of a window and a port alone.
#include "bench/floor.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <windows.h>

namespace {

using orvane::bench::FloorReading;

constexpr int kWidth = 640;
constexpr int kHeight = 260;
constexpr int kPlace = 100;  // pixels from the screen's corner; bench/program looks for its bars there

/// The window's picture in memory, painted whole and copied to the screen.
class Face {
 public:
  void Open(HWND window) {
    window_ = window;
    const HDC screen = ::GetDC(window);
    memory_ = ::CreateCompatibleDC(screen);
    ::SelectObject(memory_, ::CreateCompatibleBitmap(screen, kWidth, kHeight));
    ::SelectObject(memory_,
                   ::CreateFontW(-24, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Arial"));
    ::ReleaseDC(window, screen);
    ::SetBkMode(memory_, TRANSPARENT);
    ::SetTextColor(memory_, RGB(214, 244, 255));
    lit_ = ::CreateSolidBrush(RGB(255, 180, 60));
    dark_ = ::CreateSolidBrush(RGB(40, 40, 40));
    ground_ = ::CreateSolidBrush(RGB(34, 40, 46));
    Draw();
  }
  void Show(const FloorReading& reading) {
    reading_ = reading;
    Draw();
    const HDC screen = ::GetDC(window_);
    CopyTo(screen);
    ::ReleaseDC(window_, screen);
  }
  void CopyTo(HDC screen) const { ::BitBlt(screen, 0, 0, kWidth, kHeight, memory_, 0, 0, SRCCOPY); }

 private:
  void Fill(const RECT& area, HBRUSH brush) const { ::FillRect(memory_, &area, brush); }
  void Bar(int top, double level) const {
    for (int i = 0; i < 51; ++i) {
      const int left = 20 + i * 8;
      Fill({left, top, left + 6, top + 24}, i < level ? lit_ : dark_);
    }
  }
  void Readout(int top, double value, int decimals) const {
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    ::TextOutA(memory_, 460, top, text.data(), static_cast<int>(end.ptr - text.data()));
  }
  void Draw() const {
    Fill({0, 0, kWidth, kHeight}, ground_);
    Bar(40, (reading_.forward - reading_.reflected) / 30.0);
    Bar(110, reading_.reflected / 10.0);
    Readout(40, reading_.forward - reading_.reflected, 0);
    Readout(110, reading_.reflected, 0);
    Readout(180, reading_.vswr, 2);
  }

  HWND window_ = nullptr;
  HDC memory_ = nullptr;
  HBRUSH lit_ = nullptr;
  HBRUSH dark_ = nullptr;
  HBRUSH ground_ = nullptr;
  FloorReading reading_;
};

/// COM2. One byte is asked for; when it is there, what has queued up behind it is read at once.
class Port {
 public:
  bool Open() {
    port_ = ::CreateFileW(L"\\\\.\\COM2", GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                          FILE_FLAG_OVERLAPPED, nullptr);
    if (port_ == INVALID_HANDLE_VALUE) return false;
    DCB line{};
    line.DCBlength = sizeof line;
    ::GetCommState(port_, &line);
    line.BaudRate = CBR_38400;
    line.ByteSize = 8;
    line.Parity = NOPARITY;
    line.StopBits = ONESTOPBIT;
    ::SetCommState(port_, &line);
    COMMTIMEOUTS no_timeouts{};
    ::SetCommTimeouts(port_, &no_timeouts);
    first_.hEvent = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    rest_.hEvent = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    return Ask();
  }
  HANDLE Arrived() const { return first_.hEvent; }
  /// Takes what has come and asks for the next byte. @return false when the port is gone
  bool Take(std::string& buffer) {
    DWORD count = 0;
    if (::GetOverlappedResult(port_, &first_, &count, FALSE) == 0) return false;
    buffer.append(&byte_, count);
    DWORD errors = 0;
    COMSTAT queue{};
    if (::ClearCommError(port_, &errors, &queue) == 0) return false;
    std::array<char, 4096> bytes;
    const DWORD wanted = std::min<DWORD>(queue.cbInQue, static_cast<DWORD>(bytes.size()));
    if (wanted > 0) {
      ::ReadFile(port_, bytes.data(), wanted, nullptr, &rest_);
      if (::GetOverlappedResult(port_, &rest_, &count, TRUE) == 0) return false;
      buffer.append(bytes.data(), count);
    }
    return Ask();
  }

 private:
  bool Ask() {
    ::ResetEvent(first_.hEvent);
    return ::ReadFile(port_, &byte_, 1, nullptr, &first_) != 0 || ::GetLastError() == ERROR_IO_PENDING;
  }

  HANDLE port_ = INVALID_HANDLE_VALUE;
  OVERLAPPED first_{};
  OVERLAPPED rest_{};
  char byte_ = 0;
};

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wide, LPARAM param) {
  const auto* face = reinterpret_cast<const Face*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  switch (message) {
    case WM_PAINT: {
      PAINTSTRUCT paint;
      const HDC screen = ::BeginPaint(window, &paint);
      if (face != nullptr) face->CopyTo(screen);
      ::EndPaint(window, &paint);
      return 0;
    }
    case WM_DESTROY:
      ::PostQuitMessage(0);
      return 0;
    default:
      return ::DefWindowProcW(window, message, wide, param);
  }
}

bool HandleMessages() {
  MSG message;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (message.message == WM_QUIT) return false;
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
  return true;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  WNDCLASSW look{};
  look.lpfnWndProc = OnMessage;
  look.hInstance = instance;
  look.lpszClassName = L"MinimalWindow";
  ::RegisterClassW(&look);
  Face face;
  const HWND window = ::CreateWindowExW(0, look.lpszClassName, L"Minimal Window", WS_POPUP, kPlace, kPlace,
                                        kWidth, kHeight, nullptr, nullptr, instance, nullptr);
  if (window == nullptr) return 1;
  face.Open(window);
  ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&face));
  ::ShowWindow(window, SW_SHOWNORMAL);
  ::UpdateWindow(window);
  Port port;
  if (!port.Open()) return 2;
  orvane::bench::FloorReceiver receiver;
  std::string bytes;
  const HANDLE arrived = port.Arrived();
  while (HandleMessages()) {
    if (::MsgWaitForMultipleObjectsEx(1, &arrived, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE) !=
        WAIT_OBJECT_0)
      continue;
    bytes.clear();
    if (!port.Take(bytes)) return 3;
    receiver.Receive(bytes, [&face](std::string_view line) {
      FloorReading reading;
      if (orvane::bench::FloorPacket(line, reading)) face.Show(reading);
    });
  }
  return 0;
}
