#include "base/runtime_error.h"
#include "tests/contract/platform_under_test.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

class FilesContract : public testing::Test {
 protected:
  Files& TheFiles() { return platform_.TheFiles(); }
  std::string Path(const std::string& name) const { return platform_.Folder().Path(name); }
  std::size_t Count() const { return platform_.Folder().Count(); }
  bool Creates(const std::string& path) {
    return Attempt([&] { TheFiles().CreateEmpty(path); });
  }

  PlatformUnderTest platform_;
  const std::string folder_ = platform_.Folder().Path();
  const std::string there_ = Path("there.dat");
  const std::string missing_ = Path("missing.dat");
  const std::string no_folder_ = Path("none") + platform_.TheFiles().Separator() + "x.dat";
};

TEST_F(FilesContract, NamesTheProgramsFolder) {
  const std::string folder = TheFiles().ProgramFolder();
  EXPECT_TRUE(std::filesystem::is_directory(folder)) << folder;
  EXPECT_NE(folder.back(), TheFiles().Separator());
  const std::string separator(1, TheFiles().Separator());
  EXPECT_EQ(TheFiles().InProgramFolder("\\Images\\x.ovl"),
            folder + separator + "Images" + separator + "x.ovl");
}

TEST_F(FilesContract, KnowsNormalFiles) {
  PutFile(there_, "x");
  EXPECT_TRUE(TheFiles().IsNormalFile(there_));
  EXPECT_FALSE(TheFiles().IsNormalFile(missing_));
  EXPECT_FALSE(TheFiles().IsNormalFile(folder_));
  EXPECT_FALSE(TheFiles().IsNormalFile(no_folder_));
}

TEST_F(FilesContract, MakesAFileOnlyWhereNothingIs) {
  PutFile(there_, "kept");
  EXPECT_TRUE(Creates(there_));
  EXPECT_EQ(FileBytes(there_), "kept");
  EXPECT_TRUE(Creates(missing_));
  EXPECT_TRUE(TheFiles().IsNormalFile(missing_));
  EXPECT_EQ(FileBytes(missing_), "");
  EXPECT_FALSE(Creates(folder_));
  EXPECT_FALSE(Creates(no_folder_));
}

TEST_F(FilesContract, TellsWhetherAFileOpens) {
  PutFile(there_, "x");
  EXPECT_TRUE(TheFiles().CanRead(there_));
  EXPECT_TRUE(TheFiles().CanWrite(there_));
  EXPECT_FALSE(TheFiles().CanRead(missing_));
  EXPECT_TRUE(TheFiles().CanWrite(missing_));
  EXPECT_FALSE(TheFiles().CanRead(folder_));
  EXPECT_FALSE(TheFiles().CanWrite(folder_));
  EXPECT_FALSE(TheFiles().CanWrite(no_folder_));
  EXPECT_EQ(Count(), 1U) << "asking leaves no trace";
  EXPECT_EQ(FileBytes(there_), "x");
  platform_.Hold(there_);
  EXPECT_FALSE(TheFiles().CanRead(there_));
  EXPECT_FALSE(TheFiles().CanWrite(there_));
  EXPECT_TRUE(TheFiles().IsNormalFile(there_));
  EXPECT_EQ(TheFiles().Read(there_, 10), "");
  EXPECT_TRUE(Creates(there_)) << "it is there";
  platform_.Release(there_);
  EXPECT_EQ(FileBytes(there_), "x");
}

TEST_F(FilesContract, ReadsNoMoreThanAsked) {
  const std::string bytes("a\0b\r\n\xFF", 6);
  PutFile(there_, bytes);
  EXPECT_EQ(TheFiles().Read(there_, 100), bytes);
  EXPECT_EQ(TheFiles().Read(there_, 3), bytes.substr(0, 3));
  EXPECT_EQ(TheFiles().Read(there_, 0), "");
  EXPECT_EQ(TheFiles().Read(missing_, 100), "");
  EXPECT_EQ(TheFiles().Read(folder_, 100), "");
}

TEST_F(FilesContract, CopiesWholeOrNotAtAll) {
  const std::string content(200000, 'c');
  const std::string copy = Path("copy.dat");
  PutFile(there_, content);
  EXPECT_TRUE(TheFiles().CopyWhole(there_, copy));
  EXPECT_EQ(FileBytes(copy), content);
  PutFile(there_, "new");
  EXPECT_TRUE(TheFiles().CopyWhole(there_, copy));
  EXPECT_EQ(FileBytes(copy), "new");
  EXPECT_FALSE(TheFiles().CopyWhole(missing_, copy));
  EXPECT_FALSE(TheFiles().CopyWhole(there_, no_folder_));
  EXPECT_FALSE(TheFiles().CopyWhole(there_, folder_));
  PutFile(there_, "newer");
  platform_.Hold(copy);
  EXPECT_FALSE(TheFiles().CopyWhole(there_, copy));
  platform_.Release(copy);
  EXPECT_EQ(FileBytes(copy), "new");
  EXPECT_EQ(Count(), 2U) << "nothing is left over";
}

}  // namespace
}  // namespace orvane
