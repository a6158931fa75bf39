#include <winsock2.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "tests/devices/SerialLine.h"

namespace loader::test {

namespace {

// Speaks to WineLines.cpp, which runs this program.
class Connection {
public:
  explicit Connection(const std::string& request) {
    const char* port = std::getenv("LOADER_LINES");
    if (port == nullptr) {
      throw std::runtime_error("the serial lines are made by wine_lines, which has to run this program");
    }
    WSADATA ignored{};
    WSAStartup(MAKEWORD(2, 2), &ignored);
    socket_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<u_short>(std::atoi(port)));
    const int atOnce = 1;
    setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&atOnce), sizeof atOnce);
    const std::string line = request + "\n";
    if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        send(socket_, line.data(), static_cast<int>(line.size()), 0) < 0) {
      throw std::runtime_error("wine_lines does not answer");
    }
    for (char letter = 0; recv(socket_, &letter, 1, 0) == 1 && letter != '\n';) {
      answer_ += letter;
    }
  }
  ~Connection() { Close(); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // Returns when the far end has gone.
  void Close() {
    if (socket_ == INVALID_SOCKET) {
      return;
    }
    shutdown(socket_, SD_SEND);
    for (char ignored = 0; recv(socket_, &ignored, 1, 0) > 0;) {
    }
    closesocket(std::exchange(socket_, INVALID_SOCKET));
  }
  [[nodiscard]] const std::string& Answer() const { return answer_; }
  [[nodiscard]] SOCKET Socket() const { return socket_; }

private:
  SOCKET socket_ = INVALID_SOCKET;
  std::string answer_;
};

// A port that a test does not use by its number.
std::string OtherPort() {
  static int last = 20;
  return "COM" + std::to_string(++last);
}

// The device as the system's list of devices has it, while it is plugged in.
constexpr const wchar_t* UsbDevice = L"System\\CurrentControlSet\\Enum\\USB\\VID_FFFE&PID_0001\\TEST";

void SetText(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
  if (RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), name, REG_SZ, text.c_str(),
                      static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) != ERROR_SUCCESS) {
    throw std::runtime_error("no entry for a USB device");
  }
}

void PlugInUsb(const std::string& port) {
  const std::wstring device = UsbDevice;
  SetText(device, L"ClassGUID", L"{4D36E978-E325-11CE-BFC1-08002BE10318}");
  SetText(device, L"Class", L"Ports");
  SetText(device + L"\\Device Parameters", L"PortName", std::wstring(port.begin(), port.end()));
}

} // namespace

struct SerialLine::FarEnd {
  explicit FarEnd(const std::string& port, bool isUsb = false) : device(port), usb(isUsb), connection(port) {
    if (usb) {
      PlugInUsb(port);
    }
  }

  std::string device;
  bool usb;
  Connection connection;
};

SerialLine::SerialLine() : far_(std::make_unique<FarEnd>(OtherPort())) {}

SerialLine::SerialLine(const std::filesystem::path& /*programFolder*/, const std::string& port)
    : far_(port == "USB" ? std::make_unique<FarEnd>(OtherPort(), true) : std::make_unique<FarEnd>(port)) {}

SerialLine::~SerialLine() {
  Unplug();
}

const std::string& SerialLine::Device() const {
  return far_->device;
}

void SerialLine::Unplug() {
  if (far_->usb) {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, UsbDevice);
  }
  far_->connection.Close();
}

void SerialLine::Send(std::span<const std::uint8_t> bytes) const {
  const auto size = static_cast<int>(bytes.size());
  ASSERT_EQ(size, send(far_->connection.Socket(), reinterpret_cast<const char*>(bytes.data()), size, 0));
}

Bytes SerialLine::Receive(std::size_t count) const {
  Bytes bytes(count);
  std::size_t have = 0;
  while (have < count) {
    const int got = recv(far_->connection.Socket(), reinterpret_cast<char*>(bytes.data() + have),
                         static_cast<int>(count - have), 0);
    if (got <= 0) {
      ADD_FAILURE() << "the line is dead";
      break;
    }
    have += static_cast<std::size_t>(got);
  }
  return bytes;
}

std::string SerialLine::Settings() const {
  return Connection(far_->device + " settings").Answer();
}

} // namespace loader::test
