#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// A picture of how a number is written: '0' forces a digit, '#' shows one only when it is significant, '.'
/// starts the decimals. "###0" writes 0, 7, 1250; "#0.00" writes 1.50; "##.#0" writes 1.50 and, without a
/// whole part, .50. Numbers wider than the picture are written whole.
class NumberFormat {
 public:
  /// Made from a picture of '#', '0' and one '.'; at most 9 decimals.
  constexpr explicit NumberFormat(std::string_view picture) {
    bool decimals = false;
    for (const char c : picture) {
      if (c == '.') {
        decimals = true;
      } else if (!decimals) {
        if (c == '0' || whole_digits_ > 0) ++whole_digits_;
      } else {
        ++decimals_;
        if (c == '0') forced_decimals_ = decimals_;
      }
    }
    point_ = decimals;
  }

  /// Writes the value. Rounds half away from zero, by the decimal digits a reader would write down (1.005
  /// is 1.01 with two decimals, although its binary form is a hair less). A value that rounds to zero has no
  /// sign.
  std::string Write(double value) const;

 private:
  int whole_digits_ = 0;     // digits before the point that are written even when they are zero
  int decimals_ = 0;         // digits after the point at most
  int forced_decimals_ = 0;  // digits after the point that are written even when they are zero
  bool point_ = false;
};

inline constexpr NumberFormat kWattsFormat{"###0"};       ///< readouts and full-scale labels, whole watts
inline constexpr NumberFormat kHalfWattsFormat{"##0.0"};  ///< middle label of a fixed scale
inline constexpr NumberFormat kAutoHalfFormat{"##0"};     ///< middle label of the automatic scale
inline constexpr NumberFormat kVSWRFormat{"#0.00"};       ///< VSWR in packets and on the readout
inline constexpr NumberFormat kDipVSWRFormat{"##.#0"};    ///< VSWR on the readout in dip mode
inline constexpr NumberFormat kThresholdFormat{"0.0"};    ///< VSWR alarm thresholds in lists
inline constexpr NumberFormat kTwoDigitFormat{"00"};      ///< hours and minutes of an elapsed time
inline constexpr NumberFormat kSecondsFormat{"00.000"};   ///< seconds of an elapsed time

/// The value as `format` writes it, read back as a number: what a packet's field is worth after its rounding.
double RoundedBy(const NumberFormat& format, double value);

}  // namespace orvane
