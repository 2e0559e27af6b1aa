#include "platform/win32/serial_port.h"

#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/win32/port_worker.h"

#include <array>
#include <charconv>
#include <system_error>

namespace orvane {
namespace {

constexpr DWORD kQueueBytes = 4096;
// A command is some twenty bytes: 25 ms at 9600 baud. A line that has not taken it after that and a second is
// stuck.
constexpr DWORD kWriteConstantMs = 1000;
constexpr DWORD kWriteMsPerByte = 2;

// Bits in the order in which the listener hears of them: what went wrong first, then the bytes.
struct BitEvent {
  std::uint32_t bit;
  CommEvent event;
};
constexpr std::array<BitEvent, 9> kBitEvents{{{port_bits::kSend, CommEvent::kSend},
                                              {port_bits::kBreak, CommEvent::kBreak},
                                              {port_bits::kFrame, CommEvent::kFrame},
                                              {port_bits::kOverrun, CommEvent::kOverrun},
                                              {port_bits::kRxOver, CommEvent::kRxOver},
                                              {port_bits::kParity, CommEvent::kRxParity},
                                              {port_bits::kTxFull, CommEvent::kTxFull},
                                              {port_bits::kReceive, CommEvent::kReceive},
                                              {port_bits::kLost, CommEvent::kLost}}};

/// The search swallows the fault and shows one box for all of them, so the step and the system's reason go
/// where a debugger, or Wine, shows them.
[[noreturn]] void FailOpening(std::string_view step, int number, DWORD error) {
  const std::string doing =
      std::string(step) + " COM" + std::to_string(number) + ": error " + std::to_string(error);
  ::OutputDebugStringA((doing + "\n").c_str());
  const bool busy = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
  throw RuntimeError(busy ? Fault::kPortUnavailable : Fault::kInvalidPort, doing);
}

[[noreturn]] void FailReading(std::string_view settings) {
  throw RuntimeError(Fault::kInvalidPort, "Reading the line settings \"" + std::string(settings) + "\"");
}

/// A word of the settings, and what the system calls it.
struct SettingRow {
  std::string_view text;
  BYTE value;
};
constexpr std::array<SettingRow, 5> kParities{
    {{"N", NOPARITY}, {"E", EVENPARITY}, {"O", ODDPARITY}, {"M", MARKPARITY}, {"S", SPACEPARITY}}};
constexpr std::array<SettingRow, 5> kDataBits{{{"8", 8}, {"7", 7}, {"6", 6}, {"5", 5}, {"4", 4}}};
constexpr std::array<SettingRow, 3> kStopBits{{{"1", ONESTOPBIT}, {"1.5", ONE5STOPBITS}, {"2", TWOSTOPBITS}}};

template <std::size_t n>
BYTE ValueOf(const std::array<SettingRow, n>& rows, std::string_view text, std::string_view settings) {
  for (const SettingRow& row : rows) {
    if (EqualNoCase(row.text, text)) return row.value;
  }
  FailReading(settings);
}

/// Digits only: the readers of numbers elsewhere also take fractions and signs, and have faults of their own.
DWORD SpeedOf(std::string_view text, std::string_view settings) {
  DWORD speed = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), speed);
  if (error != std::errc{} || end != text.data() + text.size() || speed == 0) FailReading(settings);
  return speed;
}

/// "38400,N,8,1" as the system's record. Everything is set, nothing inherited: some drivers leave flags
/// behind that stop a line at its first error.
DCB LineOf(std::string_view settings) {
  const auto parts = Split(settings, ',');
  if (parts.size() != 4) FailReading(settings);
  DCB line{};
  line.DCBlength = sizeof(line);
  line.BaudRate = SpeedOf(parts[0], settings);
  line.fBinary = TRUE;
  line.Parity = ValueOf(kParities, parts[1], settings);
  line.fParity = line.Parity != NOPARITY ? TRUE : FALSE;
  line.ByteSize = ValueOf(kDataBits, parts[2], settings);
  line.StopBits = ValueOf(kStopBits, parts[3], settings);
  line.fDtrControl = DTR_CONTROL_DISABLE;
  line.fRtsControl = RTS_CONTROL_DISABLE;
  line.XonLim = 2048;
  line.XoffLim = 512;
  line.XonChar = 0x11;
  line.XoffChar = 0x13;
  return line;
}

void SetUp(HANDLE port, int number, const std::string& settings) {
  DCB line = LineOf(settings);
  COMMTIMEOUTS timeouts{};
  timeouts.WriteTotalTimeoutConstant = kWriteConstantMs;
  timeouts.WriteTotalTimeoutMultiplier = kWriteMsPerByte;
  ::SetupComm(port, kQueueBytes, kQueueBytes);  // a wish; drivers with queues of their own refuse it
  if (::SetCommState(port, &line) == 0 || ::SetCommTimeouts(port, &timeouts) == 0)
    FailOpening("Setting up", number, ::GetLastError());
  // The record asks for low lines already; pseudo-terminals and some adapters only listen to this.
  ::EscapeCommFunction(port, CLRDTR);
  ::EscapeCommFunction(port, CLRRTS);
  ::PurgeComm(port, PURGE_RXCLEAR | PURGE_TXCLEAR);
}

}  // namespace

Win32SerialPort::Win32SerialPort(EventWindow& events) : events_(events) {
  events_.SetPostHandler([this] { DeliverEvents(); });
}

Win32SerialPort::~Win32SerialPort() {
  Close();
  events_.SetPostHandler(nullptr);
}

void Win32SerialPort::SetSettings(std::string_view settings) {
  DCB line = LineOf(settings);
  if (worker_ && ::SetCommState(worker_->port(), &line) == 0) {
    throw RuntimeError(Fault::kPortLost, "Setting up COM" + std::to_string(number_));
  }
  settings_ = settings;
}

void Win32SerialPort::Open() {
  if (worker_) return;
  if (number_ < 1) throw RuntimeError(Fault::kInvalidPort, "Opening COM" + std::to_string(number_));
  const std::string name = "\\\\.\\COM" + std::to_string(number_);
  UniqueHandle port(::CreateFileA(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_OVERLAPPED, nullptr));
  if (!port) FailOpening("Opening", number_, ::GetLastError());
  SetUp(port.get(), number_, settings_);
  auto worker = std::make_shared<PortWorker>(std::move(port), events_.hwnd());
  if (!worker->Start())
    throw RuntimeError(Fault::kPortUnavailable, "Starting to listen to COM" + std::to_string(number_));
  worker_ = std::move(worker);
}

void Win32SerialPort::Close() {
  if (!worker_) return;
  worker_->Stop();
  worker_.reset();
}

// The set-up can be asked for without disturbing what is under way; a driver without its device cannot tell
// it.
bool Win32SerialPort::Works() {
  if (!worker_ || worker_->Lost()) return false;
  DCB line{};
  line.DCBlength = sizeof(line);
  return ::GetCommState(worker_->port(), &line) != 0;
}

void Win32SerialPort::DiscardOutput() {
  if (!worker_) throw RuntimeError(Fault::kPortNotOpen, "Clearing the transmit buffer");
  worker_->DiscardWrites();
}

void Win32SerialPort::Write(std::string_view bytes) {
  if (!worker_) throw RuntimeError(Fault::kPortNotOpen, "Writing to the port");
  if (worker_->Lost()) throw RuntimeError(Fault::kPortLost, "Writing to COM" + std::to_string(number_));
  if (!worker_->QueueWrite(bytes))
    throw RuntimeError(Fault::kLineBusy, "Writing to COM" + std::to_string(number_));
}

void Win32SerialPort::TakeReceived(std::string& buffer) {
  if (worker_) worker_->TakeReceived(buffer);
}

// The listener may close the port, or open another one, in the middle: each event is told only while its port
// is there.
void Win32SerialPort::DeliverEvents() {
  if (!worker_ || !worker_->HasBits()) return;
  const std::shared_ptr<PortWorker> worker = worker_;
  const std::uint32_t bits = worker->TakeBits();
  for (const BitEvent& row : kBitEvents) {
    if ((bits & row.bit) == 0 || worker_ != worker || listener_ == nullptr) continue;
    Attempt([&] { listener_->OnComm(row.event); });
  }
}

}  // namespace orvane
