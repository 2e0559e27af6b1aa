#include "settings/ini_manager.h"

#include "base/runtime_error.h"
#include "platform/headless/files.h"
#include "platform/headless/profile_store.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using Names = std::vector<std::string>;

class IniManager : public testing::Test {
 protected:
  TempFolder folder_;
  HeadlessFiles files_{folder_.Path()};
  HeadlessProfileStore store_{files_};
  clsINIManager manager_{store_, files_};
  std::string file_ = folder_.Path("t.ini");
};

TEST_F(IniManager, NamingAFileMakesItOnlyWhereNoneIs) {
  manager_.SetFileName(file_);
  EXPECT_EQ(manager_.FileName(), file_);
  EXPECT_TRUE(files_.IsNormalFile(file_));
  for (const bool hidden : {false, true}) {
    PutFile(file_, "[S]\r\nk=v\r\n");
    if (hidden) files_.SetHidden(file_);
    manager_.SetFileName(file_);
    EXPECT_EQ(FileBytes(file_), "[S]\r\nk=v\r\n") << hidden;
  }
  EXPECT_THROW(manager_.SetFileName(folder_.Path("none/t.ini")), RuntimeError);
  EXPECT_EQ(manager_.FileName(), file_);
}

TEST_F(IniManager, ReadsValuesTrimmedAndCutOrTheDefault) {
  PutFile(file_, "[S]\r\nspeed=  38400  \r\nquoted=\"  38400 \"\r\nempty=\r\nlong=" + std::string(300, 'x') +
                     "\r\n");
  for (const auto& [key, value] : {std::pair{"speed", std::string("38400")},
                                   {"quoted", "38400"},
                                   {"empty", ""},
                                   {"long", std::string(254, 'x')},
                                   {"none", "1"}})
    EXPECT_EQ(manager_.GetValue("S", key, " 1 ", file_), value) << key;
  EXPECT_EQ(manager_.GetValue("S", "k", "1", folder_.Path("none.ini")), "1");
}

TEST_F(IniManager, ListsSectionsAndKeys) {
  PutFile(file_, "[A]\r\nK1=1\r\nK2=2\r\n[B]\r\n");
  EXPECT_EQ(manager_.GetAllSections(file_), (Names{"A", "B"}));
  EXPECT_EQ(manager_.GetAllKeys("A", file_), (Names{"K1", "K2"}));
  EXPECT_EQ(manager_.DeleteKey("A", "K1", file_), kTrue);
  EXPECT_EQ(manager_.WriteValue("A", "K3", "3", file_), kTrue);
  EXPECT_EQ(manager_.GetAllKeys("A", file_), (Names{"K2", "K3"}));
  EXPECT_EQ(manager_.CreateSection("C", file_), kTrue);
  EXPECT_EQ(manager_.CreateSection("A", file_), kTrue);
  EXPECT_EQ(manager_.GetAllSections(file_), (Names{"A", "B", "C"}));
  for (const char* section : {"A", "B", "C", "D"})
    EXPECT_EQ(manager_.GetAllKeys(section, file_), Names{}) << section;
  EXPECT_EQ(manager_.DeleteSection("B", file_), kTrue);
  EXPECT_EQ(manager_.GetAllSections(file_), (Names{"A", "C"}));
  PutFile(file_, "");
  EXPECT_EQ(manager_.GetAllSections(file_), Names{});
}

// Lists longer than the buffer: 2046 bytes come back. 204 names of ten bytes with their separators fill 2040
// of them; six bytes of the next one remain.
TEST_F(IniManager, LongListsEndEachInTheirWay) {
  std::string sections;
  std::string keys = "[S]\r\n";
  for (int i = 0; i < 300; ++i) {
    const std::string name = "name" + std::to_string(10000 + i);
    sections += "[" + name + "]\r\n";
    keys += name + "=1\r\n";
  }
  PutFile(file_, sections);
  const Names names = manager_.GetAllSections(file_);
  EXPECT_EQ(names.size(), 204U);
  EXPECT_EQ(names.back(), "name10203");
  PutFile(file_, keys);
  const Names key_names = manager_.GetAllKeys("S", file_);
  EXPECT_EQ(key_names.size(), 205U);
  EXPECT_EQ(key_names.back(), "name1") << "the piece that fits, less one character";
  PutFile(file_, "[" + std::string(3000, 'x') + "]\r\n");
  EXPECT_THROW(manager_.GetAllSections(file_), RuntimeError);
}

// A store whose every call is a fault.
struct FaultyStore : ProfileStore {
  static RuntimeError TheFault() { return {Fault::kPathAccess, "always"}; }
  std::string GetPrivateProfileString(OptionalText, OptionalText, std::string_view, std::size_t,
                                      const std::string&) override {
    throw TheFault();
  }
  bool WritePrivateProfileString(std::string_view, OptionalText, OptionalText, const std::string&) override {
    throw TheFault();
  }
  bool WriteEmptySection(std::string_view, const std::string&) override { throw TheFault(); }
};

TEST_F(IniManager, OnlyTheListsLetFaultsThrough) {
  FaultyStore faulty;
  clsINIManager manager(faulty, files_);
  EXPECT_EQ(manager.GetValue("S", "k", "default", file_), "");
  EXPECT_EQ(manager.WriteValue("S", "k", "v", file_), kFalse);
  EXPECT_EQ(manager.CreateSection("S", file_), kFalse);
  EXPECT_EQ(manager.DeleteSection("S", file_), kFalse);
  EXPECT_EQ(manager.DeleteKey("S", "k", file_), kFalse);
  EXPECT_THROW(manager.GetAllSections(file_), RuntimeError);
  EXPECT_THROW(manager.GetAllKeys("S", file_), RuntimeError);
}

TEST_F(IniManager, AWriteThatFailsIsToldAndLeavesTheFile) {
  PutFile(file_, "[S]\r\nk=v\r\n");
  files_.SetHeld(file_, 1);
  EXPECT_EQ(manager_.WriteValue("S", "k", "w", file_), kFalse) << "free again after the try to read it";
  files_.SetReadOnly(true);
  EXPECT_EQ(manager_.WriteValue("S", "k", "w", file_), kFalse);
  EXPECT_EQ(manager_.DeleteSection("S", file_), kFalse);
  EXPECT_EQ(FileBytes(file_), "[S]\r\nk=v\r\n");
}

}  // namespace
}  // namespace orvane
