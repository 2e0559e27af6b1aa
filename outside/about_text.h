#pragma once

#include "platform/profile_store.h"
#include "platform/system_info.h"

#include <string>

namespace orvane {

/// The lines of the About box, named by the labels that show them.
struct AboutText {
  std::string lblAppInfo;    ///< program, version, description, name of the system
  std::string lblVersion;    ///< the system's version, build and service pack
  std::string lblPath;       ///< folder that holds the program
  std::string lblCopyright;  ///< notice line of kNoticeLength characters
};

inline constexpr std::size_t kNoticeLength = 63;

/// Asks system and program resource afresh. What they do not tell leaves an empty piece in its line.
AboutText MakeAboutText(SystemInfo& system, Files& files);

}  // namespace orvane
