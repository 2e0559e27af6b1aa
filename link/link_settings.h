#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvane {

/// The kept settings that the link uses. The program's settings record lies behind it.
struct LinkSettings {
  virtual ~LinkSettings() = default;
  virtual std::string CommPort() const = 0;  ///< port number as text; "0" is none
  virtual std::string BaudRate() const = 0;  ///< bits per second as text
  virtual void SetBaudRate(std::string_view speed) = 0;
  virtual bool PktNotify() const = 0;          ///< beep at the meter's replies
  virtual std::int16_t FPwrIndex() const = 0;  ///< saved range buttons; used within 0..8 only
  virtual std::int16_t RPwrIndex() const = 0;
  /// Keeps port and speed for the next start.
  virtual void SaveMeterSettings() = 0;
};

}  // namespace orvane
