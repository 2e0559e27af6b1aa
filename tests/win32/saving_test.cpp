#include "platform/win32/event_pump.h"
#include "platform/win32/files.h"
#include "platform/win32/handles.h"
#include "platform/win32/profile_store.h"
#include "settings/ov_user_settings.h"
#include "tests/support/files_in.h"
#include "tests/support/temp_folder.h"

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <regex>
#include <set>

namespace orvane {
namespace {

constexpr int kKills = 200;
constexpr int kAtATime = 8;
constexpr int kStarts = 3;  // tries; a loaded Wine now and then starts nothing
constexpr int kFirst = 1000;
constexpr int kLastMs = 20;  // after the first save; a save takes some milliseconds
constexpr const char* kFolder = "ORVANE_TEST_FOLDER";
constexpr wchar_t kChild[] =
    L"--gtest_brief=1 --gtest_also_run_disabled_tests --gtest_filter=KilledSaves.DISABLED_Child";

/// The letters that the name of a client consists of, so that a file is torn easily.
std::string Letters(int number) {
  return std::string(200, static_cast<char>('a' + number % 26));
}

/// Saves as the program in `folder` does: first what it loaded, then one number after the other.
class Saver {
 public:
  explicit Saver(std::string folder)
      : files_(system_files_, std::move(folder)), kept_(store_, files_, clock_, [](const std::string&) {}) {
    kept_.LoadUserSettings();
  }
  void Save(int number) {
    UserSettings& settings = kept_.Settings();
    settings.FormTop = settings.FormLeft = settings.ClientMsgId = number;
    settings.ClientApp = Letters(number);
    kept_.SaveUserSettings();
  }
  int Number() const { return kept_.Settings().FormTop; }

 private:
  Win32Clock clock_;
  Win32Files system_files_;
  FilesOfProgramIn files_;
  Win32ProfileStore store_;
  OVUserSettings kept_;
};

// Started by the test below, and killed by it.
TEST(KilledSaves, DISABLED_Child) {
  const char* folder = std::getenv(kFolder);
  ASSERT_NE(folder, nullptr);
  Saver saver(folder);
  const int first = saver.Number();
  for (int number = first + 1; number < first + 2000; ++number)
    saver.Save(number);
}

class Child {
 public:
  Child() {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION info{};
    for (int i = 0; i < kStarts && info.hProcess == nullptr; ++i) {
      std::wstring line = L"\"" + ModulePath() + L"\" " + kChild;
      ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &info);
    }
    EXPECT_NE(info.hProcess, nullptr) << ::GetLastError();
    process_.reset(info.hProcess);
    thread_.reset(info.hThread);
  }
  bool Runs() const { return ::WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT; }
  void Kill() {
    ::TerminateProcess(process_.get(), 1);
    ::WaitForSingleObject(process_.get(), 10000);
  }

 private:
  UniqueHandle process_;
  UniqueHandle thread_;
};

/// A folder with settings, and what its file has to look like.
class Place {
 public:
  Place() {
    Saver(folder_.Path()).Save(kFirst);
    model_ = Content();
  }
  void Start() {
    before_ = Saver(folder_.Path()).Number();
    ::SetEnvironmentVariableA(kFolder, folder_.Path().c_str());
    child_.emplace();
  }
  /// Kills the child at an instant of a save. @return how many files it left
  std::size_t Kill(DWORD pause_ms) {
    while (child_->Runs() && Content() == ContentOf(before_))
      ::Sleep(1);
    EXPECT_TRUE(child_->Runs());
    ::Sleep(pause_ms);
    child_->Kill();
    const int after = Saver(folder_.Path()).Number();
    EXPECT_GT(after, before_);
    EXPECT_EQ(Content(), ContentOf(after));
    return folder_.Count();
  }

 private:
  // Other than by the standard library, which keeps others from replacing the file meanwhile.
  std::string Content() { return files_.Read(folder_.Path("Orvane.dat"), 100000); }
  std::string ContentOf(int number) const {
    const std::string numbered =
        std::regex_replace(model_, std::regex(std::to_string(kFirst)), std::to_string(number));
    return std::regex_replace(numbered, std::regex(Letters(kFirst)), Letters(number));
  }

  TempFolder folder_;
  Win32Files files_;
  std::string model_;
  int before_ = 0;
  std::optional<Child> child_;
};

// Each time at an instant of a save that nobody chose. Several at a time, because a process takes long to
// start.
TEST(KilledSaves, LeaveTheFileOldOrNewWhole) {
  std::array<Place, kAtATime> places;
  std::mt19937 random(12);
  std::uniform_int_distribution<DWORD> pause(0, kLastMs);
  std::set<std::size_t> left_over;
  for (int kills = 0; kills < kKills && !HasFailure(); kills += kAtATime) {
    for (Place& place : places)
      place.Start();
    for (Place& place : places)
      left_over.insert(place.Kill(pause(random)));
  }
  EXPECT_GT(left_over.size(), 1U) << "kills came at different points of a save";
}

}  // namespace
}  // namespace orvane
