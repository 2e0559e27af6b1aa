#pragma once

#include "link/link_context.h"

namespace orvane {

/// What was read counts for nothing any more: the port is lost, the meter silent or another one, or its
/// readings were stopped. The state's readings are zero and not live until the next packet, and the window is
/// told. An old number must not be taken for a reading, neither on the screen nor by whatever line comes
/// next.
void DropReadings(const LinkContext& link);

/// The port is gone: closes it, drops the readings and says so. PortWatch waits for its return.
void LosePort(const LinkContext& link);

}  // namespace orvane
