#pragma once

#include "platform/profile_store.h"
#include "tests/support/temp_folder.h"

// The one place where the contracts learn which system they run on.
#ifdef _WIN32
#include "platform/win32/files.h"
#include "platform/win32/handles.h"
#include "platform/win32/profile_store.h"
#else
#include "platform/headless/files.h"
#include "platform/headless/profile_store.h"
#endif

#include <memory>
#include <string>

namespace orvane {

/// Settings store and files of the system that the test was built for, and a folder to try them in.
class PlatformUnderTest {
 public:
  ProfileStore& Profiles() { return profiles_; }
  Files& TheFiles() { return files_; }
  const TempFolder& Folder() const { return folder_; }

  /// Lets another program have the file for itself until Release.
  void Hold(const std::string& path) {
#ifdef _WIN32
    holder_.reset(::CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
#else
    files_.SetHeld(path);
#endif
  }
  void Release([[maybe_unused]] const std::string& path) {
#ifdef _WIN32
    holder_.reset();
#else
    files_.SetHeld(path, 0);
#endif
  }

 private:
  TempFolder folder_;
#ifdef _WIN32
  UniqueHandle holder_;
  Win32Files files_;
  Win32ProfileStore profiles_;
#else
  HeadlessFiles files_{folder_.Path()};
  HeadlessProfileStore profiles_{files_};
#endif
};

}  // namespace orvane
