#pragma once

#include "tests/support/face.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace orvane {

/// What a screen reader makes of a running program's face, and where the Tab key leads.
class Speech {
 public:
  explicit Speech(Face& face) : face_(face) {}

  /// Every window that can be seen and has a name, in the order in which the Tab key walks.
  std::vector<HeadlessWindow*> Seen() const {
    std::vector<HeadlessWindow*> seen;
    Add(face_.Main(), seen);
    return seen;
  }
  HeadlessWindow& Of(const std::string& name) const {
    for (HeadlessWindow* window : Seen()) {
      if (window->Describe().name == name) return *window;
    }
    throw std::logic_error("nothing is called " + name);
  }
  std::string Value(const std::string& name) const { return Of(name).Describe().value; }
  /// The names at which the Tab key stops, each with a blank behind it but the last.
  std::vector<std::string> Ring() const {
    std::vector<std::string> names;
    for (const HeadlessWindow* window : Seen()) {
      if (window->TabStop()) names.push_back(window->Describe().name);
    }
    return names;
  }
  /// What was announced last, and how often anything was.
  const std::string& Announced() const { return Voice().Text(); }
  std::size_t Announcements() const { return Voice().Told().size(); }

 private:
  HeadlessWindow& Voice() const { return face_.Of(*face_.Controls().lblAnnouncement); }
  static void Add(HeadlessWindow& window, std::vector<HeadlessWindow*>& seen) {
    if (!window.Shown()) return;
    seen.push_back(&window);
    for (HeadlessWindow* child : window.Children())
      Add(*child, seen);
  }
  Face& face_;
};

}  // namespace orvane
