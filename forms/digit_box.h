#pragma once

#include "forms/control.h"

namespace orvane {

/// A seven-segment readout: a short number with its unlit segments dimly seen. Its window text is the number
/// it shows.
class OVDigitBox : public WindowedControl {
 public:
  static constexpr int kNormalColor = 0;
  static constexpr int kAlarmColor = 2;
  static constexpr int kWholeFormat = 0;  ///< five places, no point: whole watts
  static constexpr int kRatioFormat =
      3;  ///< four places, the point before the last two or where the text has it

  OVDigitBox(WindowSystem& windows, WindowedControl& container, const Rect& bounds, int format,
             std::string_view digits);

  /// What is shown: digits, one '.', '-'. A text too long for the places shows as a row of dashes, never cut.
  const std::string& digitdisplay() const { return WindowText(); }
  void Set_digitdisplay(std::string_view text) {
    if (text == WindowText()) return;
    SetWindowText(text);
    Invalidate();
  }
  int digitcolor() const { return color_; }
  void Set_digitcolor(int color) {
    if (Assign(color_, color)) Invalidate();
  }
  int digitformat() const { return format_; }
  /// Large-size switch: 1 on screens of exactly 120 pixels per inch, else 0.
  int digitsize() const { return size_; }
  void Set_digitsize(int size) {
    if (Assign(size_, size)) Invalidate();
  }
  /// Pixels per inch that the digits are drawn for, 96 or 120.
  int digitresolution() const { return resolution_; }
  void Set_digitresolution(int pixels_per_inch) {
    if (Assign(resolution_, pixels_per_inch)) Invalidate();
  }

 protected:
  Accessible OwnDescription() const override {
    Accessible what;
    what.role = Role::kText;
    what.value = digitdisplay();
    return what;
  }
  void Paint(Canvas& canvas) const override;

 private:
  int format_;
  int color_ = kNormalColor;
  int size_ = 1;
  int resolution_ = 96;
};

}  // namespace orvane
