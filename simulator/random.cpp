#include "simulator/random.h"

namespace orvane::sim {
namespace {

constexpr std::uint64_t kGolden = 0x9E3779B97F4A7C15ULL;

std::uint64_t Mix(std::uint64_t value) {
  value += kGolden;
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9ULL;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EBULL;
  return value ^ (value >> 31);
}

}  // namespace

Random::Random(std::uint64_t seed) : state_(Mix(seed)) {
  if (state_ == 0) state_ = kGolden;
}

Random Random::At(std::uint64_t seed, std::uint64_t index) {
  return Random(Mix(seed) ^ index);
}

std::uint64_t Random::Next() {
  state_ ^= state_ >> 12;
  state_ ^= state_ << 25;
  state_ ^= state_ >> 27;
  return state_ * 0x2545F4914F6CDD1DULL;
}

double Random::Unit() {
  return static_cast<double>(Next() >> 11) / 9007199254740992.0;
}

double Random::Between(double low, double high) {
  return low + (high - low) * Unit();
}

int Random::Below(int count) {
  return static_cast<int>((Next() >> 32) % static_cast<std::uint64_t>(count));
}

}  // namespace orvane::sim
