#include "forms/focus_speech.h"

#include <utility>

namespace orvane {

FocusSpeech::FocusSpeech(WindowSystem& windows, Clock& clock)
    : clock_(clock), soon_(windows, clock, kLookMs), always_(windows, clock, kTellMs) {
  soon_.Tick = [this] { Look(); };
  always_.Tick = [this] { Look(); };
}

// At its arrival a screen reader asks for everything by itself.
void FocusSpeech::OnFocus(WindowedControl& control, FocusNews news) {
  if (news == FocusNews::kGained) {
    focused_ = &control;
    told_ = control.Describe();
    told_at_ = Now();
    always_.SetEnabled(true);
    return;
  }
  if (&control != focused_) return;
  if (news == FocusNews::kLost) {
    focused_ = nullptr;
    soon_.SetEnabled(false);
    always_.SetEnabled(false);
    return;
  }
  if (!soon_.Enabled() && Now() - told_at_ >= kTellMs) soon_.SetEnabled(true);
}

void FocusSpeech::Look() {
  soon_.SetEnabled(false);
  if (focused_ == nullptr || Now() - told_at_ < kTellMs) return;
  Accessible now = focused_->Describe();
  if (now == told_) return;
  const Accessible before = std::exchange(told_, std::move(now));
  told_at_ = Now();
  always_.SetEnabled(true);  // half a second from here
  Widget& widget = focused_->AsWidget();
  if (told_.name != before.name) widget.TellChanged(AccessibleChange::kName);
  if (told_.value != before.value) widget.TellChanged(AccessibleChange::kValue);
  if (told_.checked != before.checked) widget.TellChanged(AccessibleChange::kState);
}

}  // namespace orvane
