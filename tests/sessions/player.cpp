#include "tests/sessions/player.h"

#include "simulator/console.h"
#include "simulator/crc.h"
#include "tests/support/face.h"

#include <charconv>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <stdexcept>

namespace orvane {
namespace {

std::int64_t Number(std::string_view text) {
  std::int64_t value = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (fault != std::errc() || end != text.data() + text.size()) {
    throw std::invalid_argument("no number: " + std::string(text));
  }
  return value;
}

// Takes the first word off the text.
std::string Word(std::string& text) {
  const auto end = std::min(text.find(' '), text.size());
  std::string word = text.substr(0, end);
  text.erase(0, std::min(end + 1, text.size()));
  return word;
}

// "96 96 96 4" is "96*3 4".
std::string Counted(const std::vector<std::string>& words) {
  std::string text;
  for (std::size_t i = 0; i < words.size();) {
    std::size_t same = i;
    while (same < words.size() && words[same] == words[i])
      ++same;
    text += (text.empty() ? "" : " ") + words[i];
    if (same - i > 1) text += "*" + std::to_string(same - i);
    i = same;
  }
  return text;
}

std::string LinkState(const LinkFlags& flags, bool live) {
  if (flags.PortGone) return "port lost";
  if (flags.SearchAbandoned) return "given up";
  if (flags.ResyncPending) return "meter to be searched again";
  if (!flags.MeterFound) return "searching";
  return live ? "streaming" : "no readings";
}

std::string Parameters(const MeterState& state) {
  const auto number = [](const char* name, int value) { return name + std::to_string(value); };
  return number("M", state.MeterMode) + number(" R", state.ParamR) + number(" b", state.ParamB2) +
         number(" I", state.ParamI) + number(" l", state.ParamL2) + number(" V", state.ParamV) +
         number(" P", state.ParamP) + number(" S", state.ParamS) + number(" T", state.ParamT) +
         number(" t", state.ParamT2) + number(" U", -state.RangeMinNeg) + number(",", -state.RangeMaxNeg);
}

class Player {
 public:
  explicit Player(Arrival arrival) : arrival_(arrival) {}

  /// Takes one line of the session; what it asks for happens in Run.
  void Read(const std::string& line) {
    std::string rest = line;
    const std::string verb = Word(rest);
    if (verb.empty() || verb[0] == '#') return;
    const auto known = kVerbs.find(verb);
    if (known == kVerbs.end()) throw std::invalid_argument("unknown word \"" + verb + "\"");
    if (!program_ && verb != "settings" && verb != "tick" && verb != "start") {
      throw std::invalid_argument("the session has not started");
    }
    (this->*known->second)(rest);
  }
  /// Calls `seen` at the point in time that is reached.
  void ReadShow(std::function<void(Fields)> seen) {
    Then([this, seen = std::move(seen)] { seen(Show()); });
  }
  void Run() {
    Flush();
    if (!program_) return;
    Next();
    if (!program_->RunUntil([this] { return next_ == steps_.size(); }, kLongestMs)) {
      throw std::invalid_argument("the session did not come to its end");
    }
  }
  Fields Show();

 private:
  struct Step {
    std::int64_t at;  // ms since the start
    EventKind kind;
    std::function<void()> act;
  };

  // Each step is posted by the one before it, behind all that this one has brought about: as things happen on
  // a real system, also in the middle of the program's waits.
  void Next() {
    if (next_ == steps_.size()) return;
    const Step& step = steps_[next_];
    program_->time.Post(step.kind, started_ + step.at - program_->time.Now(), [this, &step] {
      step.act();
      ++next_;
      Next();
    });
  }

  void Then(std::function<void()> act) {
    Flush();
    steps_.push_back({now_ + (torn_at_ < 0 ? 0 : kTornMs), EventKind::kInput, std::move(act)});
  }
  void Deliver(std::int64_t at, std::string_view bytes) {
    steps_.push_back({at, EventKind::kArrival, [this, text = std::string(bytes)] { Port().Deliver(text); }});
  }

  void Bytes(const std::string& bytes) {
    if (arrival_ == Arrival::kMerged) {
      merged_ += bytes;
      merged_at_ = now_;
    } else if (arrival_ == Arrival::kTorn) {
      Tear(bytes);
    } else if (arrival_ == Arrival::kBytes) {
      for (std::size_t at = 0; at < bytes.size(); ++at)
        Deliver(now_, std::string_view(bytes).substr(at, 1));
    } else {
      Deliver(now_, bytes);
    }
  }
  // The last piece of each line comes equally late, so that no distance between two lines changes.
  void Tear(const std::string& bytes) {
    const bool time_for_it = std::exchange(torn_at_, now_) < now_;
    std::int64_t gaps = time_for_it ? 0 : kTornMs;
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t size = 1 + random_() % 9;
      const bool last = at + size >= bytes.size();
      Deliver(now_ + (last ? kTornMs : std::min(gaps, kTornMs)), std::string_view(bytes).substr(at, size));
      at += size;
      ++gaps;
    }
  }
  // What was kept back comes at the time of its last byte.
  void Flush() {
    if (!merged_.empty()) Deliver(merged_at_, std::exchange(merged_, {}));
  }

  HeadlessSerialPort& Port() { return program_->port; }
  void AddEvents(Fields& fields);

  void Settings(std::string line) { settings_ += line + "\r\n"; }
  void Tick(std::string tick) { start_tick_ = static_cast<std::int32_t>(Number(tick)); }
  void Start(std::string how);

  void Framed(std::string text) { Bytes(sim::MessageFrame(sim::Unescaped(text))); }
  void Raw(std::string text) { Bytes(sim::Unescaped(text)); }
  void Fill(std::string text) {
    std::string bytes;
    for (auto count = Number(Word(text)); count > 0; --count)
      bytes += sim::Unescaped(text);
    Bytes(bytes);
  }
  void Wait(std::string text) {
    const std::int64_t ms = Number(text);
    if (ms > kShortPauseMs) Flush();
    now_ += ms;
  }

  void Meter(std::string command);
  void Line(std::string name);
  void Plug(std::string what);
  void Click(std::string text) {
    Then([this, text] {
      HeadlessWindow* window = program_->desktop.Main()->Find(text);
      if (window == nullptr) throw std::invalid_argument("nothing has the text " + text);
      window->Click();
    });
  }
  void Menu(std::string line) {
    Then([this, id = static_cast<int>(Number(line))] { program_->desktop.choices = {id}; });
    Click("Settings");
  }
  void Answer(std::string answer) {
    const BoxAnswer given = answer == "cancel" ? BoxAnswer::kCancel : BoxAnswer::kOk;
    Then([this, given] { program_->desktop.answers.push_back(given); });
  }
  void Turn(std::string /*to the other view*/) {
    Then([this] { program_->desktop.Main()->DoubleClick(); });
  }

  static const std::map<std::string, void (Player::*)(std::string)> kVerbs;
  static constexpr std::int64_t kShortPauseMs = 50;  // lines as close as that may come in one arrival
  static constexpr std::int64_t kTornMs = 10;        // from the first to the last piece of a torn line
  static constexpr std::int64_t kLongestMs = 600000;

  Arrival arrival_;
  std::mt19937 random_{20240817};
  std::string settings_;
  std::int32_t start_tick_ = 0;
  std::unique_ptr<Program> program_;
  std::int64_t started_ = 0;  // virtual time of the session's zero
  std::int64_t now_ = 0;      // of the line being read
  std::vector<Step> steps_;
  std::size_t next_ = 0;
  std::string merged_;  // kept back
  std::int64_t merged_at_ = 0;
  std::int64_t torn_at_ = -1;  // of the last torn line
};

const std::map<std::string, void (Player::*)(std::string)> Player::kVerbs{
    {"settings", &Player::Settings}, {"tick", &Player::Tick},   {"start", &Player::Start},
    {">", &Player::Framed},          {"raw", &Player::Raw},     {"fill", &Player::Fill},
    {"wait", &Player::Wait},         {"meter", &Player::Meter}, {"line", &Player::Line},
    {"port", &Player::Plug},         {"click", &Player::Click}, {"menu", &Player::Menu},
    {"answer", &Player::Answer},     {"turn", &Player::Turn}};

// "start": streaming, and from then on the meter is mute, so that all bytes are the session's. "start live":
// the simulated meter goes on. "start cold": the window is there, nothing was searched yet.
void Player::Start(std::string how) {
  program_ = std::make_unique<Program>(MeterAt(38400), start_tick_);
  if (!settings_.empty()) program_->PutSettings(settings_);
  if (!(how == "cold" ? program_->Start() : program_->StartStreaming())) {
    throw std::invalid_argument("the program did not start");
  }
  program_->line.Meter.SetMute(how.empty());
  started_ = program_->time.Now();
  if (how != "cold") Show();
}

void Player::Meter(std::string command) {
  Then([this, command] {
    program_->line.Meter.Run(program_->time.Now() - start_tick_);
    const auto answer = sim::Console(program_->line.Meter).Execute(command);
    if (answer != "ok") throw std::invalid_argument("the meter refuses " + command);
    program_->line.Pump();
  });
}

void Player::Line(std::string name) {
  static const std::map<std::string, CommEvent> kEvents{
      {"frame", CommEvent::kFrame},     {"overrun", CommEvent::kOverrun}, {"overflow", CommEvent::kRxOver},
      {"parity", CommEvent::kRxParity}, {"full", CommEvent::kTxFull},     {"dcb", CommEvent::kDCB},
      {"break", CommEvent::kBreak},     {"cts", CommEvent::kCTS}};
  const auto event = kEvents.find(name);
  if (event == kEvents.end()) throw std::invalid_argument("no event of the line: " + name);
  Then([this, what = event->second] { Port().Raise(what); });
}

void Player::Plug(std::string what) {
  static const std::map<std::string, void (*)(HeadlessSerialPort&)> kChanges{
      {"lose", [](HeadlessSerialPort& port) { port.Lose(); }},
      {"gone", [](HeadlessSerialPort& port) { port.SetPresent(false); }},
      {"back", [](HeadlessSerialPort& port) { port.SetPresent(true); }},
      {"busy", [](HeadlessSerialPort& port) { port.SetBusy(true); }},
      {"free", [](HeadlessSerialPort& port) { port.SetBusy(false); }}};
  const auto change = kChanges.find(what);
  if (change == kChanges.end()) throw std::invalid_argument("nothing that a port does: " + what);
  Then([this, act = change->second] { act(Port()); });
}

Fields Player::Show() {
  const MeterControls& meter = program_->orvane->Meter();
  const MeterLink& link = program_->orvane->Link();
  const auto readout = [](const OVDigitBox& box) {
    return box.digitdisplay() + (box.digitcolor() == OVDigitBox::kAlarmColor ? " red" : "");
  };
  const auto lit = [this](const GraphControls& graph) { return std::to_string(program_->Lit(graph)); };
  const Label& status = *meter.lblShowStatus;
  Fields fields{{"fwd", readout(*meter.forward.dbxPower)},
                {"ref", readout(*meter.reflected.dbxPower)},
                {"vswr", readout(*meter.dbxVSWR)},
                {"bars", lit(meter.forward) + " " + lit(meter.reflected)},
                {"scales", Labels(meter.forward) + "  " + Labels(meter.reflected)},
                {"lamps", Lamps(meter)},
                {"mode", Markers(meter)},
                {"status", sim::Escaped(status.Caption()) + (status.ForeColor() == 255 ? " (red)" : "")},
                {"message", sim::Escaped(program_->orvane->Controls().lblMessage[0]->Caption())},
                {"meter", Parameters(link.State())},
                {"link", LinkState(link.Flags(), link.State().ReadingsLive)},
                {"speed", std::string(Split(Port().Settings(), ',')[0])},
                {"view", program_->desktop.Main()->Place().height == 3900 ? "full" : "short"}};
  AddEvents(fields);
  return fields;
}

// What happened since the last look.
void Player::AddEvents(Fields& fields) {
  std::vector<std::string> client;
  for (const auto& message : program_->clients.messages)
    client.emplace_back(message.data.c_str());
  std::vector<std::string> sent;
  for (const auto& write : Port().Writes())
    sent.push_back(sim::Escaped(write.bytes.substr(1, write.bytes.size() - 5)));
  std::vector<std::string> boxes;
  for (const ShownBox& box : program_->desktop.boxes)
    boxes.push_back("\"" + box.title + "\"");
  const int beeps = std::exchange(program_->desktop.beeps, 0);
  fields.emplace_back("client", Counted(client));
  fields.emplace_back("sent", Counted(sent));
  fields.emplace_back("boxes", Counted(boxes));
  fields.emplace_back("beeps", beeps == 0 ? "" : std::to_string(beeps));
  program_->clients.messages.clear();
  Port().ClearWrites();
  program_->desktop.boxes.clear();
}

// Fields that are new since the show before; events count by themselves.
std::vector<std::string> Changes(const Fields& before, const Fields& now) {
  std::vector<std::string> changes;
  for (const auto& [name, value] : now) {
    const bool event = name == "client" || name == "sent" || name == "boxes" || name == "beeps";
    const bool same = std::find(before.begin(), before.end(), std::pair{name, value}) != before.end();
    if (event ? value.empty() : same) continue;
    changes.push_back("= " + name + (value.empty() ? "" : " " + value));
  }
  return changes;
}

}  // namespace

std::vector<Played> Play(const std::vector<std::string>& lines, Arrival arrival) {
  Player player(arrival);
  std::vector<Played> played(lines.size());
  Fields before;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    Played& step = played[i];
    step.line = lines[i];
    step.result = step.line.starts_with("=");
    if (step.result) continue;
    try {
      if (step.line == "show") {
        player.ReadShow([&step, &before](Fields seen) {
          step.changed = Changes(before, seen);
          step.all = before = std::move(seen);
        });
      } else {
        player.Read(step.line);
        if (step.line == "start" || step.line == "start live") before = player.Show();
      }
    } catch (const std::invalid_argument& fault) {
      throw std::invalid_argument("line " + std::to_string(i + 1) + ": " + fault.what());
    }
  }
  player.Run();
  return played;
}

}  // namespace orvane
