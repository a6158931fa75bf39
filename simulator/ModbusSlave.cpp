#include "simulator/ModbusSlave.h"

#include <modbus/modbus.h>

#include <algorithm>
#include <cerrno>

#include "platform/RunTimeFailure.h"
#include "simulator/CheckValue.h"
#include "simulator/SocketPair.h"

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
  Line line; // that libmodbus takes it for
  SocketPair pair;
  modbus_t* modbus = nullptr;

  explicit Context(Line wanted) : line(RtuTakesSockets ? wanted : Line::Tcp) {}
  ~Context() {
    if (modbus != nullptr) {
      modbus_free(modbus);
    }
  }
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;

  // A request of the line as libmodbus shall see it, and its reply of so many bytes as the line shall.
  [[nodiscard]] Bytes Given(Line from, std::span<const std::uint8_t> frame) const {
    if (from == line) {
      return {frame.begin(), frame.end()};
    }
    const std::span<const std::uint8_t> body = frame.first(frame.size() - CheckLength);
    Bytes request{0, 0, 0, 0, 0, static_cast<std::uint8_t>(body.size())};
    request.insert(request.end(), body.begin(), body.end());
    return request;
  }
  [[nodiscard]] Bytes Taken(Line to, std::size_t count) {
    Bytes reply = pair.TakeOuter(count);
    if (to == line || reply.size() < TcpHeader + 2) {
      return reply;
    }
    reply.erase(reply.begin(), reply.begin() + TcpHeader);
    if (reply[0] == Broadcast && (reply[1] & 0x80) == 0) {
      return {}; // done, and not answered
    }
    const std::uint16_t check = CheckValue(reply);
    reply.push_back(static_cast<std::uint8_t>(check & 0xFF));
    reply.push_back(static_cast<std::uint8_t>(check >> 8));
    return reply;
  }
};

ModbusSlave::ModbusSlave(Line line, int station)
    : line_(line), station_(station), context_(std::make_unique<Context>(line)) {
  // Neither context opens what it is named after: it works on the socket that it is given.
  context_->modbus = context_->line == Line::Tcp ? modbus_new_tcp("127.0.0.1", 502)
                                                 : modbus_new_rtu("/dev/null", 19200, 'O', 8, 1);
  if (context_->modbus == nullptr || modbus_set_slave(context_->modbus, station) != 0 ||
      modbus_set_socket(context_->modbus, context_->pair.Inner()) != 0 ||
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
      request = context_->Given(line_, frame);
      return static_cast<int>(request.size());
    }
  }
  context_->pair.GiveInner(context_->Given(line_, frame));
  request.resize(MODBUS_MAX_ADU_LENGTH);
  const int received = modbus_receive(context_->modbus, request.data());
  const int error = errno;
  context_->pair.EmptyInner(); // what a damaged request leaves behind
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
  int sent = 0;
  if (memory == nullptr) {
    sent = modbus_reply_exception(context_->modbus, request.data(), MODBUS_EXCEPTION_SLAVE_OR_SERVER_FAILURE);
  } else if (!IsServed(request[StationAt(context_->line) + 1])) {
    sent = modbus_reply_exception(context_->modbus, request.data(), MODBUS_EXCEPTION_ILLEGAL_FUNCTION);
  } else {
    modbus_mapping_t mapping{};
    mapping.nb_registers = TableRegisters;
    mapping.tab_registers = memory->holding.data();
    mapping.nb_input_registers = TableRegisters;
    mapping.tab_input_registers = memory->input.data();
    sent = modbus_reply(context_->modbus, request.data(), received, &mapping);
  }
  answer.reply = context_->Taken(line_, static_cast<std::size_t>(std::max(0, sent)));
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
