#include "base/runtime_error.h"
#include "tests/contract/platform_under_test.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

class FilesContract : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return platform_.Folder().Path(name); }
  std::size_t Count() const { return platform_.Folder().Count(); }
  bool Creates(const std::string& path) {
    return Attempt([&] { files_.CreateEmpty(path); });
  }

  PlatformUnderTest platform_;
  Files& files_ = platform_.TheFiles();
  const std::string folder_ = platform_.Folder().Path();
  const std::string there_ = Path("there.dat");
  const std::string missing_ = Path("missing.dat");
  const std::string no_folder_ = Path("none") + files_.Separator() + "x.dat";
};

TEST_F(FilesContract, NamesTheProgramsFolder) {
  const std::string folder = files_.ProgramFolder();
  EXPECT_TRUE(std::filesystem::is_directory(folder)) << folder;
  EXPECT_NE(folder.back(), files_.Separator());
  const std::string separator(1, files_.Separator());
  EXPECT_EQ(files_.InProgramFolder("\\Images\\x.ovl"), folder + separator + "Images" + separator + "x.ovl");
}

TEST_F(FilesContract, MakesAFileOnlyWhereNothingIs) {
  PutFile(there_, "kept");
  EXPECT_TRUE(Creates(there_));
  EXPECT_EQ(FileBytes(there_), "kept");
  EXPECT_TRUE(Creates(missing_));
  EXPECT_TRUE(files_.IsNormalFile(missing_));
  EXPECT_EQ(FileBytes(missing_), "");
  EXPECT_FALSE(Creates(folder_));
  EXPECT_FALSE(Creates(no_folder_));
}

TEST_F(FilesContract, TellsWhetherAFileOpens) {
  PutFile(there_, "x");
  // Path, whether it is a normal file, opens for reading, for writing.
  const std::tuple<std::string, bool, bool, bool> rows[] = {{there_, true, true, true},
                                                            {missing_, false, false, true},
                                                            {folder_, false, false, false},
                                                            {no_folder_, false, false, false}};
  for (const auto& [path, normal, reads, writes] : rows) {
    EXPECT_EQ(files_.IsNormalFile(path), normal) << path;
    EXPECT_EQ(files_.CanRead(path), reads) << path;
    EXPECT_EQ(files_.CanWrite(path), writes) << path;
  }
  EXPECT_EQ(Count(), 1U) << "asking leaves no trace";
  EXPECT_EQ(FileBytes(there_), "x");
  platform_.Hold(there_);
  EXPECT_FALSE(files_.CanRead(there_));
  EXPECT_FALSE(files_.CanWrite(there_));
  EXPECT_TRUE(files_.IsNormalFile(there_));
  EXPECT_EQ(files_.Read(there_, 10), "");
  EXPECT_TRUE(Creates(there_)) << "it is there";
  platform_.Release(there_);
  EXPECT_EQ(FileBytes(there_), "x");
}

TEST_F(FilesContract, ReadsNoMoreThanAsked) {
  const std::string bytes("a\0b\r\n\xFF", 6);
  PutFile(there_, bytes);
  EXPECT_EQ(files_.Read(there_, 100), bytes);
  EXPECT_EQ(files_.Read(there_, 3), bytes.substr(0, 3));
  EXPECT_EQ(files_.Read(there_, 0), "");
  EXPECT_EQ(files_.Read(missing_, 100), "");
  EXPECT_EQ(files_.Read(folder_, 100), "");
}

TEST_F(FilesContract, CopiesAndMovesWholeOrNotAtAll) {
  const std::string from = Path("from.dat");
  const std::string content(200000, 'c');
  for (const bool moves : {false, true}) {
    const auto step = moves ? &Files::MoveWhole : &Files::CopyWhole;
    // Target, whether it is done.
    const std::tuple<std::string, bool> rows[] = {
        {there_, true}, {Path("new.dat"), true}, {folder_, false}, {no_folder_, false}};
    for (const auto& [target, done] : rows) {
      PutFile(there_, "old");
      PutFile(from, content);
      EXPECT_EQ((files_.*step)(from, target), done) << target;
      EXPECT_TRUE(!done || FileBytes(target) == content) << target;
      EXPECT_EQ(files_.IsNormalFile(from), !moves) << target;
    }
    EXPECT_FALSE((files_.*step)(missing_, there_));
    PutFile(from, "newer");
    platform_.Hold(there_);
    EXPECT_FALSE((files_.*step)(from, there_));
    platform_.Release(there_);
    EXPECT_EQ(FileBytes(there_), "old");
    EXPECT_EQ(Count(), moves ? 2U : 3U) << "nothing is left over";
  }
}

}  // namespace
}  // namespace orvane
