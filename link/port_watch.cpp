#include "link/port_watch.h"

#include "base/runtime_error.h"
#include "link/port_setup.h"
#include "link/readings.h"
#include "link/scoped_true.h"

namespace orvane {
namespace {

// Differences of ticks are taken unsigned, so that they outlive the wrap of the tick count.
constexpr std::uint32_t kSilenceMs = 5000;
constexpr std::uint32_t kStoppedMs = 1500;  // readings that the operator stopped are old after that
constexpr std::uint32_t kSearchAfterMs = 10000;
constexpr std::uint32_t kSearchEveryMs = 10000;
constexpr int kSearchesAfterReturn = 3;  // one for each speed

}  // namespace

void PortWatch::Tick() {
  if (busy_) return;
  const ScopedTrue guard(busy_);
  if (!link_.flags.PortGone && link_.port.PortOpen() && !link_.port.Works()) LosePort(link_);
  if (link_.flags.PortGone) {
    BringBack();
  } else {
    search_.GoOnAfterLateAnswer();
    if (searches_at_once_ > 0) {
      Search();
    } else {
      MindSilence();
    }
  }
}

void PortWatch::Reopen() {
  if (link_.flags.PortGone || !link_.port.PortOpen()) return;
  LosePort(link_);
}

// Telling it again and again keeps the words on the status line for as long as they are true.
void PortWatch::BringBack() {
  if (link_.state.ReadingsLive) DropReadings(link_);
  // The port may have gone in the middle of a search that tried other speeds.
  if (!link_.flags.GoodSpeed.empty()) link_.settings.SetBaudRate(link_.flags.GoodSpeed);
  Attempt([this] { SetUpPort(link_); });
  if (!Attempt([this] { link_.port.Open(); }) || !link_.port.Works()) {
    link_.port.Close();
    link_.events.ShowStatus("Port Lost", StatusTone::kUrgent);
    return;
  }
  link_.flags.PortGone = false;
  link_.flags.DataFlowWanted = !link_.flags.FlowStopped;
  searches_at_once_ = kSearchesAfterReturn;
  Search();
}

void PortWatch::MindSilence() {
  const std::uint32_t quiet = Now() - link_.flags.LastLineTick;
  if (!link_.flags.DataFlowWanted) {
    const bool stopped = link_.flags.MeterFound && quiet >= kStoppedMs;
    if (stopped && link_.state.ReadingsLive) DropReadings(link_);
    return;
  }
  if (quiet < kSilenceMs) {
    // Readings that came back by themselves after a search in vain: their meter is not known any more.
    if (!link_.flags.MeterFound && Now() - last_search_ >= kSearchEveryMs) Search();
    return;
  }
  if (link_.state.ReadingsLive) DropReadings(link_);
  link_.events.ShowStatus("No Data", StatusTone::kUrgent);
  if (quiet >= kSearchAfterMs && Now() - last_search_ >= kSearchEveryMs) Search();
}

void PortWatch::Search() {
  if (!link_.events.MayWait()) return;
  if (searches_at_once_ > 0) --searches_at_once_;
  if (search_.FindMeterQuietly()) searches_at_once_ = 0;
  last_search_ = Now();
}

}  // namespace orvane
