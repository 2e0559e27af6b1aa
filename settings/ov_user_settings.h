#pragma once

#include "base/runtime_error.h"
#include "platform/clock.h"
#include "platform/profile_store.h"
#include "settings/ini_manager.h"
#include "settings/setting_rows.h"
#include "settings/user_settings.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// What the user should know about the settings file.
enum class SettingsTrouble {
  kNone,
  kRestored,       ///< the file was empty or full of zeros; the copy from before the last save is back
  kInUse,          ///< another program holds it: defaults, and nothing is saved over it
  kByteOrderMark,  ///< an editor put a mark in front, which hides the first section: nothing is saved over it
  kCannotSave,     ///< the folder or the file cannot be written; every save tries again
};

/// Values of the file that cannot be converted. what() has a line KEY=value for each.
class SettingsFault : public RuntimeError {
 public:
  struct Entry {
    std::string key;
    std::string value;
  };
  SettingsFault(Fault fault, std::vector<Entry> entries);
  const std::vector<Entry>& Entries() const { return entries_; }

 private:
  std::vector<Entry> entries_;
};

/// The user's settings, kept in "\Orvane.dat" in the program's folder. The system's own profile calls rewrite
/// a file for each value and promise nothing about a power cut. So a save has them change a copy,
/// "\Orvane.dat.new", which then takes the file's place in one step: whenever the program is killed, the file
/// is the old one or the new one. Before, its content is copied to "\Orvane.dat.bak", which a start takes
/// that finds the file empty or full of zeros.
class OVUserSettings {
 public:
  using ShowPort = std::function<void(const std::string& port)>;

  /// @param show_port shows the port's number to the user; told at the end of LoadMeterSettings
  OVUserSettings(ProfileStore& store, Files& files, Clock& clock, ShowPort show_port);

  UserSettings& Settings() { return settings_; }
  const UserSettings& Settings() const { return settings_; }

  /// Reads port and speed. May hold the thread for 200 ms while another program holds the file.
  void LoadMeterSettings();
  /// Reads the nine others. The file is not changed by what it holds.
  /// @throws SettingsFault after all keys were read; those that it names have their defaults
  void LoadUserSettings();
  /// Writes the nine others, skipping what fails even when it is tried again; a save that fails may hold the
  /// thread for 200 ms. Does nothing before LoadUserSettings was called: a program
  /// that ends early must not replace the file by defaults.
  void SaveUserSettings();
  /// Writes port and speed, in the same way; needs LoadMeterSettings.
  void SaveMeterSettings();

  SettingsTrouble Trouble() const { return trouble_; }
  /// A sentence for the status line; empty when there is no trouble.
  std::string TroubleText() const;

 private:
  using Rows = std::span<const SettingRow>;
  void Load(Rows rows);
  void Save(Rows rows);
  bool SaveOnce(Rows rows, bool last_try);
  std::string ValueOf(const SettingRow& row, clsINIManager& manager) const;
  bool Blank(const std::string& path) const;
  bool OpenFile(clsINIManager& manager);
  bool WaitUntilReadable();
  void RestoreIfBlank();
  void KeepCopy();
  void NoteWriting(bool possible);

  ProfileStore& store_;
  Files& files_;
  Clock& clock_;
  ShowPort show_port_;
  std::string path_;
  std::string copy_path_;
  std::string work_path_;
  UserSettings settings_;
  SettingsTrouble trouble_ = SettingsTrouble::kNone;
  bool looked_at_ = false;  // whether the file is blank was seen before this program could have made it so
  bool user_loaded_ = false;
  bool meter_loaded_ = false;
};

}  // namespace orvane
