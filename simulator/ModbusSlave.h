// The protocol: requests are judged and answered by libmodbus.
//
// A libmodbus context works on a socket. Here that socket is one end of a pair, so that a whole request goes
// in and the reply comes out as bytes, to be sent at the pace, and with the damage, that the user asked for.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "simulator/RegisterMemory.h"

namespace loader::simulator {

enum class Line { Tcp, Rtu };

using Bytes = std::vector<std::uint8_t>;

// A request as far as it can be told from its bytes.
struct Request {
  int station = 0;
  int function = 0;
  int address = 0; // 3xxxx/4xxxx notation; 0 for a function without one
  int count = 0;   // registers

  [[nodiscard]] bool IsRead() const { return function == 3 || function == 4; }
  [[nodiscard]] bool IsWrite() const { return function == 6 || function == 16; }
};
[[nodiscard]] Request ParseRequest(Line line, std::span<const std::uint8_t> frame);

// Bytes of the RTU request that starts there, check value included. Nothing while they do not tell it: too
// few of them, or a function of unknown length, which ends with the silence behind it.
[[nodiscard]] std::optional<std::size_t> RtuRequestLength(std::span<const std::uint8_t> bytes);

struct ModbusAnswer {
  Bytes reply;            // empty: no reply
  int exception = 0;      // the exception code of the reply, 0 for none
  std::string silence;    // why there is no reply
  bool damaged = false;   // the request was
  bool broadcast = false; // carried out without a reply
};

class ModbusSlave {
public:
  // On an RTU line only requests to `station` are answered, on TCP all. RunTimeFailure when libmodbus or the
  // system refuses.
  ModbusSlave(Line line, int station);
  ~ModbusSlave();
  ModbusSlave(const ModbusSlave&) = delete;
  ModbusSlave& operator=(const ModbusSlave&) = delete;

  // Carries a whole request out on the memory.
  [[nodiscard]] ModbusAnswer Answer(std::span<const std::uint8_t> frame, RegisterMemory& memory);
  // Answers with the exception "slave device failure" and leaves everything as it is.
  [[nodiscard]] ModbusAnswer Refuse(std::span<const std::uint8_t> frame);

private:
  struct Context;
  // Takes the request from the socket, as libmodbus sees it; 0 bytes: not for this station, below: damaged.
  [[nodiscard]] int Receive(std::span<const std::uint8_t> frame, Bytes& request);
  [[nodiscard]] ModbusAnswer Run(std::span<const std::uint8_t> frame, RegisterMemory* memory);
  Line line_;
  int station_;
  std::unique_ptr<Context> context_;
};

} // namespace loader::simulator
