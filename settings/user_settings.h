#pragma once

#include <cstdint>
#include <string>

namespace orvane {

/// What the program remembers from run to run, as it stands now. A new record holds the defaults.
struct UserSettings {
  std::string CommPort = "2";          ///< number of the serial port, "0" for none
  std::string BaudRate = "38400";      ///< bits per second
  bool PktNotify = false;              ///< beep after each acknowledging reply
  bool FormOnTop = false;              ///< keep the window above others
  std::int32_t FormTop = 100;          ///< window position, twips
  std::int32_t FormLeft = 100;         ///< window position, twips
  std::uint8_t FormRegion = 1;         ///< 0 short view, else full view
  std::int16_t FPwrIndex = 8;          ///< range button of the forward bar, 8 is automatic
  std::int16_t RPwrIndex = 8;          ///< range button of the reflected bar, 8 is automatic
  std::string ClientApp = "OVClient";  ///< caption of the window that gets the readings
  std::int32_t ClientMsgId = 14300;    ///< number sent with each reading

  bool operator==(const UserSettings&) const = default;
};

}  // namespace orvane
