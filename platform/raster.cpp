#include "platform/raster.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orvane {
namespace {

std::uint32_t PixelOf(Color c) {
  return static_cast<std::uint32_t>(RedOf(c)) << 16 | static_cast<std::uint32_t>(GreenOf(c)) << 8 |
         static_cast<std::uint32_t>(BlueOf(c));
}

// weight 0..256; both channels of a pair are worked on in one multiplication.
std::uint32_t Mix(std::uint32_t under, std::uint32_t over, std::uint32_t weight) {
  const std::uint32_t rest = 256 - weight;
  const std::uint32_t red_blue = ((under & 0xFF00FF) * rest + (over & 0xFF00FF) * weight) >> 8 & 0xFF00FF;
  const std::uint32_t green = ((under & 0x00FF00) * rest + (over & 0x00FF00) * weight) >> 8 & 0x00FF00;
  return red_blue | green;
}

Rect BoxOf(const Surface& surface, std::span<const PixelPoint> corners) {
  double left = surface.width;
  double top = surface.height;
  double right = 0;
  double bottom = 0;
  for (const PixelPoint& c : corners) {
    left = std::min(left, c.x);
    right = std::max(right, c.x);
    top = std::min(top, c.y);
    bottom = std::max(bottom, c.y);
  }
  left = std::max(left, 0.0);
  top = std::max(top, 0.0);
  right = std::min(right, static_cast<double>(surface.width));
  bottom = std::min(bottom, static_cast<double>(surface.height));
  if (!(right > left && bottom > top)) return {};
  const int x = static_cast<int>(left);
  const int y = static_cast<int>(top);
  return {x, y, static_cast<int>(std::ceil(right)) - x, static_cast<int>(std::ceil(bottom)) - y};
}

}  // namespace

void Rasterizer::FillRect(const Surface& surface, Rect area, Color color) {
  const Rect cut = Intersection(area, {0, 0, surface.width, surface.height});
  const std::uint32_t pixel = PixelOf(color);
  for (int y = cut.top; y < cut.bottom(); ++y)
    std::fill_n(surface.Row(y) + cut.left, cut.width, pixel);
}

void Rasterizer::FillPolygon(const Surface& surface, std::span<const PixelPoint> corners, Color color,
                             int alpha) {
  if (corners.size() < 3) return;
  box_ = BoxOf(surface, corners);
  if (box_.Empty()) return;
  // One column more than the box: what an edge at the right border hands on is kept there and not drawn.
  coverage_.assign(static_cast<std::size_t>(box_.width + 2) * static_cast<std::size_t>(box_.height), 0.0F);
  PixelPoint from = corners.back();
  for (const PixelPoint& to : corners) {
    AddEdge(from, to);
    from = to;
  }
  Blend(surface, color, alpha);
}

// Walks an edge row by row.
void Rasterizer::AddEdge(PixelPoint from, PixelPoint to) {
  if (from.y == to.y) return;
  const double direction = from.y < to.y ? 1.0 : -1.0;
  if (direction < 0) std::swap(from, to);
  const double slope = (to.x - from.x) / (to.y - from.y);
  const double top = std::max(from.y, static_cast<double>(box_.top));
  const double bottom = std::min(to.y, static_cast<double>(box_.bottom()));
  for (int y = static_cast<int>(std::floor(top)); y < bottom; ++y) {
    const double y0 = std::max(top, static_cast<double>(y));
    const double y1 = std::min(bottom, static_cast<double>(y + 1));
    if (y1 <= y0) continue;
    const double x0 = from.x + (y0 - from.y) * slope - box_.left;
    const double x1 = from.x + (y1 - from.y) * slope - box_.left;
    float* row = coverage_.data() + static_cast<std::ptrdiff_t>(y - box_.top) * (box_.width + 2);
    AddCutSpan(row, std::min(x0, x1), std::max(x0, x1), direction * (y1 - y0));
  }
}

// Left of the box an edge still covers everything to its right, so what lies there counts at the border;
// right of the box it covers nothing that is drawn. A flat edge may lie in all three parts within one row.
void Rasterizer::AddCutSpan(float* row, double x0, double x1, double height) {
  const auto limit = static_cast<double>(box_.width);
  if (x0 < 0.0 && x1 > 0.0) {
    const double outside = height * -x0 / (x1 - x0);
    AddSpan(row, 0.0, 0.0, outside);
    height -= outside;
    x0 = 0.0;
  }
  if (x0 < limit && x1 > limit) {
    height *= (limit - x0) / (x1 - x0);
    x1 = limit;
  }
  AddSpan(row, std::clamp(x0, 0.0, limit), std::clamp(x1, 0.0, limit), height);
}

// Spreads one row's part of an edge, from x0 to x1, over the pixels that it crosses: each gets the share of
// its area that lies right of the edge, and the pixel behind it the rest, so that the running sum of a row is
// its coverage.
void Rasterizer::AddSpan(float* row, double x0, double x1, double height) {
  const int first = static_cast<int>(x0);
  const int last = static_cast<int>(x1);
  if (first == last) {
    const double right_share = 1.0 - ((x0 + x1) / 2.0 - first);
    row[first] += static_cast<float>(height * right_share);
    row[first + 1] += static_cast<float>(height * (1.0 - right_share));
    return;
  }
  const double per_pixel = height / (x1 - x0);
  for (int x = first; x <= last; ++x) {
    const double a = std::max(x0, static_cast<double>(x));
    const double b = std::min(x1, static_cast<double>(x + 1));
    const double part = (b - a) * per_pixel;
    const double right_share = 1.0 - ((a + b) / 2.0 - x);
    row[x] += static_cast<float>(part * right_share);
    row[x + 1] += static_cast<float>(part * (1.0 - right_share));
  }
}

void Rasterizer::Blend(const Surface& surface, Color color, int alpha) const {
  const std::uint32_t pixel = PixelOf(color);
  const float scale = static_cast<float>(std::clamp(alpha, 0, 255)) * 256.0F / 255.0F;
  for (int y = 0; y < box_.height; ++y) {
    const float* row = coverage_.data() + static_cast<std::ptrdiff_t>(y) * (box_.width + 2);
    std::uint32_t* out = surface.Row(box_.top + y) + box_.left;
    float sum = 0.0F;
    for (int x = 0; x < box_.width; ++x) {
      sum += row[x];
      const auto weight = static_cast<std::uint32_t>(std::lrint(std::min(std::fabs(sum), 1.0F) * scale));
      if (weight != 0) out[x] = weight >= 256 ? pixel : Mix(out[x], pixel, weight);
    }
  }
}

void Rasterizer::DrawPicture(const Surface& surface, int x, int y, const PictureData& picture) {
  const Rect cut = Intersection({x, y, picture.width, picture.height}, {0, 0, surface.width, surface.height});
  for (int row = cut.top; row < cut.bottom(); ++row) {
    const std::uint32_t* in =
        picture.pixels.data() + static_cast<std::ptrdiff_t>(row - y) * picture.width + (cut.left - x);
    std::uint32_t* out = surface.Row(row) + cut.left;
    for (int column = 0; column < cut.width; ++column) {
      const std::uint32_t alpha = in[column] >> 24;
      if (alpha == 255) {
        out[column] = in[column] & 0xFFFFFF;
      } else if (alpha != 0) {
        out[column] = Mix(out[column], in[column], alpha + 1);
      }
    }
  }
}

}  // namespace orvane
