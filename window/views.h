#pragma once

#include "display/dip_layout.h"
#include "display/meter_controls.h"
#include "forms/form.h"
#include "window/face_builder.h"
#include "window/face_images.h"

#include <cstddef>
#include <cstdint>

namespace orvane {

/// The two looks of the window: the full view, and the short one with a reduced set of controls.
class Views {
 public:
  static constexpr std::uint8_t kShort = 0;
  static constexpr std::uint8_t kFull = 1;

  Views(Form& form, FormControls& controls, MeterControls& meter, FaceImages& faces, DipLayout& dip)
      : form_(form), controls_(controls), meter_(meter), faces_(faces), dip_(dip) {}

  /// 0 is the short view, any other value the full one. A minimised window is left as it is.
  void SetViewStyle(std::uint8_t style);
  bool Full() const { return full_; }

 private:
  void Show(bool full);
  void LayOut(bool full);
  void ShowMessage(std::size_t view);
  void MoveReflectedBar(bool full);

  Form& form_;
  FormControls& controls_;
  MeterControls& meter_;
  FaceImages& faces_;
  DipLayout& dip_;
  bool full_ = true;
};

}  // namespace orvane
