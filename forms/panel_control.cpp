#include "forms/panel_control.h"

#include <utility>

namespace orvane {

void ComboBox::SetItems(std::vector<Item> items) {
  items_ = std::move(items);
  std::vector<std::string> lines;
  for (const Item& item : items_)
    lines.push_back(item.Text);
  widget_->SetItems(lines);
}

void ComboBox::SelectValue(std::int16_t value) {
  int found = -1;
  for (std::size_t i = 0; i < items_.size() && found < 0; ++i) {
    if (items_[i].Value == value) found = static_cast<int>(i);
  }
  widget_->Select(found);
}

const ComboBox::Item* ComboBox::Selected() const {
  const int index = widget_->Selected();
  return index >= 0 && index < static_cast<int>(items_.size()) ? &items_[static_cast<std::size_t>(index)]
                                                               : nullptr;
}

void VScrollBar::SetRange(int least, int most) {
  min_ = least;
  max_ = most;
  widget_->SetRange(least, most);
}

}  // namespace orvane
