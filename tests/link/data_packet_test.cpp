#include "link/data_packet.h"

#include "base/checked.h"
#include "base/number_format.h"
#include "base/numeric_text.h"
#include "link/packet_number.h"
#include "tests/link/link_fixture.h"

#include <random>
#include <sstream>

namespace orvane {
namespace {

using namespace std::string_literals;

const std::string kBefore = "7 8 9.5 -1 0";

// The readings after a packet: forward, reflected, VSWR, SWR alarm, power alarm.
std::string After(std::string_view packet) {
  MeterState state;
  state.ForwardPower = 7;
  state.ReflectedPower = 8;
  state.VSWR = 9.5F;
  state.SWRAlarm = kTrue;
  ProcessDataPacket(packet, state);
  std::ostringstream text;
  text << state.ForwardPower << ' ' << state.ReflectedPower << ' ' << state.VSWR << ' ' << state.SWRAlarm
       << ' ' << state.PwrAlarm;
  return text.str();
}

TEST(DataPacket, Fields) {
  const std::pair<const char*, std::string> rows[] = {
      {"D,100,4,1.50,0;0", "100 4 1.5 0 0"},
      {"D,100,4,1.50,1;1", "100 4 1.5 -1 -1"},
      {"D,12.6,12.4,1.505,0;2", "13 12 1.51 0 -1"},
      {"D,12.5,-0.4,1.504,-1;0", "13 0 1.5 -1 0"},
      {"D, 100 ,+4,1E0,0;0", "100 4 1 0 0"},
      {"D,1E3,.5,9.999,0;0", "1000 1 10 0 0"},
      {"D,x,4,1.50,0;0", "7 4 1.5 0 0"},  // each field on its own
      {"D,100,,1.50,0;0", "100 8 1.5 0 0"},
      {"D,100,4,inf,0;0", "100 4 9.5 0 0"},
      {"D,2147483648,4,1.5,0;0", "7 4 1.5 0 0"},  // beyond 32 bits
      {"D,1E999,4,1.5,0;0", "7 4 1.5 0 0"},
      {"D,4294967396,-2147483648,1E300,0;0", "7 -2147483648 9.5 0 0"},
      {"D,100,4,1.5,00", "100 4 1.5 -1 0"},  // no ";": flags unchanged
      {"D,100,4,1.5,0;", "100 4 1.5 0 0"},   // the ETX follows the ";"
      {"D,100,4,1.5,x;1", "100 4 1.5 -1 -1"},
      {"D,100,4,1.5,0;x", "100 4 1.5 0 0"},
      {"D,100,4,1.5,010;1", "100 4 1.5 -1 0"},  // three characters are read
      {"D,100,4,1.5,;1", "100 4 1.5 -1 0"},     // "1" with the ETX behind it is no number
      {"D,100,4,1.5,0;0,0", kBefore},           // six fields
      {"D,100,4,1.5", kBefore},
      {"D", kBefore},
  };
  for (const auto& [text, readings] : rows)
    EXPECT_EQ(After(Line(text)), readings) << text;
}

TEST(DataPacket, Frames) {
  const std::string good = Line("D,100,4,1.50,0;1");
  const std::string body = good.substr(0, good.size() - 4);  // up to the ETX
  const std::string digits = good.substr(good.size() - 4, 2);
  const std::string read = "100 4 1.5 0 -1";
  std::string lower = digits;
  for (char& c : lower)
    c = static_cast<char>(std::tolower(c));
  ASSERT_NE(lower, digits) << "the row for lower case needs a letter";
  const std::tuple<const char*, std::string, std::string> rows[] = {
      {"whole", good, read},
      {"end of text without CR", body + digits, read},
      {"more lines behind the CR", good + "garbage\rD,1", read},
      {"lower-case digits", body + lower + "\r\n", kBefore},
      {"LF counts to the line without a CR", body + digits + "\n", kBefore},
      {"wrong digits", body + "00\r\n", kBefore},
      {"no ETX", "\x02" + "D,100,4,1.50,0;1"s + digits + "\r\n", kBefore},
      {"nothing", "", kBefore},
      {"only a CR", "\r", kBefore},
      {"too short to be stripped", "\x02" + "D\r"s, kBefore},
  };
  for (const auto& [name, packet, readings] : rows)
    EXPECT_EQ(After(packet), readings) << name;
  for (std::size_t at = 1; at + 2 < good.size(); ++at) {
    if (good[at] == '\x03') continue;  // framing characters are not covered
    std::string hit = good;
    hit[at] = static_cast<char>(hit[at] ^ 0x10);
    EXPECT_EQ(After(hit), kBefore) << "hit at " << at;
    EXPECT_EQ(After(good.substr(0, at)), kBefore) << "cut at " << at;
  }
}

TEST(DataPacket, OnlyAGoodOneMakesReadingsLiveAgain) {
  const std::string good = Line("D,100,4,1.50,0;1");
  std::string hit = good;
  hit[5] = '7';
  std::string without_etx = good;
  std::erase(without_etx, '\x03');  // it does not count for the digits
  const std::pair<std::string, bool> rows[] = {
      {good, true}, {hit, false}, {without_etx, false}, {Line("D,100,4,1.50"), false}};
  for (const auto& [packet, taken] : rows) {
    MeterState state;
    state.ReadingsLive = false;
    EXPECT_EQ(ProcessDataPacket(packet, state), taken) << packet;
    EXPECT_EQ(state.ReadingsLive, taken) << packet;
  }
}

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
