#include "outside/support_mail.h"

#include "outside/addresses.h"
#include "outside/os_info.h"

#include <array>
#include <cstdint>

namespace orvane {
namespace {

// What Windows-1252 has where Latin-1 has control codes, from 0x80 on. The five codes that it leaves open are
// passed on as the control codes, as Windows does.
constexpr std::array<char32_t, 32> kHighCodes{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                              0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                              0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                              0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t CodePoint(unsigned char code) {
  return code >= 0x80 && code < 0xA0 ? kHighCodes[code - 0x80U] : code;
}

bool Unreserved(unsigned char code) {
  return (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z') ||
         code == '-' || code == '.' || code == '_' || code == '~';
}

void AppendEncoded(std::string& text, char32_t byte) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  text += '%';
  text += kDigits[byte >> 4];
  text += kDigits[byte & 0xF];
}

}  // namespace

std::string PercentEncoded(std::string_view text) {
  std::string encoded;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    const char32_t point = CodePoint(code);
    if (Unreserved(code)) {
      encoded += c;
    } else if (point < 0x80) {
      AppendEncoded(encoded, point);
    } else if (point < 0x800) {
      AppendEncoded(encoded, 0xC0 | (point >> 6));
      AppendEncoded(encoded, 0x80 | (point & 0x3F));
    } else {
      AppendEncoded(encoded, 0xE0 | (point >> 12));
      AppendEncoded(encoded, 0x80 | ((point >> 6) & 0x3F));
      AppendEncoded(encoded, 0x80 | (point & 0x3F));
    }
  }
  return encoded;
}

std::string SupportMailTarget(SystemInfo& system) {
  const ProgramVersion program = system.OwnVersion();
  const std::string subject =
      "Comments on " + program.ProductName + VersionSuffix(program) + ", " + RunningOn(GetOSInfo(system));
  return "mailto:" + std::string(kSupportAddress) + "?subject=" + PercentEncoded(subject) +
         "&Body=" + PercentEncoded(kSupportGreeting);
}

}  // namespace orvane
