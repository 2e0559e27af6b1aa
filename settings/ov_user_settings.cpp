#include "settings/ov_user_settings.h"

#include <algorithm>

namespace orvane {
namespace {

constexpr std::string_view kFileName = "\\Orvane.dat";
constexpr std::string_view kCopySuffix = ".bak";
constexpr std::string_view kWorkSuffix = ".new";
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
      copy_path_(path_ + std::string(kCopySuffix)),
      work_path_(path_ + std::string(kWorkSuffix)) {}

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
    const std::string text = readable ? ValueOf(row, manager) : fallback;
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
  // Where saving failed before it is tried once, and holds nobody up.
  const int tries = trouble_ == SettingsTrouble::kCannotSave ? 1 : kTries;
  for (int left = tries; left > 0; --left) {
    if (left < tries) clock_.Block(kPauseMs);
    const bool saved = SaveOnce(rows, left == 1);
    NoteWriting(saved);
    if (saved) return;
  }
}

bool OVUserSettings::SaveOnce(Rows rows, bool last_try) {
  clsINIManager manager(store_, files_);
  if (!Attempt([&] { manager.SetFileName(path_); })) return false;
  KeepCopy();
  if (!files_.CopyWhole(path_, work_path_)) return false;
  bool all_written = true;
  for (const SettingRow& row : rows) {
    const std::string text = SettingText(row, settings_);
    if (manager.WriteValue(row.section, row.key, text, work_path_) == kFalse) all_written = false;
  }
  if (!all_written && !last_try) return false;
  return files_.MoveWhole(work_path_, path_) && all_written;
}

// The default is also the answer of a call that could not open the file just then, and would replace the
// value with the next save.
std::string OVUserSettings::ValueOf(const SettingRow& row, clsINIManager& manager) const {
  const std::string fallback = DefaultText(row);
  const std::string text = manager.GetValue(row.section, row.key, fallback, manager.FileName());
  return text != fallback ? text : manager.GetValue(row.section, row.key, fallback, manager.FileName());
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

// Nothing is also what a read brings that failed just then: a good file must not be taken for a blank one.
bool OVUserSettings::Blank(const std::string& path) const {
  return IsBlank(files_.Read(path, kLookedAt)) && IsBlank(files_.Read(path, kLookedAt));
}

void OVUserSettings::RestoreIfBlank() {
  if (!Blank(path_) || Blank(copy_path_)) return;
  if (files_.CopyWhole(copy_path_, path_)) trouble_ = SettingsTrouble::kRestored;
}

void OVUserSettings::KeepCopy() {
  // A save goes on without a copy: not saving would lose more often than a power cut does.
  if (!Blank(path_)) files_.CopyWhole(path_, copy_path_);
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
