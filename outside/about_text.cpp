#include "outside/about_text.h"

#include "outside/os_info.h"

#include <array>
#include <string_view>

namespace orvane {
namespace {

// The notice is not in the program file as a text that a hex editor finds and changes: each character is
// stored as its difference to the one before, turned by its place, and the line is put together when it is
// shown.
constexpr unsigned char Turn(std::size_t place) {
  return static_cast<unsigned char>(0x5A + 7 * place);
}

consteval std::array<unsigned char, kNoticeLength> Hidden(std::string_view text) {
  if (text.size() != kNoticeLength) throw text;  // does not compile
  std::array<unsigned char, kNoticeLength> codes{};
  unsigned char before = 0;
  for (std::size_t i = 0; i < kNoticeLength; ++i) {
    const auto code = static_cast<unsigned char>(text[i]);
    codes[i] = static_cast<unsigned char>((code - before) ^ Turn(i));
    before = code;
  }
  return codes;
}

constexpr auto kNotice = Hidden("Copyright (c) 2026 the Orvane Lite developers. The MIT licence.");

std::string Notice() {
  std::string text;
  unsigned char code = 0;
  for (std::size_t i = 0; i < kNotice.size(); ++i) {
    code = static_cast<unsigned char>(code + (kNotice[i] ^ Turn(i)));
    text.push_back(static_cast<char>(code));
  }
  return text;
}

}  // namespace

AboutText MakeAboutText(SystemInfo& system, Files& files) {
  const OSInfo info = GetOSInfo(system);
  const ProgramVersion program = system.OwnVersion();
  AboutText text;
  text.lblAppInfo =
      program.ProductName + VersionSuffix(program) + " " + program.FileDescription + ", for " + info.OSName;
  text.lblVersion = RunningOn(info);
  text.lblPath = files.ProgramFolder();
  text.lblCopyright = Notice();
  return text;
}

}  // namespace orvane
