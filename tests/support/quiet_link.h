#pragma once

#include "link/link_events.h"
#include "link/link_settings.h"

#include <string>

namespace orvane {

/// A window that a link may tell everything, to no effect.
struct QuietEvents : LinkEvents {
  void LineHandled() override {}
  void RxActivity() override {}
  void TxActivity() override {}
  void SetModeCommand() override {}
  void ShowStatus(std::string_view, StatusTone) override {}
  void StartClearMessageTimer() override {}
  void ShowMessageText(std::string_view) override {}
  void Beep() override {}
  void SetHourglass(bool) override {}
  void EnableFindMeter(bool) override {}
  void ClickFwdPwrRange(std::int16_t) override {}
  void ClickRefPwrRange(std::int16_t) override {}
  bool MayWait() const override { return true; }
  bool InDipMode() const override { return false; }
  bool AskOkCancel(std::string_view, std::string_view) override { return false; }
  void ShowBox(std::string_view, std::string_view) override {}
  void ReadingsStopped() override {}
};

/// Settings that are not kept: COM2 at 38400, no fixed range.
struct QuietSettings : LinkSettings {
  std::string CommPort() const override { return "2"; }
  std::string BaudRate() const override { return "38400"; }
  void SetBaudRate(std::string_view) override {}
  bool PktNotify() const override { return false; }
  std::int16_t FPwrIndex() const override { return 8; }
  std::int16_t RPwrIndex() const override { return 8; }
  void SaveMeterSettings() override {}
};

}  // namespace orvane
