#include "platform/win32/files.h"

#include "base/runtime_error.h"
#include "platform/win32/handles.h"
#include "platform/win32/text.h"
#include "platform/win32/windows_api.h"

#include <algorithm>
#include <vector>

namespace orvane {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kNoFile = INVALID_FILE_ATTRIBUTES;

UniqueHandle Open(const std::string& path, DWORD access, DWORD disposition, DWORD flags = 0) {
  return UniqueHandle(::CreateFileA(path.c_str(), access, kShareAll, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL | flags, nullptr));
}

bool IsFile(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesA(path.c_str());
  return attributes != kNoFile && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::wstring ShortPath(const std::wstring& path) {
  std::wstring name(::GetShortPathNameW(path.c_str(), nullptr, 0), L'\0');
  if (name.empty()) return path;
  name.resize(::GetShortPathNameW(path.c_str(), name.data(), static_cast<DWORD>(name.size())));
  return name;
}

std::string ToSystemBytes(const std::wstring& text) {
  const int length = static_cast<int>(text.size());
  std::string bytes(text.size() * 2, '\0');
  bytes.resize(static_cast<std::size_t>(::WideCharToMultiByte(
      CP_ACP, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr)));
  return bytes;
}

bool CopyBytes(HANDLE from, HANDLE to) {
  std::vector<char> buffer(64 * 1024);
  for (;;) {
    DWORD count = 0;
    if (!::ReadFile(from, buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr)) return false;
    if (count == 0) return true;
    DWORD written = 0;
    if (!::WriteFile(to, buffer.data(), count, &written, nullptr) || written != count) return false;
  }
}

bool CopyToDisk(const std::string& from, const std::string& to) {
  const UniqueHandle source = Open(from, GENERIC_READ, OPEN_EXISTING);
  if (!source) return false;
  const UniqueHandle target = Open(to, GENERIC_WRITE, CREATE_ALWAYS);
  return target && CopyBytes(source.get(), target.get()) && ::FlushFileBuffers(target.get());
}

bool FlushToDisk(const std::string& path) {
  const UniqueHandle file = Open(path, GENERIC_WRITE, OPEN_EXISTING);
  return file && ::FlushFileBuffers(file.get()) != FALSE;
}

bool PutInPlace(const std::string& from, const std::string& to) {
  return ::MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
}

}  // namespace

std::wstring ModulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

std::string Win32Files::ProgramFolder() {
  if (!program_folder_.empty()) return program_folder_;
  std::wstring folder = ModulePath();
  folder.resize(std::min(folder.rfind(L'\\'), folder.size()));
  // The path goes to the calls that take the system's code page, and to those that get Windows-1252 converted
  // to wide characters: both must mean this folder.
  std::string bytes = ToSystemBytes(folder);
  if (ToWide(bytes) != folder) bytes = ToSystemBytes(ShortPath(folder));
  program_folder_ = bytes;
  return program_folder_;
}

bool Win32Files::IsNormalFile(const std::string& path) {
  constexpr DWORD special = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_DIRECTORY;
  const DWORD attributes = ::GetFileAttributesA(path.c_str());
  return attributes != kNoFile && (attributes & special) == 0;
}

void Win32Files::CreateEmpty(const std::string& path) {
  if (!Open(path, GENERIC_WRITE, CREATE_NEW) && !IsFile(path)) {
    throw RuntimeError(Fault::kPathAccess, "Making " + path);
  }
}

bool Win32Files::CanRead(const std::string& path) {
  return static_cast<bool>(Open(path, GENERIC_READ, OPEN_EXISTING));
}

bool Win32Files::CanWrite(const std::string& path) {
  if (Open(path, GENERIC_WRITE, OPEN_EXISTING)) return true;
  return ::GetLastError() == ERROR_FILE_NOT_FOUND &&
         Open(path, GENERIC_WRITE, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);
}

std::string Win32Files::Read(const std::string& path, std::size_t limit) {
  const UniqueHandle file = Open(path, GENERIC_READ, OPEN_EXISTING);
  LARGE_INTEGER size{};
  if (!file || !::GetFileSizeEx(file.get(), &size)) return {};
  constexpr LONGLONG most = 1 << 30;
  std::string content(std::min(static_cast<std::size_t>(std::min(size.QuadPart, most)), limit), '\0');
  DWORD count = 0;
  if (!::ReadFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &count, nullptr)) return {};
  content.resize(count);
  return content;
}

bool Win32Files::CopyWhole(const std::string& from, const std::string& to) {
  const std::string beside = to + ".tmp";
  if (CopyToDisk(from, beside) && PutInPlace(beside, to)) return true;
  ::DeleteFileA(beside.c_str());
  return false;
}

bool Win32Files::MoveWhole(const std::string& from, const std::string& to) {
  if (FlushToDisk(from) && PutInPlace(from, to)) return true;
  ::DeleteFileA(from.c_str());
  return false;
}

}  // namespace orvane
