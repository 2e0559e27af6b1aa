#pragma once

#include "platform/client_windows.h"
#include "platform/clock.h"
#include "platform/event_pump.h"
#include "platform/port_list.h"
#include "platform/profile_store.h"
#include "platform/serial_port.h"
#include "platform/shell.h"
#include "platform/system_info.h"
#include "platform/window_system.h"

namespace orvane {

/// Everything the program asks of its system, as one bundle.
struct Platform {
  Clock& clock;
  EventPump& pump;
  SerialPort& port;
  ProfileStore& profiles;
  Files& files;
  WindowSystem& windows;
  SingleInstance& instance;
  Shell& shell;
  ClientWindows& clients;
  PortList& ports;
  SystemInfo& system;
};

}  // namespace orvane
