#pragma once

#include "link/link_settings.h"
#include "settings/ov_user_settings.h"

namespace orvane {

/// Lets the link use the kept settings without knowing their file.
class LinkSettingsAdapter : public LinkSettings {
 public:
  explicit LinkSettingsAdapter(OVUserSettings& kept) : kept_(kept) {}

  std::string CommPort() const override { return kept_.Settings().CommPort; }
  std::string BaudRate() const override { return kept_.Settings().BaudRate; }
  void SetBaudRate(std::string_view speed) override { kept_.Settings().BaudRate = speed; }
  bool PktNotify() const override { return kept_.Settings().PktNotify; }
  std::int16_t FPwrIndex() const override { return kept_.Settings().FPwrIndex; }
  std::int16_t RPwrIndex() const override { return kept_.Settings().RPwrIndex; }
  void SaveMeterSettings() override { kept_.SaveMeterSettings(); }

 private:
  OVUserSettings& kept_;
};

}  // namespace orvane
