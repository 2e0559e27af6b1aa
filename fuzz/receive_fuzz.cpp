// Any bytes in any pieces on the line of the whole program: receiver, classifier, packets, replies, display,
// client. Two programs, made once, are fed the same bytes, one whole and the other in pieces that come in
// while lines are being shown; afterwards both are brought back to where they began.
//
// The first byte of the input chooses the pieces, its highest bit whether the check digits are put right
// (else hardly any packet would be taken); the second how much time passes in the middle.
#include "fuzz/packet_model.h"
#include "fuzz/require.h"
#include "tests/steady/counted_new.h"
#include "tests/support/fed_program.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::fuzz {
namespace {

constexpr std::int32_t kPastHold = 6000;  // ms, longer than readouts are held
constexpr int kInputsOfAProgram = 50000;  // the windows in memory write down what screen readers are told
constexpr std::int64_t kGrowthOfAProgram = 1 << 20;

/// A reply that puts a part of the meter's state back.
struct Repair {
  std::string line;
  bool (*right)(const MeterState& state, const MeterState& wanted);
};
template <auto... fields>
bool Equal(const MeterState& a, const MeterState& b) {
  return ((a.*fields == b.*fields) && ...);
}
using S = MeterState;
const std::vector<Repair>& Repairs() {
  static const std::vector<Repair> repairs{
      {NaiveLine("M0"), Equal<&S::MeterMode>},
      {NaiveLine("R0"), Equal<&S::ParamR, &S::ParamRValid>},
      {NaiveLine("b0"), Equal<&S::ParamB2, &S::ParamB2Valid>},
      {NaiveLine("U-20,20"), Equal<&S::RangeMaxNeg, &S::RangeMinNeg>},
      {NaiveLine("T0"), Equal<&S::ParamT>},
      {NaiveLine("t0"), Equal<&S::ParamT2>},
      {NaiveLine("P0"), Equal<&S::ParamP>},
      {NaiveLine("S0"), Equal<&S::ParamS>},
      {NaiveLine("I4"), Equal<&S::ParamI>},
      {NaiveLine("l0"), Equal<&S::ParamL2, &S::ParamL2On>},
      {NaiveLine("V0"), Equal<&S::ParamV, &S::ParamVOn>},
      {NaiveLine("L0,5"), Equal<&S::ParamLText>},
      {NaiveLine("B50"), Equal<&S::ParamBText>},
      {NaiveLine("W1"), Equal<&S::ParamWText>},
      {NaiveLine("w1"), Equal<&S::ParamW2Text>},
      {NaiveLine("CAB0C"), Equal<&S::MeterCallText>},
  };
  return repairs;
}

/// One program, and where it was before the first input.
class World {
 public:
  World() {
    Require(program_.Streaming(), "the program streams");
    for (const Repair& repair : Repairs())
      program_.Feed(repair.line, 0);
    Settle();
    start_ = State();
  }

  FedProgram& Program() { return program_; }
  const MeterState& State() { return program_.Get().Link().State(); }

  /// Back to the beginning, with ordinary lines only: nothing that came over the line lasts for ever.
  void Restore() {
    for (const Repair& repair : Repairs()) {
      if (!repair.right(State(), start_)) program_.Feed(repair.line, 0);
    }
    Settle();
    Require(State() == start_, "ordinary lines put the meter's state back");
    Require(AtRest(), "ordinary lines put the screen back");
  }

 private:
  // The status line, the letter of the last reply, and the peaks that are held: the first reading after the
  // hold shows the highest of them, and by the third they are forgotten.
  void Settle() {
    static const std::string notice = NaiveLine("!Ready");
    static const std::string done = NaiveLine("A1");
    static const std::string none = NaiveLine("D,0,0,1.00,0;0");
    if (program_.Meter().lblShowStatus->Caption() != "!Ready") program_.Feed(notice, 0);
    program_.Feed(done, 0);
    program_.Feed(none, kPastHold);
    for (int i = 0; i < 2 && !AtRest(); ++i)
      program_.Feed(none, kPastHold);
  }
  bool AtRest() const {
    const MeterControls& meter = program_.Meter();
    return meter.forward.dbxPower->digitdisplay() == "0" && meter.reflected.dbxPower->digitdisplay() == "0" &&
           meter.dbxVSWR->digitdisplay().empty() && FedProgram::Lit(meter.forward) == 0 &&
           FedProgram::Lit(meter.reflected) == 0;
  }

  FedProgram program_;
  MeterState start_;
};

bool SameReadout(const OVDigitBox& a, const OVDigitBox& b) {
  return a.digitdisplay() == b.digitdisplay() && a.digitcolor() == b.digitcolor();
}
template <std::size_t count>
bool SameShapes(const ControlArray<Shape, count>& a, const ControlArray<Shape, count>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), [](const auto& one, const auto& other) {
    return one->BackStyle() == other->BackStyle() && one->FillStyle() == other->FillStyle();
  });
}
bool SameGraph(const GraphControls& a, const GraphControls& b) {
  for (std::size_t i = 0; i < a.lblScale.size(); ++i) {
    if (a.lblScale[i]->Caption() != b.lblScale[i]->Caption()) return false;
  }
  return SameReadout(*a.dbxPower, *b.dbxPower) && SameShapes(a.shpGraph, b.shpGraph) &&
         SameShapes(a.shpRange, b.shpRange);
}
bool SameScreen(const MeterControls& a, const MeterControls& b) {
  return SameGraph(a.forward, b.forward) && SameGraph(a.reflected, b.reflected) &&
         SameReadout(*a.dbxVSWR, *b.dbxVSWR) && SameShapes(a.shpMode, b.shpMode) &&
         a.shpSWRAlarm->FillStyle() == b.shpSWRAlarm->FillStyle() &&
         a.shpPowerAlarm->FillStyle() == b.shpPowerAlarm->FillStyle() &&
         a.lblShowStatus->Caption() == b.lblShowStatus->Caption();
}

// The two characters between an ETX and the CR of its line become the digits of what stands before.
void PutDigitsRight(std::string& bytes) {
  std::size_t start = bytes.find('\x02');
  for (auto end = bytes.find('\x03'); end != std::string::npos && end + 2 < bytes.size();
       end = bytes.find('\x03', end + 1)) {
    start = bytes.rfind('\x02', end);
    if (start == std::string::npos) continue;
    bytes.replace(end + 1, 2, NaiveDigits(std::string_view(bytes).substr(start, end - start)));
  }
}

std::vector<std::string_view> Pieces(std::string_view bytes, unsigned seed) {
  std::vector<std::string_view> pieces;
  while (!bytes.empty()) {
    seed = seed * 1103515245U + 12345U;
    const std::size_t size =
        std::min<std::size_t>(1 + (seed >> 16) % ((seed >> 24) % 3 == 0 ? 2 : 24), bytes.size());
    pieces.push_back(bytes.substr(0, size));
    bytes.remove_prefix(size);
  }
  return pieces;
}

void CheckReadings(World& world, std::string_view bytes) {
  PacketModel model;
  model.vswr = 1.0F;
  while (!bytes.empty()) {
    const auto end = bytes.find('\n') + 1;
    model.Take(bytes.substr(0, end));
    bytes.remove_prefix(end);
  }
  const MeterState& state = world.State();
  Require(state.ForwardPower == model.forward && state.ReflectedPower == model.reflected &&
              state.VSWR == model.vswr,
          "readings are those of the packets whose digits are right");
  Require(model.MayShow(world.Program().Meter().forward.dbxPower->digitdisplay()),
          "the readout shows a reading");
  Require(model.MayShow(world.Program().client.last), "the client gets a reading");
}

void Run(World& whole, World& split, std::string_view input) {
  const auto choice = input.empty() ? 0U : static_cast<unsigned char>(input[0]);
  const auto ms = input.size() < 2 ? 0 : static_cast<unsigned char>(input[1]) * 40;
  std::string bytes(input.substr(std::min<std::size_t>(input.size(), 2)));
  if ((choice & 0x80U) != 0) PutDigitsRight(bytes);
  bytes += '\n';  // so that nothing is left over for the next input
  const std::size_t middle = bytes.size() / 2;
  const std::string_view first = std::string_view(bytes).substr(0, middle);
  const std::string_view second = std::string_view(bytes).substr(middle);
  whole.Program().Feed(first, 0);
  whole.Program().Feed(second, ms);
  split.Program().FeedWhileShown(Pieces(first, choice), 0);
  split.Program().FeedWhileShown(Pieces(second, choice + 1), ms);

  Require(whole.State() == split.State(), "the state does not depend on how the bytes arrive");
  Require(SameScreen(whole.Program().Meter(), split.Program().Meter()),
          "the screen does not depend on how the bytes arrive");
  Require(whole.Program().client.last == split.Program().client.last &&
              whole.Program().client.taken == split.Program().client.taken,
          "the client's readings do not depend on how the bytes arrive");
  CheckReadings(whole, bytes);
  Require(split.Program().EventsWaiting() < 20, "no more events wait than there are timers");
  whole.Restore();
  split.Restore();
}

/// The two programs, made anew from time to time.
struct Worlds {
  World whole;
  World split;
  int inputs = 0;
  std::int64_t grown = 0;  // bytes that inputs left behind
};

}  // namespace
}  // namespace orvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvane::fuzz;
  static std::unique_ptr<Worlds> worlds;
  if (!worlds || worlds->inputs == kInputsOfAProgram) {
    worlds.reset();
    worlds = std::make_unique<Worlds>();
  }
  ++worlds->inputs;
  orvane::StartCounting();
  Run(worlds->whole, worlds->split, {reinterpret_cast<const char*>(data), size});
  worlds->grown += orvane::StopCounting().bytes;
  Require(worlds->grown < kGrowthOfAProgram, "the program does not grow");
  return 0;
}
