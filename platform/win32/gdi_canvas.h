#pragma once

#include "platform/surface_canvas.h"
#include "platform/win32/handles.h"
#include "platform/win32/windows_api.h"

#include <map>
#include <string>
#include <tuple>

namespace orvane {

/// The fonts in use, made once each.
class FontCache {
 public:
  /// `height` in pixels.
  HFONT Find(const Font& font, int height);

 private:
  std::map<std::tuple<std::string, int, bool>, UniqueFont> fonts_;
};

/// Memory that everything is painted into before it goes to the screen. Grows to the largest part ever
/// painted.
class BackBuffer {
 public:
  BackBuffer();
  ~BackBuffer();
  BackBuffer(const BackBuffer&) = delete;
  BackBuffer& operator=(const BackBuffer&) = delete;

  /// Memory of at least that size in pixels; what it holds is undefined.
  Surface Take(int width, int height);
  HDC dc() const { return dc_.get(); }

 private:
  UniqueMemoryDc dc_;
  UniqueBitmap bitmap_;
  HGDIOBJ original_ = nullptr;
  std::uint32_t* pixels_ = nullptr;
  int width_ = 0;
  int height_ = 0;
};

/// A surface canvas whose text is set by the system.
class GdiCanvas : public SurfaceCanvas {
 public:
  GdiCanvas(HDC dc, FontCache& fonts, const Surface& surface, Rasterizer& rasterizer, Point origin,
            const Rect& part, Size pixels_per_inch)
      : SurfaceCanvas(surface, rasterizer, origin, part, pixels_per_inch), dc_(dc), fonts_(fonts) {}

 protected:
  void DrawTextPixels(const Rect& area, std::string_view text, const Font& font, int height, Color color,
                      Align align) override;

 private:
  HDC dc_;
  FontCache& fonts_;
};

}  // namespace orvane
