// Any bytes as the settings file: what is loaded can be saved and loaded again, and nothing else in the file
// changes.
#include "base/runtime_error.h"
#include "base/text.h"
#include "fuzz/require.h"
#include "platform/headless/files.h"
#include "platform/headless/profile_store.h"
#include "platform/headless/virtual_time.h"
#include "settings/ini_manager.h"
#include "settings/ov_user_settings.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::fuzz {
namespace {

/// Files in memory: a hundred times as many inputs as on a disk.
class MemoryFiles : public HeadlessFiles {
 public:
  MemoryFiles() : HeadlessFiles("/program") {}
  bool IsNormalFile(const std::string& path) override { return files_.contains(path); }
  void CreateEmpty(const std::string& path) override { files_.try_emplace(path); }
  bool CanRead(const std::string& path) override { return files_.contains(path); }
  bool CanWrite(const std::string&) override { return true; }
  std::string Read(const std::string& path, std::size_t limit) override {
    return Content(path).value_or("").substr(0, limit);
  }
  bool CopyWhole(const std::string& from, const std::string& to) override {
    const auto content = Content(from);
    return content && Replace(to, *content);
  }
  bool MoveWhole(const std::string& from, const std::string& to) override {
    const bool moved = CopyWhole(from, to);
    files_.erase(from);
    return moved;
  }
  std::optional<std::string> Content(const std::string& path) override {
    const auto file = files_.find(path);
    return file == files_.end() ? std::nullopt : std::optional(file->second);
  }
  bool Replace(const std::string& path, std::string_view content) override {
    files_[path] = content;
    return true;
  }
  void Clear() { files_.clear(); }
  std::size_t Count() const { return files_.size(); }

 private:
  std::map<std::string, std::string> files_;
};

struct Disk {
  VirtualTime time;
  MemoryFiles files;
  HeadlessProfileStore store{files};
  const std::string path = "/program/Orvane.dat";
  const std::string copy = path + ".bak";

  void Put(std::string_view bytes) {
    files.Clear();
    files.Replace(path, bytes);
  }
  std::string Content() { return files.Content(path).value_or(""); }
};

/// One run of the program on the file.
struct Run {
  explicit Run(Disk& disk) : kept(disk.store, disk.files, disk.time, [](const std::string&) {}) {
    try {
      kept.LoadUserSettings();
    } catch (const SettingsFault& told) {
      faults = told.Entries().size();
      Require(faults > 0 && faults <= UserSettingRows().size(), "a fault names its keys");
    }
    kept.LoadMeterSettings();
  }
  void Save() {
    kept.SaveUserSettings();
    kept.SaveMeterSettings();
  }
  const UserSettings& Settings() const { return kept.Settings(); }

  OVUserSettings kept;
  std::size_t faults = 0;
};

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const auto end = std::min(text.find_first_of("\r\n"), text.size());
    if (end > 0) lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

// Whether a line may be one of ours, in whatever section it stands.
bool MayBeOurs(std::string_view line) {
  for (const auto rows : {UserSettingRows(), MeterSettingRows()}) {
    for (const SettingRow& row : rows) {
      if (ContainsNoCase(line, row.key)) return true;
    }
  }
  return false;
}

void CheckOthersStand(std::string_view before, std::string_view after) {
  const auto lines = LinesOf(after);
  auto at = lines.begin();
  for (const std::string_view line : LinesOf(before)) {
    if (MayBeOurs(line)) continue;
    at = std::find(at, lines.end(), line);
    Require(at != lines.end(), "lines of others stay, in their order");
    ++at;
  }
}

bool CanBeKept(const UserSettings& settings) {
  return CanKeep(settings.CommPort) && CanKeep(settings.BaudRate) && CanKeep(settings.ClientApp);
}

void CheckProgram(Disk& disk, std::string_view bytes) {
  Run first(disk);
  Require(disk.Content() == bytes, "loading changes nothing");
  const UserSettings loaded = first.Settings();
  Require(loaded.ClientApp.size() < 255, "texts have at most 254 characters");
  first.Save();
  const std::string saved = disk.Content();
  if (first.kept.Trouble() == SettingsTrouble::kByteOrderMark) {
    Require(saved == bytes, "a file with a mark is left alone");
    return;
  }
  CheckOthersStand(bytes, saved);
  if (bytes.find_first_not_of('\0') != std::string_view::npos)
    Require(disk.files.Content(disk.copy).has_value(), "a copy is kept");
  Require(disk.files.Count() <= 2, "a save leaves the file and its copy, nothing else");
  Run second(disk);
  if (CanBeKept(loaded)) {
    Require(second.faults == 0, "what was saved is usable");
    Require(second.Settings() == loaded, "what was saved is loaded again");
    second.Save();
    Require(disk.Content() == saved, "saving the same changes nothing");
  }
}

// The store by itself: the first line of the input is a value, the second a key.
void CheckStore(Disk& disk, std::string_view bytes) {
  clsINIManager manager(disk.store, disk.files);
  manager.SetFileName(disk.path);
  const auto lines = LinesOf(bytes.substr(0, 600));
  Attempt([&] {
    for (const std::string& section : manager.GetAllSections(disk.path)) {
      const auto keys = manager.GetAllKeys(section, disk.path);
      if (!keys.empty()) manager.GetValue(section, keys.front(), "", disk.path);
    }
  });
  if (lines.size() < 2 || !CanKeep(lines[0])) return;
  const std::string key(lines[1].substr(0, 40));
  const bool plain = !key.empty() && CanKeep(key) && key.find_first_of("=[;") == std::string::npos;
  if (!plain) return;
  Require(manager.WriteValue("FUZZ", key, lines[0], disk.path) == kTrue, "a value is written");
  Require(manager.GetValue("fuzz", key, "(none)", disk.path) == lines[0], "a value that can be kept is kept");
  manager.DeleteSection("FUZZ", disk.path);
}

}  // namespace
}  // namespace orvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvane::fuzz;
  static Disk disk;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  disk.Put(bytes);
  CheckProgram(disk, bytes);
  disk.Put(bytes);
  CheckStore(disk, bytes);
  return 0;
}
