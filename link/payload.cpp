#include "link/payload.h"

#include "base/checked.h"
#include "base/numeric_text.h"
#include "base/text.h"
#include "link/frame.h"

namespace orvane {

std::string ExtractPayload(std::string_view message) {
  std::string payload(message.substr(0, message.rfind(kETX)));
  std::erase_if(payload, [](char c) { return c == kSTX || c == kETX || c == kCR || c == kLF; });
  return payload;
}

std::optional<std::int16_t> PayloadNumber(std::string_view message, char letter) {
  const auto number = NumberOf(RemoveFirst(ExtractPayload(message), letter));
  if (!number) return std::nullopt;
  return RoundToInt16(*number);
}

}  // namespace orvane
