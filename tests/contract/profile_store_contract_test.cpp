#include "tests/contract/platform_under_test.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace orvane {
namespace {

// Run on the store in memory of the tests and on the real calls: where a row fails on one of them only, the
// two have parted. What the system's calls do beyond these rows is left open on purpose: a value in quotes
// that is cut by the buffer, keys that start with ';', blanks around names in a deletion, letters beyond
// ASCII in names of another case.
class ProfileStoreContract : public testing::Test {
 protected:
  std::string Get(OptionalText section, OptionalText key, std::string_view fallback = "DEF",
                  std::size_t size = 255) {
    return platform_.Profiles().GetPrivateProfileString(section, key, fallback, size, file_);
  }
  bool Set(std::string_view section, OptionalText key, OptionalText value) {
    return platform_.Profiles().WritePrivateProfileString(section, key, value, file_);
  }
  // A list of names with '|' for its NULs.
  std::string List(OptionalText section, std::size_t size = 2048, std::string_view fallback = "") {
    std::string names = Get(section, std::nullopt, fallback, size);
    std::replace(names.begin(), names.end(), '\0', '|');
    return names;
  }
  void Put(std::string_view text) { PutFile(file_, text); }

  PlatformUnderTest platform_;
  std::string file_ = platform_.Folder().Path("t.ini");
};

TEST_F(ProfileStoreContract, TakesBlanksAndOnePairOfQuotesOffAValue) {
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"v", {"k=v", " k = v ", "\tk\t=\tv\t", "K=v", "k=\"v\"", "k='v'", "k=v\x1A", "k=v  "}},
      {"", {"k=", "k=\"\""}},
      {" v ", {"k=\" v \""}},
      {"\"e\"", {"k=\"\"e\"\""}},
      {"1", {"k=1\r\nk=2"}},
      {"DEF", {";k=v", " ;k=v", "k", "k v", "#k=v", "=v", "kk=v", "[k=v", "k\r\nk=2"}}};
  const auto reads = [this](const std::string& text, const std::string& value) {
    Put("[S]\r\n" + text + "\r\nz=1\r\n");
    EXPECT_EQ(Get("S", "k"), value) << text;
    EXPECT_EQ(Get("S", "z"), "1") << "after " << text;
  };
  for (const auto& [value, texts] : rows) {
    for (const std::string& text : texts)
      reads(text, value);
  }
  for (const char* as_it_is : {"=a=b", "\"", "\"v", "v\"", "\"v'", "\"v\" x", "v ; no comment",
                               "; no comment", "[x]", "a\tb", "\xE4\xFF\x80", "\xA0v\xA0"})
    reads(std::string("k=") + as_it_is, as_it_is);
}

TEST_F(ProfileStoreContract, GivesTheFallbackWithoutTrailingBlanks) {
  Put("[S]\r\nk=v\r\n");
  EXPECT_EQ(Get("S", "none", "  d  ") + Get("NONE", "k", "d ") + Get("S", "none", ""), "  dd");
  EXPECT_EQ(Get("S", "none", "abc", 3), "ab");
  EXPECT_EQ(Get("S", "none", std::string(300, 'd')), std::string(254, 'd'));
  file_ = platform_.Folder().Path("missing.ini");
  EXPECT_EQ(Get("S", "k", "d"), "d");
  EXPECT_EQ(List(std::nullopt), "");
  EXPECT_EQ(List("S"), "");
  EXPECT_FALSE(platform_.TheFiles().IsNormalFile(file_)) << "reading makes no file";
}

TEST_F(ProfileStoreContract, CutsLongValuesToTheBuffer) {
  for (const std::size_t length : {253U, 254U, 255U, 300U, 5000U}) {
    const std::string value(length, 'x');
    Put("[S]\r\nk=" + value + "\r\n");
    EXPECT_EQ(Get("S", "k"), value.substr(0, 254)) << length;
    EXPECT_EQ(Get("S", "k", "", 10), value.substr(0, 9)) << length;
    EXPECT_EQ(Get("S", "k", "", length + 1), value) << length;
    ASSERT_TRUE(Set("S", "k", std::string(length, 'y')));
    EXPECT_EQ(Get("S", "k", "", length + 1), std::string(length, 'y')) << length;
  }
}

TEST_F(ProfileStoreContract, ListsNamesAndCutsTheListToTheBuffer) {
  Put("[AB]\r\nk1=1\r\n; no=key\r\nno key\r\nk22=2\r\nK1=3\r\n[C]\r\n[DEF]\r\nx=1\r\n");
  const std::string sections = "AB|C|DEF|";
  const std::string keys = "k1|k22|K1|";
  for (std::size_t size = 3; size < 14; ++size) {
    EXPECT_EQ(List(std::nullopt, size), sections.substr(0, size - 2)) << size;
    EXPECT_EQ(List("ab", size), keys.substr(0, size - 2)) << size;
  }
  EXPECT_EQ(List("C"), "");
  EXPECT_EQ(List("C", 255, "none"), "none");
  EXPECT_EQ(List("NONE", 255, "none"), "none");
  EXPECT_EQ(List(std::nullopt, 255, "none"), sections);
}

TEST_F(ProfileStoreContract, WritesWhatItReadsBack) {
  const auto keeps = [this](const char* written, const char* read) {
    Put("[S]\r\na=1\r\nk=0\r\n[T]\r\nk=t\r\n");
    for (const char* key : {"k", "new"}) {
      EXPECT_TRUE(Set("S", key, written));
      EXPECT_EQ(Get("S", key), read) << written;
    }
    EXPECT_TRUE(Set("S", "a", "2"));
    EXPECT_EQ(Get("S", "k"), read) << written << " after another write";
    EXPECT_EQ(List("S"), "a|k|new|") << written;
    EXPECT_EQ(Get("T", "k"), "t") << written;
  };
  for (const char* written :
       {"v", "", "a b", ";c", "=v", "[T]", "a\tb", "v;c", "\"", "\xE4\xFF", "\xA0v\xA0"})
    keeps(written, written);
  for (const char* written : {" v ", "\tv\t", "\"v\"", "'v'"})
    keeps(written, "v");
  keeps("\" v \"", " v ");
  keeps("\"\"v\"\"", "\"v\"");
}

TEST_F(ProfileStoreContract, MakesFileSectionAndKeyAsNeeded) {
  EXPECT_TRUE(Set("S", "k", "v"));
  EXPECT_EQ(Get("S", "k"), "v");
  EXPECT_TRUE(Set("T", "k", "t"));
  EXPECT_TRUE(Set("s", "K", "w"));
  EXPECT_TRUE(Set("S", "z", "1"));
  EXPECT_EQ(List(std::nullopt), "S|T|");
  EXPECT_EQ(List("S"), "k|z|") << "the name stays as it was first written";
  EXPECT_EQ(Get("S", "k"), "w");
  Put("[S]\r\nk=v");
  EXPECT_TRUE(Set("S", "m", "1"));
  EXPECT_EQ(Get("S", "k") + Get("S", "m"), "v1") << "the last line had no end";
  file_ = platform_.Folder().Path("none") + platform_.TheFiles().Separator() + "t.ini";
  EXPECT_FALSE(Set("S", "k", "v")) << "no such folder";
}

TEST_F(ProfileStoreContract, DeletesKeysAndSections) {
  Put("[A]\r\nk=1\r\nm=2\r\n[B]\r\nk=3\r\n");
  EXPECT_TRUE(Set("A", "none", std::nullopt));
  EXPECT_TRUE(Set("NONE", "k", std::nullopt));
  EXPECT_TRUE(Set("NONE", std::nullopt, std::nullopt));
  EXPECT_EQ(List(std::nullopt), "A|B|");
  EXPECT_TRUE(Set("a", "K", std::nullopt));
  EXPECT_EQ(List("A"), "m|");
  EXPECT_TRUE(Set("A", "m", std::nullopt));
  EXPECT_EQ(List(std::nullopt), "A|B|") << "an empty section stays";
  EXPECT_TRUE(Set("A", std::nullopt, std::nullopt));
  EXPECT_EQ(List(std::nullopt), "B|");
  EXPECT_EQ(Get("B", "k"), "3");
}

TEST_F(ProfileStoreContract, EmptiesOrMakesASection) {
  EXPECT_TRUE(platform_.Profiles().WriteEmptySection("S", file_));
  EXPECT_EQ(List(std::nullopt), "S|");
  EXPECT_EQ(List("S"), "");
  Put("[A]\r\nk=1\r\n[B]\r\nk=2\r\n; c\r\n[C]\r\nk=3\r\n");
  EXPECT_TRUE(platform_.Profiles().WriteEmptySection("b", file_));
  EXPECT_EQ(List(std::nullopt), "A|B|C|");
  EXPECT_EQ(List("B"), "");
  EXPECT_EQ(Get("A", "k") + Get("C", "k"), "13");
}

TEST_F(ProfileStoreContract, LeavesOtherLinesAlone) {
  Put("; head\r\n\r\n[S]\r\n; note\r\nodd line\r\nk=1\r\nOTHER=\"q\"\r\n; tail\r\n[U]\r\nu=1\r\n");
  EXPECT_TRUE(Set("S", "k", "2"));
  EXPECT_TRUE(Set("S", "new", "3"));
  EXPECT_TRUE(Set("T", "k", "4"));
  const std::string text = FileBytes(file_);
  std::size_t at = 0;
  for (const char* line :
       {"; head\r\n", "[S]\r\n; note\r\nodd line\r\nk=2\r\nOTHER=\"q\"\r\n; tail\r\nnew=3\r\n",
        "[U]\r\nu=1\r\n", "[T]\r\nk=4\r\n"}) {
    const auto found = text.find(line, at);
    EXPECT_NE(found, std::string::npos) << line << " in " << text;
    at = std::min(found, text.size());
  }
}

TEST_F(ProfileStoreContract, AFileHeldByAnotherProgramReadsAsMissingAndIsNotWritten) {
  const std::string text = "[S]\r\nk=1\r\n";
  Put(text);
  platform_.Hold(file_);
  EXPECT_EQ(Get("S", "k"), "DEF");
  EXPECT_EQ(List(std::nullopt), "");
  EXPECT_FALSE(Set("S", "k", "2"));
  EXPECT_FALSE(platform_.Profiles().WriteEmptySection("S", file_));
  platform_.Release(file_);
  EXPECT_EQ(FileBytes(file_), text);
  EXPECT_EQ(Get("S", "k"), "1");
}

}  // namespace
}  // namespace orvane
