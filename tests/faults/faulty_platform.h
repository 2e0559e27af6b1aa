#pragma once

#include "platform/platform.h"
#include "tests/faults/fault_switch.h"
#include "tests/faults/faulty_windows.h"
#include "tests/support/files_in.h"
#include "tests/support/forwarded_port.h"

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace orvane {

struct FaultyClock : Clock, Failing<Clock> {
  using Failing::Failing;
  std::int32_t GetTickCount() override { return Do("Clock::GetTickCount", &Clock::GetTickCount); }
  void Block(std::int32_t ms) override { Do("Clock::Block", &Clock::Block, ms); }
};

struct FaultyPump : EventPump, Failing<EventPump> {
  using Failing::Failing;
  void DeliverPending() override { Do("EventPump::DeliverPending", &EventPump::DeliverPending); }
  void DeliverArrivals() override { Do("EventPump::DeliverArrivals", &EventPump::DeliverArrivals); }
  void SleepUntil(std::int32_t tick) override { Do("EventPump::SleepUntil", &EventPump::SleepUntil, tick); }
  [[noreturn]] void EndProcess() override {
    behind_.EndProcess();
    std::abort();  // never: g++ forgets what a virtual call promises
  }
};

class FaultyPort : public ForwardedPort, private CommListener, Failing<SerialPort> {
 public:
  FaultyPort(FaultSwitch& faults, SerialPort& behind) : ForwardedPort(behind), Failing(faults, behind) {}
  void SetListener(CommListener* listener) override {
    listener_ = listener;
    behind_.SetListener(listener == nullptr ? nullptr : this);
  }
  void SetSettings(std::string_view settings) override {
    OrThrow("SerialPort::SetSettings", Fault::kPortLost, &SerialPort::SetSettings, settings);
  }
  void Open() override { OrThrow("SerialPort::Open", Fault::kPortUnavailable, &SerialPort::Open); }
  bool Works() override { return Do("SerialPort::Works", &SerialPort::Works); }
  void DiscardOutput() override {
    OrThrow("SerialPort::DiscardOutput", Fault::kPortLost, &SerialPort::DiscardOutput);
  }
  void Write(std::string_view bytes) override {
    OrThrow("SerialPort::Write", Fault::kLineBusy, &SerialPort::Write, bytes);
  }
  void TakeReceived(std::string& buffer) override {
    Do("SerialPort::TakeReceived", &SerialPort::TakeReceived, buffer);
  }

 private:
  /// Trapped as the real system's events are.
  void OnComm(CommEvent event) override {
    Attempt([&] { listener_->OnComm(event); });
  }
  CommListener* listener_ = nullptr;
};

struct FaultyProfiles : ProfileStore, Failing<ProfileStore> {
  using Failing::Failing;
  std::string GetPrivateProfileString(OptionalText section, OptionalText key, std::string_view fallback,
                                      std::size_t size, const std::string& file) override {
    return OrElse("ProfileStore::GetPrivateProfileString", std::string(fallback),
                  &ProfileStore::GetPrivateProfileString, section, key, fallback, size, file);
  }
  bool WritePrivateProfileString(std::string_view section, OptionalText key, OptionalText value,
                                 const std::string& file) override {
    return Do("ProfileStore::WritePrivateProfileString", &ProfileStore::WritePrivateProfileString, section,
              key, value, file);
  }
  bool WriteEmptySection(std::string_view section, const std::string& file) override {
    return Do("ProfileStore::WriteEmptySection", &ProfileStore::WriteEmptySection, section, file);
  }
};

struct FaultyFiles : FilesOfProgramIn, Failing<Files> {
  FaultyFiles(FaultSwitch& faults, Files& behind)
      : FilesOfProgramIn(behind, behind.ProgramFolder()), Failing(faults, behind) {}
  bool IsNormalFile(const std::string& path) override {
    return Do("Files::IsNormalFile", &Files::IsNormalFile, path);
  }
  void CreateEmpty(const std::string& path) override {
    OrThrow("Files::CreateEmpty", Fault::kPathAccess, &Files::CreateEmpty, path);
  }
  bool CanRead(const std::string& path) override { return Do("Files::CanRead", &Files::CanRead, path); }
  bool CanWrite(const std::string& path) override { return Do("Files::CanWrite", &Files::CanWrite, path); }
  std::string Read(const std::string& path, std::size_t limit) override {
    return Do("Files::Read", &Files::Read, path, limit);
  }
  bool CopyWhole(const std::string& from, const std::string& to) override {
    return Do("Files::CopyWhole", &Files::CopyWhole, from, to);
  }
  bool MoveWhole(const std::string& from, const std::string& to) override {
    return Do("Files::MoveWhole", &Files::MoveWhole, from, to);
  }
};

struct FaultyInstance : SingleInstance, Failing<SingleInstance> {
  using Failing::Failing;
  bool Claim() override { return Do("SingleInstance::Claim", &SingleInstance::Claim); }
};

struct FaultyShell : Shell, Failing<Shell> {
  using Failing::Failing;
  bool Execute(const Launch& launch) override { return Do("Shell::Execute", &Shell::Execute, launch); }
  bool ShowHelpFile(const std::string& path) override {
    return Do("Shell::ShowHelpFile", &Shell::ShowHelpFile, path);
  }
};

struct FaultyClients : ClientWindows, Failing<ClientWindows> {
  using Failing::Failing;
  Handle Find(std::string_view caption) override {
    return Do("ClientWindows::Find", &ClientWindows::Find, caption);
  }
  Answer SendCopyData(Handle window, std::uint32_t tag, std::span<const char> data, int timeout_ms) override {
    return OrElse("ClientWindows::SendCopyData", Answer{Outcome::kTimedOut, 0}, &ClientWindows::SendCopyData,
                  window, tag, data, timeout_ms);
  }
};

struct FaultyPorts : PortList, Failing<PortList> {
  using Failing::Failing;
  std::vector<PresentPort> PresentPorts() override {
    return Do("PortList::PresentPorts", &PortList::PresentPorts);
  }
};

struct FaultySystem : SystemInfo, Failing<SystemInfo> {
  using Failing::Failing;
  SystemVersion QueryVersion() override { return Do("SystemInfo::QueryVersion", &SystemInfo::QueryVersion); }
  ProgramVersion OwnVersion() override { return Do("SystemInfo::OwnVersion", &SystemInfo::OwnVersion); }
};

/// A platform in front of another one, of whose calls one fails.
class FaultyPlatform {
 public:
  FaultyPlatform(FaultSwitch& faults, const Platform& behind) : faults_(faults), behind_(behind) {}

 private:
  FaultSwitch& faults_;
  const Platform& behind_;
  FaultyClock clock_{faults_, behind_.clock};
  FaultyPump pump_{faults_, behind_.pump};
  FaultyPort port_{faults_, behind_.port};
  FaultyProfiles profiles_{faults_, behind_.profiles};
  FaultyFiles files_{faults_, behind_.files};
  FaultyWindows windows_{faults_, behind_.windows};
  FaultyInstance instance_{faults_, behind_.instance};
  FaultyShell shell_{faults_, behind_.shell};
  FaultyClients clients_{faults_, behind_.clients};
  FaultyPorts ports_{faults_, behind_.ports};
  FaultySystem system_{faults_, behind_.system};

 public:
  Platform platform{clock_,    pump_,  port_,    profiles_, files_, windows_,
                    instance_, shell_, clients_, ports_,    system_};
};

}  // namespace orvane
