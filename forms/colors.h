#pragma once

#include "platform/geometry.h"

namespace orvane::colors {

// What the controls draw with. Text and digits keep 4.5:1 to their ground, marks 3:1; a test measures it.

// Around the control that has the keyboard: a bright line, and a dark one between it and the control
inline constexpr Color kFocus = MakeColor(0xFF, 0xB0, 0x2E);
inline constexpr Color kFocusGround = MakeColor(0, 0, 0);

// A button
inline constexpr Color kRim = MakeColor(14, 17, 20);
inline constexpr Color kButtonTop = MakeColor(70, 78, 86);
inline constexpr Color kButton = MakeColor(54, 61, 68);
inline constexpr Color kHotButtonTop = MakeColor(92, 103, 113);
inline constexpr Color kHotButton = MakeColor(72, 82, 91);
inline constexpr Color kPressedButton = MakeColor(36, 41, 46);
inline constexpr Color kButtonText = MakeColor(232, 238, 242);

// A readout
inline constexpr Color kReadoutGround = MakeColor(6, 9, 11);
inline constexpr Color kUnlitDigit = MakeColor(20, 28, 32);
inline constexpr Color kDigit = MakeColor(214, 244, 255);
inline constexpr Color kAlarmDigit = MakeColor(255, 84, 70);

}  // namespace orvane::colors
