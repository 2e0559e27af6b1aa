#pragma once

#include "link/link_settings.h"
#include "settings/ov_user_settings.h"
#include "settings/user_settings.h"

namespace orvane {

/// Lets the link use the kept settings without knowing their file.
class LinkSettingsAdapter : public LinkSettings {
 public:
  LinkSettingsAdapter(UserSettings& settings, OVUserSettings& file) : settings_(settings), file_(file) {}

  std::string CommPort() const override { return settings_.CommPort; }
  std::string BaudRate() const override { return settings_.BaudRate; }
  void SetBaudRate(std::string_view speed) override { settings_.BaudRate = speed; }
  bool PktNotify() const override { return settings_.PktNotify; }
  std::int16_t FPwrIndex() const override { return settings_.FPwrIndex; }
  std::int16_t RPwrIndex() const override { return settings_.RPwrIndex; }
  void SaveMeterSettings() override { file_.SaveMeterSettings(settings_); }

 private:
  UserSettings& settings_;
  OVUserSettings& file_;
};

}  // namespace orvane
