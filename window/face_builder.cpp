#include "window/face_builder.h"

#include "display/indicators.h"
#include "display/range_scales.h"
#include "platform/raster.h"
#include "platform/surface_canvas.h"
#include "window/layout.h"
#include "window/palette.h"

#include <cmath>
#include <string>

namespace orvane {
namespace {

constexpr Shape::Look kAlarmLook{Shape::Form::kEllipse, palette::kLampLit, palette::kLampLit,
                                 palette::kLampDark, palette::kRing};
constexpr Shape::Look kMarkerLook{Shape::Form::kEllipse, palette::kMarkerLit, palette::kMarkerLit,
                                  palette::kMarkerDark, palette::kRing};

constexpr Label::Look TextLook(Align align) {
  return {{"Arial", 180, false}, palette::kCaption, align, std::nullopt};
}

std::unique_ptr<CommandButton> NewButton(WindowSystem& windows, WindowedControl& container, const Rect& place,
                                         std::string_view caption, std::string_view tool_tip) {
  return std::make_unique<CommandButton>(windows, container, place, caption, tool_tip);
}

std::string RangeCaption(const std::array<FixedRange, 8>& ranges, int i) {
  return i == kAutoRange ? "Auto" : std::to_string(ranges[static_cast<std::size_t>(i)].full_scale);
}

std::string_view RangeToolTip(const std::array<FixedRange, 8>& ranges, int i) {
  return i == kAutoRange ? kAutoToolTip : ranges[static_cast<std::size_t>(i)].tool_tip;
}

void BuildBar(WindowSystem& windows, Form& form, const layout::Graph& place, Color color, Color dark_color,
              GraphControls& graph) {
  graph.pbxGraph = std::make_unique<PictureBox>(windows, form, place.frame);
  for (int i = 0; i < static_cast<int>(kBarShapes); ++i) {
    // The last shape stands outside the bar, red in both, and is never driven.
    const bool outside = i == kLastSegment + 1;
    const Color back = outside ? palette::kRed : color;
    const auto dark = outside ? std::nullopt : std::optional<Color>(dark_color);
    graph.shpGraph[static_cast<std::size_t>(i)] = std::make_unique<Shape>(
        *graph.pbxGraph, layout::Across(layout::kFirstSegment, layout::kSegmentPitch, i),
        Shape::Look{Shape::Form::kRectangle, back, back, dark, std::nullopt});
  }
  graph.pbxScale = std::make_unique<PictureBox>(windows, *graph.pbxGraph, layout::kScaleStrip);
  constexpr std::array<Align, 3> kAligns{Align::kLeft, Align::kCenter, Align::kRight};
  for (std::size_t i = 0; i < 3; ++i) {
    graph.lblScale[i] =
        std::make_unique<Label>(windows, *graph.pbxGraph, layout::kScaleNumbers[i], TextLook(kAligns[i]));
  }
}

void BuildRangeButtons(WindowSystem& windows, Form& form, const layout::Graph& place,
                       const std::array<FixedRange, 8>& ranges, GraphControls& graph) {
  graph.pbxRangeButtons = std::make_unique<PictureBox>(windows, form, place.range_buttons);
  for (int i = 0; i < static_cast<int>(kRangeButtons); ++i) {
    const auto k = static_cast<std::size_t>(i);
    graph.shpRange[k] = std::make_unique<Shape>(
        *graph.pbxRangeButtons, layout::Down(layout::kFirstRangeMarker, layout::kRangePitch, i), kMarkerLook);
    graph.cmdRange[k] = NewButton(windows, *graph.pbxRangeButtons,
                                  layout::Down(layout::kFirstRangeButton, layout::kRangePitch, i),
                                  RangeCaption(ranges, i), RangeToolTip(ranges, i));
    graph.ranges->Add(*graph.cmdRange[k], *graph.shpRange[k]);
  }
}

void BuildModePanel(WindowSystem& windows, Form& form, MeterControls& controls) {
  struct Row {
    std::string_view caption;
    std::string_view tool_tip;
  };
  constexpr std::array<Row, kModes> kRows{{{"Fast", "Fast Display Update 5x/Sec"},
                                           {"Med", "Medium Display Update 1x/Sec"},
                                           {"Slow", "Slow Display Update 1x/2Sec"},
                                           {"Dip", "VSWR Dip Mode Fast Display Update"}}};
  controls.pbxModePanel = std::make_unique<PictureBox>(windows, form, layout::kModePanel);
  for (int i = 0; i < static_cast<int>(kModes); ++i) {
    const auto k = static_cast<std::size_t>(i);
    controls.shpMode[k] = std::make_unique<Shape>(
        *controls.pbxModePanel, layout::Across(layout::kFirstModeMarker, layout::kModePitch, i), kMarkerLook);
    controls.cmdMode[k] = NewButton(windows, *controls.pbxModePanel,
                                    layout::Across(layout::kFirstModeButton, layout::kModePitch, i),
                                    kRows[k].caption, kRows[k].tool_tip);
    controls.modes->Add(*controls.cmdMode[k], *controls.shpMode[k]);
  }
  controls.modes->Choose(0);
}

/// How much of each pixel of a picture a circle in its middle covers, 0 to 255.
std::vector<std::uint32_t> CircleCover(int width, int height, double margin) {
  // Drawn as white on black, the grey level is the cover.
  std::vector<std::uint32_t> cover(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
  Rasterizer rasterizer;
  const double rx = width / 2.0;
  const double ry = height / 2.0;
  constexpr int kCorners = 48;
  std::array<PixelPoint, kCorners> circle;
  for (int i = 0; i < kCorners; ++i) {
    const double angle = 6.283185307179586 * i / kCorners;
    circle[static_cast<std::size_t>(i)] = {rx + (rx - margin) * std::cos(angle),
                                           ry + (ry - margin) * std::sin(angle)};
  }
  rasterizer.FillPolygon({cover.data(), width, height, width}, circle, MakeColor(255, 255, 255), 255);
  for (std::uint32_t& grey : cover)
    grey &= 0xFF;
  return cover;
}

/// A round light in a ring, of the given size in twips, smooth at the screen's resolution.
Picture LightPicture(Size twips, Size pixels_per_inch, Color color) {
  auto picture = std::make_shared<PictureData>();
  picture->width = ToPixels(twips.width, pixels_per_inch.width);
  picture->height = ToPixels(twips.height, pixels_per_inch.height);
  const auto whole = CircleCover(picture->width, picture->height, 0);
  const auto inside = CircleCover(picture->width, picture->height, pixels_per_inch.width / 96.0);
  const auto mixed = [&](int light, int ring, std::uint32_t share) {
    return (static_cast<std::uint32_t>(light) * share + static_cast<std::uint32_t>(ring) * (255 - share)) /
           255;
  };
  for (std::size_t i = 0; i < whole.size(); ++i) {
    const std::uint32_t red = mixed(RedOf(color), RedOf(palette::kRing), inside[i]);
    const std::uint32_t green = mixed(GreenOf(color), GreenOf(palette::kRing), inside[i]);
    const std::uint32_t blue = mixed(BlueOf(color), BlueOf(palette::kRing), inside[i]);
    picture->pixels.push_back(whole[i] << 24 | red << 16 | green << 8 | blue);
  }
  return picture;
}

void BuildStatusRow(WindowSystem& windows, Form& form, MeterControls& controls) {
  controls.lblShowStatus =
      std::make_unique<Label>(windows, form, layout::kStatus,
                              Label::Look{{"Arial", 180, true}, kStatusColor, Align::kLeft, kStatusGround});
  controls.lblPort = std::make_unique<Label>(windows, form, layout::kPort, TextLook(Align::kCenter));
  controls.imgRx = std::make_unique<Image>(windows, form, layout::kRxLight);
  controls.imgRx->SetToolTipText("Rx Data Activity");
  controls.imgTx = std::make_unique<Image>(windows, form, layout::kTxLight);
  controls.imgTx->SetToolTipText("Tx Data Activity");
  const Size light{layout::kRxLight.width, layout::kRxLight.height};
  const Picture off = LightPicture(light, windows.PixelsPerInch(), palette::kLightOff);
  controls.imgLed = {nullptr, off, off, LightPicture(light, windows.PixelsPerInch(), palette::kLightOn)};
  controls.shpSWRAlarm = std::make_unique<Shape>(form, layout::kSWRLamp, kAlarmLook);
  controls.lblSWRAlarm =
      std::make_unique<Label>(windows, form, layout::kSWRLabel, TextLook(Align::kLeft), "SWR Alarm");
  controls.shpPowerAlarm = std::make_unique<Shape>(form, layout::kPowerLamp, kAlarmLook);
  controls.lblPwrAlarm =
      std::make_unique<Label>(windows, form, layout::kPowerLabel, TextLook(Align::kLeft), "Pwr Alarm");
}

}  // namespace

FormControls BuildFormControls(WindowSystem& windows, Form& form) {
  FormControls controls;
  controls.imgLogo = std::make_unique<Image>(windows, form, layout::kLogo);
  controls.imgLogo->SetToolTipText("Quorran on the web");
  for (auto& label : controls.lblMessage) {
    label = std::make_unique<Label>(
        windows, form, layout::kMessage,
        Label::Look{{"Arial", 225, true}, palette::kMessageText, Align::kCenter, std::nullopt});
  }
  constexpr std::array<std::string_view, 3> kMenus{"Window", "Settings", "Help"};
  for (std::size_t i = 0; i < kMenus.size(); ++i) {
    controls.cmdMenu[i] = NewButton(windows, form, layout::kMenuButtons[i], kMenus[i], {});
  }
  controls.cmdHelp = NewButton(windows, form, layout::kHelpButton, "?", "Help");
  controls.cmdMinimize = NewButton(windows, form, layout::kMinimize, "\x96", "Minimize");
  controls.cmdClose = NewButton(windows, form, layout::kClose, "\xD7", "Close");
  controls.lblAnnouncement = std::make_unique<Label>(windows, form, Rect{}, TextLook(Align::kLeft));
  return controls;
}

MeterControls BuildMeterControls(WindowSystem& windows, Form& form) {
  MeterControls controls;
  BuildBar(windows, form, layout::kForward, palette::kCyan, palette::kDarkForward, controls.forward);
  controls.forward.dbxPower =
      std::make_unique<OVDigitBox>(windows, form, layout::kForward.readout, OVDigitBox::kWholeFormat, "0");
  BuildBar(windows, form, layout::kReflected, palette::kRed, palette::kDarkReflected, controls.reflected);
  controls.reflected.dbxPower =
      std::make_unique<OVDigitBox>(windows, form, layout::kReflected.readout, OVDigitBox::kWholeFormat, "0");
  controls.dbxVSWR =
      std::make_unique<OVDigitBox>(windows, form, layout::kVSWR, OVDigitBox::kRatioFormat, ".0");
  controls.lblDipCaption = std::make_unique<Label>(
      windows, form, layout::kDipCaption,
      Label::Look{{"Arial", 150, true}, palette::kMarkerLit, Align::kLeft, palette::kFace}, "BAR: VSWR");
  controls.lblDipCaption->SetVisible(false);
  BuildRangeButtons(windows, form, layout::kForward, kForwardRanges, controls.forward);
  BuildRangeButtons(windows, form, layout::kReflected, kReflectedRanges, controls.reflected);
  BuildModePanel(windows, form, controls);
  controls.shpResetAlarm = std::make_unique<Shape>(form, layout::kResetLamp, kAlarmLook);
  controls.cmdResetAlarms = NewButton(windows, form, layout::kResetButton, "Reset", "Reset Alarms");
  BuildStatusRow(windows, form, controls);
  return controls;
}

}  // namespace orvane
