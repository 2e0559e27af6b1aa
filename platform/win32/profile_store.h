#pragma once

#include "platform/profile_store.h"

namespace orvane {

/// The system's own private-profile calls. They want full paths: a bare name would mean a file in the
/// system's folder. The calls for bytes are used, not those for wide characters: a file then keeps every byte
/// whatever the system's code page is.
class Win32ProfileStore final : public ProfileStore {
 public:
  std::string GetPrivateProfileString(OptionalText section, OptionalText key, std::string_view fallback,
                                      std::size_t buffer_size, const std::string& file) override;
  bool WritePrivateProfileString(std::string_view section, OptionalText key, OptionalText value,
                                 const std::string& file) override;
  bool WriteEmptySection(std::string_view section, const std::string& file) override;
};

}  // namespace orvane
