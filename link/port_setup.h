#pragma once

#include "link/link_context.h"

#include <string>
#include <string_view>

namespace orvane {

/// Number of the port that a kept text names; 0, no port, for "0" and for what is no port number.
int PortNumber(std::string_view comm_port);

/// "38400" becomes "38400,N,8,1": docs/protocol.md, "The line".
std::string LineSettings(std::string_view speed);

/// Gives the kept port and speed to the serial port. The port number counts from the next opening.
/// @throws RuntimeError when the speed is none
void SetUpPort(const LinkContext& link);

}  // namespace orvane
