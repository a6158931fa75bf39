#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "platform/RunTimeFailure.h"
#include "simulator/SocketPair.h"

namespace loader::simulator {

const bool RtuTakesSockets = true;

SocketPair::SocketPair() {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    throw RunTimeFailure(std::string("no socket pair: ") + std::strerror(errno));
  }
  inner_ = Descriptor(ends[0]);
  outer_ = Descriptor(ends[1]);
}

void SocketPair::GiveInner(std::span<const std::uint8_t> bytes) {
  if (::send(outer_.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL) !=
      static_cast<ssize_t>(bytes.size())) {
    throw RunTimeFailure(std::string("socket pair: ") + std::strerror(errno));
  }
}

void SocketPair::EmptyInner() {
  std::array<std::uint8_t, 512> part{};
  while (::recv(inner_.Number(), part.data(), part.size(), MSG_DONTWAIT) > 0) {
  }
}

std::vector<std::uint8_t> SocketPair::TakeOuter(std::size_t count) {
  std::vector<std::uint8_t> bytes(count);
  const ssize_t got = ::recv(outer_.Number(), bytes.data(), bytes.size(), MSG_DONTWAIT);
  bytes.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
  return bytes;
}

} // namespace loader::simulator
