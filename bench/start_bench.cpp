// What the start of the program takes most of: the window's shape.
#include "window/region.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <vector>

namespace orvane::bench {
namespace {

constexpr std::uint32_t kMagenta = 0xFFFF00FF;

/// As large as the large face, with rounded corners of the colour that is cut away.
PictureData LargeFace() {
  constexpr int kRadius = 24;
  PictureData face{800, 325, {}};
  for (int y = 0; y < face.height; ++y) {
    for (int x = 0; x < face.width; ++x) {
      const int dx = std::max({kRadius - x, x - (face.width - 1 - kRadius), 0});
      const int dy = std::max({kRadius - y, y - (face.height - 1 - kRadius), 0});
      const bool outside = dx * dx + dy * dy > kRadius * kRadius;
      face.pixels.push_back(outside ? kMagenta : 0xFF202020U + static_cast<std::uint32_t>(x * y % 64));
    }
  }
  return face;
}

void RegionScan(benchmark::State& state) {
  const PictureData face = LargeFace();
  for (auto _ : state) {
    Region region;
    Color transparent = Region::kBottomLeft;
    region.ScanPicture(&face, transparent);
    benchmark::DoNotOptimize(region.Runs().data());
    if (region.Runs().size() != 325) state.SkipWithError("not the shape of the face");
  }
}
void RegionScanFloor(benchmark::State& state) {
  const PictureData face = LargeFace();
  for (auto _ : state) {
    std::vector<Rect> runs;
    const std::uint32_t transparent = face.pixels[static_cast<std::size_t>(face.width) * 324];
    for (int y = 0; y < face.height; ++y) {
      const std::uint32_t* const row = face.pixels.data() + static_cast<std::ptrdiff_t>(y) * face.width;
      const std::uint32_t* const end = row + face.width - 1;
      for (const std::uint32_t* at = row; at < end;) {
        while (at < end && *at == transparent)
          ++at;
        const std::uint32_t* const start = at;
        while (at < end && *at != transparent)
          ++at;
        if (start < at) runs.push_back({static_cast<int>(start - row), y, static_cast<int>(at - start), 1});
      }
    }
    benchmark::DoNotOptimize(runs.data());
    if (runs.size() != 325) state.SkipWithError("not the shape of the face");
  }
}
BENCHMARK(RegionScan)->Name("region_scan");
BENCHMARK(RegionScanFloor)->Name("region_scan/floor");

}  // namespace
}  // namespace orvane::bench
