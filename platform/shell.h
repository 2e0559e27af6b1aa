#pragma once

#include <string>

namespace orvane {

/// How a started program shows its window.
enum class ShowMode { kNormal = 1, kMaximized = 3 };

/// Starts other programs and opens documents. Failures are told by the result alone: the system shows no box
/// of its own.
struct Shell {
  struct Launch {
    std::string verb;    ///< empty for the document's default
    std::string target;  ///< program, document or web address
    std::string parameters;
    std::string folder;  ///< empty for the program's own
    ShowMode show = ShowMode::kNormal;
    bool operator==(const Launch&) const = default;
  };
  virtual ~Shell() = default;
  /// Does not wait for what it started. @return false when nothing was started
  virtual bool Execute(const Launch& launch) = 0;
  /// Opens a help file of the old kind (.hlp) at its contents. @return false when the system has no viewer
  /// for it that works, or it was not started
  virtual bool ShowHelpFile(const std::string& path) = 0;
};

}  // namespace orvane
