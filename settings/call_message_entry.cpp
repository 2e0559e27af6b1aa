#include "settings/call_message_entry.h"

#include "base/text.h"
#include "link/call_text.h"

namespace orvane {
namespace {

constexpr unsigned char kBackspace = 8;
constexpr unsigned char kLineFeed = 10;
constexpr unsigned char kEnter = 13;
constexpr unsigned char kEscape = 27;
constexpr unsigned char kLastPrintable = 126;

}  // namespace

unsigned char CallMessageKey(unsigned char code) {
  if (code == '0') return static_cast<unsigned char>(kSlashedZero);
  if (code >= ' ' && code <= kLastPrintable) return code;
  const bool edits = (code >= kBackspace && code <= kLineFeed) || code == kEnter || code == kEscape;
  return edits ? code : 0;
}

std::string CallMessageText(std::string_view text) {
  std::string taken;
  for (const char each : text) {
    const unsigned char key = each == kSlashedZero ? static_cast<unsigned char>(each)
                                                   : CallMessageKey(static_cast<unsigned char>(each));
    if (key >= ' ') taken += static_cast<char>(key);
  }
  return std::string(TrimRight(taken));
}

}  // namespace orvane
