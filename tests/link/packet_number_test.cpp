#include "link/packet_number.h"

#include "base/checked.h"
#include "base/number_format.h"
#include "base/numeric_text.h"

#include <gtest/gtest.h>
#include <random>

namespace orvane {
namespace {

// The quick way through whole numbers must round like the formats, to the last bit.
TEST(PacketNumber, RoundsLikeTheFormats) {
  std::mt19937 random(20240611);
  const auto below = [&random](std::uint32_t n) { return static_cast<std::uint32_t>(random() % n); };
  const auto check = [](const std::string& text) {
    const double number = NumberOf(text).value();
    EXPECT_EQ(WattsOf(text).value(), RoundToInt32(RoundedBy(kWattsFormat, number))) << text;
    EXPECT_EQ(VSWROf(text).value(), static_cast<float>(RoundedBy(kVSWRFormat, number))) << text;
    EXPECT_FALSE(std::signbit(VSWROf(text).value()) && VSWROf(text).value() == 0.0F) << text;
  };
  for (int i = 0; i < 200000; ++i) {
    std::string text = below(4) == 0 ? "-" : "";
    for (std::uint32_t digits = 1 + below(9); digits > 0; --digits)
      text += static_cast<char>('0' + below(10));
    const std::uint32_t decimals = below(7);
    if (decimals > 0) text += '.';
    for (std::uint32_t d = 0; d < decimals; ++d)
      text += "0123456789455995"[below(16)];  // many near one half
    check(text);
  }
  for (const char* text :
       {"0", "-0", "-0.00", "0.005", "-0.004", "0.5", "999999999.9999", "000000000000012.50", "1.0050",
        "2.675", "5.", ".005", "999999999.9999000010999", "2147483647", "-2147483648", "1e2"})
    check(text);
  for (const char* text : {"", " ", "-", ".", "1.2.3", "1,5", "0x10", "nan", "1 2", "--1", "1e"})
    EXPECT_FALSE(WattsOf(text) || VSWROf(text)) << text;
}

}  // namespace
}  // namespace orvane
