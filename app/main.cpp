#include "platform/platform.h"
#include "platform/win32/client_windows.h"
#include "platform/win32/dpi.h"
#include "platform/win32/event_pump.h"
#include "platform/win32/event_window.h"
#include "platform/win32/files.h"
#include "platform/win32/port_list.h"
#include "platform/win32/profile_store.h"
#include "platform/win32/serial_port.h"
#include "platform/win32/shell.h"
#include "platform/win32/system_info.h"
#include "platform/win32/system_library.h"
#include "platform/win32/window_system.h"
#include "window/orvane.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  orvane::TakeLibrariesFromTheSystem();
  const int pixels_per_inch = orvane::DecideDpiAwareness();
  orvane::Win32Clock clock;
  orvane::EventWindow events;
  orvane::Win32SerialPort port(events);
  orvane::Win32EventPump pump(clock, port);
  orvane::Win32ProfileStore profiles;
  orvane::Win32Files files;
  orvane::Win32WindowSystem windows(events, pixels_per_inch);
  orvane::Win32SingleInstance instance;
  orvane::Win32Shell shell(windows);
  orvane::Win32ClientWindows clients(windows);
  orvane::Win32PortList ports;
  orvane::Win32SystemInfo system;
  orvane::Platform platform{clock,    pump,  port,    profiles, files, windows,
                            instance, shell, clients, ports,    system};

  const auto program = orvane::StartProgram(platform);
  pump.Run();
  return 0;
}
