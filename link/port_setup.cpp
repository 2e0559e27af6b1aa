#include "link/port_setup.h"

#include "base/numeric_text.h"
#include "base/runtime_error.h"

#include <algorithm>

namespace orvane {

int PortNumber(std::string_view comm_port) {
  int number = 0;
  Attempt([&] { number = Int16Of(comm_port); });
  return std::max(number, 0);
}

std::string LineSettings(std::string_view speed) {
  return std::string(speed) + ",N,8,1";
}

void SetUpPort(const LinkContext& link) {
  link.port.SetCommPort(PortNumber(link.settings.CommPort()));
  link.port.SetSettings(LineSettings(link.settings.BaudRate()));
}

}  // namespace orvane
