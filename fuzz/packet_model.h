// What the readings must be after some bytes of the line.
#pragma once

#include "base/runtime_error.h"
#include "link/packet_number.h"
#include "tests/support/naive_packet.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::fuzz {

struct PacketModel {
  std::int32_t forward = 0;
  std::int32_t reflected = 0;
  float vswr = 0.0F;
  /// All powers that may be shown: of each standing pair of readings, and none.
  std::vector<std::int64_t> nets{0};

  /// One line with its LF, as the receiver cuts it.
  void Take(std::string_view line) {
    if (const auto fields = NaiveFields(line)) {
      Attempt([&] { forward = WattsOf(fields->at(1)).value_or(forward); });
      Attempt([&] { reflected = WattsOf(fields->at(2)).value_or(reflected); });
      Attempt([&] { vswr = VSWROf(fields->at(3)).value_or(vswr); });
    }
    nets.push_back(static_cast<std::int64_t>(forward) - reflected);
  }

  bool MayShow(const std::string& text) const {
    if (text.empty()) return true;
    for (const std::int64_t net : nets) {
      if (text == std::to_string(net)) return true;
    }
    return false;
  }
};

}  // namespace orvane::fuzz
