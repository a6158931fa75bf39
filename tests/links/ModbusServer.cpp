#include "tests/links/ModbusServer.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>

namespace loader::test {

namespace {

constexpr int FirstInput = 30001, FirstHolding = 40001, TableRegisters = 9999;

int PortOf(int listener) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  if (::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    return 0;
  }
  return ntohs(address.sin_port);
}

int ListenOnFreePort() {
  const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listener, 1) != 0) {
    throw std::runtime_error("no free port");
  }
  return listener;
}

} // namespace

ModbusServer::ModbusServer(const Registers& registers, const std::filesystem::path& folder)
    : mapping_(modbus_mapping_new_start_address(0, 0, 0, 0, 0, TableRegisters, 0, TableRegisters)),
      tcp_(modbus_new_tcp("127.0.0.1", 0)), terminals_{OpenTerminal(folder / "COM1"),
                                                       OpenTerminal(folder / "USB")},
      listener_(ListenOnFreePort()), stop_(::eventfd(0, EFD_CLOEXEC)), port_(PortOf(listener_)) {
  for (const auto& [number, value] : registers) {
    std::uint16_t* table = number >= FirstHolding ? mapping_->tab_registers : mapping_->tab_input_registers;
    table[number - (number >= FirstHolding ? FirstHolding : FirstInput)] = static_cast<std::uint16_t>(value);
  }
  thread_ = std::thread([this] { Run(); });
}

ModbusServer::~ModbusServer() {
  (void)Stop();
  ::close(listener_);
  ::close(stop_);
  for (const Terminal& terminal : terminals_) {
    ::close(terminal.slave);
    ::close(terminal.master);
  }
}

ModbusServer::Terminal ModbusServer::OpenTerminal(const std::filesystem::path& link) {
  Terminal terminal;
  std::array<char, 256> name{};
  termios raw{};
  ::cfmakeraw(&raw);
  ::cfsetspeed(&raw, B19200);
  if (::openpty(&terminal.master, &terminal.slave, name.data(), &raw, nullptr) != 0) {
    throw std::runtime_error("no pseudo-terminal");
  }
  std::filesystem::create_symlink(name.data(), link);
  terminal.context.reset(modbus_new_rtu(name.data(), 19200, 'O', 8, 1));
  modbus_set_slave(terminal.context.get(), 1);
  modbus_set_socket(terminal.context.get(), terminal.master);
  return terminal;
}

void ModbusServer::Run() {
  int client = -1;
  for (;;) {
    std::array<pollfd, 5> waits{{{stop_, POLLIN, 0},
                                 {client < 0 ? listener_ : -1, POLLIN, 0},
                                 {client, POLLIN, 0},
                                 {terminals_[0].master, POLLIN, 0},
                                 {terminals_[1].master, POLLIN, 0}}};
    if (::poll(waits.data(), waits.size(), -1) < 0 && errno != EINTR) {
      break;
    }
    if (waits[0].revents != 0) {
      break;
    }
    if (waits[1].revents != 0) {
      client = ::accept(listener_, nullptr, nullptr);
      modbus_set_socket(tcp_.get(), client);
    }
    if (waits[2].revents != 0 && !Serve(tcp_.get())) {
      ::close(client);
      client = -1;
    }
    for (std::size_t i = 0; i < std::size(terminals_); ++i) {
      if (waits[3 + i].revents != 0) {
        Serve(terminals_[i].context.get());
      }
    }
  }
  if (client >= 0) {
    ::close(client);
  }
}

bool ModbusServer::Serve(modbus_t* context) {
  std::array<std::uint8_t, MODBUS_MAX_ADU_LENGTH> request{};
  const int length = modbus_receive(context, request.data());
  if (length < 0) {
    const bool ended = errno == ECONNRESET;
    refused_ += ended ? 0 : 1;
    return !ended;
  }
  const int sent = length > 0 ? modbus_reply(context, request.data(), length, mapping_.get()) : 0;
  (sent > 0 ? answered_ : refused_) += 1;
  return true;
}

Registers ModbusServer::Stop() {
  if (thread_.joinable()) {
    const std::uint64_t one = 1;
    EXPECT_EQ(::write(stop_, &one, sizeof one), static_cast<ssize_t>(sizeof one));
    thread_.join();
  }
  Registers registers;
  for (int i = 0; i < TableRegisters; ++i) {
    registers[FirstHolding + i] = mapping_->tab_registers[i];
    registers[FirstInput + i] = mapping_->tab_input_registers[i];
  }
  return registers;
}

} // namespace loader::test
