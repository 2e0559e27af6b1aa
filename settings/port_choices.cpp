#include "settings/port_choices.h"

#include <array>
#include <map>
#include <string>

namespace orvane {
namespace {

constexpr std::array<std::string_view, 3> kSpeeds{"38400", "19200", "9600"};
constexpr int kHighestPort = 256;

std::string Beside(const std::string& port, std::string_view what) {
  return what.empty() ? port : port + "  " + std::string(what);
}

}  // namespace

std::vector<ComboBox::Item> PortItems(const std::vector<PresentPort>& present,
                                      std::initializer_list<int> wanted) {
  std::map<int, std::string_view> ports;
  for (const int number : wanted)
    ports[number] = "(not present)";
  for (const PresentPort& port : present)
    ports[port.number] = port.name;
  std::vector<ComboBox::Item> items{{"No port", 0}};
  for (const auto& [number, what] : ports) {
    if (number < 1 || number > kHighestPort) continue;
    items.push_back({Beside("COM" + std::to_string(number), what), static_cast<std::int16_t>(number)});
  }
  return items;
}

std::vector<ComboBox::Item> SpeedItems(std::string_view kept) {
  std::vector<ComboBox::Item> items;
  bool listed = false;
  for (const std::string_view speed : kSpeeds) {
    items.push_back({std::string(speed), static_cast<std::int16_t>(items.size())});
    listed = listed || speed == kept;
  }
  if (!listed) items.push_back({std::string(kept), static_cast<std::int16_t>(items.size())});
  return items;
}

}  // namespace orvane
