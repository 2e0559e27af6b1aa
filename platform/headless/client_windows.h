#pragma once

#include "platform/client_windows.h"

#include <functional>
#include <string>
#include <vector>

namespace orvane {

/// Client windows in memory.
class HeadlessClientWindows : public ClientWindows {
 public:
  struct Message {
    Handle window;
    std::uint32_t tag;
    std::string data;  ///< with its NUL
  };

  Handle Find(std::string_view wanted) override {
    ++lookups;
    return open && wanted == caption ? current : 0;
  }
  Answer SendCopyData(Handle window, std::uint32_t tag, std::span<const char> data, int timeout_ms) override {
    messages.push_back({window, tag, std::string(data.begin(), data.end())});
    if (on_message) on_message(timeout_ms);
    return answer;
  }

  bool open = true;
  Handle current = 7;  ///< the window that has the caption
  std::string caption = "OVClient";
  Answer answer{Outcome::kAnswered, 1};
  std::function<void(int timeout_ms)> on_message;  ///< while the client handles it
  std::vector<Message> messages;
  int lookups = 0;
};

}  // namespace orvane
