#pragma once

#include "base/text.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A name or value that may be absent: an absent key asks for all keys, an absent value removes the key, and
/// so on.
using OptionalText = std::optional<std::string_view>;

/// Files of [section] and key=value lines, with Windows' own rules: names without regard to letter case, the
/// first of two equal names wins, one pair of quotes around a value and blanks around it are taken off when
/// it is read, a line that starts with ';' is a comment. Nothing is cached: every call goes to the file.
struct ProfileStore {
  virtual ~ProfileStore() = default;
  /// Reads a value, cut to buffer_size - 1 characters; `fallback` without its trailing blanks where file,
  /// section or key is missing. Without a section: all section names; without a key: all keys of the section
  /// (`fallback` when there are none); each followed by a NUL, the final extra NUL not included, cut to
  /// buffer_size - 2.
  virtual std::string GetPrivateProfileString(OptionalText section, OptionalText key,
                                              std::string_view fallback, std::size_t buffer_size,
                                              const std::string& file) = 0;
  /// Sets the value, making section, key and file as needed; without a value removes the key, without a key
  /// the section.
  /// @return true on success; on failure the file is as it was
  virtual bool WritePrivateProfileString(std::string_view section, OptionalText key, OptionalText value,
                                         const std::string& file) = 0;
  /// Replaces the whole section by an empty one, making it if it is missing.
  virtual bool WriteEmptySection(std::string_view section, const std::string& file) = 0;
};

/// What the program needs to know of files. Paths use the separator of the system.
struct Files {
  virtual ~Files() = default;
  /// Folder that holds the program, without a separator at its end.
  virtual std::string ProgramFolder() = 0;
  /// What stands between the parts of a path.
  virtual char Separator() const = 0;
  /// The program folder followed by `tail`, which is written with backslashes on every system
  /// ("\\Images\\Face.ovl").
  std::string InProgramFolder(std::string_view tail) {
    return ProgramFolder() + ReplaceAll(tail, '\\', Separator());
  }
  /// True when `path` is a normal file: there, no folder, neither hidden nor a system file.
  virtual bool IsNormalFile(const std::string& path) = 0;
  /// Makes an empty file where nothing is. A file that is there, also a hidden one, stays as it is.
  /// @throws RuntimeError kPathAccess when there is no file afterwards
  virtual void CreateEmpty(const std::string& path) = 0;
  /// True when the file is there and can be opened for reading now (no other program holds it for itself).
  virtual bool CanRead(const std::string& path) = 0;
  /// True when the file can be opened for writing, or made, now. Leaves no trace.
  virtual bool CanWrite(const std::string& path) = 0;
  /// The first `limit` bytes of a file; an empty text when it cannot be read.
  virtual std::string Read(const std::string& path, std::size_t limit) = 0;
  /// Copies a file whole or not at all: into a temporary file beside the target, flushed to the disk, then
  /// renamed over it.
  /// @return true when the target is the copy
  virtual bool CopyWhole(const std::string& from, const std::string& to) = 0;
  /// Puts a file in the place of another in one step, its bytes flushed to the disk before: whoever looks,
  /// also after a power cut, finds the old file or the new one.
  /// @return true when it is done; otherwise `to` is as it was. `from` is gone in both cases
  virtual bool MoveWhole(const std::string& from, const std::string& to) = 0;
};

}  // namespace orvane
