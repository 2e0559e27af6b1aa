#pragma once

#include "display/meter_controls.h"
#include "forms/form.h"

#include <memory>

namespace orvane {

/// Controls of the main form that are not the display's.
struct FormControls {
  std::unique_ptr<Image> imgLogo;
  ControlArray<Label, 2> lblMessage;  ///< of the full and of the short view
  ControlArray<CommandButton, 3> cmdMenu;
  std::unique_ptr<CommandButton> cmdHelp;
  std::unique_ptr<CommandButton> cmdMinimize;
  std::unique_ptr<CommandButton> cmdClose;
  std::unique_ptr<Label> lblAnnouncement;  ///< takes no room: it is heard, not seen
};

/// Makes the controls at their design places, in the order in which the face is read.
FormControls BuildFormControls(WindowSystem& windows, Form& form);
MeterControls BuildMeterControls(WindowSystem& windows, Form& form);

}  // namespace orvane
