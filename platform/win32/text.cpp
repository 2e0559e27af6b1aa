#include "platform/win32/text.h"

#include "platform/win32/windows_api.h"

namespace orvane {
namespace {

constexpr UINT kCodePage = 1252;

}  // namespace

std::wstring ToWide(std::string_view text) {
  if (text.empty()) return {};
  const int length = static_cast<int>(text.size());
  const int needed = ::MultiByteToWideChar(kCodePage, 0, text.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  ::MultiByteToWideChar(kCodePage, 0, text.data(), length, wide.data(), needed);
  return wide;
}

std::string FromWide(std::wstring_view text) {
  if (text.empty()) return {};
  const int length = static_cast<int>(text.size());
  const int needed = ::WideCharToMultiByte(kCodePage, 0, text.data(), length, nullptr, 0, "?", nullptr);
  std::string bytes(static_cast<std::size_t>(needed), '\0');
  ::WideCharToMultiByte(kCodePage, 0, text.data(), length, bytes.data(), needed, "?", nullptr);
  return bytes;
}

}  // namespace orvane
