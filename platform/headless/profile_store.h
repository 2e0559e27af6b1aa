#pragma once

#include "platform/headless/files.h"
#include "platform/profile_store.h"

namespace orvane {

/// Windows' private-profile calls on plain files. Where a write changes nothing the file is not touched;
/// where it does, only the lines concerned change.
class HeadlessProfileStore : public ProfileStore {
 public:
  explicit HeadlessProfileStore(HeadlessFiles& files) : files_(files) {}

  std::string GetPrivateProfileString(OptionalText section, OptionalText key, std::string_view fallback,
                                      std::size_t buffer_size, const std::string& file) override;
  bool WritePrivateProfileString(std::string_view section, OptionalText key, OptionalText value,
                                 const std::string& file) override;
  bool WriteEmptySection(std::string_view section, const std::string& file) override;

 private:
  template <typename Edit>
  bool Change(const std::string& file, Edit edit);

  HeadlessFiles& files_;
};

}  // namespace orvane
