#include "tests/simulator/Clients.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace loader::simulator {

namespace {

constexpr int Patience = 20000; // milliseconds until a test gives up
constexpr int Piece = 125;      // registers; the most of one request

ModbusClient Connected(modbus_t* context) {
  ModbusClient client(context, &modbus_free);
  modbus_set_response_timeout(context, Patience / 1000, 0);
  EXPECT_EQ(modbus_set_slave(context, 1), 0);
  EXPECT_EQ(modbus_connect(context), 0) << modbus_strerror(errno);
  return client;
}

} // namespace

ModbusClient ConnectTcp(int port) {
  return Connected(modbus_new_tcp("127.0.0.1", port));
}

ModbusClient ConnectRtu(const std::string& device) {
  return Connected(modbus_new_rtu(device.c_str(), 19200, 'O', 8, 1));
}

RegisterMemory ReadAll(modbus_t* client) {
  RegisterMemory memory;
  for (int at = 0; at < TableRegisters; at += Piece) {
    const int count = std::min(Piece, TableRegisters - at);
    EXPECT_EQ(modbus_read_registers(client, at, count, memory.holding.data() + at), count)
        << modbus_strerror(errno);
    EXPECT_EQ(modbus_read_input_registers(client, at, count, memory.input.data() + at), count)
        << modbus_strerror(errno);
  }
  return memory;
}

RawClient RawClient::Tcp(int port) {
  RawClient client(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  EXPECT_EQ(
      ::connect(client.descriptor_.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0)
      << std::strerror(errno);
  return client;
}

RawClient RawClient::Rtu(const std::string& device) {
  RawClient client(::open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  termios settings{};
  EXPECT_EQ(::tcgetattr(client.descriptor_.Number(), &settings), 0) << device << ": " << std::strerror(errno);
  ::cfmakeraw(&settings);
  EXPECT_EQ(::tcsetattr(client.descriptor_.Number(), TCSANOW, &settings), 0);
  return client;
}

void RawClient::Send(const Bytes& bytes) {
  EXPECT_EQ(::write(descriptor_.Number(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

std::optional<std::uint8_t> RawClient::ReceiveByte() {
  pollfd wait{descriptor_.Number(), POLLIN, 0};
  if (::poll(&wait, 1, Patience) <= 0) {
    ADD_FAILURE() << "the recorder is silent";
    return std::nullopt;
  }
  std::uint8_t byte = 0;
  const ssize_t got = ::read(descriptor_.Number(), &byte, 1);
  if (got == 1) {
    return byte;
  }
  reset_ = got < 0 && errno == ECONNRESET;
  return std::nullopt;
}

Bytes RawClient::Receive(std::size_t count) {
  Bytes bytes;
  while (bytes.size() < count) {
    const std::optional<std::uint8_t> byte = ReceiveByte();
    if (!byte) {
      break;
    }
    bytes.push_back(*byte);
  }
  return bytes;
}

Bytes RawClient::ReceiveToEnd() {
  Bytes bytes;
  while (const std::optional<std::uint8_t> byte = ReceiveByte()) {
    bytes.push_back(*byte);
  }
  return bytes;
}

} // namespace loader::simulator
