// A client of Orvane Lite: a window that shows the forward power, as big as the window allows. What such a
// program has to do is in TakeMessage and ReadingOf; docs/client.md tells the same in words. Nothing is
// remembered from run to run.
//
//   ov_client [--caption TEXT] [--tag NUMBER] [--accept-lower] [--log FILE] [--hang MS]
//
//   --caption TEXT   caption of the window, as in CLIENT-APP of Orvane Lite; OVClient without it
//   --tag NUMBER     number that marks our messages, as in CLIENT-MSG-ID; 14300 without it
//   --accept-lower   takes messages of programs with fewer rights: needed where this one runs as
//   administrator
//   --log FILE       adds a line for each message: tag, number of bytes, the bytes in hexadecimal digits, and
//                    "refused" for one that is no reading
//   --hang MS        sleeps so long in the handler of each message, to see how the sender bears it
#ifndef UNICODE
#define UNICODE
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
// clang-format off
#include <windows.h>
#include <shellapi.h>
// clang-format on

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace {

constexpr DWORD kLongestMessage = 12;  // "-2147483648" and its NUL
constexpr DWORD kLongestLogged = 256;  // bytes of one message that go to the log
constexpr UINT kTooOldMs = 5000;       // the meter's slowest mode sends a reading every two seconds
constexpr UINT_PTR kTooOldTimer = 1;
constexpr COLORREF kFreshColor = RGB(0x10, 0x50, 0x90);
constexpr COLORREF kOldColor = RGB(0x70, 0x70, 0x70);

struct Options {
  std::wstring caption = L"OVClient";
  DWORD tag = 14300;
  bool accept_lower = false;
  std::wstring log;
  DWORD hang_ms = 0;
};

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
struct FontDeleter {
  using pointer = HFONT;
  void operator()(HFONT font) const { DeleteObject(font); }
};

struct Client {
  Options options;
  std::unique_ptr<std::FILE, FileCloser> log;
  HWND number = nullptr;
  HWND note = nullptr;
  std::unique_ptr<HFONT, FontDeleter> number_font;
  std::unique_ptr<HFONT, FontDeleter> note_font;
  bool fresh = false;
};

/// The reading in a message. Any program can send us anything: what is not exactly decimal digits, with or
/// without a minus sign, and one NUL behind them is no reading.
std::optional<std::int32_t> ReadingOf(const COPYDATASTRUCT& message, DWORD tag) {
  // Only the lower 32 bits of the tag are defined: sender and client need not have the same word size.
  if (static_cast<DWORD>(message.dwData) != tag) return std::nullopt;
  if (message.lpData == nullptr || message.cbData < 2 || message.cbData > kLongestMessage)
    return std::nullopt;
  const std::string_view bytes(static_cast<const char*>(message.lpData), message.cbData);
  if (bytes.back() != '\0') return std::nullopt;
  const char* const end = bytes.data() + bytes.size() - 1;
  std::int32_t value = 0;
  const auto [stop, error] = std::from_chars(bytes.data(), end, value);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

void WriteLog(std::FILE* file, const COPYDATASTRUCT& message, bool taken) {
  if (file == nullptr) return;
  const auto* bytes = static_cast<const unsigned char*>(message.lpData);
  const DWORD count = bytes == nullptr ? 0 : std::min(message.cbData, kLongestLogged);
  std::fprintf(file, "%lu %lu ", static_cast<unsigned long>(message.dwData),
               static_cast<unsigned long>(message.cbData));
  for (DWORD i = 0; i < count; ++i)
    std::fprintf(file, "%02x", static_cast<unsigned>(bytes[i]));
  std::fputs(taken ? "\n" : " refused\n", file);
  std::fflush(file);
}

void Show(HWND window, Client& client, std::optional<std::int32_t> watts) {
  client.fresh = watts.has_value();
  // The old number stays, grey: it was the last one.
  if (watts) SetWindowTextW(client.number, std::to_wstring(*watts).c_str());
  SetWindowTextW(client.note, watts ? L"watts forward" : L"no readings");
  InvalidateRect(client.number, nullptr, TRUE);
  if (watts) {
    SetTimer(window, kTooOldTimer, kTooOldMs, nullptr);
  } else {
    KillTimer(window, kTooOldTimer);
  }
}

/// The data are ours only until we return, and the sender waits for that: copy what is needed, and be quick.
LRESULT TakeMessage(HWND window, Client& client, const COPYDATASTRUCT* message) {
  if (message == nullptr) return FALSE;
  const auto watts = ReadingOf(*message, client.options.tag);
  WriteLog(client.log.get(), *message, watts.has_value());
  if (watts) Show(window, client, watts);
  if (client.options.hang_ms != 0) Sleep(client.options.hang_ms);
  return watts ? TRUE : FALSE;
}

HFONT MakeFont(int height, int weight) {
  return CreateFontW(-height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                     CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_SWISS, L"Segoe UI");
}

void Arrange(Client& client, int width, int height) {
  const int note_height = std::max(height / 4, 1);
  const int number_height = std::max(height - note_height, 1);
  MoveWindow(client.number, 0, 0, width, number_height, TRUE);
  MoveWindow(client.note, 0, number_height, width, note_height, TRUE);
  // Six characters beside each other must fit as well.
  std::unique_ptr<HFONT, FontDeleter> number(
      MakeFont(std::max(std::min(number_height * 3 / 4, width / 4), 8), FW_SEMIBOLD));
  std::unique_ptr<HFONT, FontDeleter> note(
      MakeFont(std::max(std::min(note_height / 2, width / 12), 8), FW_NORMAL));
  SendMessageW(client.number, WM_SETFONT, reinterpret_cast<WPARAM>(number.get()), TRUE);
  SendMessageW(client.note, WM_SETFONT, reinterpret_cast<WPARAM>(note.get()), TRUE);
  client.number_font.swap(number);
  client.note_font.swap(note);
}

/// Two labels, which screen readers find as they are.
void Create(HWND window, Client& client) {
  const auto label = [window](const wchar_t* text, DWORD style) {
    return CreateWindowExW(0, L"STATIC", text, WS_CHILD | WS_VISIBLE | SS_CENTER | SS_NOPREFIX | style, 0, 0,
                           0, 0, window, nullptr, nullptr, nullptr);
  };
  client.number = label(L"\u2013", SS_CENTERIMAGE);
  client.note = label(L"no readings", 0);
  if (client.options.accept_lower) ChangeWindowMessageFilterEx(window, WM_COPYDATA, MSGFLT_ALLOW, nullptr);
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lparam);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
  }
  auto* client = reinterpret_cast<Client*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (client == nullptr) return DefWindowProcW(window, message, wparam, lparam);
  switch (message) {
    case WM_CREATE:
      Create(window, *client);
      return 0;
    case WM_COPYDATA:
      return TakeMessage(window, *client, reinterpret_cast<const COPYDATASTRUCT*>(lparam));
    case WM_TIMER:
      Show(window, *client, std::nullopt);
      return 0;
    case WM_SIZE:
      if (wparam != SIZE_MINIMIZED) Arrange(*client, LOWORD(lparam), HIWORD(lparam));
      return 0;
    case WM_CTLCOLORSTATIC: {
      const HDC dc = reinterpret_cast<HDC>(wparam);
      SetTextColor(dc, client->fresh ? kFreshColor : kOldColor);
      SetBkColor(dc, GetSysColor(COLOR_WINDOW));
      return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    }
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcW(window, message, wparam, lparam);
  }
}

struct LocalFreer {
  void operator()(void* memory) const { LocalFree(memory); }
};

/// Nothing for a command line that is not understood.
std::optional<Options> ReadCommandLine() {
  int count = 0;
  const std::unique_ptr<wchar_t*[], LocalFreer> words(CommandLineToArgvW(GetCommandLineW(), &count));
  Options options;
  for (int i = 1; i < count; ++i) {
    const std::wstring_view name = words[i];
    if (name == L"--accept-lower") {
      options.accept_lower = true;
      continue;
    }
    if (++i == count) return std::nullopt;
    const wchar_t* const value = words[i];
    if (name == L"--caption") {
      options.caption = value;
    } else if (name == L"--tag") {
      options.tag = std::wcstoul(value, nullptr, 10);
    } else if (name == L"--log") {
      options.log = value;
    } else if (name == L"--hang") {
      options.hang_ms = std::wcstoul(value, nullptr, 10);
    } else {
      return std::nullopt;
    }
  }
  return options;
}

int Run(Client& client, HINSTANCE instance) {
  constexpr const wchar_t* kClass = L"OrvaneExampleClient";
  WNDCLASSW window_class{};
  window_class.lpfnWndProc = WindowProcedure;
  window_class.hInstance = instance;
  window_class.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  window_class.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  window_class.lpszClassName = kClass;
  RegisterClassW(&window_class);
  SetProcessDPIAware();
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  const HWND window = CreateWindowExW(0, kClass, client.options.caption.c_str(), WS_OVERLAPPEDWINDOW,
                                      CW_USEDEFAULT, CW_USEDEFAULT, MulDiv(320, dpi, 96),
                                      MulDiv(200, dpi, 96), nullptr, nullptr, instance, &client);
  if (window == nullptr) return 1;
  ShowWindow(window, SW_SHOWNORMAL);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return 0;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  const auto options = ReadCommandLine();
  if (!options) {
    MessageBoxW(nullptr,
                L"ov_client [--caption TEXT] [--tag NUMBER] [--accept-lower] [--log FILE] [--hang MS]",
                L"OVClient", MB_OK | MB_ICONINFORMATION);
    return 2;
  }
  Client client;
  client.options = *options;
  if (!options->log.empty()) {
    client.log.reset(_wfopen(options->log.c_str(), L"ab"));
    if (!client.log) {
      MessageBoxW(nullptr, L"The log file cannot be written.", L"OVClient", MB_OK | MB_ICONERROR);
      return 1;
    }
  }
  return Run(client, instance);
}
