#pragma once

#include "platform/geometry.h"

#include <array>

namespace orvane::layout {

// Design positions of everything on the face, twips. Multiples of 60 fall on whole pixels at 96 and at 120
// pixels per inch; the pictures of the face have their windows and captions at the same places.

inline constexpr Size kFullFace{9600, 3900};
inline constexpr Size kShortFace{9600, 1860};

// Title row
inline constexpr Rect kLogo{300, 150, 1440, 360};
inline constexpr Rect kMessage{2010, 195, 2940, 270};
inline constexpr std::array<Rect, 3> kMenuButtons{
    {{5280, 180, 720, 300}, {6060, 180, 840, 300}, {6960, 180, 600, 300}}};
inline constexpr Rect kHelpButton{7860, 180, 360, 300};
inline constexpr Rect kMinimize{8400, 180, 360, 300};
inline constexpr Rect kClose{8820, 180, 360, 300};

// The two graphs: a frame with the bar, the ticks and the numbers in it, the readout to its right
struct Graph {
  Rect frame;
  Rect readout;
  Rect range_buttons;
};
inline constexpr Graph kForward{{300, 600, 6180, 765}, {6615, 960, 1200, 420}, {7980, 900, 690, 2430}};
inline constexpr Graph kReflected{{300, 1620, 6180, 765}, {6615, 1980, 1200, 420}, {8730, 900, 690, 2430}};

// Inside a graph's frame
inline constexpr int kSegmentPitch = 120;
inline constexpr Rect kFirstSegment{30, 30, 105, 420};
inline constexpr Rect kScaleStrip{30, 480, 6120, 90};
inline constexpr std::array<Rect, 3> kScaleNumbers{
    {{30, 570, 600, 195}, {2790, 570, 600, 195}, {5550, 570, 600, 195}}};

// Inside a frame of range buttons
inline constexpr int kRangePitch = 270;
inline constexpr Rect kFirstRangeButton{195, 22, 465, 225};
inline constexpr Rect kFirstRangeMarker{45, 90, 90, 90};

// Third row
inline constexpr Rect kModePanel{300, 2700, 3300, 630};
inline constexpr int kModePitch = 810;
inline constexpr Rect kFirstModeButton{180, 150, 615, 330};
inline constexpr Rect kFirstModeMarker{60, 270, 90, 90};
inline constexpr Rect kResetButton{3990, 2850, 1200, 330};
inline constexpr Rect kResetLamp{3855, 2970, 90, 90};
inline constexpr Rect kVSWR{6615, 3000, 1200, 420};

// Status row
inline constexpr Rect kStatus{330, 3480, 3240, 240};
inline constexpr Rect kPort{3735, 3510, 285, 180};
inline constexpr Rect kRxLight{4320, 3510, 180, 180};
inline constexpr Rect kTxLight{4620, 3510, 180, 180};
inline constexpr Rect kSWRLamp{5280, 3525, 150, 150};
inline constexpr Rect kSWRLabel{5490, 3495, 1050, 210};
inline constexpr Rect kPowerLamp{6660, 3525, 150, 150};
inline constexpr Rect kPowerLabel{6870, 3495, 1050, 210};

// The settings panels lie over the graphs and leave the readouts and the status row free.
inline constexpr Point kPanels{240, 540};

inline constexpr Rect kDipCaption{6585, 1710, 1245, 165};

// What the two views show at different places
struct ViewTops {
  Point vswr;
  int port = 0;
  int alarm_labels = 0;
  int alarm_lamps = 0;
};
inline constexpr ViewTops kFullTops{{kVSWR.left, kVSWR.top}, kPort.top, kSWRLabel.top, kSWRLamp.top};
inline constexpr ViewTops kShortTops{{7890, 960}, 1400, 1410, 1440};
inline constexpr int kShortStatusGap = 25;  // below the forward frame
inline constexpr Rect kShortForwardSegment{30, 30, 105, 255};
inline constexpr Rect kShortReflectedSegment{30, 315, 105, 135};

/// The `i`th of things that stand side by side or below each other.
constexpr Rect Across(const Rect& first, int pitch, int i) {
  return first.Shifted(i * pitch, 0);
}
constexpr Rect Down(const Rect& first, int pitch, int i) {
  return first.Shifted(0, i * pitch);
}

}  // namespace orvane::layout
