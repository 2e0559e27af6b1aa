#include "window/face_images.h"

#include "base/runtime_error.h"
#include "window/bitmap_functions.h"

namespace orvane {

// An empty picture for a file that is missing, and for one that is there and cannot be used: to the operator
// both mean that the installation is damaged.
Picture FaceImages::Load(const std::string& name) {
  const std::string path = files_.ProgramFolder() + files_.Separator() + "Images" + files_.Separator() + name;
  Picture picture;
  if (files_.IsNormalFile(path)) Attempt([&] { picture = windows_.LoadPicture(path); });
  return picture;
}

bool FaceImages::LoadFaces(const TopWindow& window) {
  const bool design_size = ScreenScale(windows_.PixelsPerInch().width) == 1.0F;
  skins_[kLarge] = Load(design_size ? "OVFace.ovl" : "OVFace120.ovl");
  if (!skins_[kLarge]) return false;
  skins_[kSmall] = Load(design_size ? "OVFaceSm.ovl" : "OVFaceSm120.ovl");
  if (!skins_[kSmall]) return false;
  for (std::size_t i = 0; i < skins_.size(); ++i) {
    Color transparent = Region::kBottomLeft;
    regions_[i].ScanPicture(skins_[i].get(), transparent);
    regions_[i].OffsetHeader(window);
  }
  return true;
}

bool FaceImages::LoadLogos() {
  logos_[kGrey] = Load("TamskLogoBW.ovl");
  if (!logos_[kGrey]) return false;
  logos_[kColour] = Load("TamskLogo.ovl");
  return logos_[kColour] != nullptr;
}

void FaceImages::Release() {
  skins_ = {};
  logos_ = {};
}

}  // namespace orvane
