#include "devices/DeviceNamesWindows.h"

#include <windows.h>

#include <array>
#include <setupapi.h>
#include <vector>

#include "devices/DeviceNames.h"
#include "devices/QtText.h"

namespace loader {

namespace {

// The class Ports: serial and printer ports.
constexpr GUID PortsClass{0x4D36E978, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};

// The name that the system has given to the port; empty when it gave none.
std::u16string PortName(HDEVINFO devices, SP_DEVINFO_DATA& device) {
  HKEY key = SetupDiOpenDevRegKey(devices, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_READ);
  if (key == INVALID_HANDLE_VALUE) {
    return {};
  }
  std::array<wchar_t, 64> text{};
  auto size = static_cast<DWORD>(sizeof text);
  const LSTATUS status = RegGetValueW(key, nullptr, L"PortName", RRF_RT_REG_SZ, nullptr, text.data(), &size);
  RegCloseKey(key);
  const std::wstring_view name(status == ERROR_SUCCESS ? text.data() : L"");
  return {name.begin(), name.end()};
}

// The ports of USB devices that are plugged in now.
std::vector<std::u16string> UsbPortNames() {
  HDEVINFO devices = SetupDiGetClassDevsW(&PortsClass, L"USB", nullptr, DIGCF_PRESENT);
  if (devices == INVALID_HANDLE_VALUE) {
    return {};
  }
  std::vector<std::u16string> names;
  SP_DEVINFO_DATA device{};
  device.cbSize = sizeof device;
  for (DWORD i = 0; SetupDiEnumDeviceInfo(devices, i, &device) != FALSE; ++i) {
    names.push_back(PortName(devices, device));
  }
  SetupDiDestroyDeviceInfoList(devices);
  return names;
}

} // namespace

int ComNumber(std::u16string_view name) {
  constexpr std::u16string_view Prefix = u"COM";
  constexpr std::size_t MostDigits = 5;
  if (!name.starts_with(Prefix) || name.size() > Prefix.size() + MostDigits) {
    return 0;
  }
  int number = 0;
  for (const char16_t digit : name.substr(Prefix.size())) {
    if (digit < u'0' || digit > u'9') {
      return 0;
    }
    number = 10 * number + (digit - u'0');
  }
  return number;
}

std::u16string FirstComPort(std::span<const std::u16string> names) {
  std::u16string first;
  for (const std::u16string& name : names) {
    const int number = ComNumber(name);
    if (number > 0 && (first.empty() || number < ComNumber(first))) {
      first = name;
    }
  }
  return first;
}

QString SerialPortPath(const std::filesystem::path& /*programFolder*/, int port) {
  return QStringLiteral("COM%1").arg(port);
}

QString UsbPath(const std::filesystem::path& /*programFolder*/) {
  return ToQt(FirstComPort(UsbPortNames()));
}

} // namespace loader
