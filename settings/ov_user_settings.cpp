#include "settings/ov_user_settings.h"

#include <algorithm>

namespace orvane {
namespace {

constexpr std::string_view kFileName = "\\Orvane.dat";
constexpr std::string_view kCopySuffix = ".bak";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kLookedAt = 65536;  // the system's calls read no more of such a file
constexpr int kTries = 3;
constexpr std::int32_t kPauseMs = 100;

// Empty, or nothing but zeros: what a power cut leaves of a file that was being written.
bool IsBlank(std::string_view content) {
  return content.find_first_not_of('\0') == std::string_view::npos;
}

std::string LinesOf(const std::vector<SettingsFault::Entry>& entries) {
  std::string lines;
  for (const auto& [key, value] : entries) {
    if (!lines.empty()) lines += '\n';
    lines.append(key).append("=").append(value);
  }
  return lines;
}

}  // namespace

SettingsFault::SettingsFault(Fault fault, std::vector<Entry> entries)
    : RuntimeError(fault, LinesOf(entries)), entries_(std::move(entries)) {}

OVUserSettings::OVUserSettings(ProfileStore& store, Files& files, Clock& clock, ShowPort show_port)
    : store_(store),
      files_(files),
      clock_(clock),
      show_port_(std::move(show_port)),
      path_(files.InProgramFolder(kFileName)),
      copy_path_(path_ + std::string(kCopySuffix)) {}

void OVUserSettings::LoadMeterSettings() {
  meter_loaded_ = true;
  Load(MeterSettingRows());
  show_port_(settings_.CommPort);
}

void OVUserSettings::LoadUserSettings() {
  user_loaded_ = true;
  Load(UserSettingRows());
}

void OVUserSettings::SaveUserSettings() {
  if (user_loaded_) Save(UserSettingRows());
}

void OVUserSettings::SaveMeterSettings() {
  if (meter_loaded_) Save(MeterSettingRows());
}

void OVUserSettings::Load(Rows rows) {
  clsINIManager manager(store_, files_);
  const bool readable = OpenFile(manager);
  std::vector<SettingsFault::Entry> unusable;
  Fault fault = Fault::kTypeMismatch;
  for (const SettingRow& row : rows) {
    const std::string fallback = DefaultText(row);
    const std::string text =
        readable ? manager.GetValue(row.section, row.key, fallback, manager.FileName()) : fallback;
    try {
      SetFromText(row, text, settings_);
    } catch (const RuntimeError& error) {
      SetFromText(row, fallback, settings_);
      if (unusable.empty()) fault = error.fault();
      unusable.push_back({std::string(row.key), text});
    }
  }
  if (!unusable.empty()) throw SettingsFault(fault, std::move(unusable));
}

void OVUserSettings::Save(Rows rows) {
  if (files_.Read(path_, kByteOrderMark.size()) == kByteOrderMark) trouble_ = SettingsTrouble::kByteOrderMark;
  if (trouble_ == SettingsTrouble::kInUse || trouble_ == SettingsTrouble::kByteOrderMark) return;
  clsINIManager manager(store_, files_);
  if (!Attempt([&] { manager.SetFileName(path_); })) return NoteWriting(false);
  KeepCopy();
  bool all_written = true;
  for (const SettingRow& row : rows) {
    const std::string text = SettingText(row, settings_);
    if (manager.WriteValue(row.section, row.key, text, manager.FileName()) == kFalse) all_written = false;
  }
  NoteWriting(all_written);
}

// The system's calls answer with the defaults when they cannot open the file, and the next save would make
// that the truth: so whether it opens is asked first.
bool OVUserSettings::OpenFile(clsINIManager& manager) {
  if (trouble_ == SettingsTrouble::kInUse) return false;
  const bool was_there = files_.IsNormalFile(path_);
  if (!Attempt([&] { manager.SetFileName(path_); })) {
    NoteWriting(false);
    return false;
  }
  if (!WaitUntilReadable()) {
    trouble_ = SettingsTrouble::kInUse;
    return false;
  }
  if (was_there && !looked_at_) RestoreIfBlank();
  looked_at_ = true;
  if (files_.Read(path_, kByteOrderMark.size()) == kByteOrderMark) {
    trouble_ = SettingsTrouble::kByteOrderMark;
  } else {
    NoteWriting(files_.CanWrite(path_));
  }
  return true;
}

bool OVUserSettings::WaitUntilReadable() {
  for (int left = kTries; left > 0; --left) {
    if (left < kTries) clock_.Block(kPauseMs);
    if (files_.CanRead(path_)) return true;
  }
  return false;
}

void OVUserSettings::RestoreIfBlank() {
  if (!IsBlank(files_.Read(path_, kLookedAt)) || IsBlank(files_.Read(copy_path_, kLookedAt))) return;
  if (files_.CopyWhole(copy_path_, path_)) trouble_ = SettingsTrouble::kRestored;
}

void OVUserSettings::KeepCopy() {
  // A save goes on without a copy: not saving would lose more often than a power cut does.
  if (!IsBlank(files_.Read(path_, kLookedAt))) files_.CopyWhole(path_, copy_path_);
}

void OVUserSettings::NoteWriting(bool possible) {
  if (!possible) {
    trouble_ = SettingsTrouble::kCannotSave;
  } else if (trouble_ == SettingsTrouble::kCannotSave) {
    trouble_ = SettingsTrouble::kNone;
  }
}

std::string OVUserSettings::TroubleText() const {
  switch (trouble_) {
    case SettingsTrouble::kNone:
      return {};
    case SettingsTrouble::kRestored:
      return "Settings restored from their copy";
    case SettingsTrouble::kInUse:
      return "Settings file in use: not saved";
    case SettingsTrouble::kByteOrderMark:
      return "Settings file has a mark: not saved";
    case SettingsTrouble::kCannotSave:
      return "Settings cannot be saved here";
  }
  return {};
}

}  // namespace orvane
