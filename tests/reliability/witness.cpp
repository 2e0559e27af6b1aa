#include "tests/reliability/witness.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr std::int64_t kSilenceMs = 5000;
constexpr std::int64_t kLookMs = 600;    // the program looks for silence twice a second
constexpr std::int64_t kRangesMs = 251;  // from the last query of a search to the choice of the ranges
constexpr std::int64_t kHighestTick = INT32_MAX;

std::string Watts(double value) {
  return std::to_string(std::lround(value));
}

}  // namespace

bool Witness::Held::Take(double value, std::int64_t now) {
  peak = std::max(peak, value);
  if (now > until) shown = 0;
  if (peak <= shown && shown != 0) return false;
  shown = peak;
  peak = 0;
  return true;
}

// In the last moments before the tick count wraps no hold can begin, and the rest of the line is not shown.
bool Witness::Held::Hold(std::int64_t now) {
  if (now <= kHighestTick && now + kHoldMs > kHighestTick) return false;
  until = now + kHoldMs;
  return true;
}

void Witness::Bar::Draw(long watts) {
  const int now = static_cast<int>(std::nearbyint(static_cast<float>(watts) * scale));
  if (now == level) return;
  level = now == 0 ? -1 : now;
  lit = watts > 0 ? std::min(now, 50) + 1 : 0;
}

void Witness::Bar::Clear() {
  level = -1;
  lit = 0;
}

Witness::Witness(Program& program) : program_(program) {
  program_.tap.on_taken = [this](std::string_view bytes) { Taken(bytes); };
  program_.tap.on_write = [this](std::string_view bytes) {
    if (bytes.starts_with("\x02V?")) ranges_at_ = Now() + kRangesMs;
  };
}

void Witness::Taken(std::string_view bytes) {
  MindDarkness();
  reader_.Take(bytes, [this](const auto& reading) { Line(reading); });
}

void Witness::Line(const std::optional<NaiveReading>& reading) {
  ++lines_;
  last_line_ = Now();
  if (reading) {
    ++readings_;
    last_reading_ = Now();
    last_ = *reading;
    live_ = true;
  }
  if (!live_) return;
  if (Now() >= ranges_at_) {  // a fixed range was chosen: the readouts are written afresh
    forward_.shown = reflected_.shown = -1;
    ranges_at_ = INT64_MAX;
  }
  Show();
}

void Witness::Show() {
  const long net = last_.forward - last_.reflected;
  forward_bar_.Draw(net);
  screen_.forward_lit = forward_bar_.lit;
  const bool new_forward = forward_.Take(static_cast<double>(net), Now());
  screen_.forward = Watts(forward_.shown);
  if (new_forward && !forward_.Hold(Now())) return;
  if (vswr_.Take(static_cast<double>(last_.vswr), Now()) && !vswr_.Hold(Now())) return;
  std::array<char, 16> ratio{};
  std::snprintf(ratio.data(), ratio.size(), "%.2f", vswr_.shown);
  screen_.vswr = vswr_.shown > 1.0 ? ratio.data() : "";
  client_.push_back(Watts(forward_.shown));
  reflected_bar_.Draw(last_.reflected);
  screen_.reflected_lit = reflected_bar_.lit;
  const bool new_reflected = reflected_.Take(static_cast<double>(last_.reflected), Now());
  screen_.reflected = Watts(reflected_.shown);
  if (new_reflected && !reflected_.Hold(Now())) return;
  screen_.lamps = {last_.swr_alarm ? '*' : '.', last_.power_alarm ? '*' : '.',
                   last_.swr_alarm || last_.power_alarm ? '*' : '.'};
}

void Witness::GoDark() {
  live_ = false;
  last_ = {};
  forward_ = reflected_ = vswr_ = {};
  forward_bar_.Clear();
  reflected_bar_.Clear();
  screen_ = {};
}

void Witness::Unplug() {
  program_.port.Lose();
  program_.RunFor(0);
  ranges_at_ = INT64_MAX;
  GoDark();
}

// Silence is the program's to notice: within its time, and not before.
void Witness::MindDarkness() {
  if (!live_ || !program_.orvane) return;
  const bool dark = program_.Fwd().empty();
  const std::int64_t quiet = Now() - last_reading_;
  const bool wanted = program_.orvane->Link().Flags().DataFlowWanted;
  if (dark) {
    EXPECT_GE(quiet, kSilenceMs) << "dark too early";
    failed_ = failed_ || quiet < kSilenceMs;
    GoDark();
  } else if (wanted && Now() - last_line_ > kSilenceMs + kLookMs && last_line_ != 0) {
    ADD_FAILURE() << "an old reading stands for " << Now() - last_line_ << " ms";
    failed_ = true;
  }
}

void Witness::Compare() {
  MindDarkness();
  const MeterControls& meter = program_.orvane->Meter();
  const Screen shown{program_.Fwd(),
                     program_.Ref(),
                     program_.Ratio(),
                     program_.Lit(meter.forward),
                     program_.Lit(meter.reflected),
                     Lamps(meter)};
  std::vector<std::string> got;
  for (const auto& message : program_.clients.messages)
    got.emplace_back(message.data.c_str());
  program_.clients.messages.clear();
  EXPECT_EQ(got, client_) << "client";
  failed_ = failed_ || got != client_;
  client_.clear();
  if (lines_ == 0 || shown == screen_) return;
  failed_ = true;
  const auto text = [](const Screen& screen) {
    return screen.forward + " " + screen.reflected + " " + screen.vswr + " | " +
           std::to_string(screen.forward_lit) + " " + std::to_string(screen.reflected_lit) + " | " +
           screen.lamps;
  };
  EXPECT_EQ(text(shown), text(screen_)) << "at " << Now() << " ms";
}

bool Witness::RunFor(std::int64_t ms) {
  const std::int64_t end = Now() + ms;
  RunUntil([&] { return Now() >= end; }, ms);
  return !failed_;
}

bool Witness::RunUntil(const std::function<bool()>& condition, std::int64_t limit_ms) {
  bool met = false;
  program_.RunUntil(
      [&] {
        Compare();
        met = condition();
        return met || failed_;
      },
      limit_ms);
  return met && !failed_;
}

std::string Witness::State() const {
  const LinkFlags& flags = program_.orvane->Link().Flags();
  if (flags.PortGone) return "port lost";
  if (flags.SearchAbandoned) return "not detected";
  const bool live = program_.orvane->Link().State().ReadingsLive;
  if (flags.MeterFound && live) return "streaming";
  return flags.DataFlowWanted && !live ? "no data" : "searching";
}

}  // namespace orvane
