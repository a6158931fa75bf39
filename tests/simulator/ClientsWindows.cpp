#include <gtest/gtest.h>
#include <winsock2.h>

#include "tests/simulator/Clients.h"

namespace loader::simulator {

RawClient RawClient::Tcp(int port) {
  WSADATA data{};
  EXPECT_EQ(::WSAStartup(MAKEWORD(2, 2), &data), 0);
  RawClient client(static_cast<int>(::socket(AF_INET, SOCK_STREAM, 0)));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  EXPECT_EQ(::connect(static_cast<SOCKET>(client.descriptor_.Number()),
                      reinterpret_cast<const sockaddr*>(&address), sizeof address),
            0)
      << "Windows error " << ::WSAGetLastError();
  const DWORD patience = Patience;
  EXPECT_EQ(::setsockopt(static_cast<SOCKET>(client.descriptor_.Number()), SOL_SOCKET, SO_RCVTIMEO,
                         reinterpret_cast<const char*>(&patience), sizeof patience),
            0);
  return client;
}

void RawClient::Send(const Bytes& bytes) {
  EXPECT_EQ(Write(descriptor_, bytes), static_cast<Passed>(bytes.size()));
}

std::optional<std::uint8_t> RawClient::ReceiveByte() {
  // Without a poll before it: under Wine that takes the news of a reset, and recv has nothing left to tell.
  char byte = 0;
  const int got = ::recv(static_cast<SOCKET>(descriptor_.Number()), &byte, 1, 0);
  if (got == 1) {
    return static_cast<std::uint8_t>(byte);
  }
  EXPECT_FALSE(got < 0 && ::WSAGetLastError() == WSAETIMEDOUT) << "the recorder is silent";
  reset_ = got < 0 && ::WSAGetLastError() == WSAECONNRESET;
  return std::nullopt;
}

} // namespace loader::simulator
