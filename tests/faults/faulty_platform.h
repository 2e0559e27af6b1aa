#pragma once

#include "platform/platform.h"
#include "tests/faults/fault_switch.h"
#include "tests/faults/faulty_windows.h"

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace orvane {

class FaultyTime : public Clock, public EventPump {
 public:
  FaultyTime(FaultSwitch& faults, Clock& clock, EventPump& pump)
      : faults_(faults), clock_(clock), pump_(pump) {}
  std::int32_t GetTickCount() override {
    return faults_.Do("Clock::GetTickCount", [&] { return clock_.GetTickCount(); });
  }
  void Block(std::int32_t ms) override {
    faults_.Do("Clock::Block", [&] { clock_.Block(ms); });
  }
  void DeliverPending() override {
    faults_.Do("EventPump::DeliverPending", [&] { pump_.DeliverPending(); });
  }
  void DeliverArrivals() override {
    faults_.Do("EventPump::DeliverArrivals", [&] { pump_.DeliverArrivals(); });
  }
  void SleepUntil(std::int32_t tick) override {
    faults_.Do("EventPump::SleepUntil", [&] { pump_.SleepUntil(tick); });
  }
  [[noreturn]] void EndProcess() override {
    pump_.EndProcess();
    std::abort();  // never: g++ forgets what a virtual call promises
  }

 private:
  FaultSwitch& faults_;
  Clock& clock_;
  EventPump& pump_;
};

class FaultyPort : public SerialPort, private CommListener {
 public:
  FaultyPort(FaultSwitch& faults, SerialPort& behind) : faults_(faults), behind_(behind) {}
  void SetListener(CommListener* listener) override {
    listener_ = listener;
    behind_.SetListener(listener == nullptr ? nullptr : this);
  }
  void SetCommPort(int number) override { behind_.SetCommPort(number); }
  int CommPort() const override { return behind_.CommPort(); }
  void SetSettings(std::string_view settings) override {
    faults_.OrThrow("SerialPort::SetSettings", Fault::kPortLost, [&] { behind_.SetSettings(settings); });
  }
  std::string Settings() const override { return behind_.Settings(); }
  void Open() override {
    faults_.OrThrow("SerialPort::Open", Fault::kPortUnavailable, [&] { behind_.Open(); });
  }
  void Close() override { behind_.Close(); }
  bool PortOpen() const override { return behind_.PortOpen(); }
  bool Works() override {
    return faults_.Do("SerialPort::Works", [&] { return behind_.Works(); });
  }
  void DiscardOutput() override {
    faults_.OrThrow("SerialPort::DiscardOutput", Fault::kPortLost, [&] { behind_.DiscardOutput(); });
  }
  void Write(std::string_view bytes) override {
    faults_.OrThrow("SerialPort::Write", Fault::kLineBusy, [&] { behind_.Write(bytes); });
  }
  void TakeReceived(std::string& buffer) override {
    faults_.Do("SerialPort::TakeReceived", [&] { behind_.TakeReceived(buffer); });
  }

 private:
  /// Trapped as the real system's events are.
  void OnComm(CommEvent event) override {
    Attempt([&] { listener_->OnComm(event); });
  }
  FaultSwitch& faults_;
  SerialPort& behind_;
  CommListener* listener_ = nullptr;
};

class FaultyProfiles : public ProfileStore {
 public:
  FaultyProfiles(FaultSwitch& faults, ProfileStore& behind) : faults_(faults), behind_(behind) {}
  std::string GetPrivateProfileString(OptionalText section, OptionalText key, std::string_view fallback,
                                      std::size_t buffer_size, const std::string& file) override {
    return faults_.OrElse("ProfileStore::GetPrivateProfileString", std::string(fallback), [&] {
      return behind_.GetPrivateProfileString(section, key, fallback, buffer_size, file);
    });
  }
  bool WritePrivateProfileString(std::string_view section, OptionalText key, OptionalText value,
                                 const std::string& file) override {
    return faults_.Do("ProfileStore::WritePrivateProfileString",
                      [&] { return behind_.WritePrivateProfileString(section, key, value, file); });
  }
  bool WriteEmptySection(std::string_view section, const std::string& file) override {
    return faults_.Do("ProfileStore::WriteEmptySection",
                      [&] { return behind_.WriteEmptySection(section, file); });
  }

 private:
  FaultSwitch& faults_;
  ProfileStore& behind_;
};

class FaultyFiles : public Files {
 public:
  FaultyFiles(FaultSwitch& faults, Files& behind) : faults_(faults), behind_(behind) {}
  std::string ProgramFolder() override { return behind_.ProgramFolder(); }
  char Separator() const override { return behind_.Separator(); }
  bool IsNormalFile(const std::string& path) override {
    return faults_.Do("Files::IsNormalFile", [&] { return behind_.IsNormalFile(path); });
  }
  void CreateEmpty(const std::string& path) override {
    faults_.OrThrow("Files::CreateEmpty", Fault::kPathAccess, [&] { behind_.CreateEmpty(path); });
  }
  bool CanRead(const std::string& path) override {
    return faults_.Do("Files::CanRead", [&] { return behind_.CanRead(path); });
  }
  bool CanWrite(const std::string& path) override {
    return faults_.Do("Files::CanWrite", [&] { return behind_.CanWrite(path); });
  }
  std::string Read(const std::string& path, std::size_t limit) override {
    return faults_.Do("Files::Read", [&] { return behind_.Read(path, limit); });
  }
  bool CopyWhole(const std::string& from, const std::string& to) override {
    return faults_.Do("Files::CopyWhole", [&] { return behind_.CopyWhole(from, to); });
  }
  bool MoveWhole(const std::string& from, const std::string& to) override {
    return faults_.Do("Files::MoveWhole", [&] { return behind_.MoveWhole(from, to); });
  }

 private:
  FaultSwitch& faults_;
  Files& behind_;
};

/// The small rest: another copy, started programs, the client, the list of ports, the system's version.
class FaultyOthers : public SingleInstance,
                     public Shell,
                     public ClientWindows,
                     public PortList,
                     public SystemInfo {
 public:
  FaultyOthers(FaultSwitch& faults, const Platform& behind) : faults_(faults), behind_(behind) {}
  bool Claim() override {
    return faults_.Do("SingleInstance::Claim", [&] { return behind_.instance.Claim(); });
  }
  bool Execute(const Launch& launch) override {
    return faults_.Do("Shell::Execute", [&] { return behind_.shell.Execute(launch); });
  }
  bool ShowHelpFile(const std::string& path) override {
    return faults_.Do("Shell::ShowHelpFile", [&] { return behind_.shell.ShowHelpFile(path); });
  }
  Handle Find(std::string_view caption) override {
    return faults_.Do("ClientWindows::Find", [&] { return behind_.clients.Find(caption); });
  }
  Answer SendCopyData(Handle window, std::uint32_t tag, std::span<const char> data, int timeout_ms) override {
    return faults_.OrElse("ClientWindows::SendCopyData", Answer{Outcome::kTimedOut, 0},
                          [&] { return behind_.clients.SendCopyData(window, tag, data, timeout_ms); });
  }
  std::vector<PresentPort> PresentPorts() override {
    return faults_.Do("PortList::PresentPorts", [&] { return behind_.ports.PresentPorts(); });
  }
  SystemVersion QueryVersion() override {
    return faults_.Do("SystemInfo::QueryVersion", [&] { return behind_.system.QueryVersion(); });
  }
  ProgramVersion OwnVersion() override {
    return faults_.Do("SystemInfo::OwnVersion", [&] { return behind_.system.OwnVersion(); });
  }

 private:
  FaultSwitch& faults_;
  const Platform& behind_;
};

/// A platform in front of another one, of whose calls one fails.
class FaultyPlatform {
 public:
  FaultyPlatform(FaultSwitch& faults, const Platform& behind)
      : time_(faults, behind.clock, behind.pump),
        port_(faults, behind.port),
        profiles_(faults, behind.profiles),
        files_(faults, behind.files),
        windows_(faults, behind.windows),
        others_(faults, behind) {}

 private:
  FaultyTime time_;
  FaultyPort port_;
  FaultyProfiles profiles_;
  FaultyFiles files_;
  FaultyWindows windows_;
  FaultyOthers others_;

 public:
  Platform platform{time_,   time_,   port_,   profiles_, files_, windows_,
                    others_, others_, others_, others_,   others_};
};

}  // namespace orvane
