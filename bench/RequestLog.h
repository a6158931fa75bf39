// The requests of a flow, and the same requests by libmodbus's client.
#pragma once

#include <modbus/modbus.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/Devices.h"

namespace loader::bench {

struct Request {
  int function = 0; // 3, 4 or 16
  int address = 0;  // on the wire, from 0
  int count = 0;
  std::vector<std::uint16_t> values; // of a write
};

// From a whole Modbus/TCP frame; std::runtime_error for one of another function.
[[nodiscard]] Request ParseTcpRequest(std::span<const std::uint8_t> frame);

// Characters on an RTU line, the request's and the reply's.
[[nodiscard]] int RtuCharacters(const Request& request);

// The socket of the program with an ear on it.
class ListeningSocket final : public SocketControl {
public:
  explicit ListeningSocket(SocketControl& real) : real_(real) {}
  [[nodiscard]] int State() const override { return real_.State(); }
  void Close() override { real_.Close(); }
  void Connect() override;
  void SendData(std::span<const std::uint8_t> bytes) override;
  [[nodiscard]] int BytesReceived() const override { return real_.BytesReceived(); }
  [[nodiscard]] Bytes GetData() override { return real_.GetData(); }

  std::vector<Request> requests;

private:
  SocketControl& real_;
};

// Connects, does the requests one after the other, closes. std::runtime_error when one fails.
class ModbusClient {
public:
  explicit ModbusClient(int port);
  void Replay(const std::vector<Request>& requests);

private:
  std::unique_ptr<modbus_t, decltype(&modbus_free)> context_;
};

} // namespace loader::bench
