// Every story of the antenna line under every fault: what is shown is what a naive reading of the bytes
// gives, in order, nothing lost and nothing invented; and the run ends in a state that has a name.
#include "tests/reliability/witness.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

using sim::FaultKind;

struct FaultRow {
  const char* name;
  std::function<void(Program&, Witness&)> strike;
  std::function<void(Program&, Witness&)> mend;  ///< half a minute later
  const char* state = "streaming";               ///< at the end
  const char* status = "";
  bool harmless = false;  ///< no packet is lost by it
  bool from_start = false;
};

FaultRow OnTheLine(FaultKind kind, double percent, bool harmless) {
  return {sim::NameOfFault(kind).data(),
          [=](Program& program, Witness&) { program.line.Meter.SetFault(kind, percent); },
          [=](Program& program, Witness&) { program.line.Meter.SetFault(kind, 0); },
          "streaming",
          "",
          harmless};
}

void Nothing(Program&, Witness&) {}

const std::vector<FaultRow>& Faults() {
  static const std::vector<FaultRow> rows{
      OnTheLine(FaultKind::kWrongCrc, 30, false),
      OnTheLine(FaultKind::kLowerCaseCrc, 30, false),
      OnTheLine(FaultKind::kTornLine, 50, true),
      OnTheLine(FaultKind::kCutLine, 20, false),
      OnTheLine(FaultKind::kMergedLines, 50, true),
      OnTheLine(FaultKind::kNoise, 50, true),
      OnTheLine(FaultKind::kOverlongLine, 10, false),
      OnTheLine(FaultKind::kReset, 1, false),
      {"silence", [](Program& program, Witness&) { program.line.Meter.Silence(8000); }, Nothing},
      {"mute", [](Program& program, Witness&) { program.line.Meter.SetMute(true); }, Nothing, "no data",
       "No Data"},
      {"unplugged",
       [](Program& program, Witness& witness) {
         witness.Unplug();
         program.time.Post(EventKind::kInput, 9876, [&] { program.port.SetPresent(true); });
       },
       Nothing},
      {"pulled", [](Program&, Witness& witness) { witness.Unplug(); }, Nothing, "port lost", "Port Lost"},
      {"wrong speed", [](Program& program, Witness&) { program.line.Meter.SetBaud(9600); },
       [](Program& program, Witness&) { program.line.Meter.SetBaud(38400); }},
      {"replies struck",
       [](Program& program, Witness& witness) {
         program.line.Meter.SetFaultsOnReplies(true);
         for (const FaultKind kind :
              {FaultKind::kWrongCrc, FaultKind::kTornLine, FaultKind::kCutLine, FaultKind::kNoise})
           program.line.Meter.SetFault(kind, 10);
         witness.Unplug();
         program.time.Post(EventKind::kInput, 1234, [&] { program.port.SetPresent(true); });
       },
       [](Program& program, Witness&) { program.line.Meter.ClearFaults(); }},
      {"absent",
       [](Program& program, Witness&) {
         program.line.Meter.SetMute(true);
         program.desktop.answers = {BoxAnswer::kCancel};
       },
       Nothing, "not detected", "", false, true},
  };
  return rows;
}

// Names the row of a failed test.
void PrintTo(const FaultRow& row, std::ostream* out) {
  *out << row.name;
}

class Matrix : public testing::TestWithParam<std::tuple<sim::Scenario, FaultRow>> {};

TEST_P(Matrix, ShowsWhatTheBytesSay) {
  const auto& [scenario, fault] = GetParam();
  Program program(MeterAt(38400));
  program.PutSettings(Witness::kSettings);
  Witness witness(program);
  ASSERT_TRUE(program.Start());
  if (fault.from_start) fault.strike(program, witness);
  ASSERT_TRUE(witness.RunFor(5000));
  program.line.Meter.SetScenario(scenario.Name);
  ASSERT_TRUE(witness.RunFor(10000));
  program.line.Meter.ClearLog();
  const std::uint64_t before = witness.Readings();
  if (!fault.from_start) fault.strike(program, witness);
  ASSERT_TRUE(witness.RunFor(30000));
  if (fault.harmless) {
    const auto sent = program.line.Meter.Log().PacketTotal;
    EXPECT_LE(sent - (witness.Readings() - before), 1U) << "of " << sent;  // one may be kept back
    EXPECT_GE(sent, 140U);
  }
  fault.mend(program, witness);
  ASSERT_TRUE(witness.RunFor(50000));
  const std::uint64_t last = witness.Readings();
  ASSERT_TRUE(witness.RunFor(10000));
  EXPECT_EQ(witness.Readings() - last, std::string(fault.state) == "streaming" ? 50U : 0U);
  EXPECT_EQ(witness.State(), fault.state);
  EXPECT_EQ(program.Status(), fault.status);
  EXPECT_EQ(program.desktop.boxes.size(), fault.from_start ? 1U : 0U);
  EXPECT_TRUE(program.Close());
}

INSTANTIATE_TEST_SUITE_P(All, Matrix,
                         testing::Combine(testing::ValuesIn(sim::Scenarios().begin(), sim::Scenarios().end()),
                                          testing::ValuesIn(Faults())),
                         [](const auto& row) {
                           std::string name =
                               std::string(std::get<0>(row.param).Name) + "_" + std::get<1>(row.param).name;
                           std::replace(name.begin(), name.end(), ' ', '_');
                           return name;
                         });

}  // namespace
}  // namespace orvane
