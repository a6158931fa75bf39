#include "simulator/ModbusSlave.h"

#include <modbus/modbus.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "platform/RunTimeFailure.h"
#include "simulator/CheckValue.h"

namespace loader::simulator {

namespace {

constexpr std::size_t TcpHeader = 6;   // the bytes in front of the station
constexpr std::size_t CheckLength = 2; // of an RTU frame
constexpr int Broadcast = 0;           // the station number that all obey and none answers
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

// How long a request is, as libmodbus's receiver knows it: bytes in front of the data, and where the length
// of the data stands.
struct FunctionLength {
  int first, last; // functions
  std::size_t fixed;
  std::size_t countAt; // 0: no data of its own
};
constexpr FunctionLength FunctionLengths[] = {{1, 6, 6, 0},   {7, 7, 2, 0},   {15, 16, 7, 6},
                                              {17, 17, 2, 0}, {22, 22, 8, 0}, {23, 23, 11, 10}};

std::optional<std::size_t> RtuRequestLength(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < 2) {
    return std::nullopt;
  }
  for (const FunctionLength& row : FunctionLengths) {
    if (bytes[1] < row.first || bytes[1] > row.last) {
      continue;
    }
    if (row.countAt == 0) {
      return row.fixed + CheckLength;
    }
    if (bytes.size() > row.countAt) {
      return row.fixed + bytes[row.countAt] + CheckLength;
    }
  }
  return std::nullopt;
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

ModbusSlave::ModbusSlave(Line line, int station)
    : line_(line), station_(station), context_(std::make_unique<Context>()) {
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

int ModbusSlave::Receive(std::span<const std::uint8_t> frame, Bytes& request) {
  if (line_ == Line::Rtu) {
    if (frame.size() < 2 + CheckLength || CheckValue(frame) != 0) {
      errno = EMBBADCRC;
      return -1;
    }
    // libmodbus expects the reply of the other station next on the line and would swallow the next request:
    // there is no other station on this line.
    if (frame[0] != station_ && frame[0] != Broadcast) {
      return 0;
    }
    if (!RtuRequestLength(frame)) {
      // A function whose length libmodbus does not know either: its frame is all that came before the
      // silence.
      request.assign(frame.begin(), frame.end());
      return static_cast<int>(frame.size());
    }
  }
  if (::send(context_->outer, frame.data(), frame.size(), MSG_NOSIGNAL) !=
      static_cast<ssize_t>(frame.size())) {
    throw RunTimeFailure(std::string("socket pair: ") + std::strerror(errno));
  }
  request.resize(MODBUS_MAX_ADU_LENGTH);
  const int received = modbus_receive(context_->modbus, request.data());
  const int error = errno;
  Context::Drain(context_->inner); // what a damaged request leaves behind
  errno = error;
  return received;
}

ModbusAnswer ModbusSlave::Run(std::span<const std::uint8_t> frame, RegisterMemory* memory) {
  ModbusAnswer answer;
  Bytes request;
  const int received = Receive(frame, request);
  if (received <= 0) {
    answer.damaged = received < 0;
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
    answer.broadcast = true;
    answer.silence = "it is a broadcast";
  }
  return answer;
}

} // namespace loader::simulator
