#pragma once

#include "tests/support/meter_text.h"
#include "tests/support/program.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orvane {

/// The windows of a running program's face, found by the controls that own them.
class Face {
 public:
  explicit Face(Program& program) : program_(program) {}

  HeadlessTopWindow& Main() const { return *program_.desktop.Main(); }
  const MeterControls& Meter() const { return program_.orvane->Meter(); }
  const FormControls& Controls() const { return program_.orvane->Controls(); }

  /// The window of a control that lies on the form.
  HeadlessWindow& Of(const WindowedControl& control) const { return In(Main(), control); }
  /// The window of a control inside another one.
  static HeadlessWindow& In(HeadlessWindow& container, const WindowedControl& control) {
    for (HeadlessWindow* child : container.Children()) {
      if (child->Place() == control.Bounds() && child->Text() == control.WindowText() &&
          child->Shown() == control.Visible()) {
        return *child;
      }
    }
    throw std::logic_error("no window for a control: " + control.WindowText());
  }

  /// Whether a person can see the window: it and all around it are shown.
  static bool Seen(const HeadlessWindow& window) {
    for (const HeadlessWindow* each = &window; each != nullptr; each = each->Container()) {
      if (!each->Shown()) return false;
    }
    return true;
  }
  bool Seen(const WindowedControl& control) const { return Seen(Of(control)); }

  /// Twips from the corner of the main window.
  static Rect PlaceOnFace(const HeadlessWindow& window) {
    Rect place = window.Place();
    for (const HeadlessWindow* each = window.Container(); each != nullptr && each->Container() != nullptr;
         each = each->Container()) {
      place = place.Shifted(each->Place().left, each->Place().top);
    }
    return place;
  }

  /// All windows below the main one.
  std::vector<HeadlessWindow*> All() const {
    std::vector<HeadlessWindow*> all = Main().Children();
    for (std::size_t i = 0; i < all.size(); ++i)
      all.insert(all.end(), all[i]->Children().begin(), all[i]->Children().end());
    return all;
  }

  void ClickMode(std::size_t index, int button = kLeftButton) const {
    In(Of(*Meter().pbxModePanel), *Meter().cmdMode[index]).Click(button);
  }
  void ToggleView() const { Main().DoubleClick(); }
  /// Pixel rows that the window's shape reaches down to: they tell the picture.
  int ShapeHeight() const {
    int bottom = 0;
    for (const Rect& run : Main().Shape())
      bottom = std::max(bottom, run.bottom());
    return bottom;
  }
  /// The view that the window shows, told by its size.
  bool Full() const { return Main().Place().height == 3900; }

 private:
  Program& program_;
};

/// A running program with its face; the meter is streaming.
struct RunningFace {
  explicit RunningFace(sim::MeterOptions meter = MeterAt(38400)) : program(std::move(meter)) {}
  /// Starts with a settings file of these lines in [USER-SETTINGS].
  bool Start(const std::string& user_settings = {}) {
    if (!user_settings.empty()) program.PutSettings("[USER-SETTINGS]\r\n" + user_settings);
    return program.StartStreaming() && program.RunFor(100);
  }
  Program program;
  Face face{program};
};

/// Tests on a program whose meter streams already.
class StreamingTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(program.StartStreaming()); }
  Program program{MeterAt(38400)};
};

/// Tests on a face whose meter streams already.
class FaceTest : public testing::Test, public RunningFace {
 protected:
  void SetUp() override { ASSERT_TRUE(Start()); }
};

}  // namespace orvane
