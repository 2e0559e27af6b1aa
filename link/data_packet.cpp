#include "link/data_packet.h"

#include "base/numeric_text.h"
#include "base/runtime_error.h"
#include "link/crc8.h"
#include "link/frame.h"
#include "link/packet_number.h"

#include <array>
#include <cstddef>
#include <optional>

namespace orvane {
namespace {

using Fields = std::array<std::string_view, 5>;

// Nothing unless there are exactly five.
std::optional<Fields> SplitFields(std::string_view line) {
  Fields fields;
  for (std::size_t i = 0; i + 1 < fields.size(); ++i) {
    const auto comma = line.find(',');
    if (comma == std::string_view::npos) return std::nullopt;
    fields[i] = line.substr(0, comma);
    line.remove_prefix(comma + 1);
  }
  if (line.find(',') != std::string_view::npos) return std::nullopt;
  fields.back() = line;
  return fields;
}

void TakeFlag(std::string_view text, Bool16& flag) {
  if (const auto number = NumberOf(text)) flag = ToBool16(*number != 0.0);
}

// The field still has ETX and checksum behind it. Two one-digit flags and their ";" are three characters; the
// cut takes the rest off, and the tail of a longer field with it.
void TakeAlarms(std::string_view field, MeterState& state) {
  if (field.find(';') == std::string_view::npos) return;
  field = field.substr(0, 3);
  const auto separator = field.find(';');
  Attempt([&] { TakeFlag(field.substr(0, separator), state.SWRAlarm); });
  if (separator == std::string_view::npos) return;
  Attempt([&] { TakeFlag(field.substr(separator + 1), state.PwrAlarm); });
}

}  // namespace

void ProcessDataPacket(std::string_view packet, MeterState& state) {
  const std::string_view line = packet.substr(0, packet.find(kCR));
  if (!CheckCRC(line, CRCToHex(CalcCRC8(line, true, true)))) return;
  if (line.find(kETX) == std::string_view::npos) return;
  const auto fields = SplitFields(line);
  if (!fields) return;
  Attempt([&] { state.ForwardPower = WattsOf((*fields)[1]).value_or(state.ForwardPower); });
  Attempt([&] { state.ReflectedPower = WattsOf((*fields)[2]).value_or(state.ReflectedPower); });
  Attempt([&] { state.VSWR = VSWROf((*fields)[3]).value_or(state.VSWR); });
  TakeAlarms((*fields)[4], state);
}

}  // namespace orvane
