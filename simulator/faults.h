// Ways in which a meter and its line misbehave, on request and reproducibly.
#pragma once

#include "simulator/random.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::sim {

enum class FaultKind {
  kWrongCrc,      // one check digit is another one
  kLowerCaseCrc,  // check digits in lower case (a line whose digits hold no letter stays as it is)
  kTornLine,      // the line comes in two pieces with a pause between them
  kCutLine,       // the second half of the line is lost, its LF too
  kMergedLines,   // the line is kept back and comes in one burst with the next
  kNoise,         // 1 to 8 stray bytes before the line (never STX or LF, so no line is lost by them)
  kOverlongLine,  // some thousand bytes of a packet that never ends before the line
  kReset,         // the meter restarts instead of sending the line
};

struct FaultName {
  FaultKind Kind;
  std::string_view Name;
  std::string_view Summary;
};

// All kinds with the names that consoles and logs use: "crc", "lower", "torn", "cut", "merge", "noise",
// "long", "reset".
std::span<const FaultName> FaultNames();
std::optional<FaultKind> FindFault(std::string_view name);
std::string_view NameOfFault(FaultKind kind);

// A piece of output. `AfterMs` is its distance from the moment the line was sent.
struct Burst {
  std::int64_t AfterMs = 0;
  std::string Bytes;
  bool EndsRead = false;  // the reader must not see what follows in the same read
};

// Decides which lines are struck, and spoils them.
class FaultInjector {
 public:
  explicit FaultInjector(std::uint64_t seed) : random_(seed) {}

  // Share of lines in percent, 0..100; 0 ends that kind. Replaces a count set before.
  void SetShare(FaultKind kind, double percent);
  // Every n-th line (the n-th, 2n-th... from now); 0 ends that kind. Replaces a share set before.
  void SetEvery(FaultKind kind, int n);
  void Clear();

  // The fault that strikes the next line, if any. At most one: of several that are due the first in the
  // order of FaultKind.
  std::optional<FaultKind> Pick();

  // The bursts for one whole line struck by `fault` (or by none); `gap_ms` is the pause within a torn line.
  // A kept-back line comes out with the line after it, whatever that is.
  std::vector<Burst> Shape(std::string line, std::optional<FaultKind> fault, std::int64_t gap_ms);

  // Drops a line that was kept back.
  void Forget() { held_.clear(); }

 private:
  struct Plan {
    double Percent = 0;
    int Every = 0;
    int Count = 0;
  };
  static constexpr std::size_t kKinds = 8;

  bool Due(Plan& plan);
  Plan& PlanOf(FaultKind kind) { return plans_[static_cast<std::size_t>(kind)]; }
  std::string Noise();

  Random random_;
  std::array<Plan, kKinds> plans_ = {};
  std::string held_;
};

}  // namespace orvane::sim
