#include "simulator/faults.h"

#include "simulator/crc.h"

#include <algorithm>
#include <utility>

namespace orvane::sim {
namespace {

constexpr std::array<FaultName, 8> kNames = {{
    {FaultKind::kWrongCrc, "crc", "wrong check digits"},
    {FaultKind::kLowerCaseCrc, "lower", "check digits in lower case"},
    {FaultKind::kTornLine, "torn", "a line in two pieces"},
    {FaultKind::kCutLine, "cut", "the tail of a line is lost"},
    {FaultKind::kMergedLines, "merge", "two lines in one burst"},
    {FaultKind::kNoise, "noise", "stray bytes before a line"},
    {FaultKind::kOverlongLine, "long", "thousands of bytes without an end of line"},
    {FaultKind::kReset, "reset", "the meter restarts"},
}};

constexpr std::size_t kOverlongBytes = 5000;

// Where the two check digits stand in a line, or npos.
std::size_t CrcPlace(std::string_view line) {
  const std::size_t etx = line.rfind(kEtx);
  return etx == std::string_view::npos || etx + 2 >= line.size() ? std::string_view::npos : etx + 1;
}

void SpoilCrc(std::string& line) {
  const std::size_t place = CrcPlace(line);
  if (place != std::string::npos) line[place] = line[place] == '0' ? '1' : '0';
}

void LowerCrc(std::string& line) {
  const std::size_t place = CrcPlace(line);
  if (place == std::string::npos) return;
  for (const std::size_t i : {place, place + 1}) {
    if (line[i] >= 'A' && line[i] <= 'F') line[i] = static_cast<char>(line[i] - 'A' + 'a');
  }
}

std::string EndlessPacket() {
  return std::string(1, kStx) + "D," + std::string(kOverlongBytes, '8');
}

}  // namespace

std::span<const FaultName> FaultNames() {
  return kNames;
}

std::optional<FaultKind> FindFault(std::string_view name) {
  for (const FaultName& entry : kNames) {
    if (entry.Name == name) return entry.Kind;
  }
  return std::nullopt;
}

std::string_view NameOfFault(FaultKind kind) {
  return kNames[static_cast<std::size_t>(kind)].Name;
}

void FaultInjector::SetShare(FaultKind kind, double percent) {
  PlanOf(kind) = {percent, 0, 0};
}

void FaultInjector::SetEvery(FaultKind kind, int n) {
  PlanOf(kind) = {0, std::max(n, 0), 0};
}

void FaultInjector::Clear() {
  plans_ = {};
}

bool FaultInjector::Due(Plan& plan) {
  if (plan.Every > 0) {
    plan.Count = (plan.Count + 1) % plan.Every;
    return plan.Count == 0;
  }
  return plan.Percent > 0 && random_.Unit() * 100 < plan.Percent;
}

std::optional<FaultKind> FaultInjector::Pick() {
  std::optional<FaultKind> picked;
  for (const FaultName& entry : kNames) {
    const bool due = Due(PlanOf(entry.Kind));  // every plan counts every line
    if (due && !picked) picked = entry.Kind;
  }
  return picked;
}

std::string FaultInjector::Noise() {
  std::string noise;
  const int length = 1 + random_.Below(8);
  while (noise.size() < static_cast<std::size_t>(length)) {
    const char byte = static_cast<char>(random_.Below(256));
    if (byte != kStx && byte != kLf) noise += byte;
  }
  return noise;
}

std::vector<Burst> FaultInjector::Shape(std::string line, std::optional<FaultKind> fault,
                                        std::int64_t gap_ms) {
  const std::string before = std::exchange(held_, {});
  const std::size_t middle = line.size() / 2;
  if (fault == FaultKind::kMergedLines && before.empty()) {
    held_ = std::move(line);
    return {};
  }
  if (fault == FaultKind::kTornLine) {
    return {{0, before + line.substr(0, middle), true}, {gap_ms, line.substr(middle), false}};
  }
  if (fault == FaultKind::kWrongCrc) SpoilCrc(line);
  if (fault == FaultKind::kLowerCaseCrc) LowerCrc(line);
  if (fault == FaultKind::kCutLine) line.resize(middle);
  if (fault == FaultKind::kNoise) line.insert(0, Noise());
  if (fault == FaultKind::kOverlongLine) line.insert(0, EndlessPacket());
  return {{0, before + line, false}};
}

}  // namespace orvane::sim
