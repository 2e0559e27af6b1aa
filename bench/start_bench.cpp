// What the start and the end of the program are made of: the window's shape, and the settings.
#include "platform/headless/files.h"
#include "platform/headless/profile_store.h"
#include "platform/headless/virtual_time.h"
#include "settings/ov_user_settings.h"
#include "tests/support/temp_folder.h"
#include "window/region.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <string>
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

/// A settings file that was saved once. Without flushes: a disk would be measured.
struct KeptSettings {
  KeptSettings() {
    files.SetFlushing(false);
    kept.LoadMeterSettings();
    kept.LoadUserSettings();
    kept.SaveMeterSettings();
    kept.SaveUserSettings();
  }
  TempFolder folder;
  VirtualTime time;
  HeadlessFiles files{folder.Path()};
  HeadlessProfileStore store{files};
  OVUserSettings kept{store, files, time, [](const std::string&) {}};
};

void SettingsLoad(benchmark::State& state) {
  KeptSettings settings;
  for (auto _ : state) {
    settings.kept.LoadMeterSettings();
    settings.kept.LoadUserSettings();
  }
}
// Reads the file and takes each line apart.
void SettingsLoadFloor(benchmark::State& state) {
  KeptSettings settings;
  const std::string path = settings.files.InProgramFolder("\\Orvane.dat");
  for (auto _ : state) {
    const std::string text = FileBytes(path);
    int entries = 0;
    for (std::size_t start = 0; start < text.size();) {
      const auto end = std::min(text.find('\n', start), text.size());
      if (text.substr(start, end - start).find('=') != std::string::npos) ++entries;
      start = end + 1;
    }
    if (entries != 11) state.SkipWithError("not the file that was saved");
  }
}
BENCHMARK(SettingsLoad)->Name("settings_load")->Unit(benchmark::kMicrosecond);
BENCHMARK(SettingsLoadFloor)->Name("settings_load/floor")->Unit(benchmark::kMicrosecond);

void SettingsSave(benchmark::State& state) {
  KeptSettings settings;
  for (auto _ : state) {
    settings.kept.Settings().ClientMsgId ^= 1;
    settings.kept.SaveUserSettings();
  }
}
// The copy and the file, each written beside and renamed.
void SettingsSaveFloor(benchmark::State& state) {
  KeptSettings settings;
  const std::string path = settings.files.InProgramFolder("\\Orvane.dat");
  for (auto _ : state) {
    const std::string text = FileBytes(path);
    for (const std::string& to : {path + ".bak", path}) {
      PutFile(to + ".new", text);
      if (std::rename((to + ".new").c_str(), to.c_str()) != 0) state.SkipWithError("not saved");
    }
  }
}
BENCHMARK(SettingsSave)->Name("settings_save")->Unit(benchmark::kMicrosecond);
BENCHMARK(SettingsSaveFloor)->Name("settings_save/floor")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace orvane::bench
