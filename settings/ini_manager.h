#pragma once

#include "base/checked.h"
#include "platform/profile_store.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A settings file of sections and keys. Keeps nothing in memory: every call goes to the file, so two
/// managers of one file see each other's writes. Calls take the file explicitly; give them FileName().
class clsINIManager {
 public:
  clsINIManager(ProfileStore& store, Files& files) : store_(store), files_(files) {}

  const std::string& FileName() const { return file_name_; }
  /// Takes the full path of the file and makes an empty one if there is none; one that is there is not
  /// opened. @throws RuntimeError kPathAccess when it cannot be made; the name then stays as it was
  void SetFileName(const std::string& path);

  /// The value without blanks at its ends, at most 254 characters of it, or `fallback`; an empty text on a
  /// fault.
  std::string GetValue(std::string_view section, std::string_view key, std::string_view fallback,
                       const std::string& file);
  /// kTrue when the system took it; kFalse on a fault.
  Bool16 WriteValue(std::string_view section, std::string_view key, std::string_view value,
                    const std::string& file);

  /// Names in the order of the file; of a long list what fits 2046 bytes, the name that is cut left out.
  /// @throws RuntimeError kSubscriptOutOfRange when even the first name does not fit
  std::vector<std::string> GetAllSections(const std::string& file);
  /// As above, but a key that is cut comes as the piece that fits, less one character.
  std::vector<std::string> GetAllKeys(std::string_view section, const std::string& file);

  /// Makes the section, or empties the one that is there. kFalse on a fault, as below.
  Bool16 CreateSection(std::string_view section, const std::string& file);
  Bool16 DeleteSection(std::string_view section, const std::string& file);
  Bool16 DeleteKey(std::string_view section, std::string_view key, const std::string& file);

 private:
  ProfileStore& store_;
  Files& files_;
  std::string file_name_;
};

}  // namespace orvane
