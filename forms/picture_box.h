#pragma once

#include "forms/control.h"

namespace orvane {

/// A frame that holds shapes and controls. Shows its picture, and the face behind it where there is none.
class PictureBox : public WindowedControl {
 public:
  using WindowedControl::WindowedControl;

  const Picture& CurrentPicture() const { return picture_; }
  void SetPicture(const Picture& picture) {
    if (Assign(picture_, picture)) Invalidate();
  }

 protected:
  Accessible OwnDescription() const override {
    Accessible what;
    what.role = Role::kPicture;
    what.name = ToolTipText();
    return what;
  }
  void Paint(Canvas& canvas) const override {
    if (picture_) canvas.DrawPicture({0, 0}, *picture_);
  }

 private:
  Picture picture_;
};

/// A small picture with a window of its own, so that its tooltip is found.
class Image : public PictureBox {
 public:
  using PictureBox::PictureBox;
};

}  // namespace orvane
