#include "platform/win32/port_worker.h"

#include "platform/win32/event_window.h"
#include "platform/win32/serial_port.h"

#include <algorithm>
#include <array>

namespace orvane {
namespace {

constexpr DWORD kStopPatienceMs = 300;

class Locked {
 public:
  explicit Locked(SRWLOCK& lock) : lock_(lock) { ::AcquireSRWLockExclusive(&lock_); }
  ~Locked() { ::ReleaseSRWLockExclusive(&lock_); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;

 private:
  SRWLOCK& lock_;
};

UniqueHandle NewEvent(bool manual) {
  return UniqueHandle(::CreateEventW(nullptr, manual ? TRUE : FALSE, FALSE, nullptr));
}

std::uint32_t BitsOf(DWORD line_errors) {
  std::uint32_t bits = 0;
  if ((line_errors & CE_RXOVER) != 0) bits |= port_bits::kRxOver;
  if ((line_errors & CE_OVERRUN) != 0) bits |= port_bits::kOverrun;
  if ((line_errors & CE_RXPARITY) != 0) bits |= port_bits::kParity;
  if ((line_errors & CE_FRAME) != 0) bits |= port_bits::kFrame;
  if ((line_errors & CE_BREAK) != 0) bits |= port_bits::kBreak;
  return bits;
}

}  // namespace

PortWorker::PortWorker(UniqueHandle port, HWND target)
    : port_(std::move(port)),
      target_(target),
      stop_(NewEvent(true)),
      write_request_(NewEvent(false)),
      read_done_(NewEvent(true)),
      write_done_(NewEvent(true)),
      rest_done_(NewEvent(true)) {
  read_.hEvent = read_done_.get();
  write_.hEvent = write_done_.get();
}

bool PortWorker::Start() {
  // The share that the thread takes over; taken back here when there is no thread.
  auto share = std::make_unique<std::shared_ptr<PortWorker>>(shared_from_this());
  thread_.reset(::CreateThread(nullptr, 64 * 1024, &PortWorker::ThreadMain, share.get(),
                               STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr));
  if (!thread_) return false;
  static_cast<void>(share.release());
  return true;
}

void PortWorker::Stop() {
  ::SetEvent(stop_.get());
  ::CancelIoEx(port_.get(), nullptr);
  if (thread_) ::WaitForSingleObject(thread_.get(), kStopPatienceMs);
}

DWORD WINAPI PortWorker::ThreadMain(void* parameter) {
  const std::unique_ptr<std::shared_ptr<PortWorker>> share(
      static_cast<std::shared_ptr<PortWorker>*>(parameter));
  (*share)->Run();
  return 0;
}

void PortWorker::Run() {
  const std::array<HANDLE, 4> handles{stop_.get(), read_done_.get(), write_done_.get(), write_request_.get()};
  bool good = StartRead();
  while (good) {
    const DWORD signaled =
        ::WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), FALSE, INFINITE);
    switch (signaled) {
      case WAIT_OBJECT_0:
        ::CancelIoEx(port_.get(), nullptr);
        return;
      case WAIT_OBJECT_0 + 1:
        good = FinishRead() && StartRead();
        break;
      case WAIT_OBJECT_0 + 2:
        good = FinishWrite() && StartWrite();
        break;
      case WAIT_OBJECT_0 + 3:
        good = StartWrite();
        break;
      default:
        good = false;
        break;
    }
  }
  if (::WaitForSingleObject(stop_.get(), 0) == WAIT_OBJECT_0) return;
  lost_ = true;
  Raise(port_bits::kLost);
}

bool PortWorker::StartRead() {
  ::ResetEvent(read_done_.get());
  // A read that ends at once sets the event as well; both ways end in FinishRead.
  if (::ReadFile(port_.get(), &first_byte_, 1, nullptr, &read_) != 0) return true;
  return ::GetLastError() == ERROR_IO_PENDING;
}

bool PortWorker::FinishRead() {
  DWORD count = 0;
  if (::GetOverlappedResult(port_.get(), &read_, &count, FALSE) == 0) return false;
  DWORD line_errors = 0;
  COMSTAT state{};
  if (::ClearCommError(port_.get(), &line_errors, &state) == 0) return false;
  if (count != 0) AppendReceived(&first_byte_, count);
  const bool read = state.cbInQue == 0 || ReadQueued(state.cbInQue);
  Raise((count != 0 ? port_bits::kReceive : 0) | BitsOf(line_errors));
  return read;
}

// What is queued is there already, so this read ends at once; the patience is for drivers that count wrongly.
bool PortWorker::ReadQueued(DWORD count) {
  std::array<char, 4096> bytes;
  OVERLAPPED rest{};
  rest.hEvent = rest_done_.get();
  const DWORD wanted = std::min(count, static_cast<DWORD>(bytes.size()));
  if (::ReadFile(port_.get(), bytes.data(), wanted, nullptr, &rest) == 0) {
    if (::GetLastError() != ERROR_IO_PENDING) return false;
    if (::WaitForSingleObject(rest.hEvent, 100) != WAIT_OBJECT_0) ::CancelIoEx(port_.get(), &rest);
  }
  DWORD read = 0;
  const bool whole = ::GetOverlappedResult(port_.get(), &rest, &read, TRUE) != 0;
  const bool cancelled = !whole && ::GetLastError() == ERROR_OPERATION_ABORTED;
  AppendReceived(bytes.data(), read);
  return whole || cancelled;
}

bool PortWorker::StartWrite() {
  if (writing_) return true;
  {
    const Locked locked(lock_);
    write_bytes_.swap(to_write_);
    to_write_.clear();
  }
  ::ResetEvent(write_done_.get());
  if (write_bytes_.empty()) return true;
  writing_ = true;
  if (::WriteFile(port_.get(), write_bytes_.data(), static_cast<DWORD>(write_bytes_.size()), nullptr,
                  &write_) != 0) {
    return true;
  }
  return ::GetLastError() == ERROR_IO_PENDING;
}

bool PortWorker::FinishWrite() {
  DWORD count = 0;
  const bool whole = ::GetOverlappedResult(port_.get(), &write_, &count, FALSE) != 0;
  const DWORD error = whole ? ERROR_SUCCESS : ::GetLastError();
  writing_ = false;
  if (count == write_bytes_.size()) {
    Raise(port_bits::kSend);
  } else if (whole || error == ERROR_TIMEOUT || error == ERROR_OPERATION_ABORTED) {
    // Timed out, or thrown away by DiscardWrites: the line lives, the bytes are gone. Only the first is worth
    // a word.
    if (error != ERROR_OPERATION_ABORTED) Raise(port_bits::kTxFull);
  } else {
    return false;
  }
  write_bytes_.clear();
  return true;
}

void PortWorker::Raise(std::uint32_t bits) {
  if (bits == 0) return;
  bits_.fetch_or(bits);
  if (!posted_.exchange(true) && !EventWindow::Post(target_)) posted_ = false;
}

std::uint32_t PortWorker::TakeBits() {
  posted_ = false;
  return bits_.exchange(0);
}

void PortWorker::AppendReceived(const char* bytes, std::size_t count) {
  const Locked locked(lock_);
  received_.append(bytes, count);
}

void PortWorker::TakeReceived(std::string& buffer) {
  const Locked locked(lock_);
  buffer += received_;
  received_.clear();
}

bool PortWorker::QueueWrite(std::string_view bytes) {
  {
    const Locked locked(lock_);
    if (!to_write_.empty()) return false;
    to_write_.assign(bytes);
  }
  ::SetEvent(write_request_.get());
  return true;
}

// A write that is under way is cancelled without waiting for its end; the thread sees to that.
void PortWorker::DiscardWrites() {
  {
    const Locked locked(lock_);
    to_write_.clear();
  }
  ::CancelIoEx(port_.get(), &write_);
}

}  // namespace orvane
