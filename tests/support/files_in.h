#pragma once

#include "platform/profile_store.h"

#include <string>
#include <utility>

namespace orvane {

/// The system's files, with a folder of the test's own as the program's.
class FilesOfProgramIn : public Files {
 public:
  FilesOfProgramIn(Files& files, std::string folder) : files_(files), folder_(std::move(folder)) {}
  std::string ProgramFolder() override { return folder_; }
  char Separator() const override { return files_.Separator(); }
  bool IsNormalFile(const std::string& path) override { return files_.IsNormalFile(path); }
  void CreateEmpty(const std::string& path) override { files_.CreateEmpty(path); }
  bool CanRead(const std::string& path) override { return files_.CanRead(path); }
  bool CanWrite(const std::string& path) override { return files_.CanWrite(path); }
  std::string Read(const std::string& path, std::size_t limit) override { return files_.Read(path, limit); }
  bool CopyWhole(const std::string& from, const std::string& to) override {
    return files_.CopyWhole(from, to);
  }
  bool MoveWhole(const std::string& from, const std::string& to) override {
    return files_.MoveWhole(from, to);
  }

 private:
  Files& files_;
  std::string folder_;
};

}  // namespace orvane
