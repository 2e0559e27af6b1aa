#pragma once

#include <string>

namespace orvane {

/// What kind of thing a screen reader calls a control.
enum class Role {
  kSystem,  ///< whatever the system takes the window for
  kText,    ///< can be read, not changed: has a name and a value
  kBar,
  kButton,
  kMenuButton,  ///< opens a menu
  kChoice,      ///< one of several of which one is chosen
  kLink,
  kAlert,    ///< is read aloud when it changes
  kGroup,    ///< holds others
  kDialog,   ///< a box of its own; its description is read aloud when it opens
  kLabel,    ///< a text that belongs to something else
  kPicture,  ///< decoration
  kList,
  kCheckBox,
  kEdit,
  kScrollBar,
};

/// What a screen reader is told about a control. An empty text leaves the system's own, if it has one.
struct Accessible {
  Role role = Role::kSystem;
  std::string name;         ///< what it is; never what it shows
  std::string value;        ///< what it shows, with its unit
  std::string description;  ///< what else there is to say
  std::string action;       ///< what pressing it does; empty when it cannot be pressed
  bool checked = false;
  bool operator==(const Accessible&) const = default;
};

/// What about a control changed; kAlert: it is to be read aloud now, wherever the keyboard is.
enum class AccessibleChange { kName, kValue, kState, kAlert };

}  // namespace orvane
