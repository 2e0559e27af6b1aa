#include "platform/headless/files.h"

#include "base/runtime_error.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#if defined(__unix__)
#include <fcntl.h>
#include <unistd.h>
#endif

namespace orvane {
namespace {

namespace fs = std::filesystem;

// A rename alone may reach the disk before the bytes do; after a power cut the new name then stands on an
// empty file. Where there is no such call the rename has to do.
bool FlushToDisk(const fs::path& path) {
#if defined(__unix__)
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool flushed = ::fsync(file) == 0;
  ::close(file);
  return flushed;
#else
  return !path.empty();
#endif
}

bool WriteHalves(const fs::path& path, std::string_view content, const auto& between) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file) return false;
  between();
  const auto half = content.size() / 2;
  file.write(content.data(), static_cast<std::streamsize>(half)).flush();
  between();
  const auto rest = content.substr(half);
  file.write(rest.data(), static_cast<std::streamsize>(rest.size())).flush();
  return file.good();
}

}  // namespace

bool HeadlessFiles::Opens(const std::string& path) {
  const auto holder = held_.find(path);
  if (holder == held_.end() || holder->second == 0) return true;
  if (holder->second > 0) --holder->second;
  return false;
}

void HeadlessFiles::Step() {
  if (steps_to_kill_ > 0 && --steps_to_kill_ == 0) throw ProcessKilled{};
}

bool HeadlessFiles::IsNormalFile(const std::string& path) {
  std::error_code error;
  return !hidden_.contains(path) && fs::is_regular_file(path, error);
}

void HeadlessFiles::CreateEmpty(const std::string& path) {
  std::error_code error;
  if (fs::is_regular_file(path, error)) return;
  if (fs::exists(path, error) || read_only_ || !std::ofstream(path, std::ios::binary | std::ios::app)) {
    throw RuntimeError(Fault::kPathAccess, "Making " + path);
  }
}

bool HeadlessFiles::CanRead(const std::string& path) {
  std::error_code error;
  return fs::is_regular_file(path, error) && Opens(path) && std::ifstream(path, std::ios::binary).good();
}

bool HeadlessFiles::CanWrite(const std::string& path) {
  std::error_code error;
  if (read_only_ || fs::is_directory(path, error) || !Opens(path)) return false;
  const bool was_there = fs::exists(path, error);
  const bool opened = std::ofstream(path, std::ios::binary | std::ios::app).good();
  if (!was_there) fs::remove(path, error);
  return opened;
}

std::optional<std::string> HeadlessFiles::Content(const std::string& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error) || !Opens(path)) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string HeadlessFiles::Read(const std::string& path, std::size_t limit) {
  return Content(path).value_or("").substr(0, limit);
}

bool HeadlessFiles::MayChange(const std::string& path) {
  if (changes_to_failure_ > 0 && --changes_to_failure_ == 0) return false;
  std::error_code error;
  return !read_only_ && !fs::is_directory(path, error) && Opens(path);
}

bool HeadlessFiles::PutInPlace(const std::string& from, const std::string& to) {
  Step();
  if (flushing_ && !FlushToDisk(from)) return false;
  Step();
  std::error_code error;
  if (!flushing_) fs::remove(to, error);  // some file systems flush what takes a file's place by itself
  fs::rename(from, to, error);
  if (error) return false;
  if (flushing_) FlushToDisk(fs::path(to).parent_path());
  Step();
  return true;
}

bool HeadlessFiles::Replace(const std::string& path, std::string_view content) {
  if (!MayChange(path)) return false;
  const std::string beside = path + ".tmp";
  Step();
  if (!WriteHalves(beside, content, [this] { Step(); })) {
    std::error_code error;
    fs::remove(beside, error);
    return false;
  }
  return PutInPlace(beside, path);
}

bool HeadlessFiles::MoveWhole(const std::string& from, const std::string& to) {
  if (MayChange(to) && PutInPlace(from, to)) return true;
  std::error_code error;
  fs::remove(from, error);
  return false;
}

bool HeadlessFiles::CopyWhole(const std::string& from, const std::string& to) {
  const auto content = Content(from);
  return content && Replace(to, *content);
}

}  // namespace orvane
