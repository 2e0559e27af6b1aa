#pragma once

#include "platform/profile_store.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace orvane {

/// What HeadlessFiles throws where a test kills the program. Not an exception of the standard family on
/// purpose: no trap of the program may catch the end of the process.
struct ProcessKilled {};

/// Files on a real disk by the standard library alone, with switches for what can go wrong. Every change is
/// whole or not at all: it goes into a temporary file beside the target, is flushed and renamed.
class HeadlessFiles : public Files {
 public:
  static constexpr int kForEver = -1;

  /// @param program_folder an existing folder, without a separator at its end
  explicit HeadlessFiles(std::string program_folder) : program_folder_(std::move(program_folder)) {}

  std::string ProgramFolder() override { return program_folder_; }
  char Separator() const override { return '/'; }
  bool IsNormalFile(const std::string& path) override;
  void CreateEmpty(const std::string& path) override;
  bool CanRead(const std::string& path) override;
  bool CanWrite(const std::string& path) override;
  std::string Read(const std::string& path, std::size_t limit) override;
  bool CopyWhole(const std::string& from, const std::string& to) override;
  bool MoveWhole(const std::string& from, const std::string& to) override;

  /// The whole file; nothing when it cannot be opened.
  virtual std::optional<std::string> Content(const std::string& path);
  /// Makes `content` the whole file. @return false when it could not be written; the file is as it was then
  virtual bool Replace(const std::string& path, std::string_view content);

  /// Without the flushes, some ten milliseconds each, for tests that save hundreds of times and do not cut
  /// the power.
  void SetFlushing(bool flushing) { flushing_ = flushing; }

  // What can go wrong.

  /// Another program holds the file for itself; the next `opens` tries to open it fail.
  void SetHeld(const std::string& path, int opens = kForEver) { held_[path] = opens; }
  /// The file has the attribute of a hidden one.
  void SetHidden(const std::string& path) { hidden_.insert(path); }
  /// Nothing can be written or made anywhere.
  void SetReadOnly(bool read_only) { read_only_ = read_only; }
  /// The n-th of the following changes fails as on a full disk; 1 is the next one.
  void FailChange(int n) { changes_to_failure_ = n; }
  /// Throws ProcessKilled at the n-th step of the following changes, which have several each.
  void KillAtStep(int n) { steps_to_kill_ = n; }
  /// True while a kill asked for has not come.
  bool KillPending() const { return steps_to_kill_ > 0; }

 private:
  bool Opens(const std::string& path);
  bool MayChange(const std::string& path);
  bool PutInPlace(const std::string& from, const std::string& to);
  void Step();

  std::string program_folder_;
  std::map<std::string, int> held_;
  std::set<std::string> hidden_;
  bool flushing_ = true;
  bool read_only_ = false;
  int changes_to_failure_ = 0;
  int steps_to_kill_ = 0;
};

}  // namespace orvane
