#pragma once

#include "platform/profile_store.h"
#include "platform/window_system.h"
#include "window/region.h"

#include <array>
#include <cstddef>
#include <string>

namespace orvane {

/// The pictures of the face and of the logo, and the window's shapes made from the faces.
class FaceImages {
 public:
  static constexpr std::size_t kLarge = 0;
  static constexpr std::size_t kSmall = 1;
  static constexpr std::size_t kGrey = 0;
  static constexpr std::size_t kColour = 1;

  FaceImages(WindowSystem& windows, Files& files) : windows_(windows), files_(files) {}

  /// Loads both faces, those for 96 pixels per inch on such a screen and the "120" ones on every other, and
  /// scans their shapes. @return false when one is missing or cannot be decoded
  bool LoadFaces(const TopWindow& window);
  /// Loads the two logos. @return false as above
  bool LoadLogos();
  void Release();

  const Picture& pbxSkins(std::size_t i) const { return skins_[i]; }
  const Region& Shape(std::size_t i) const { return regions_[i]; }
  const Picture& Logo(std::size_t i) const { return logos_[i]; }

 private:
  Picture Load(const std::string& name);

  WindowSystem& windows_;
  Files& files_;
  std::array<Picture, 2> skins_;
  std::array<Region, 2> regions_;
  std::array<Picture, 2> logos_;
};

}  // namespace orvane
