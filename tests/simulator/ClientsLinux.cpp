#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "tests/simulator/Clients.h"

namespace loader::simulator {

RawClient RawClient::Tcp(int port) {
  RawClient client(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  EXPECT_EQ(
      ::connect(client.descriptor_.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0)
      << std::strerror(errno);
  return client;
}

RawClient RawClient::Rtu(const std::string& device) {
  RawClient client(::open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  termios settings{};
  EXPECT_EQ(::tcgetattr(client.descriptor_.Number(), &settings), 0) << device << ": " << std::strerror(errno);
  ::cfmakeraw(&settings);
  EXPECT_EQ(::tcsetattr(client.descriptor_.Number(), TCSANOW, &settings), 0);
  return client;
}

void RawClient::Send(const Bytes& bytes) {
  EXPECT_EQ(::write(descriptor_.Number(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

std::optional<std::uint8_t> RawClient::ReceiveByte() {
  pollfd wait{descriptor_.Number(), POLLIN, 0};
  if (::poll(&wait, 1, Patience) <= 0) {
    ADD_FAILURE() << "the recorder is silent";
    return std::nullopt;
  }
  std::uint8_t byte = 0;
  const ssize_t got = ::read(descriptor_.Number(), &byte, 1);
  if (got == 1) {
    return byte;
  }
  reset_ = got < 0 && errno == ECONNRESET;
  return std::nullopt;
}

} // namespace loader::simulator
