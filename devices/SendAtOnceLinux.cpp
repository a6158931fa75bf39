#include <sys/socket.h>

#include "devices/SendAtOnce.h"

namespace loader {

std::size_t SendAtOnce(qintptr socket, std::span<const std::uint8_t> bytes) {
  const ssize_t sent = ::send(static_cast<int>(socket), bytes.data(), bytes.size(), MSG_NOSIGNAL);
  return sent < 0 ? 0 : static_cast<std::size_t>(sent);
}

} // namespace loader
