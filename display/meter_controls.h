#pragma once

#include "forms/button_group.h"
#include "forms/command_button.h"
#include "forms/digit_box.h"
#include "forms/label.h"
#include "forms/picture_box.h"
#include "forms/shape.h"

#include <array>
#include <cstddef>
#include <memory>

namespace orvane {

inline constexpr std::size_t kBarShapes = 52;    ///< shapes of a bar graph
inline constexpr int kLastSegment = 50;          ///< the last of them that is ever driven; 51 is kept dark
inline constexpr std::size_t kRangeButtons = 9;  ///< eight fixed ranges and the automatic one
inline constexpr std::size_t kModes = 4;

template <typename ControlType, std::size_t count>
using ControlArray = std::array<std::unique_ptr<ControlType>, count>;

/// The controls of one of the two bar graphs.
struct GraphControls {
  std::unique_ptr<PictureBox> pbxGraph;         ///< frame of bar, ticks and scale numbers
  ControlArray<Shape, kBarShapes> shpGraph;     ///< segments
  std::unique_ptr<PictureBox> pbxScale;         ///< ticks under the bar
  ControlArray<Label, 3> lblScale;              ///< left end, middle, full scale
  std::unique_ptr<PictureBox> pbxRangeButtons;  ///< frame of the range buttons
  ControlArray<CommandButton, kRangeButtons> cmdRange;
  ControlArray<Shape, kRangeButtons> shpRange;                            ///< markers beside the buttons
  std::unique_ptr<ButtonGroup> ranges = std::make_unique<ButtonGroup>();  ///< of both
  std::unique_ptr<OVDigitBox> dbxPower;
};

/// What the power display drives. Built with the form, in the form's order; held by the form.
struct MeterControls {
  GraphControls forward;    ///< `pbxPwrGraph`, `shpFwdPwrGraph`, `cmdFwdPwrRange`, `dbxFPower` ...
  GraphControls reflected;  ///< `pbxRefPwrGraph`, `shpRefPwrGraph`, `cmdRefPwrRange`, `dbxRPower` ...
  std::unique_ptr<OVDigitBox> dbxVSWR;
  std::unique_ptr<Label>
      lblDipCaption;  ///< over the reflected caption in dip mode: the bar beside it is a VSWR bar

  std::unique_ptr<Shape> shpSWRAlarm;
  std::unique_ptr<Label> lblSWRAlarm;
  std::unique_ptr<Shape> shpPowerAlarm;
  std::unique_ptr<Label> lblPwrAlarm;
  std::unique_ptr<CommandButton> cmdResetAlarms;
  std::unique_ptr<Shape> shpResetAlarm;

  std::unique_ptr<PictureBox> pbxModePanel;
  ControlArray<CommandButton, kModes> cmdMode;
  ControlArray<Shape, kModes> shpMode;
  std::unique_ptr<ButtonGroup> modes = std::make_unique<ButtonGroup>();  ///< of both

  std::unique_ptr<Image> imgRx;
  std::unique_ptr<Image> imgTx;
  std::array<Picture, 4> imgLed;  ///< 3 is a light that is on, 2 and 1 one that is off; 0 is not used
  std::unique_ptr<Label> lblShowStatus;
  std::unique_ptr<Label> lblPort;
};

}  // namespace orvane
