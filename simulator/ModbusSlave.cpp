#include "simulator/ModbusSlave.h"

#include <modbus/modbus.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "platform/RunTimeFailure.h"

namespace loader::simulator {

namespace {

constexpr std::size_t TcpHeader = 6; // the bytes in front of the station
constexpr int ReadHolding = 3, ReadInput = 4, WriteSingle = 6, WriteMultiple = 16;
// Nothing can follow a whole request on the socket pair: waits of libmodbus end at once.
constexpr std::uint32_t ShortWait = 1000; // microseconds

int Word(std::span<const std::uint8_t> bytes, std::size_t at) {
  return at + 1 < bytes.size() ? bytes[at] * 256 + bytes[at + 1] : 0;
}

std::size_t StationAt(Line line) {
  return line == Line::Tcp ? TcpHeader : 0;
}

bool IsServed(int function) {
  return function == ReadHolding || function == ReadInput || function == WriteSingle ||
         function == WriteMultiple;
}

} // namespace

Request ParseRequest(Line line, std::span<const std::uint8_t> frame) {
  const std::size_t start = StationAt(line);
  Request request;
  if (frame.size() < start + 2) {
    return request;
  }
  request.station = frame[start];
  request.function = frame[start + 1];
  if (!IsServed(request.function)) {
    return request;
  }
  request.address = Word(frame, start + 2) + (request.function == ReadInput ? FirstInput : FirstHolding);
  request.count = request.function == WriteSingle ? 1 : Word(frame, start + 4);
  return request;
}

struct ModbusSlave::Context {
  modbus_t* modbus = nullptr;
  int inner = -1; // libmodbus's end of the pair
  int outer = -1;

  ~Context() {
    if (modbus != nullptr) {
      modbus_free(modbus);
    }
    for (const int end : {inner, outer}) {
      if (end >= 0) {
        ::close(end);
      }
    }
  }

  // All that waits at one end, taken out.
  static Bytes Drain(int end) {
    Bytes bytes;
    std::array<std::uint8_t, 512> part{};
    for (;;) {
      const ssize_t got = ::recv(end, part.data(), part.size(), MSG_DONTWAIT);
      if (got <= 0) {
        return bytes;
      }
      bytes.insert(bytes.end(), part.begin(), part.begin() + got);
    }
  }
};

ModbusSlave::ModbusSlave(Line line, int station) : line_(line), context_(std::make_unique<Context>()) {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    throw RunTimeFailure(std::string("no socket pair: ") + std::strerror(errno));
  }
  context_->inner = ends[0];
  context_->outer = ends[1];
  // Neither context opens what it is named after: it works on the socket that it is given.
  context_->modbus =
      line == Line::Tcp ? modbus_new_tcp("127.0.0.1", 502) : modbus_new_rtu("/dev/null", 19200, 'O', 8, 1);
  if (context_->modbus == nullptr || modbus_set_slave(context_->modbus, station) != 0 ||
      modbus_set_socket(context_->modbus, context_->inner) != 0 ||
      modbus_set_response_timeout(context_->modbus, 0, ShortWait) != 0 ||
      modbus_set_byte_timeout(context_->modbus, 0, ShortWait) != 0 ||
      modbus_set_indication_timeout(context_->modbus, 0, ShortWait) != 0) {
    throw RunTimeFailure(std::string("libmodbus: ") + modbus_strerror(errno));
  }
}

ModbusSlave::~ModbusSlave() = default;

ModbusAnswer ModbusSlave::Answer(std::span<const std::uint8_t> frame, RegisterMemory& memory) {
  return Run(frame, &memory);
}

ModbusAnswer ModbusSlave::Refuse(std::span<const std::uint8_t> frame) {
  return Run(frame, nullptr);
}

ModbusAnswer ModbusSlave::Run(std::span<const std::uint8_t> frame, RegisterMemory* memory) {
  ModbusAnswer answer;
  std::array<std::uint8_t, MODBUS_MAX_ADU_LENGTH> request{};
  if (::send(context_->outer, frame.data(), frame.size(), MSG_NOSIGNAL) !=
      static_cast<ssize_t>(frame.size())) {
    throw RunTimeFailure(std::string("socket pair: ") + std::strerror(errno));
  }
  const int received = modbus_receive(context_->modbus, request.data());
  Context::Drain(context_->inner); // what a damaged request leaves behind
  if (received <= 0) {
    answer.silence = received == 0 ? "it is for another station" : modbus_strerror(errno);
    return answer;
  }
  if (memory == nullptr) {
    modbus_reply_exception(context_->modbus, request.data(), MODBUS_EXCEPTION_SLAVE_OR_SERVER_FAILURE);
  } else if (!IsServed(request[StationAt(line_) + 1])) {
    modbus_reply_exception(context_->modbus, request.data(), MODBUS_EXCEPTION_ILLEGAL_FUNCTION);
  } else {
    modbus_mapping_t mapping{};
    mapping.nb_registers = TableRegisters;
    mapping.tab_registers = memory->holding.data();
    mapping.nb_input_registers = TableRegisters;
    mapping.tab_input_registers = memory->input.data();
    modbus_reply(context_->modbus, request.data(), received, &mapping);
  }
  answer.reply = Context::Drain(context_->outer);
  const std::size_t function = StationAt(line_) + 1;
  if (answer.reply.size() > function + 1 && (answer.reply[function] & 0x80) != 0) {
    answer.exception = answer.reply[function + 1];
  }
  if (answer.reply.empty()) {
    answer.silence = "it is a broadcast";
  }
  return answer;
}

} // namespace loader::simulator
