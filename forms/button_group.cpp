#include "forms/button_group.h"

namespace orvane {

void ButtonGroup::Add(CommandButton& button, Shape& marker) {
  const std::size_t index = members_.size();
  members_.push_back({&button, &marker});
  button.SetTabStop(index == Entrance());
  button.KeyDown = [this, index](Key key) { return Step(index, key); };
  // While the keyboard is in the group, the Tab key has to leave it from where it is.
  button.FocusChanged = [this, index](bool has_focus) { StopAt(has_focus ? index : Entrance()); };
  button.Describing = [&marker](Accessible& what) {
    what.role = Role::kChoice;
    what.checked = marker.FillStyle() == Shape::kSolid;
  };
}

void ButtonGroup::Choose(int index) {
  chosen_ = index;
  bool inside = false;
  for (std::size_t i = 0; i < members_.size(); ++i) {
    const bool lit = static_cast<int>(i) == index;
    members_[i].marker->SetFillStyle(lit ? Shape::kSolid : Shape::kTransparent);
    inside = inside || members_[i].button->Focused();
    if (members_[i].button->Focused()) members_[i].button->StateChanged();
  }
  if (!inside) StopAt(Entrance());
}

std::size_t ButtonGroup::Entrance() const {
  return chosen_ >= 0 && chosen_ < static_cast<int>(members_.size()) ? static_cast<std::size_t>(chosen_) : 0;
}

bool ButtonGroup::Step(std::size_t from, Key key) {
  const bool back = key == Key::kLeft || key == Key::kUp;
  if (!back && key != Key::kRight && key != Key::kDown) return false;
  const std::size_t count = members_.size();
  members_[(from + (back ? count - 1 : 1)) % count].button->SetFocus();
  return true;
}

void ButtonGroup::StopAt(std::size_t index) {
  for (std::size_t i = 0; i < members_.size(); ++i)
    members_[i].button->SetTabStop(i == index);
}

}  // namespace orvane
