#include "platform/win32/profile_store.h"

#include "platform/win32/windows_api.h"

namespace orvane {
namespace {

// The calls want a closing NUL, which a view need not have, and tell an absent text by a null pointer.
class Argument {
 public:
  explicit Argument(OptionalText text) : present_(text.has_value()), text_(text.value_or("")) {}
  const char* get() const { return present_ ? text_.c_str() : nullptr; }

 private:
  bool present_;
  std::string text_;
};

}  // namespace

std::string Win32ProfileStore::GetPrivateProfileString(OptionalText section, OptionalText key,
                                                       std::string_view fallback, std::size_t buffer_size,
                                                       const std::string& file) {
  std::string buffer(buffer_size, '\0');
  const DWORD count =
      ::GetPrivateProfileStringA(Argument(section).get(), Argument(key).get(), Argument(fallback).get(),
                                 buffer.data(), static_cast<DWORD>(buffer.size()), file.c_str());
  buffer.resize(count);
  return buffer;
}

bool Win32ProfileStore::WritePrivateProfileString(std::string_view section, OptionalText key,
                                                  OptionalText value, const std::string& file) {
  return ::WritePrivateProfileStringA(Argument(section).get(), Argument(key).get(), Argument(value).get(),
                                      file.c_str()) != FALSE;
}

bool Win32ProfileStore::WriteEmptySection(std::string_view section, const std::string& file) {
  // An empty list of pairs alone does not make a missing section everywhere (Wine leaves the file as it is).
  return WritePrivateProfileString(section, "-", "", file) &&
         ::WritePrivateProfileSectionA(Argument(section).get(), "", file.c_str()) != FALSE;
}

}  // namespace orvane
