#pragma once

#include <cstdint>

namespace orvane {

/// Twips: 1/1440 inch. Everything above the platform measures in them; 15 make a pixel at 96 pixels per inch.
inline constexpr int kTwipsPerInch = 1440;

struct Point {
  int x = 0;
  int y = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  int width = 0;
  int height = 0;
  bool operator==(const Size&) const = default;
};

/// Left and top edge with width and height; right and bottom are the first coordinates outside.
struct Rect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  constexpr int right() const { return left + width; }
  constexpr int bottom() const { return top + height; }
  constexpr bool Empty() const { return width <= 0 || height <= 0; }
  constexpr bool Contains(Point p) const {
    return p.x >= left && p.x < right() && p.y >= top && p.y < bottom();
  }
  constexpr Rect Shifted(int dx, int dy) const { return {left + dx, top + dy, width, height}; }
  bool operator==(const Rect&) const = default;
};

/// The part that both rectangles cover; empty when there is none.
constexpr Rect Intersection(const Rect& a, const Rect& b) {
  const int left = a.left > b.left ? a.left : b.left;
  const int top = a.top > b.top ? a.top : b.top;
  const int right = a.right() < b.right() ? a.right() : b.right();
  const int bottom = a.bottom() < b.bottom() ? a.bottom() : b.bottom();
  return right > left && bottom > top ? Rect{left, top, right - left, bottom - top} : Rect{};
}

/// Colour value, red in the low byte, then green, then blue.
using Color = std::uint32_t;
constexpr Color MakeColor(int red, int green, int blue) {
  return static_cast<Color>(red & 0xFF) | static_cast<Color>(green & 0xFF) << 8 |
         static_cast<Color>(blue & 0xFF) << 16;
}
constexpr int RedOf(Color c) {
  return static_cast<int>(c & 0xFF);
}
constexpr int GreenOf(Color c) {
  return static_cast<int>(c >> 8 & 0xFF);
}
constexpr int BlueOf(Color c) {
  return static_cast<int>(c >> 16 & 0xFF);
}

}  // namespace orvane
