#include "link/data_packet.h"

#include "base/numeric_text.h"
#include "base/runtime_error.h"
#include "link/crc8.h"
#include "link/frame.h"
#include "link/packet_number.h"

#include <array>
#include <cstddef>

namespace orvane {
namespace {

using Fields = std::array<std::string_view, 5>;

// False unless there are exactly five.
bool SplitFields(std::string_view line, Fields& fields) {
  std::size_t count = 0;
  std::size_t start = 0;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line[at] != ',') continue;
    if (count + 1 == fields.size()) return false;
    fields[count++] = line.substr(start, at - start);
    start = at + 1;
  }
  fields[count] = line.substr(start);
  return count + 1 == fields.size();
}

void TakeFlag(std::string_view text, Bool16& flag) {
  if (text.size() == 1 && (text[0] == '0' || text[0] == '1')) {  // what the meter sends
    flag = ToBool16(text[0] == '1');
  } else if (const auto number = NumberOf(text)) {
    flag = ToBool16(*number != 0.0);
  }
}

// The field still has ETX and checksum behind it. Two one-digit flags and their ";" are three characters; the
// cut takes the rest off, and the tail of a longer field with it.
void TakeAlarms(std::string_view field, MeterState& state) {
  if (field.find(';') == std::string_view::npos) return;
  field = field.substr(0, 3);
  const auto separator = field.find(';');
  Attempt([&] { TakeFlag(field.substr(0, separator), state.SWRAlarm); });
  if (separator == std::string_view::npos) return;
  const std::string_view second = field.substr(separator + 1);
  Attempt([&] { TakeFlag(second.substr(0, second.find(';')), state.PwrAlarm); });
}

}  // namespace

bool ProcessDataPacket(std::string_view packet, MeterState& state) {
  const std::string_view line = packet.substr(0, packet.find(kCR));
  if (!CheckCRC(line, CalcCRC8(line, true, true))) return false;
  if (line.find(kETX) == std::string_view::npos) return false;
  Fields fields;
  if (!SplitFields(line, fields)) return false;
  state.ReadingsLive = true;
  state.ReadingsSeen = true;
  Attempt([&] { state.ForwardPower = WattsOf(fields[1]).value_or(state.ForwardPower); });
  Attempt([&] { state.ReflectedPower = WattsOf(fields[2]).value_or(state.ReflectedPower); });
  Attempt([&] { state.VSWR = VSWROf(fields[3]).value_or(state.VSWR); });
  TakeAlarms(fields[4], state);
  return true;
}

}  // namespace orvane
