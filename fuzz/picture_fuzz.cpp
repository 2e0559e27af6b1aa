// Pictures of the face with any header and any pixels: the guard of the loader, the scan of the window's
// shape, the stretching for other screens.
//
// The input has width and height (four bytes each), the number of pixels that really follow (two bytes), a
// size to stretch to (one byte each), and one byte for each pixel, repeated as often as needed.
#include "fuzz/require.h"
#include "platform/picture.h"
#include "window/bitmap_functions.h"
#include "window/dib_section.h"
#include "window/region.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <set>
#include <span>
#include <utility>

namespace orvane::fuzz {
namespace {

class Input {
 public:
  explicit Input(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
  template <typename Value>
  Value Take() {
    Value value{};
    const std::size_t size = std::min(bytes_.size(), sizeof value);
    if (size > 0) std::memcpy(&value, bytes_.data(), size);
    bytes_ = bytes_.subspan(size);
    return value;
  }
  std::span<const std::uint8_t> Rest() const { return bytes_; }

 private:
  std::span<const std::uint8_t> bytes_;
};

std::uint32_t ColorOf(std::uint8_t byte) {
  return 0xFF000000U | (byte % 4) * 0x00400000U | (byte / 4 % 4) * 0x00004000U | (byte / 16 % 4) * 0x40U;
}
std::uint32_t PixelAt(const PictureData& picture, int x, int y) {
  return picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                        static_cast<std::size_t>(x)];
}

void CheckShape(const PictureData& picture) {
  Region region;
  Color transparent = Region::kBottomLeft;
  region.ScanPicture(&picture, transparent);
  if (!IsWhole(picture)) {
    Require(region.Runs().empty(), "what is no whole picture has no shape");
    return;
  }
  const std::uint32_t key = PixelAt(picture, 0, picture.height - 1) & 0xFFFFFFU;
  Require(transparent == MakeColor(static_cast<std::uint8_t>(key >> 16), static_cast<std::uint8_t>(key >> 8),
                                   static_cast<std::uint8_t>(key)),
          "the key is the colour at the bottom left");
  std::set<std::pair<int, int>> covered;
  for (const Rect& run : region.Runs()) {
    Require(run.height == 1 && run.width >= 1, "runs are one pixel high");
    for (int x = run.left; x < run.right(); ++x)
      Require(covered.emplace(x, run.top).second, "no pixel twice");
  }
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const bool wanted = x < picture.width - 1 && (PixelAt(picture, x, y) & 0xFFFFFFU) != key;
      Require(covered.contains({x, y}) == wanted,
              "the shape is what is not transparent, without the last column");
    }
  }
  Require(covered.empty() || covered.rbegin()->first < picture.width, "nothing outside the picture");
}

void CheckBitmap(const PictureData& picture, int x, int y, int width, int height) {
  cDIBSection dib;
  if (!dib.Create(5, 4)) return Require(false, "a small bitmap is made");
  dib.LoadPictureBlt(picture, x, y, width, height);
  const bool made = dib.CreateFromPicture(&picture);
  Require(made == IsWhole(picture), "a bitmap of every whole picture, and of no other");
  Require(made == (dib.DIBSectionBitsPtr() != nullptr), "no bytes where there is no bitmap");
  if (!made) return;
  const std::uint8_t* top =
      dib.DIBSectionBitsPtr() + static_cast<std::ptrdiff_t>(dib.Height() - 1) * dib.BytesPerScanLine();
  Require(top[2] == (picture.pixels[0] >> 16 & 0xFF),
          "the last row of the bitmap is the first of the picture");
}

void CheckStretched(const PictureData& picture, Size size) {
  const Picture stretched = StretchPicture(picture, size);
  Require((stretched != nullptr) == (IsWhole(picture) && size.width > 0 && size.height > 0),
          "a picture for every size there is");
  if (!stretched) return;
  Require(IsWhole(*stretched) && stretched->width == size.width && stretched->height == size.height,
          "the size that was asked for");
  for (int shift = 0; shift < 32; shift += 8) {
    const auto part = [shift](std::uint32_t pixel) { return pixel >> shift & 0xFF; };
    const auto less = [part](std::uint32_t a, std::uint32_t b) { return part(a) < part(b); };
    const auto [low, high] = std::minmax_element(picture.pixels.begin(), picture.pixels.end(), less);
    for (const std::uint32_t pixel : stretched->pixels)
      Require(part(pixel) >= part(*low) && part(pixel) <= part(*high),
              "no brighter and no darker than before");
  }
}

void Run(Input input) {
  PictureData picture;
  picture.width = input.Take<std::int32_t>();
  picture.height = input.Take<std::int32_t>();
  std::size_t pixels = input.Take<std::uint16_t>() % 1200;
  const bool honest = pixels % 2 == 0;
  const Size size{input.Take<std::int8_t>() % 40, input.Take<std::int8_t>() % 40};
  if (honest && picture.width > 0 && picture.height > 0) {  // else most would be no whole pictures
    picture.width = picture.width % 30 + 1;
    picture.height = picture.height % 30 + 1;
    pixels = static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
  }
  const auto colors = input.Rest();
  for (std::size_t i = 0; i < pixels; ++i)
    picture.pixels.push_back(colors.empty() ? 0 : ColorOf(colors[i % colors.size()]));
  Require(IsWhole(picture) == (picture.width > 0 && picture.height > 0 &&
                               picture.width <= kMostPixelsAcross && picture.height <= kMostPixelsAcross &&
                               static_cast<std::int64_t>(picture.width) * picture.height ==
                                   static_cast<std::int64_t>(pixels)),
          "whole is a picture of some size with all its pixels");
  CheckShape(picture);
  CheckBitmap(picture, size.width, size.height, static_cast<int>(pixels % 7) - 1,
              static_cast<int>(pixels % 5) - 1);
  CheckStretched(picture, size);
}

}  // namespace
}  // namespace orvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orvane::fuzz::Run(orvane::fuzz::Input({data, size}));
  return 0;
}
