#include "settings/ini_manager.h"

#include "base/runtime_error.h"
#include "base/text.h"

#include <optional>

namespace orvane {
namespace {

constexpr std::size_t kValueBuffer = 255;
constexpr std::size_t kListBuffer = 2048;

template <typename Write>
Bool16 Succeeded(Write write) {
  bool done = false;
  Attempt([&] { done = write(); });
  return ToBool16(done);
}

std::vector<std::string> Names(std::string_view list) {
  const auto pieces = Split(list, '\0');
  return {pieces.begin(), pieces.end()};
}

}  // namespace

void clsINIManager::SetFileName(const std::string& path) {
  if (!files_.IsNormalFile(path)) files_.CreateEmpty(path);
  file_name_ = path;
}

std::string clsINIManager::GetValue(std::string_view section, std::string_view key, std::string_view fallback,
                                    const std::string& file) {
  std::string value;
  Attempt([&] { value = Trim(store_.GetPrivateProfileString(section, key, fallback, kValueBuffer, file)); });
  return value;
}

Bool16 clsINIManager::WriteValue(std::string_view section, std::string_view key, std::string_view value,
                                 const std::string& file) {
  return Succeeded([&] { return store_.WritePrivateProfileString(section, key, value, file); });
}

std::vector<std::string> clsINIManager::GetAllSections(const std::string& file) {
  const std::string list = store_.GetPrivateProfileString(std::nullopt, "", "", kListBuffer, file);
  std::string_view names = Trim(list);
  if (!names.empty()) {
    const auto last = names.rfind('\0');
    if (last == std::string_view::npos) {
      throw RuntimeError(Fault::kSubscriptOutOfRange, "Listing the sections of " + file);
    }
    names = names.substr(0, last);
  }
  return Names(names);
}

std::vector<std::string> clsINIManager::GetAllKeys(std::string_view section, const std::string& file) {
  const std::string list = store_.GetPrivateProfileString(section, std::nullopt, "", kListBuffer, file);
  std::string_view names = Trim(list);
  if (!names.empty()) names.remove_suffix(1);
  return Names(names);
}

Bool16 clsINIManager::CreateSection(std::string_view section, const std::string& file) {
  return Succeeded([&] { return store_.WriteEmptySection(section, file); });
}

Bool16 clsINIManager::DeleteSection(std::string_view section, const std::string& file) {
  return Succeeded([&] { return store_.WritePrivateProfileString(section, std::nullopt, "", file); });
}

Bool16 clsINIManager::DeleteKey(std::string_view section, std::string_view key, const std::string& file) {
  return Succeeded([&] { return store_.WritePrivateProfileString(section, key, std::nullopt, file); });
}

}  // namespace orvane
