#pragma once

#include "forms/command_button.h"
#include "forms/shape.h"

#include <string_view>
#include <vector>

namespace orvane {

/// Buttons of which one is chosen, each with a marker that is lit then. The Tab key stops at the group once,
/// at the chosen button; the arrow keys go from one to the next without choosing.
class ButtonGroup {
 public:
  ButtonGroup() = default;
  ButtonGroup(const ButtonGroup&) = delete;
  ButtonGroup& operator=(const ButtonGroup&) = delete;

  /// Both must live as long as the group.
  void Add(CommandButton& button, Shape& marker);
  /// Lights one marker; none for an index that is no button's.
  void Choose(int index);

 private:
  struct Member {
    CommandButton* button;
    Shape* marker;
  };
  bool Step(std::size_t from, Key key);
  void StopAt(std::size_t index);
  std::size_t Entrance() const;

  std::vector<Member> members_;
  int chosen_ = -1;
};

}  // namespace orvane
