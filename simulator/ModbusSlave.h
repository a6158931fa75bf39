// The protocol: requests are judged and answered by libmodbus.
//
// A libmodbus context works on a socket. Here that socket is one end of a pair, so that a whole request goes
// in and the reply comes out as bytes, to be sent at the pace, and with the damage, that the user asked for.
#pragma once

#include <cstdint>
#include <memory>
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

struct ModbusAnswer {
  Bytes reply;         // empty: no reply
  int exception = 0;   // the exception code of the reply, 0 for none
  std::string silence; // why there is no reply
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
  [[nodiscard]] ModbusAnswer Run(std::span<const std::uint8_t> frame, RegisterMemory* memory);
  Line line_;
  std::unique_ptr<Context> context_;
};

} // namespace loader::simulator
