#include "platform/win32/text_control.h"

#include "base/runtime_error.h"
#include "platform/win32/text.h"

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

// What the Ctrl key makes of letters, as characters.
constexpr WPARAM kSelectAll = 'A' - '@';
constexpr WPARAM kCopy = 'C' - '@';
constexpr WPARAM kPaste = 'V' - '@';
constexpr WPARAM kCut = 'X' - '@';
constexpr WPARAM kUndo = 'Z' - '@';

constexpr unsigned char kBackspace = 8;
constexpr unsigned char kDelete = 127;  // of Ctrl+Backspace; an edit control would show a box for it

// The character's code, 0 when the code page does not have it.
unsigned char CodeOf(wchar_t character) {
  char code = 0;
  BOOL missing = FALSE;
  const int length =
      ::WideCharToMultiByte(1252, WC_NO_BEST_FIT_CHARS, &character, 1, &code, 1, nullptr, &missing);
  return length == 1 && missing == FALSE ? static_cast<unsigned char>(code) : 0;
}

}  // namespace

TextControl::TextControl(WindowContext& context, Win32Window& container, PanelControlClient& client,
                         const Rect& bounds, bool read_only)
    : SystemWidget(context, container, &client, bounds), read_only_(read_only) {
  Create(L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL | (read_only ? ES_READONLY : 0U), WS_EX_CLIENTEDGE, {});
}

void TextControl::SetText(std::string_view text) {
  DWORD start = 0;
  DWORD end = 0;
  Send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  setting_ = true;
  PutText(text);
  setting_ = false;
  // The caret stays where it was, as far as the text goes: the user may be typing.
  const auto caret = std::min<std::size_t>(end, text.size());
  Send(EM_SETSEL, caret, static_cast<LPARAM>(caret));
}

std::string TextControl::Text() const {
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(hwnd())) + 1, L'\0');
  const int length = ::GetWindowTextW(hwnd(), text.data(), static_cast<int>(text.size()));
  return FromWide({text.data(), static_cast<std::size_t>(length)});
}

void TextControl::OnNotice(WORD code) {
  if (code == EN_CHANGE && !setting_) TellChange();
}

// A single line has no use for Enter and beeps at it; so it does at every other control character but those
// that it acts on.
LRESULT TextControl::OnCharacter(WPARAM character, LPARAM lparam) {
  if (character == kSelectAll) {
    Send(EM_SETSEL, 0, -1);
    return 0;
  }
  const bool command = character == kCopy || character == kPaste || character == kCut || character == kUndo;
  if (command) return ::DefSubclassProc(hwnd(), WM_CHAR, character, lparam);
  unsigned char code = CodeOf(static_cast<wchar_t>(character));
  if (code == 0 || read_only_) return 0;
  Attempt([&] { code = client()->OnKeyPress(code); });
  if ((code < ' ' && code != kBackspace) || code == kDelete) return 0;
  const std::wstring taken = ToWide(std::string(1, static_cast<char>(code)));
  return ::DefSubclassProc(hwnd(), WM_CHAR, taken.front(), lparam);
}

// An Enter that went down elsewhere, in a menu or on the button of a message box, is none for this box.
void TextControl::OnKeyReleased(WPARAM key) {
  const bool enter = key == VK_RETURN;
  if (enter && !std::exchange(enter_here_, false)) return;
  Attempt([&] { client()->OnKeyUp(enter); });
}

LRESULT TextControl::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_GETDLGCODE: {
      const LRESULT wanted = ::DefSubclassProc(hwnd(), message, wparam, lparam);
      const auto* key = reinterpret_cast<const MSG*>(lparam);
      return key != nullptr && key->wParam == VK_RETURN ? wanted | DLGC_WANTMESSAGE : wanted;
    }
    case WM_CHAR:
      return OnCharacter(wparam, lparam);
    case WM_KEYDOWN:
      if (wparam == VK_RETURN) enter_here_ = true;
      break;
    case WM_KILLFOCUS:
      enter_here_ = false;
      break;
    case WM_KEYUP: {
      const LRESULT result = SystemControl::OnMessage(message, wparam, lparam);
      OnKeyReleased(wparam);
      return result;
    }
    default:
      break;
  }
  return SystemControl::OnMessage(message, wparam, lparam);
}

}  // namespace orvane
