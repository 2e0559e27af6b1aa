#include "outside/launches.h"

#include "outside/addresses.h"
#include "outside/support_mail.h"

#include <string>

namespace orvane {
namespace {

// Where documents are opened: a folder that is always there, and on no medium that somebody wants to take
// out.
constexpr const char* kDocumentFolder = "C:\\";

}  // namespace

bool Launches::OpenDocument(std::string_view target) {
  return shell_.Execute({"", std::string(target), "", kDocumentFolder, ShowMode::kMaximized});
}

bool Launches::ShowSystemInfo() {
  return shell_.Execute(
      {"Open", std::string(kSystemInfoTool), std::string(kSystemInfoPage), "", ShowMode::kMaximized});
}

bool Launches::SendSupportMail() {
  return OpenDocument(SupportMailTarget(system_));
}

bool Launches::LaunchFirmwareUpdater() {
  return shell_.Execute({"open", files_.InProgramFolder(kFirmwareUpdater), "", "", ShowMode::kNormal});
}

bool Launches::ShowHelp() {
  const std::string help_file = files_.InProgramFolder(kHelpFile);
  if (files_.IsNormalFile(help_file) && shell_.ShowHelpFile(help_file)) return true;
  return OpenDocument(files_.InProgramFolder(kHelpPage));
}

}  // namespace orvane
