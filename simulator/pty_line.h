// A serial line made of a Linux pseudo-terminal, for the program orvane-sim only. All in this header, so that
// the portable sources of the simulator stay free of the system.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace orvane::sim {

inline constexpr int kInputQueueBytes = 4000;  // what a serial driver keeps for a program that does not read

class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  int Number() const { return number_; }

 private:
  int number_;
};

// Line speed in a terminal's settings; 1, which no meter has, for one that is not in the list.
inline int SpeedOf(const termios& settings) {
  constexpr std::array<std::pair<speed_t, int>, 8> kSpeeds = {{{B1200, 1200},
                                                               {B2400, 2400},
                                                               {B4800, 4800},
                                                               {B9600, 9600},
                                                               {B19200, 19200},
                                                               {B38400, 38400},
                                                               {B57600, 57600},
                                                               {B115200, 115200}}};
  for (const auto& [code, speed] : kSpeeds) {
    if (cfgetospeed(&settings) == code) return speed;
  }
  return 1;
}

// The serial line: a pseudo-terminal whose slave end the peer opens. The slave is also held open here, so a
// peer that closes it does not hang up the master. Like a closed serial port, a line that nobody has open
// loses what is sent.
class Line {
 public:
  explicit Line(std::string link_path) : link_path_(std::move(link_path)) {}
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;
  ~Line() { Unplug(); }

  void Plug();
  void Unplug();
  bool Plugged() const { return master_.Number() >= 0; }

  const std::string& Device() const { return device_; }
  int MasterNumber() const { return master_.Number(); }
  int WatchNumber() const { return watch_.Number(); }

  // Opens and closes of the peer since the last call, counted.
  void ReadWatch();
  bool PeerOpen() const { return peer_open_; }
  int PeerSpeed() const;

  std::string Read();
  // Never waits: bytes that do not fit are dropped.
  void Write(std::string_view bytes);
  std::uint64_t DroppedBytes() const { return dropped_; }

 private:
  void MakeLink();
  void RemoveLink();

  std::string link_path_;
  std::string device_;
  Descriptor master_;
  Descriptor slave_;
  Descriptor watch_;
  int peers_ = 0;
  bool peer_open_ = false;
  std::uint64_t dropped_ = 0;
};

inline void Line::Plug() {
  if (Plugged()) return;
  Descriptor master(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  std::array<char, 128> name = {};
  if (master.Number() < 0 || ::grantpt(master.Number()) != 0 || ::unlockpt(master.Number()) != 0 ||
      ::ptsname_r(master.Number(), name.data(), name.size()) != 0) {
    throw std::runtime_error("no pseudo-terminal to be had");
  }
  device_ = name.data();
  Descriptor slave(::open(device_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  termios settings = {};
  if (slave.Number() < 0 || ::tcgetattr(slave.Number(), &settings) != 0) {
    throw std::runtime_error("cannot open " + device_);
  }
  ::cfmakeraw(&settings);
  ::tcsetattr(slave.Number(), TCSANOW, &settings);

  watch_ = Descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  const bool watched = ::inotify_add_watch(watch_.Number(), device_.c_str(), IN_OPEN | IN_CLOSE) >= 0;
  master_ = std::move(master);
  slave_ = std::move(slave);
  peers_ = 0;
  peer_open_ = !watched;  // who cannot look takes it for granted
  MakeLink();
}

inline void Line::Unplug() {
  if (!Plugged()) return;
  RemoveLink();
  watch_ = Descriptor();
  slave_ = Descriptor();
  master_ = Descriptor();
}

inline void Line::MakeLink() {
  if (link_path_.empty()) return;
  const auto status = std::filesystem::symlink_status(link_path_);
  if (std::filesystem::exists(status) && !std::filesystem::is_symlink(status)) {
    throw std::runtime_error(link_path_ + " exists and is no symbolic link");
  }
  std::filesystem::remove(link_path_);
  std::filesystem::create_symlink(device_, link_path_);
}

// Only a link of one's own: another simulator may have taken the name over.
inline void Line::RemoveLink() {
  std::error_code fault;
  if (!link_path_.empty() && std::filesystem::read_symlink(link_path_, fault) == device_) {
    std::filesystem::remove(link_path_, fault);
  }
}

inline void Line::ReadWatch() {
  alignas(inotify_event) std::array<char, 4096> events = {};
  const ssize_t size = ::read(watch_.Number(), events.data(), events.size());
  // A watched file (not a folder) gives records without a name: all of one size.
  for (ssize_t at = 0; at + static_cast<ssize_t>(sizeof(inotify_event)) <= size;
       at += sizeof(inotify_event)) {
    const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
    if ((event->mask & IN_OPEN) != 0) ++peers_;
    if ((event->mask & IN_CLOSE) != 0) --peers_;
    const bool open = peers_ > 0;
    if (peer_open_ && !open) ::tcflush(slave_.Number(), TCIFLUSH);
    peer_open_ = open;
  }
}

inline int Line::PeerSpeed() const {
  termios settings = {};
  if (!Plugged() || ::tcgetattr(slave_.Number(), &settings) != 0) return 0;
  return SpeedOf(settings);
}

inline std::string Line::Read() {
  std::array<char, 4096> buffer = {};
  const ssize_t size = ::read(master_.Number(), buffer.data(), buffer.size());
  if (size <= 0) return "";
  peer_open_ = true;  // who speaks is there, whatever the watch says
  return {buffer.data(), static_cast<std::size_t>(size)};
}

inline void Line::Write(std::string_view bytes) {
  if (!Plugged() || !peer_open_) return;
  int waiting = 0;
  ::ioctl(slave_.Number(), FIONREAD, &waiting);
  const auto room = static_cast<std::size_t>(std::max(kInputQueueBytes - waiting, 0));
  const ssize_t written = ::write(master_.Number(), bytes.data(), std::min(bytes.size(), room));
  dropped_ += bytes.size() - static_cast<std::size_t>(std::max<ssize_t>(written, 0));
}

}  // namespace orvane::sim
