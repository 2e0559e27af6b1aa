#include "base/checked.h"
#include "base/number_format.h"
#include "base/numeric_text.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "tests/support/fault_of.h"

#include <gtest/gtest.h>
#include <limits>

namespace orvane {
namespace {

using namespace std::string_literals;

TEST(NumberFormat, WritesWhatAReaderExpects) {
  const std::tuple<const char*, double, const char*> rows[] = {
      {"###0", 0, "0"},
      {"###0", 1250, "1250"},
      {"###0", 12.6, "13"},
      {"###0", 12.5, "13"},
      {"###0", -12.5, "-13"},
      {"###0", -0.4, "0"},
      {"#0.00", 1.005, "1.01"},
      {"#0.00", 2.675, "2.68"},
      {"#0.00", 0, "0.00"},
      {"#0.00", 99.999, "100.00"},
      {"##.#0", 0, ".00"},
      {"##.#0", 0.25, ".25"},
      {"##.#0", 12.345, "12.35"},
      {"##0.0", 187.5, "187.5"},
      {"##0", 62.5, "63"},
      {"#.##", 1.5, "1.5"},
      {"00", 7, "07"},
      {"00.000", 1.5, "01.500"},
      {"###0", 2147483647, "2147483647"},
      {"#0.00", -0.004, "0.00"},
      {"#0.00", -0.005, "-0.01"},
      {"###0", 7e14, "700000000000000"},
      {"00.000", 214748364700.5, "214748364700.500"},
  };
  for (const auto& [picture, value, text] : rows)
    EXPECT_EQ(NumberFormat{picture}.Write(value), text) << picture << " of " << value;
  EXPECT_EQ(FaultOf([] { (void)kWattsFormat.Write(std::numeric_limits<double>::quiet_NaN()); }),
            Fault::kTypeMismatch);
  EXPECT_EQ(FaultOf([] { (void)kWattsFormat.Write(1e30); }), Fault::kOverflow);
}

TEST(Rounding, TiesGoToEvenAndOverflowsAreFaults) {
  for (const auto& [value, rounded] : {std::pair{2.5, 2},
                                       {3.5, 4},
                                       {-2.5, -2},
                                       {-3.5, -4},
                                       {45.9, 46},
                                       {32767.49, 32767},
                                       {-32768.5, -32768}})
    EXPECT_EQ(RoundToInt16(value), rounded);
  EXPECT_EQ(FaultOf([] { (void)RoundToInt16(32767.5); }), Fault::kOverflow);
  EXPECT_EQ(FaultOf([] { (void)RoundToInt16(std::numeric_limits<double>::quiet_NaN()); }), Fault::kOverflow);
  EXPECT_EQ(FaultOf([] { (void)RoundToInt32(2147483648.0); }), Fault::kOverflow);
  EXPECT_EQ(FaultOf([] { (void)CheckedAdd(std::numeric_limits<std::int32_t>::max(), 1); }), Fault::kOverflow);
  EXPECT_EQ(FaultOf([] { (void)CheckedSub(std::numeric_limits<std::int32_t>::min(), 1); }), Fault::kOverflow);
}

TEST(NumericText, TellsNumbersFromTexts) {
  const std::string zeros(400, '0');  // past the range of a double, to both sides
  const std::pair<std::string, double> numbers[] = {
      {"-3", -3},
      {" 12.6 ", 12.6},
      {".5", .5},
      {"1e-2", .01},
      {"1e-999", 0},
      {"123456789012345678", 123456789012345678.0},
      {"1e-99999999999", 0},
      {"." + zeros + "1", 0},
      {"." + zeros + "1e5", 0},
      {"-0." + zeros + "1E-5", 0},
      {"1" + zeros + "E-400", 1},
  };
  for (const auto& [text, value] : numbers)
    EXPECT_EQ(NumberOf(text), value) << text;
  for (const char* text : {"", " ", "-", "+", ".", "x", "1x", "1 2", "--1", "1e", "e5", "nan", "inf", "0x10",
                           "1,5", "\xB2", "1\n", "- 5"}) {
    EXPECT_EQ(NumberOf(text), std::nullopt) << text;
  }
  for (const std::string& text :
       {"1e999"s, "1e99999999999"s, "1" + zeros, "1" + zeros + ".5e-50", "." + zeros + "1e+999"})
    EXPECT_EQ(FaultOf([&] { (void)NumberOf(text); }), Fault::kOverflow) << text;
  EXPECT_EQ(Int16Of("2.5"), 2);
  EXPECT_EQ(FaultOf([] { (void)Int16Of("32768"); }), Fault::kOverflow);
  EXPECT_EQ(FaultOf([] { (void)Int16Of("abc"); }), Fault::kTypeMismatch);
  EXPECT_EQ(Int32Of("-2147483648"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(FaultOf([] { (void)Int32Of(""); }), Fault::kTypeMismatch);
}

TEST(NumericText, SwitchesAreWordsOrNumbers) {
  for (const char* on : {"True", "TRUE", " true ", "1", "-1", "0.5"})
    EXPECT_TRUE(SwitchOf(on)) << on;
  for (const char* off : {"False", "false", "0", "0.0"})
    EXPECT_FALSE(SwitchOf(off)) << off;
  for (const char* bad : {"", "yes", "Tru"}) {
    EXPECT_EQ(FaultOf([bad] { (void)SwitchOf(bad); }), Fault::kTypeMismatch) << bad;
  }
}

TEST(Text, SplitKeepsEmptyPieces) {
  using Pieces = std::vector<std::string_view>;
  EXPECT_EQ(Split("", ','), Pieces{});
  EXPECT_EQ(Split(",", ','), (Pieces{"", ""}));
  EXPECT_EQ(Split("D,1,,2", ','), (Pieces{"D", "1", "", "2"}));
}

TEST(Text, SearchFoldsAsciiLettersOnly) {
  EXPECT_TRUE(ContainsNoCase("Orvane VERSION 2", "version"));
  EXPECT_FALSE(ContainsNoCase("Versio", "Version"));
  EXPECT_TRUE(ContainsNoCase("x", ""));
  EXPECT_FALSE(EqualNoCase("\xC4", "\xE4"));
  EXPECT_EQ(RemoveFirst("B12B3", 'B'), "12B3");
  EXPECT_EQ(TrimRight("a b  "), "a b");
  EXPECT_EQ(TrimRight("   "), "");
}

}  // namespace
}  // namespace orvane
