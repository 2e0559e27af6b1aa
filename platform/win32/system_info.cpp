#include "platform/win32/system_info.h"

#include "platform/win32/files.h"
#include "platform/win32/system_library.h"
#include "platform/win32/text.h"
#include "platform/win32/windows_api.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace orvane {
namespace {

/// The version resource of a file, in memory.
class VersionResource {
 public:
  explicit VersionResource(const std::wstring& path) {
    const HMODULE library = SystemLibrary(L"version.dll");
    const auto size_of = FindCall<decltype(&::GetFileVersionInfoSizeW)>(library, "GetFileVersionInfoSizeW");
    const auto read = FindCall<decltype(&::GetFileVersionInfoW)>(library, "GetFileVersionInfoW");
    query_ = FindCall<decltype(&::VerQueryValueW)>(library, "VerQueryValueW");
    if (size_of == nullptr || read == nullptr || query_ == nullptr) return;
    DWORD unused = 0;
    bytes_.resize(size_of(path.c_str(), &unused));
    const auto size = static_cast<DWORD>(bytes_.size());
    if (size == 0 || !read(path.c_str(), 0, size, bytes_.data())) bytes_.clear();
  }

  /// A record of fixed size; null when it is not there or too short for one.
  template <typename Value>
  const Value* Record(const wchar_t* name) const {
    const auto [value, length] = Query(name);
    return length < sizeof(Value) ? nullptr : static_cast<const Value*>(value);
  }
  std::string Text(const std::wstring& name) const {
    const auto [value, length] = Query(name.c_str());  // the length in characters, its NUL included
    const std::wstring_view text(static_cast<const wchar_t*>(value), length);
    return FromWide(text.substr(0, text.find(L'\0')));
  }

 private:
  std::pair<const void*, UINT> Query(const wchar_t* name) const {
    void* value = nullptr;
    UINT length = 0;
    if (bytes_.empty() || !query_(bytes_.data(), name, &value, &length)) return {nullptr, 0};
    return {value, length};
  }

  std::vector<std::byte> bytes_;
  decltype(&::VerQueryValueW) query_ = nullptr;
};

struct Translation {
  WORD language;
  WORD code_page;
};

/// Where the texts of a language stand in the resource.
std::wstring TextFolder(const Translation& translation) {
  char digits[9];
  std::snprintf(digits, sizeof digits, "%04x%04x", static_cast<unsigned>(translation.language),
                static_cast<unsigned>(translation.code_page));
  return L"\\StringFileInfo\\" + ToWide(digits) + L"\\";
}

}  // namespace

SystemVersion Win32SystemInfo::QueryVersion() {
  OSVERSIONINFOA record{};
  record.dwOSVersionInfoSize = sizeof record;
  static_assert(sizeof record.szCSDVersion == SystemVersion::kServicePackBytes);
  SystemVersion version;
  version.Result = ::GetVersionExA(&record);
  version.PlatformId = record.dwPlatformId;
  version.MajorVersion = record.dwMajorVersion;
  version.MinorVersion = record.dwMinorVersion;
  version.BuildNumber = record.dwBuildNumber;
  std::copy(std::begin(record.szCSDVersion), std::end(record.szCSDVersion), version.ServicePack.begin());
  return version;
}

ProgramVersion Win32SystemInfo::OwnVersion() {
  return ReadVersionResource(ModulePath());
}

ProgramVersion ReadVersionResource(const std::wstring& path) {
  const VersionResource resource(path);
  ProgramVersion version;
  if (const auto* fixed = resource.Record<VS_FIXEDFILEINFO>(L"\\")) {
    version.Major = HIWORD(fixed->dwFileVersionMS);
    version.Minor = LOWORD(fixed->dwFileVersionMS);
  }
  if (const auto* translation = resource.Record<Translation>(L"\\VarFileInfo\\Translation")) {
    version.ProductName = resource.Text(TextFolder(*translation) + L"ProductName");
    version.FileDescription = resource.Text(TextFolder(*translation) + L"FileDescription");
  }
  return version;
}

}  // namespace orvane
