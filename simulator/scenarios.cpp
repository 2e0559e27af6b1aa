#include "simulator/scenarios.h"

#include "simulator/random.h"

#include <algorithm>
#include <array>
#include <string>

namespace orvane::sim {
namespace {

double Fraction(std::int64_t time_ms, std::int64_t length_ms) {
  return static_cast<double>(time_ms) / static_cast<double>(length_ms);
}

// 0 up to 1 and back to 0 over one period.
double Triangle(std::int64_t time_ms, std::int64_t period_ms) {
  const double phase = Fraction(time_ms % period_ms, period_ms);
  return phase < 0.5 ? 2 * phase : 2 - 2 * phase;
}

// Loudness within one syllable, 0..1: a quick attack, then a slower fall.
double SyllableShape(double position) {
  constexpr double kAttack = 0.22;
  if (position < kAttack) return position / kAttack;
  const double fall = (position - kAttack) / (1 - kAttack);
  return 1 - fall * fall;
}

// Speech voltage (0..1 of the peak) at `time_ms` within phrase number `phrase`. The phrase is laid out afresh
// for each question, word by word: a dozen words cost nothing, and no state is needed between questions.
double SpeechLevel(std::uint64_t seed, std::int64_t phrase, double time_ms) {
  Random random = Random::At(seed, static_cast<std::uint64_t>(phrase));
  const double talk_ms = random.Between(3600, 5200);
  double start = random.Between(0, 200);
  while (start < talk_ms) {
    const int syllables = 1 + random.Below(4);
    for (int i = 0; i < syllables; ++i) {
      const double length = random.Between(110, 270);
      const double loudness = random.Between(0.45, 1.0);
      if (time_ms >= start && time_ms < start + length) {
        return loudness * SyllableShape((time_ms - start) / length);
      }
      start += length + random.Between(15, 50);
    }
    start += random.Between(70, 240);
  }
  return 0;
}

Power Ssb(std::uint64_t seed, std::int64_t time_ms) {
  constexpr std::int64_t kPhraseMs = 6000;
  constexpr double kPeakWatts = 820;
  const double level = SpeechLevel(seed, time_ms / kPhraseMs, static_cast<double>(time_ms % kPhraseMs));
  const double forward = kPeakWatts * level * level;
  return {forward, ReflectedFor(forward, 1.3)};
}

Power Tune(std::uint64_t /*seed*/, std::int64_t time_ms) {
  constexpr std::int64_t kThereAndBackMs = 20000;
  constexpr double kWatts = 25;
  const double knob = 2 * Triangle(time_ms, kThereAndBackMs) - 1;  // -1..1, the dip at 0
  return {kWatts, ReflectedFor(kWatts, 1.1 + 2.9 * knob * knob)};
}

Power Antenna(std::uint64_t seed, std::int64_t time_ms) {
  constexpr std::int64_t kCycleMs = 30000;
  constexpr double kWatts = 400;
  const std::int64_t time = time_ms % kCycleMs;
  if (time < 8000 || time >= 19000) return {kWatts, ReflectedFor(kWatts, 1.25)};
  if (time < 9500) {
    // A connector works loose: the match jumps about every 50 ms.
    const double vswr = Random::At(seed, static_cast<std::uint64_t>(time_ms / 50)).Between(1.25, 6);
    return {kWatts, ReflectedFor(kWatts, vswr)};
  }
  // Open line: the transmitter protects itself by folding back to a fifth of its power.
  if (time < 16000) return {kWatts / 5, ReflectedFor(kWatts / 5, 8.5)};
  return {};  // the operator stops, mends the connector, and starts again
}

Power Sweep(std::uint64_t /*seed*/, std::int64_t time_ms) {
  constexpr std::int64_t kUpAndDownMs = 60000;
  constexpr double kTopWatts = 3000;
  const double drive = Triangle(time_ms, kUpAndDownMs);
  const double forward = kTopWatts * drive * drive;  // squared: the low ranges get their share of the time
  return {forward, ReflectedFor(forward, 1.5)};
}

Power Carrier(std::uint64_t /*seed*/, std::int64_t /*time_ms*/) {
  return {100, 4};
}

Power Idle(std::uint64_t /*seed*/, std::int64_t /*time_ms*/) {
  return {};
}

// Key positions of a Morse text, one character a dot length: '#' down, ' ' up.
std::string KeyingOf(std::string_view morse) {
  std::string keying;
  for (const char sign : morse) {
    if (sign == '.') keying += "# ";
    if (sign == '-') keying += "### ";
    if (sign == ' ') keying += "  ";  // 3 with the gap after the last element
    if (sign == '/') keying += "  ";  // 7 with the blanks around it
  }
  return keying;
}

Power Cw(std::uint64_t /*seed*/, std::int64_t time_ms) {
  constexpr std::int64_t kDotMs = 60;  // 20 words a minute
  // cq cq de orv k, and a listening pause
  const std::string keying = KeyingOf("-.-. --.- / -.-. --.- / -.. . / --- .-. ...- / -.- / / / / /");
  const auto place = static_cast<std::size_t>(time_ms / kDotMs) % keying.size();
  if (keying[place] != '#') return {};
  return {100, ReflectedFor(100, 1.2)};
}

constexpr std::array<Scenario, 7> kScenarios = {{
    {"idle", "no power", Idle},
    {"carrier", "steady 100 W forward, 4 W reflected", Carrier},
    {"ssb", "speech: syllables, words, pauses, peaks near 800 W", Ssb},
    {"cw", "Morse keying, 100 W", Cw},
    {"tune", "25 W carrier tuned through a dip, VSWR 4 to 1.1 and out again", Tune},
    {"antenna", "400 W carrier, the antenna fails into an alarm, is mended", Antenna},
    {"sweep", "0 to 3000 W and back in a minute", Sweep},
}};

}  // namespace

double ReflectedFor(double forward, double vswr) {
  const double gamma = (vswr - 1) / (vswr + 1);
  return forward * gamma * gamma;
}

std::span<const Scenario> Scenarios() {
  return kScenarios;
}

const Scenario* FindScenario(std::string_view name) {
  const auto found = std::find_if(kScenarios.begin(), kScenarios.end(),
                                  [name](const Scenario& scenario) { return scenario.Name == name; });
  return found == kScenarios.end() ? nullptr : &*found;
}

}  // namespace orvane::sim
