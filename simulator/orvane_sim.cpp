// The simulated meter behind a pseudo-terminal, so that any program can talk to it as to a serial port.
// Linux only. See docs/simulator.md for its options and commands.

#include "simulator/console.h"
#include "simulator/meter_model.h"
#include "simulator/pty_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <limits>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/signalfd.h>
#include <unistd.h>
#include <vector>

namespace orvane::sim {
namespace {

struct HostOptions {
  MeterOptions Meter;
  std::string LinkPath;
  std::string LogPath;
  std::vector<std::string> StartCommands;
  bool ShowHelp = false;
};

// Runs the model in real time between its line and a person.
class Host {
 public:
  explicit Host(const HostOptions& options);
  void Run();

 private:
  std::int64_t Now() const;
  void SendDue();
  void LogCommands();
  void LogEvent(std::string_view text);
  std::ostream& LogStream() { return log_file_.is_open() ? log_file_ : std::cout; }
  int WaitMs() const;
  void Poll();
  void ReadConsole();
  std::string Answer(const std::string& line);
  std::string HostCommand(const std::string& line);
  std::string Plug();

  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  MeterModel model_;
  Console console_{model_};
  Line line_;
  Descriptor signals_;
  std::ofstream log_file_;
  std::uint64_t logged_ = 0;           // commands of the model already logged
  int console_number_ = STDIN_FILENO;  // -1 after its end
  std::string console_text_;
  bool quit_ = false;
};

Host::Host(const HostOptions& options) : model_(options.Meter), line_(options.LinkPath) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  ::sigprocmask(SIG_BLOCK, &signals, nullptr);
  signals_ = Descriptor(::signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
  std::signal(SIGPIPE, SIG_IGN);
  if (!options.LogPath.empty()) {
    log_file_.open(options.LogPath, std::ios::app);
    if (!log_file_) throw std::runtime_error("cannot write " + options.LogPath);
  }
  line_.Plug();
  std::cout << "device " << line_.Device() << std::endl;
  model_.Run(Now());
  for (const std::string& command : options.StartCommands) {
    const std::string answer = Answer(command);
    if (answer != "ok") std::cout << answer << std::endl;
  }
}

std::int64_t Host::Now() const {
  const auto elapsed = std::chrono::steady_clock::now() - start_;
  return std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count();
}

void Host::Run() {
  while (!quit_) {
    SendDue();
    LogCommands();
    Poll();
  }
}

void Host::SendDue() {
  const std::int64_t now = Now();
  model_.SetPeerBaud(line_.PeerSpeed());
  do {
    line_.Write(model_.Run(now));
  } while (model_.NextDue().value_or(now + 1) <= now);
}

void Host::LogCommands() {
  const MeterLog& log = model_.Log();
  const auto fresh = std::min<std::uint64_t>(log.CommandTotal - logged_, log.Commands.size());
  logged_ = log.CommandTotal;
  for (auto record = log.Commands.end() - static_cast<std::ptrdiff_t>(fresh); record != log.Commands.end();
       ++record) {
    LogStream() << LogLine(*record) << std::endl;
  }
}

void Host::LogEvent(std::string_view text) {
  LogStream() << LogLine(Now(), "-", text) << std::endl;
}

int Host::WaitMs() const {
  const auto due = model_.NextDue();
  if (!due) return -1;
  return static_cast<int>(std::clamp<std::int64_t>(*due - Now(), 0, std::numeric_limits<int>::max()));
}

void Host::Poll() {
  std::array<pollfd, 4> waits = {{{signals_.Number(), POLLIN, 0},
                                  {console_number_, POLLIN, 0},
                                  {line_.WatchNumber(), POLLIN, 0},
                                  {line_.MasterNumber(), POLLIN, 0}}};
  if (::poll(waits.data(), waits.size(), WaitMs()) <= 0) return;
  if (waits[0].revents != 0) quit_ = true;
  if (waits[2].revents != 0) {
    const bool before = line_.PeerOpen();
    line_.ReadWatch();
    if (before != line_.PeerOpen()) LogEvent(line_.PeerOpen() ? "port opened" : "port closed");
  }
  if (waits[3].revents != 0) {
    const std::string bytes = line_.Read();
    model_.SetPeerBaud(line_.PeerSpeed());
    model_.Receive(bytes, Now());
  }
  if (waits[1].revents != 0) ReadConsole();  // last: it may close the line
}

void Host::ReadConsole() {
  std::array<char, 4096> buffer = {};
  const ssize_t size = ::read(console_number_, buffer.data(), buffer.size());
  if (size <= 0) {
    console_number_ = -1;  // the end of its commands is no reason for a meter to end
    return;
  }
  console_text_.append(buffer.data(), static_cast<std::size_t>(size));
  std::size_t end = console_text_.find('\n');
  while (end != std::string::npos) {
    const std::string line = console_text_.substr(0, end);
    console_text_.erase(0, end + 1);
    const std::string answer = Answer(line);
    if (!answer.empty()) std::cout << answer << std::endl;
    end = console_text_.find('\n');
  }
}

std::string Host::Answer(const std::string& line) {
  SendDue();
  const auto answer = console_.Execute(line);
  return answer ? *answer : HostCommand(line);
}

std::string Host::Plug() {
  try {
    line_.Plug();
  } catch (const std::exception& fault) {
    return std::string("error: ") + fault.what();
  }
  return "device " + line_.Device();
}

std::string Host::HostCommand(const std::string& line) {
  const std::string word = line.substr(0, line.find_last_not_of(" \t\r") + 1);
  if (word == "quit") {
    quit_ = true;
    return "ok";
  }
  if (word == "unplug") {
    line_.Unplug();
    return "ok";
  }
  if (word == "plug") return Plug();
  if (word == "line") {
    return "device " + (line_.Plugged() ? line_.Device() : "unplugged") + ", speed " +
           std::to_string(line_.PeerSpeed()) + ", port " + (line_.PeerOpen() ? "open" : "closed") +
           ", bytes dropped " + std::to_string(line_.DroppedBytes());
  }
  if (word == "help") return Console::Help() + "also: plug, unplug, line, quit";
  return "error: no command " + word + ", try help";
}

double NumberFrom(std::string_view option, const std::string& text) {
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (result.ec != std::errc() || result.ptr != end || !(value >= 0 && value <= 1e9)) {
    throw std::runtime_error(std::string(option) + " takes a number, not " + text);
  }
  return value;
}

void TakeOption(HostOptions& options, std::string_view name, const std::string& value) {
  if (name == "--scenario") {
    if (FindScenario(value) == nullptr) throw std::runtime_error("no scenario " + value);
    options.StartCommands.insert(options.StartCommands.begin(), "scenario " + value);
  } else if (name == "--seed") {
    options.Meter.Seed = static_cast<std::uint64_t>(NumberFrom(name, value));
  } else if (name == "--log") {
    options.LogPath = value;
  } else if (name == "--link") {
    options.LinkPath = value;
  } else if (name == "--baud") {
    options.Meter.Baud = static_cast<int>(NumberFrom(name, value));
  } else if (name == "--rate") {
    options.Meter.StreamRate = NumberFrom(name, value);
  } else if (name == "--do") {
    options.StartCommands.push_back(value);
  } else {
    throw std::runtime_error("no option " + std::string(name) + ", try --help");
  }
}

HostOptions ReadOptions(const std::vector<std::string>& arguments) {
  HostOptions options;
  for (std::size_t i = 0; i < arguments.size(); i += 2) {
    if (arguments[i] == "--help") {
      options.ShowHelp = true;
      return options;
    }
    if (i + 1 == arguments.size()) throw std::runtime_error(arguments[i] + " needs a value, try --help");
    TakeOption(options, arguments[i], arguments[i + 1]);
  }
  return options;
}

constexpr std::string_view kUsage =
    "orvane-sim: an RF watt meter behind a pseudo-terminal\n"
    "  --link PATH           make a symbolic link to the device\n"
    "  --scenario NAME       what happens on the antenna line (default: no power)\n"
    "  --baud N              answer at this line speed only (default: at any)\n"
    "  --rate N              packets a second (default: by the operation mode)\n"
    "  --seed N              start of the random numbers (default 1)\n"
    "  --log FILE            append the log of commands to a file instead of showing it\n"
    "  --do COMMAND          carry out a command at the start; may be repeated\n"
    "commands on standard input:\n"
    "  plug, unplug          pull the cable, and put it back as a new device\n"
    "  line                  show the line and what was lost on it\n"
    "  quit                  end\n";

}  // namespace

int Main(const std::vector<std::string>& arguments) {
  try {
    const HostOptions options = ReadOptions(arguments);
    if (options.ShowHelp) {
      std::cout << kUsage << Console::Help();
      return EXIT_SUCCESS;
    }
    Host(options).Run();
    return EXIT_SUCCESS;
  } catch (const std::exception& fault) {
    std::cerr << "orvane-sim: " << fault.what() << std::endl;
    return EXIT_FAILURE;
  }
}

}  // namespace orvane::sim

int main(int count, char** values) {
  return orvane::sim::Main({values + std::min(count, 1), values + count});
}
