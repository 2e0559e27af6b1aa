#include "window/announcer.h"

#include <algorithm>
#include <string>

namespace orvane {
namespace {

constexpr int kLookAgainMs = 1000;
constexpr std::string_view kPortLost = "Port lost";
constexpr std::string_view kNoData = "No data";

// That there is no meter yet is shown by the search, and asked about in a box.
std::string_view LinkWords(const MeterState& meter, const LinkFlags& link) {
  if (link.PortGone) return kPortLost;
  if (link.DataFlowWanted && !meter.ReadingsLive) return kNoData;
  return link.MeterFound && meter.ReadingsLive ? "Meter found" : std::string_view{};
}

}  // namespace

Announcer::Announcer(WindowSystem& windows, Clock& clock, Label& voice)
    : clock_(clock), voice_(voice), again_(windows, clock, kLookAgainMs) {
  voice_.Describing = [](Accessible& what) { what.role = Role::kAlert; };
  again_.Tick = [this] { Speak(); };
}

void Announcer::Update(const MeterState& meter, const LinkFlags& link) {
  const std::string_view words = LinkWords(meter, link);
  // A port that is back is no news before the meter is: its first packet follows.
  if (words != kNoData || topics_[kLink].wanted != kPortLost) Want(kLink, words);
  Alarm(kSWRAlarm, meter.ReadingsLive, meter.SWRAlarm == kTrue, "SWR alarm on", "SWR alarm off");
  Alarm(kPowerAlarm, meter.ReadingsLive, meter.PwrAlarm == kTrue, "Power alarm on", "Power alarm off");
  if (!changed_) return;
  changed_ = false;
  Speak();
}

void Announcer::Want(Subject subject, std::string_view words) {
  Topic& topic = topics_[subject];
  if (topic.wanted == words) return;
  topic.wanted = words;
  if (words.empty()) topic.told = {};  // what comes next is news, whatever it is
  changed_ = true;
}

// An alarm that was never on is not told to be off, and nothing is known of one while there are no readings.
void Announcer::Alarm(Subject subject, bool live, bool on, std::string_view raised,
                      std::string_view cleared) {
  const Topic& topic = topics_[subject];
  if (!live) {
    Want(subject, {});
  } else if (on || !topic.wanted.empty()) {
    Want(subject, on ? raised : cleared);
  }
}

bool Announcer::MayTell(std::string_view words) {
  const auto now = static_cast<std::uint32_t>(clock_.GetTickCount());
  std::erase_if(recent_, [now](const Told& told) { return now - told.at >= kAgainMs; });
  if (std::any_of(recent_.begin(), recent_.end(), [words](const Told& told) { return told.words == words; }))
    return false;
  recent_.push_back({words, now});
  return true;
}

// Everything in one piece: a reader that is told twice at once says the last only.
void Announcer::Speak() {
  std::string text;
  bool waits = false;
  for (Topic& topic : topics_) {
    if (topic.wanted == topic.told) continue;
    if (!topic.wanted.empty() && !MayTell(topic.wanted)) {
      waits = true;
      continue;
    }
    topic.told = topic.wanted;
    if (!text.empty() && !topic.wanted.empty()) text += ". ";
    text += topic.wanted;
  }
  again_.SetEnabled(waits);
  if (text.empty()) return;
  voice_.SetCaption(text);
  voice_.AsWidget().TellChanged(AccessibleChange::kAlert);
}

}  // namespace orvane
