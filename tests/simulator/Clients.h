// Clients of a simulated recorder: libmodbus's own, and one that sees every byte.
#pragma once

#include <modbus/modbus.h>

#include <memory>
#include <optional>
#include <string>

#include "simulator/ModbusSlave.h"
#include "simulator/Sockets.h"

namespace loader::simulator {

constexpr int Patience = 20000; // milliseconds until a test gives up

using ModbusClient = std::unique_ptr<modbus_t, decltype(&modbus_free)>;
// Connected, for station 1; a failed connection fails the test.
[[nodiscard]] ModbusClient Connected(modbus_t* context);
[[nodiscard]] ModbusClient ConnectTcp(int port);
[[nodiscard]] ModbusClient ConnectRtu(const std::string& device);

// All registers of both tables, read in pieces; a failed read fails the test.
[[nodiscard]] RegisterMemory ReadAll(modbus_t* client);

// A connection byte by byte.
class RawClient {
public:
  static RawClient Tcp(int port);
  static RawClient Rtu(const std::string& device);

  void Send(const Bytes& bytes);
  // The next bytes; fewer when the connection ends before. A connection that stays silent fails the test.
  [[nodiscard]] Bytes Receive(std::size_t count);
  // Everything up to the end of the connection.
  [[nodiscard]] Bytes ReceiveToEnd();
  // True once the peer has reset the connection.
  [[nodiscard]] bool WasReset() const { return reset_; }

private:
  explicit RawClient(int number) : descriptor_(number) {}
  std::optional<std::uint8_t> ReceiveByte();
  Descriptor descriptor_;
  bool reset_ = false;
};

} // namespace loader::simulator
