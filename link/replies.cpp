#include "link/replies.h"

#include "base/checked.h"
#include "base/numeric_text.h"
#include "base/text.h"
#include "link/frame.h"
#include "link/payload.h"

#include <array>

namespace orvane {
namespace {

std::int16_t InRange(std::int16_t value, int low, int high, std::int16_t otherwise) {
  return value >= low && value <= high ? value : otherwise;
}

void HandleVSWRAlarm(ReplyContext& context, std::string_view message) {
  MeterState& state = context.state;
  state.ParamV = InRange(PayloadNumber(message, 'V').value_or(0), 0, 4, 4);
  state.ParamVOn = ToBool16(state.ParamV >= 1);
}

void HandleLowPowerAlarm(ReplyContext& context, std::string_view message) {
  MeterState& state = context.state;
  state.ParamL2 = InRange(PayloadNumber(message, 'l').value_or(0), 0, 7, 0);
  state.ParamL2On = ToBool16(state.ParamL2 >= 1);
}

std::int16_t TrimOf(const MeterState& state, std::string_view message, char letter) {
  return InRange(PayloadNumber(message, letter).value_or(0), -state.RangeMinNeg, -state.RangeMaxNeg, 0);
}
void HandleForwardTrim(ReplyContext& context, std::string_view message) {
  context.state.ParamT = TrimOf(context.state, message, 'T');
}
void HandleReflectedTrim(ReplyContext& context, std::string_view message) {
  context.state.ParamT2 = TrimOf(context.state, message, 't');
}

void HandleDisplayMessage(ReplyContext& context, std::string_view message) {
  context.state.ParamS = PayloadNumber(message, 'S').value_or(0);
}

void HandlePolarity(ReplyContext& context, std::string_view message) {
  context.state.ParamP = InRange(PayloadNumber(message, 'P').value_or(0), 0, 1, 1);
}

// Without a usable number the meter is taken to be at full intensity, its state after power-up.
void HandleIntensity(ReplyContext& context, std::string_view message) {
  context.state.ParamI = InRange(PayloadNumber(message, 'I').value_or(4), 1, 4, 4);
}

void HandleRangeScale(ReplyContext& context, std::string_view message) {
  context.last.B2 = PayloadNumber(message, 'b').value_or(0);
  context.last.B2 = InRange(context.last.B2, 0, 3, 0);
  context.state.ParamB2 = context.last.B2;
  context.state.ParamB2Valid = kTrue;
}

std::string TextOf(std::string_view message, char letter) {
  return ExtractPayload(RemoveFirst(message, letter));
}
void HandleLowPowerList(ReplyContext& context, std::string_view message) {
  context.state.ParamLText = TextOf(message, 'L');
}
void HandleRangeList(ReplyContext& context, std::string_view message) {
  context.state.ParamBText = TextOf(message, 'B');
}
void HandleUpperW(ReplyContext& context, std::string_view message) {
  context.state.ParamWText = TextOf(message, 'W');
}
void HandleLowerW(ReplyContext& context, std::string_view message) {
  context.state.ParamW2Text = TextOf(message, 'w');
}

// The limits are kept negated, so -32768 has no place in them.
std::int16_t Negated(std::string_view number) {
  return NarrowToInt16(-static_cast<std::int64_t>(Int16Of(number)));
}
void HandleTrimLimits(ReplyContext& context, std::string_view message) {
  const std::string payload = TextOf(message, 'U');
  const auto limits = Split(payload, ',');
  if (limits.size() < 2) return;
  context.state.RangeMaxNeg = Negated(limits[1]);
  context.state.RangeMinNeg = Negated(limits[0]);
}

// The letter is cut by its place and not searched for: a call sign may begin with it.
void HandleCallMessage(ReplyContext& context, std::string_view message) {
  const auto start = message.find(kSTX);
  const auto end = message.rfind(kETX);
  if (start != std::string_view::npos && end != std::string_view::npos && end > start) {
    message = message.substr(start + 2, end - start - 1);
  }
  context.state.MeterCallText.Set(TrimRight(ExtractPayload(TrimRight(message))));
}

// Only a search asks for the version; stopping the timer keeps a late answer from starting another attempt.
void HandleVersion(ReplyContext& context, std::string_view message) {
  if (!context.flags.MeterSearchRunning || !ContainsNoCase(message, "Version")) return;
  context.flags.MeterSearchRunning = false;
  context.state.FirmwareVersion = TrimRight(TextOf(message, 'v'));
  context.events.EnableFindMeter(false);
}

void HandleAcknowledgement(ReplyContext& context, std::string_view /*message*/) {
  context.events.StartClearMessageTimer();
}

// The meter says that it has started. During a search that is a reason to try again soon.
void HandleNotice(ReplyContext& context, std::string_view message) {
  if (context.flags.MeterSearchRunning) {
    context.flags.AckText.clear();
    context.events.EnableFindMeter(true);
  } else {
    context.events.ShowStatus(ExtractPayload(message), StatusTone::kNormal);
  }
}

constexpr std::array<Reply, 18> kReplies{{
    {'B', HandleRangeList, false},
    {'b', HandleRangeScale, true},
    {'L', HandleLowPowerList, false},
    {'l', HandleLowPowerAlarm, false},
    {'W', HandleUpperW, false},
    {'w', HandleLowerW, false},
    {'C', HandleCallMessage, false},
    {'U', HandleTrimLimits, false},
    {'V', HandleVSWRAlarm, true},
    {'I', HandleIntensity, true},
    {'T', HandleForwardTrim, true},
    {'t', HandleReflectedTrim, true},
    {'P', HandlePolarity, true},
    {'S', HandleDisplayMessage, true},
    {'v', HandleVersion, true},
    {'A', HandleAcknowledgement, false},
    {'N', HandleAcknowledgement, false},
    {'!', HandleNotice, false},
}};

}  // namespace

const Reply* FindReply(char letter) {
  for (const Reply& reply : kReplies) {
    if (reply.letter == letter) return &reply;
  }
  return nullptr;
}

void HandleRowReply(ReplyContext& context, std::string_view message) {
  context.last.R = PayloadNumber(message, 'R').value_or(0);
  context.last.R = InRange(context.last.R, 0, 2, 0);
  context.state.ParamR = context.last.R;
  context.state.ParamRValid = kTrue;
}

void HandleModeReply(ReplyContext& context, std::string_view message) {
  context.last.M = PayloadNumber(message, 'M').value_or(0);
  context.last.M = InRange(context.last.M, 0, 3, 0);
  context.state.MeterMode = context.last.M;
  context.events.SetModeCommand();
}

}  // namespace orvane
