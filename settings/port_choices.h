#pragma once

#include "forms/panel_control.h"
#include "platform/port_list.h"

#include <initializer_list>
#include <string_view>
#include <vector>

namespace orvane {

/// What the list of ports offers: "No port" (0), the ports present now, "COM5  USB Serial Port", and of the
/// `wanted` ones those that are not present too, marked so. By number; a port carries its number as value.
std::vector<ComboBox::Item> PortItems(const std::vector<PresentPort>& present,
                                      std::initializer_list<int> wanted);

/// The line speeds that meters have, and `kept` when it is another one. Their value is their place.
std::vector<ComboBox::Item> SpeedItems(std::string_view kept);

}  // namespace orvane
