#include "bench/RequestLog.h"

#include <array>
#include <cerrno>
#include <stdexcept>

namespace loader::bench {

namespace {

constexpr int ReadHolding = 3, ReadInput = 4, WriteMultiple = 16;

int Word(std::span<const std::uint8_t> frame, std::size_t at) {
  return frame[at] << 8 | frame[at + 1];
}

} // namespace

Request ParseTcpRequest(std::span<const std::uint8_t> frame) {
  constexpr std::size_t ShortestFrame = 12, FirstValue = 13;
  if (frame.size() < ShortestFrame) {
    throw std::runtime_error("a frame that is too short");
  }
  Request request{frame[7], Word(frame, 8), Word(frame, 10), {}};
  if (request.function == WriteMultiple) {
    for (std::size_t at = FirstValue; at + 1 < frame.size(); at += 2) {
      request.values.push_back(static_cast<std::uint16_t>(Word(frame, at)));
    }
  } else if (request.function != ReadHolding && request.function != ReadInput) {
    throw std::runtime_error("a request of another function");
  }
  return request;
}

int RtuCharacters(const Request& request) {
  constexpr int Short = 8, LongHead = 9, ReplyHead = 5;
  return request.function == WriteMultiple ? LongHead + 2 * request.count + Short
                                           : Short + ReplyHead + 2 * request.count;
}

void ListeningSocket::Connect() {
  real_.RemoteHost = RemoteHost;
  real_.RemotePort = RemotePort;
  real_.onConnect = onConnect;
  real_.Connect();
}

void ListeningSocket::SendData(std::span<const std::uint8_t> bytes) {
  requests.push_back(ParseTcpRequest(bytes));
  real_.SendData(bytes);
}

ModbusClient::ModbusClient(int port) : context_(modbus_new_tcp("127.0.0.1", port), &modbus_free) {
  modbus_set_slave(context_.get(), 1);
}

void ModbusClient::Replay(const std::vector<Request>& requests) {
  std::array<std::uint16_t, MODBUS_MAX_READ_REGISTERS> words{};
  if (modbus_connect(context_.get()) != 0) {
    throw std::runtime_error(modbus_strerror(errno));
  }
  for (const Request& request : requests) {
    int done = 0;
    if (request.function == WriteMultiple) {
      done = modbus_write_registers(context_.get(), request.address, request.count, request.values.data());
    } else if (request.function == ReadInput) {
      done = modbus_read_input_registers(context_.get(), request.address, request.count, words.data());
    } else {
      done = modbus_read_registers(context_.get(), request.address, request.count, words.data());
    }
    if (done != request.count) {
      throw std::runtime_error(modbus_strerror(errno));
    }
  }
  modbus_close(context_.get());
}

} // namespace loader::bench
