#include "platform/win32/dpi.h"

#include "platform/win32/system_library.h"
#include "platform/win32/windows_api.h"

namespace orvane {
namespace {

using Context = HANDLE;  // DPI_AWARENESS_CONTEXT in later headers
Context ContextOf(INT_PTR value) {
  return reinterpret_cast<Context>(value);
}
const INT_PTR kSystemAware = -2;
const INT_PTR kUnawareGdiScaled = -5;

int LogicalPixelsPerInch() {
  const HDC screen = ::GetDC(nullptr);
  const int pixels = ::GetDeviceCaps(screen, LOGPIXELSX);
  ::ReleaseDC(nullptr, screen);
  return pixels;
}

// An unaware process is told 96 everywhere. The thread looks with other eyes for a moment where that is
// possible (Windows 10 from 1607); before, the screen's true width against the one the process is told gives
// the scale.
int TruePixelsPerInch() {
  const auto set_context = FindLateCall<Context(WINAPI*)(Context)>("SetThreadDpiAwarenessContext");
  if (set_context != nullptr) {
    const Context before = set_context(ContextOf(kSystemAware));
    const auto dpi_for_system = FindLateCall<UINT(WINAPI*)()>("GetDpiForSystem");
    const int pixels =
        dpi_for_system != nullptr ? static_cast<int>(dpi_for_system()) : LogicalPixelsPerInch();
    set_context(before);
    return pixels;
  }
  const HDC screen = ::GetDC(nullptr);
  const int told = ::GetDeviceCaps(screen, HORZRES);
  const int real = ::GetDeviceCaps(screen, DESKTOPHORZRES);
  ::ReleaseDC(nullptr, screen);
  return told > 0 ? ::MulDiv(LogicalPixelsPerInch(), real, told) : LogicalPixelsPerInch();
}

}  // namespace

int DecideDpiAwareness() {
  constexpr int kDesign = 96;
  constexpr int kLargeFace = 120;
  if (TruePixelsPerInch() == kLargeFace) {
    ::SetProcessDPIAware();
    return kLargeFace;
  }
  // Sharp text and lines while the system enlarges, where it knows how (Windows 10 from 1703); else plain
  // enlarging.
  const auto set_process = FindLateCall<BOOL(WINAPI*)(Context)>("SetProcessDpiAwarenessContext");
  if (set_process != nullptr) set_process(ContextOf(kUnawareGdiScaled));
  return kDesign;
}

}  // namespace orvane
