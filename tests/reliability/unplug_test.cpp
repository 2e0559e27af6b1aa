// A thousand times the port is pulled out, in every state of the program; within three seconds of its return
// the readings are right again, without a question.
#include "tests/support/panels.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

namespace orvane {
namespace {

constexpr std::int64_t kAgainMs = 3000;

struct Unplugging : RunningFace {
  MeterSetupWindows panel{*this};
  std::mt19937 random{7};
  int watts = 100;

  int Below(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }
  void Key(orvane::Key key) { face.Main().Press(key); }

  /// Something that takes its time, with events going on.
  struct Doing {
    const char* name;
    int longest_ms;  ///< the port goes at some moment up to that
    void (*act)(Unplugging&);
    void (*after)(Unplugging&) = [](Unplugging&) {};
  };

  /// The port goes in the middle of it, for some seconds.
  void Pull(const Doing& doing) {
    watts = 50 + Below(900);  // so that no old reading is taken for a new one
    bool back = false;
    const int going = Below(doing.longest_ms);
    // The search closes the port for a moment now and then: if it is back before that is over, nothing has
    // happened.
    const int gone = (doing.longest_ms > 5000 ? 600 : 1) + Below(6000);
    program.time.Post(EventKind::kInput, going, [this] {
      program.port.Lose();
      program.line.Meter.SetPower(watts + 9, 9);
      program.line.Meter.SetMute(false);
    });
    program.time.Post(EventKind::kInput, going + gone, [this, &back] {
      program.port.SetPresent(true);
      back = true;
    });
    const std::int64_t came_back = program.time.Now() + going + gone;
    // While a menu or a box is open the program does not search.
    std::int64_t closed = 0;
    program.desktop.on_box = [&](const ShownBox& box) {
      EXPECT_EQ(box.title, "Meter Not Detected");  // ten searches were in vain, also earlier ones
      closed = program.time.Now() + program.desktop.box_ms;
    };
    doing.act(*this);
    closed = std::max(closed, program.time.Now());
    const auto right = [&] {
      return back && program.Fwd() == std::to_string(watts) && program.orvane->Link().Flags().MeterFound;
    };
    program.RunUntil([&] { return right() || program.time.Now() > std::max(came_back, closed) + kAgainMs; },
                     120000);
    program.desktop.on_box = {};
    EXPECT_TRUE(right()) << doing.name << ", gone after " << going << " ms for " << gone
                         << " ms: " << program.Fwd() << " instead of " << watts << ", " << program.Status();
    doing.after(*this);
    program.RunFor(1500);
    EXPECT_EQ(program.Fwd(), std::to_string(watts)) << doing.name;
  }
};

// The numbers of milliseconds are how long each takes.
const Unplugging::Doing kDoings[] = {
    {"streaming", 1000, [](Unplugging&) {}},
    {"searching and loading the parameters", 3500,
     [](Unplugging& u) { u.program.port.Raise(CommEvent::kFrame); }},
    {"searching in vain", 9000,
     [](Unplugging& u) {
       u.program.line.Meter.SetMute(true);
       u.program.port.Raise(CommEvent::kFrame);
     }},
    {"asked whether to search on", 60000,
     [](Unplugging& u) {
       u.program.desktop.box_ms = 4000;
       u.program.desktop.answers = {BoxAnswer::kOk};
       u.program.line.Meter.SetMute(true);
       u.program.port.Raise(CommEvent::kFrame);
     },
     [](Unplugging& u) { u.program.desktop.answers.clear(); }},
    {"no data", 14000, [](Unplugging& u) { u.program.line.Meter.SetMute(true); }},
    {"the meter's panel opens and is open", 2500, [](Unplugging& u) { u.Key(orvane::Key::kF2); },
     [](Unplugging& u) { u.panel.Button(u.panel.Panel().cmdCancelSettings).Push(); }},
    {"an update of the meter", 700,
     [](Unplugging& u) {
       u.Key(orvane::Key::kF2);
       u.panel.VSWRAlarm().Choose(u.Below(5));
       u.panel.DispInt().Choose(u.Below(4));
       u.panel.RangeScale().Choose(u.Below(4));
       u.panel.Apply();
     },
     [](Unplugging& u) { u.panel.Button(u.panel.Panel().cmdCancelSettings).Push(); }},
    {"the program's panel is open", 1000, [](Unplugging& u) { u.Key(orvane::Key::kF3); },
     [](Unplugging& u) { u.Key(orvane::Key::kF3); }},
    {"a menu is open", 3000,
     [](Unplugging& u) {
       u.program.desktop.menu_ms = 2000;
       u.program.desktop.Main()->Find(u.Below(2) == 0 ? "Help" : "Settings")->Click();
     }},
    {"a setting is changed by the menu", 700,
     [](Unplugging& u) {
       u.program.desktop.menu_ms = 100;
       u.program.desktop.choices = {4000 + u.Below(5)};
       u.Key(orvane::Key::kMenu);
     }},
    {"dip mode", 1000, [](Unplugging& u) { u.face.ClickMode(3); },
     [](Unplugging& u) { u.face.ClickMode(0); }},
    {"the view turns", 400,
     [](Unplugging& u) {
       u.face.ToggleView();
       u.face.ToggleView();
     }},
    {"minimised", 1000, [](Unplugging& u) { u.face.Main().SetState(WindowState::kMinimized); },
     [](Unplugging& u) { u.face.Main().SetState(WindowState::kNormal); }},
    {"a burst on a line that is full", 300,
     [](Unplugging& u) {
       u.program.line.Meter.SetStreamRate(187);
       u.program.RunFor(100);
       u.program.line.Meter.SetStreamRate(0);
     }},
};

TEST(Unplug, AThousandTimesInEveryState) {
  Unplugging u;
  ASSERT_TRUE(u.Start());
  std::map<const char*, int> done;
  for (int round = 0; round < 1000 && !testing::Test::HasFailure(); ++round) {
    const auto& doing = kDoings[static_cast<std::size_t>(round) % std::size(kDoings)];
    u.Pull(doing);
    ++done[doing.name];
    u.program.port.ClearWrites();
    u.program.clients.messages.clear();
  }
  EXPECT_EQ(done.size(), std::size(kDoings));
  EXPECT_TRUE(u.program.Close());
}

}  // namespace
}  // namespace orvane
