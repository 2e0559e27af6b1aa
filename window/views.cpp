#include "window/views.h"

#include "window/layout.h"

namespace orvane {

void Views::SetViewStyle(std::uint8_t style) {
  if (form_.Window().State() == WindowState::kMinimized) return;
  Show(style != kShort);
}

void Views::Show(bool full) {
  full_ = full;
  const Size size = full ? layout::kFullFace : layout::kShortFace;
  form_.SetBounds({form_.Left(), form_.Top(), size.width, size.height});
  const std::size_t face = full ? FaceImages::kLarge : FaceImages::kSmall;
  form_.SetPicture(faces_.pbxSkins(face));
  if (faces_.pbxSkins(face)) faces_.Shape(face).ApplyRgn(form_.Window());
  LayOut(full);
}

// Only what the two views show at different places or not at all; everything else keeps its design position.
void Views::LayOut(bool full) {
  const layout::ViewTops& tops = full ? layout::kFullTops : layout::kShortTops;
  ShowMessage(full ? 0 : 1);
  controls_.imgLogo->SetVisible(full);
  meter_.pbxModePanel->SetVisible(full);
  meter_.cmdResetAlarms->SetVisible(full);
  meter_.shpResetAlarm->SetVisible(full);
  meter_.dbxVSWR->MoveTo(tops.vswr.x, tops.vswr.y);
  const PictureBox& graph = *meter_.forward.pbxGraph;
  meter_.lblShowStatus->SetTop(full ? layout::kStatus.top
                                    : graph.Top() + graph.Height() + layout::kShortStatusGap);
  meter_.lblPort->SetTop(tops.port);
  meter_.imgTx->SetTop(tops.port);
  meter_.imgRx->SetTop(tops.port);
  meter_.lblSWRAlarm->SetTop(tops.alarm_labels);
  meter_.lblPwrAlarm->SetTop(tops.alarm_labels);
  meter_.shpSWRAlarm->SetTop(tops.alarm_lamps);
  meter_.shpPowerAlarm->SetTop(tops.alarm_lamps);
  MoveReflectedBar(full);
  dip_.Apply(full);
}

// The keyboard stays on the message. It is changed first: from a logo that goes, the keyboard comes to it.
void Views::ShowMessage(std::size_t view) {
  Label& shown = *controls_.lblMessage[view];
  Label& hidden = *controls_.lblMessage[1 - view];
  shown.SetVisible(true);
  if (hidden.Focused()) shown.SetFocus();
  hidden.SetVisible(false);
}

// The short view shows both bars in the forward bar's frame, one above the other.
void Views::MoveReflectedBar(bool full) {
  PictureBox& home = full ? *meter_.reflected.pbxGraph : *meter_.forward.pbxGraph;
  const Rect forward = full ? layout::kFirstSegment : layout::kShortForwardSegment;
  const Rect reflected = full ? layout::kFirstSegment : layout::kShortReflectedSegment;
  for (std::size_t i = 0; i < kBarShapes; ++i) {
    const int step = static_cast<int>(i) * layout::kSegmentPitch;
    meter_.forward.shpGraph[i]->SetBounds(forward.Shifted(step, 0));
    Shape& shape = *meter_.reflected.shpGraph[i];
    shape.SetContainer(home);
    shape.SetBounds(reflected.Shifted(step, 0));
    shape.BringToFront();
  }
  meter_.reflected.pbxGraph->SetVisible(full);
}

}  // namespace orvane
