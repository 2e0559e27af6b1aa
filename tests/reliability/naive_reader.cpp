#include "tests/reliability/naive_reader.h"

#include "tests/support/naive_packet.h"

#include <cmath>
#include <cstdlib>

namespace orvane {
namespace {

// The simulated meter sends plain numbers only; what noise made of them is not read.
std::optional<double> Plain(const std::string& field) {
  if (field.empty() || field.find_first_not_of("0123456789.") != std::string::npos) return std::nullopt;
  return std::strtod(field.c_str(), nullptr);
}

std::optional<NaiveReading> Read(const std::string& line) {
  const auto fields = NaiveFields(line);
  if (!fields) return std::nullopt;
  const auto forward = Plain(fields->at(1));
  const auto reflected = Plain(fields->at(2));
  const auto vswr = Plain(fields->at(3));
  const std::string& alarms = fields->at(4);
  if (!forward || !reflected || !vswr) std::abort();  // a packet that fits by chance: choose another seed
  return NaiveReading{std::lround(*forward), std::lround(*reflected), static_cast<float>(*vswr),
                      alarms.substr(0, 1) == "1", alarms.substr(2, 1) == "1"};
}

}  // namespace

void NaiveReader::Take(std::string_view bytes,
                       const std::function<void(const std::optional<NaiveReading>&)>& on_line) {
  rest_ += bytes;
  for (auto end = rest_.find('\n'); end != std::string::npos; end = rest_.find('\n')) {
    on_line(Read(rest_.substr(0, end + 1)));
    rest_.erase(0, end + 1);
  }
}

}  // namespace orvane
