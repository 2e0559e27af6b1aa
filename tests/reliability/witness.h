#pragma once

#include "tests/reliability/naive_reader.h"
#include "tests/support/meter_text.h"
#include "tests/support/program.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orvane {

/// What a person sees of the readings.
struct Screen {
  std::string forward, reflected, vswr;
  int forward_lit = 0;
  int reflected_lit = 0;
  std::string lamps = "...";
  bool operator==(const Screen&) const = default;
};

/// Sits beside a program, reads its bytes naively and works out what must be on the screen and what the
/// client must have got. Fast mode, with the fixed ranges of 500 W and 125 W. After every event the two are
/// compared, so that no reading is lost, invented or out of order.
class Witness {
 public:
  static constexpr const char* kSettings = "[USER-SETTINGS]\r\nF-PWR-INDEX=3\r\nR-PWR-INDEX=3\r\n";

  explicit Witness(Program& program);
  Witness(const Witness&) = delete;
  Witness& operator=(const Witness&) = delete;

  /// Lets time pass and compares after every event. @return false after the first difference, which is a
  /// failure
  bool RunFor(std::int64_t ms);
  /// The same until the condition holds. @return whether it came to hold
  bool RunUntil(const std::function<bool()>& condition, std::int64_t limit_ms);
  /// The port is pulled out: the program has to know at the next event.
  void Unplug();

  std::uint64_t Readings() const { return readings_; }
  std::uint64_t Lines() const { return lines_; }
  bool Failed() const { return failed_; }
  /// What the program says of itself: streaming, no data, port lost, not detected, searching.
  std::string State() const;

 private:
  // A readout that holds its peak.
  struct Held {
    double shown = 0;
    double peak = 0;
    std::int64_t until = INT64_MIN;
    bool Take(double value, std::int64_t now);
    bool Hold(std::int64_t now);
  };
  // A bar on a fixed range.
  struct Bar {
    float scale;
    int level = 0;
    int lit = 0;
    void Draw(long watts);
    void Clear();
  };

  void Taken(std::string_view bytes);
  void Line(const std::optional<NaiveReading>& reading);
  void Show();
  void GoDark();
  void MindDarkness();
  void Compare();
  std::int64_t Now() const { return program_.time.Now(); }

  static constexpr std::int64_t kHoldMs = 800;

  Program& program_;
  NaiveReader reader_;
  NaiveReading last_;
  bool live_ = true;  // the zeros from before the first packet count as readings
  bool failed_ = false;
  std::uint64_t readings_ = 0;
  std::uint64_t lines_ = 0;
  std::int64_t last_reading_ = 0;
  std::int64_t last_line_ = 0;
  std::int64_t ranges_at_ = INT64_MAX;  // when the search chooses the ranges again
  Held forward_, reflected_, vswr_;
  Bar forward_bar_{0.102F}, reflected_bar_{0.408F};
  Screen screen_;
  std::vector<std::string> client_;
};

}  // namespace orvane
