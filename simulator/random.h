// A small seedable generator with the same numbers on every platform and library.
#pragma once

#include <cstdint>

namespace orvane::sim {

// xorshift64* started through one splitmix64 step, so that neighbouring seeds (0, 1, 2...) give unrelated
// sequences and a seed of 0 is allowed.
class Random {
 public:
  explicit Random(std::uint64_t seed);

  // The generator of one stretch of a longer story (a phrase, a second): reproducible without running
  // through everything before it.
  static Random At(std::uint64_t seed, std::uint64_t index);

  std::uint64_t Next();
  // 0 <= result < 1.
  double Unit();
  // low <= result < high.
  double Between(double low, double high);
  // 0 <= result < count; count > 0. The bias of the remainder is far below anything a test could see.
  int Below(int count);

 private:
  std::uint64_t state_;
};

}  // namespace orvane::sim
