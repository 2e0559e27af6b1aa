#pragma once

#include "platform/geometry.h"

namespace orvane::palette {

// The face's own colours; forms/colors.h has those of its buttons and readouts.

inline constexpr Color kFace = MakeColor(0x22, 0x28, 0x2E);
inline constexpr Color kCyan = MakeColor(0, 255, 255);
inline constexpr Color kRed = MakeColor(255, 0, 0);
inline constexpr Color kDarkReflected = MakeColor(0x2A, 0x12, 0x14);
inline constexpr Color kDarkForward = MakeColor(0x0F, 0x25, 0x28);
inline constexpr Color kCaption = MakeColor(0xDB, 0xE3, 0xE9);
inline constexpr Color kMessageText = MakeColor(0xFF, 0xBD, 0x5A);
inline constexpr Color kLampDark = MakeColor(0x2B, 0x14, 0x16);
inline constexpr Color kLampLit = MakeColor(0xFF, 0x3B, 0x30);
inline constexpr Color kMarkerDark = MakeColor(0x2B, 0x32, 0x39);
inline constexpr Color kMarkerLit = MakeColor(0xFF, 0xB0, 0x2E);
inline constexpr Color kRing = MakeColor(0x92, 0x9E, 0xA8);  // shows a dark lamp on the dark face
inline constexpr Color kLightOn = MakeColor(0x43, 0xE0, 0x8A);
inline constexpr Color kLightOff = MakeColor(0x12, 0x33, 0x1F);

}  // namespace orvane::palette
