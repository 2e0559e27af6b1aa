#pragma once

#include "platform/headless/desktop.h"
#include "platform/surface_canvas.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

namespace orvane {

/// Picture memory in the middle of a larger one, so that a pixel written outside is seen.
class GuardedSurface {
 public:
  static constexpr std::uint32_t kGuard = 0xC0FFEE01;

  GuardedSurface(int width, int height, std::uint32_t ground = 0)
      : width_(width),
        height_(height),
        memory_(static_cast<std::size_t>(width + 2 * kRim) * static_cast<std::size_t>(height + 2 * kRim),
                kGuard) {
    for (int y = 0; y < height; ++y)
      std::fill_n(Get().Row(y), width, ground);
  }

  Surface Get() {
    return {memory_.data() + kRim * (width_ + 2 * kRim) + kRim, width_, height_, width_ + 2 * kRim};
  }
  std::uint32_t At(int x, int y) { return Get().Row(y)[x]; }
  int Grey(int x, int y) { return static_cast<int>(At(x, y) & 0xFF); }
  int Width() const { return width_; }
  int Height() const { return height_; }
  /// The pixels row by row.
  std::vector<std::uint32_t> Pixels() {
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < height_; ++y)
      pixels.insert(pixels.end(), Get().Row(y), Get().Row(y) + width_);
    return pixels;
  }
  bool GuardIntact() const {
    return static_cast<std::size_t>(std::count(memory_.begin(), memory_.end(), kGuard)) ==
           memory_.size() - static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
  }

 private:
  static constexpr int kRim = 3;
  int width_;
  int height_;
  std::vector<std::uint32_t> memory_;
};

/// The largest difference of a channel between two pixels.
inline int Difference(std::uint32_t a, std::uint32_t b) {
  int most = 0;
  for (int shift = 0; shift < 24; shift += 8)
    most =
        std::max(most, std::abs(static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF)));
  return most;
}

/// The brightest channel of a pixel.
inline int Brightness(std::uint32_t pixel) {
  return Difference(pixel, 0);
}

/// Draws shapes, and notes texts instead of drawing them.
class NotingCanvas : public SurfaceCanvas {
 public:
  using SurfaceCanvas::SurfaceCanvas;

  struct Text {
    Rect area;  ///< pixels of the surface
    std::string text;
    int height;  ///< pixels
    Color color;
    Align align;
  };
  std::vector<Text> texts;

 protected:
  void DrawTextPixels(const Rect& area, std::string_view text, const Font&, int height, Color color,
                      Align align) override {
    texts.push_back({area, std::string(text), height, color, align});
  }
};

/// A desktop whose controls can be painted and pointed at: remembers each window with its owner.
class PaintedDesktop : public HeadlessDesktop {
 public:
  using HeadlessDesktop::HeadlessDesktop;

  struct Made {
    HeadlessWindow* window;
    WidgetClient* client;
  };
  std::vector<Made> made;  ///< children in the order of their making

  std::unique_ptr<Widget> CreateChild(Widget& container, WidgetClient& client, const Rect& bounds) override {
    auto child = HeadlessDesktop::CreateChild(container, client, bounds);
    made.push_back({dynamic_cast<HeadlessWindow*>(child.get()), &client});
    return child;
  }
};

/// What a control looks like.
struct Painting {
  std::vector<std::uint32_t> pixels;
  std::vector<NotingCanvas::Text> texts;

  template <typename Condition>
  int Count(Condition condition) const {
    return static_cast<int>(std::count_if(pixels.begin(), pixels.end(), condition));
  }
};

/// Paints `part` (pixels from the control's corner) of a control that stands at `origin` (twips from the
/// form's corner).
inline Painting Paint(WidgetClient& client, Point origin, const Rect& part, int pixels_per_inch) {
  GuardedSurface surface(part.width, part.height);
  Rasterizer rasterizer;
  NotingCanvas canvas(surface.Get(), rasterizer, origin, part, {pixels_per_inch, pixels_per_inch});
  client.OnPaint(canvas);
  return {surface.Pixels(), canvas.texts};
}

}  // namespace orvane
