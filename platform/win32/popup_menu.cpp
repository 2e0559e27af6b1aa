#include "platform/modal_count.h"
#include "platform/win32/handles.h"
#include "platform/win32/text.h"
#include "platform/win32/window_system.h"

namespace orvane {
namespace {

struct MenuCloser {
  void operator()(HMENU menu) const { ::DestroyMenu(menu); }
};
using UniqueMenu = UniqueResource<HMENU, MenuCloser>;

// A menu owns the menus inside it: destroying the top one destroys them all.
UniqueMenu BuildMenu(const std::vector<MenuItem>& items) {
  UniqueMenu menu(::CreatePopupMenu());
  UINT position = 0;
  for (const MenuItem& item : items) {
    std::wstring text = ToWide(item.text);
    UniqueMenu submenu;
    MENUITEMINFOW info{};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_TYPE;
    info.fType = item.separator ? MFT_SEPARATOR : MFT_STRING;
    info.fState = item.checked ? MFS_CHECKED : MFS_ENABLED;
    info.wID = static_cast<UINT>(item.id);
    if (!item.submenu.empty()) submenu = BuildMenu(item.submenu);
    info.hSubMenu = submenu.get();
    info.dwTypeData = text.data();
    info.cch = static_cast<UINT>(text.size());
    if (::InsertMenuItemW(menu.get(), position++, TRUE, &info) != 0) static_cast<void>(submenu.release());
  }
  return menu;
}

}  // namespace

int Win32WindowSystem::ShowPopupMenu(const std::vector<MenuItem>& items, Widget* at) {
  const ModalCount open(modal_loops_);
  const UniqueMenu menu = BuildMenu(items);
  POINT place{};
  ::GetCursorPos(&place);
  UINT side = TPM_RIGHTALIGN;
  if (const auto* below = dynamic_cast<Win32Window*>(at)) {
    RECT window{};
    ::GetWindowRect(below->hwnd(), &window);
    const bool whole = ::GetAncestor(below->hwnd(), GA_ROOT) == below->hwnd();
    place = {window.left, whole ? window.top : window.bottom};
    side = TPM_LEFTALIGN;
    // The character of the key that opened the menu would close it at once.
    MSG character;
    ::PeekMessageW(&character, nullptr, WM_CHAR, WM_CHAR, PM_REMOVE);
  }
  // Without the foreground the menu would stay when the pointer is pressed elsewhere, and without a message
  // after it the next one would close at once.
  ::SetForegroundWindow(main_);
  const int choice = ::TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON | side,
                                      place.x, place.y, 0, main_, nullptr);
  ::PostMessageW(main_, WM_NULL, 0, 0);
  return choice;
}

}  // namespace orvane
