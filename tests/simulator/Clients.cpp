#include "tests/simulator/Clients.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

namespace loader::simulator {

namespace {

constexpr int Piece = 125; // registers; the most of one request

} // namespace

ModbusClient Connected(modbus_t* context) {
  ModbusClient client(context, &modbus_free);
  modbus_set_response_timeout(context, Patience / 1000, 0);
  EXPECT_EQ(modbus_set_slave(context, 1), 0);
  EXPECT_EQ(modbus_connect(context), 0) << modbus_strerror(errno);
  return client;
}

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
