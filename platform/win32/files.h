#pragma once

#include "platform/profile_store.h"

#include <string>

namespace orvane {

/// Files on the real system. Paths are bytes in the system's code page, as the private-profile calls take
/// them.
class Win32Files final : public Files {
 public:
  /// Read once, when it is first asked for. A folder whose name the bytes cannot tell is named by its short
  /// name.
  std::string ProgramFolder() override;
  char Separator() const override { return '\\'; }
  bool IsNormalFile(const std::string& path) override;
  void CreateEmpty(const std::string& path) override;
  bool CanRead(const std::string& path) override;
  bool CanWrite(const std::string& path) override;
  std::string Read(const std::string& path, std::size_t limit) override;
  bool CopyWhole(const std::string& from, const std::string& to) override;
  bool MoveWhole(const std::string& from, const std::string& to) override;

 private:
  std::string program_folder_;
};

/// The whole path of the program's own file.
std::wstring ModulePath();

}  // namespace orvane
