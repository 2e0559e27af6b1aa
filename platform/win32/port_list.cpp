#include "platform/win32/port_list.h"

#include "platform/win32/handles.h"
#include "platform/win32/text.h"

#include <array>
#include <cwchar>
#include <map>
#include <setupapi.h>
#include <string_view>

namespace orvane {
namespace {

// The class "Ports (COM & LPT)" of the device manager.
constexpr GUID kPortsClass = {0x4D36E978, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};

struct KeyCloser {
  void operator()(HKEY key) const { ::RegCloseKey(key); }
};
using UniqueKey = UniqueResource<HKEY, KeyCloser>;
struct DeviceListCloser {
  void operator()(HDEVINFO list) const { ::SetupDiDestroyDeviceInfoList(list); }
};
using UniqueDeviceList = UniqueResource<HDEVINFO, DeviceListCloser>;

// Room for a text of the registry, with a NUL that is ours.
using TextBuffer = std::array<wchar_t, 257>;
constexpr DWORD kTextBytes = (std::tuple_size_v<TextBuffer> - 1) * sizeof(wchar_t);

// 5 for "COM5"; 0 for anything else, a printer port for example.
int NumberOf(const wchar_t* name) {
  if (::_wcsnicmp(name, L"COM", 3) != 0) return 0;
  wchar_t* end = nullptr;
  const long number = std::wcstol(name + 3, &end, 10);
  return *end == L'\0' && number > 0 && number <= 0xFFFF ? static_cast<int>(number) : 0;
}

// "USB Serial Port (COM5)" without the port, which is said beside it.
std::string PlainName(std::wstring_view name, int number) {
  const std::wstring tail = L" (COM" + std::to_wstring(number) + L")";
  if (name.ends_with(tail)) name.remove_suffix(tail.size());
  return FromWide(name);
}

using Ports = std::map<int, std::string>;

void AddMappedPorts(Ports& ports) {
  HKEY opened = nullptr;
  ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"HARDWARE\\DEVICEMAP\\SERIALCOMM", 0, KEY_READ, &opened);
  const UniqueKey key(opened);
  LSTATUS result = key ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
  for (DWORD i = 0; result == ERROR_SUCCESS; ++i) {
    TextBuffer device{};
    TextBuffer port{};
    auto device_length = static_cast<DWORD>(device.size());
    DWORD bytes = kTextBytes;
    DWORD type = 0;
    result = ::RegEnumValueW(key.get(), i, device.data(), &device_length, nullptr, &type,
                             reinterpret_cast<BYTE*>(port.data()), &bytes);
    const int number = result == ERROR_SUCCESS && type == REG_SZ ? NumberOf(port.data()) : 0;
    if (number > 0) ports.try_emplace(number);
    if (result == ERROR_MORE_DATA) result = ERROR_SUCCESS;  // no port is called that long
  }
}

void AddNamedPorts(Ports& ports) {
  const UniqueDeviceList devices(::SetupDiGetClassDevsW(&kPortsClass, nullptr, nullptr, DIGCF_PRESENT));
  if (!devices) return;
  SP_DEVINFO_DATA device{};
  device.cbSize = sizeof(device);
  for (DWORD i = 0; ::SetupDiEnumDeviceInfo(devices.get(), i, &device) != 0; ++i) {
    const UniqueKey key(
        ::SetupDiOpenDevRegKey(devices.get(), &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_READ));
    TextBuffer port{};
    DWORD bytes = kTextBytes;
    if (!key || ::RegQueryValueExW(key.get(), L"PortName", nullptr, nullptr,
                                   reinterpret_cast<BYTE*>(port.data()), &bytes) != ERROR_SUCCESS) {
      continue;
    }
    const int number = NumberOf(port.data());
    if (number == 0) continue;
    TextBuffer name{};
    ::SetupDiGetDeviceRegistryPropertyW(devices.get(), &device, SPDRP_FRIENDLYNAME, nullptr,
                                        reinterpret_cast<BYTE*>(name.data()), kTextBytes, nullptr);
    ports[number] = PlainName(name.data(), number);
  }
}

}  // namespace

std::vector<PresentPort> Win32PortList::PresentPorts() {
  Ports ports;
  AddMappedPorts(ports);
  AddNamedPorts(ports);
  std::vector<PresentPort> list;
  for (auto& [number, name] : ports)
    list.push_back({number, std::move(name)});
  return list;
}

}  // namespace orvane
