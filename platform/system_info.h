#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace orvane {

/// What the system says of its own version.
struct SystemVersion {
  static constexpr std::size_t kServicePackBytes = 128;

  std::int32_t Result = 0;  ///< what the query returned: 1 when the fields below are its answer
  std::uint32_t PlatformId = 0;
  std::uint32_t MajorVersion = 0;
  std::uint32_t MinorVersion = 0;
  std::uint32_t BuildNumber = 0;
  /// The bytes as they came; the text ends at the first NUL, which need not be there.
  std::array<char, kServicePackBytes> ServicePack{};
};

/// What stands in the version resource of the program's own file. Texts are empty and numbers 0 where it has
/// none.
struct ProgramVersion {
  std::string ProductName;
  std::string FileDescription;
  int Major = 0;
  int Minor = 0;
};

/// What can be told to a person about the system and about this program.
struct SystemInfo {
  virtual ~SystemInfo() = default;
  virtual SystemVersion QueryVersion() = 0;
  virtual ProgramVersion OwnVersion() = 0;
};

}  // namespace orvane
