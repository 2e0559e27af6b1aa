#include "forms/digit_box.h"

#include "forms/colors.h"

#include <array>
#include <cstdint>

namespace orvane {
namespace {

// Bits of a glyph: segments a (top), b, c (right), d (bottom), e, f (left), g (middle), from bit 0 up.
constexpr std::array<std::uint8_t, 10> kDigitSegments{0x3F, 0x06, 0x5B, 0x4F, 0x66,
                                                      0x6D, 0x7D, 0x07, 0x7F, 0x6F};
constexpr std::uint8_t kDash = 0x40;

struct Cell {
  std::uint8_t segments = 0;
  bool point = false;
};

constexpr std::size_t kMostCells = 5;

/// Fills the cells from the right. @return false when the text needs more places than there are
bool FillCells(std::string_view text, std::size_t count, std::array<Cell, kMostCells>& cells) {
  std::size_t place = count;
  bool point = false;
  for (auto at = text.rbegin(); at != text.rend(); ++at) {
    if (*at == '.') {
      point = true;
      continue;
    }
    if (place == 0) return false;
    Cell& cell = cells[--place];
    if (*at >= '0' && *at <= '9') cell.segments = kDigitSegments[static_cast<std::size_t>(*at - '0')];
    if (*at == '-') cell.segments = kDash;
    cell.point = point;
    point = false;
  }
  if (!point) return true;
  if (place == 0) return false;
  cells[place - 1].point = true;  // ".50": the point stands behind an empty place
  return true;
}

// A cell in a unit of its own: 100 wide and 175 high with its margins. A segment is a bar with pointed ends
// between two corners of the digit; the upright ones lean a little to the right, as on panel meters.
class Glyph {
 public:
  Glyph(double left, double top, double width, double height)
      : left_(left), top_(top), unit_x_(width / 100.0), unit_y_(height / 175.0) {}

  void Segment(Canvas& canvas, int index, Color color) const {
    struct Ends {
      double x0, y0, x1, y1;
    };
    static constexpr std::array<Ends, 7> kEnds{{{kLeft, 16, kRight, 16},
                                                {kRight, 16, kRight, 87.5},
                                                {kRight, 87.5, kRight, 159},
                                                {kLeft, 159, kRight, 159},
                                                {kLeft, 87.5, kLeft, 159},
                                                {kLeft, 16, kLeft, 87.5},
                                                {kLeft, 87.5, kRight, 87.5}}};
    const Ends& e = kEnds[static_cast<std::size_t>(index)];
    constexpr double kGap = 2.5;   // between two segments' tips
    constexpr double kHalf = 8.5;  // half the width of a bar
    std::array<PointF, 6> corners;
    if (e.y0 == e.y1) {
      corners = {At(e.x0 + kGap, e.y0),
                 At(e.x0 + kGap + kHalf, e.y0 - kHalf),
                 At(e.x1 - kGap - kHalf, e.y0 - kHalf),
                 At(e.x1 - kGap, e.y0),
                 At(e.x1 - kGap - kHalf, e.y0 + kHalf),
                 At(e.x0 + kGap + kHalf, e.y0 + kHalf)};
    } else {
      corners = {At(e.x0, e.y0 + kGap),
                 At(e.x0 + kHalf, e.y0 + kGap + kHalf),
                 At(e.x0 + kHalf, e.y1 - kGap - kHalf),
                 At(e.x0, e.y1 - kGap),
                 At(e.x0 - kHalf, e.y1 - kGap - kHalf),
                 At(e.x0 - kHalf, e.y0 + kGap + kHalf)};
    }
    canvas.FillPolygon(corners, color);
  }

  void Point(Canvas& canvas, Color color) const {
    constexpr double kSide = 7.5;
    const std::array<PointF, 4> corners{At(kPoint - kSide, 159 - kSide), At(kPoint + kSide, 159 - kSide),
                                        At(kPoint + kSide, 159 + kSide), At(kPoint - kSide, 159 + kSide)};
    canvas.FillPolygon(corners, color);
  }

 private:
  // Between the digits lies room for a point that touches neither.
  static constexpr double kLeft = 12;
  static constexpr double kRight = 66;
  static constexpr double kPoint = 88;

  PointF At(double x, double y) const {
    constexpr double kLean = 0.07;
    return {left_ + (x + (159.0 - y) * kLean) * unit_x_, top_ + y * unit_y_};
  }

  double left_;
  double top_;
  double unit_x_;
  double unit_y_;
};

}  // namespace

OVDigitBox::OVDigitBox(WindowSystem& windows, WindowedControl& container, const Rect& bounds, int format,
                       std::string_view digits)
    : WindowedControl(windows, container, bounds), format_(format) {
  SetWindowText(digits);
}

void OVDigitBox::Paint(Canvas& canvas) const {
  constexpr int kMargin = 30;  // twips, left and right
  canvas.FillRect({0, 0, Width(), Height()}, colors::kReadoutGround);
  const std::size_t count = format_ == kRatioFormat ? 4 : kMostCells;
  std::array<Cell, kMostCells> cells{};
  if (!FillCells(digitdisplay(), count, cells)) cells.fill({kDash, false});
  const Color lit = color_ == kAlarmColor ? colors::kAlarmDigit : colors::kDigit;
  const double pitch = static_cast<double>(Width() - 2 * kMargin) / static_cast<double>(count);
  for (std::size_t i = 0; i < count; ++i) {
    const Glyph glyph(kMargin + pitch * static_cast<double>(i), 0, pitch, Height());
    for (int segment = 0; segment < 7; ++segment) {
      glyph.Segment(canvas, segment, (cells[i].segments >> segment & 1) != 0 ? lit : colors::kUnlitDigit);
    }
    const bool has_point = format_ == kRatioFormat && i + 1 < count;
    if (cells[i].point || has_point) glyph.Point(canvas, cells[i].point ? lit : colors::kUnlitDigit);
  }
}

}  // namespace orvane
