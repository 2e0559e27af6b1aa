#include "outside/launches.h"

#include <string>

namespace orvane {

bool Launches::OpenDocument(std::string_view target) {
  return shell_.Execute({"", std::string(target), "", "C:\\", ShowMode::kMaximized});
}

}  // namespace orvane
