#include <winsock2.h>

#include "devices/SendAtOnce.h"

namespace loader {

// The socket is Qt's, which has made it one that does not wait.
std::size_t SendAtOnce(qintptr socket, std::span<const std::uint8_t> bytes) {
  const int sent = ::send(static_cast<SOCKET>(socket), reinterpret_cast<const char*>(bytes.data()),
                          static_cast<int>(bytes.size()), 0);
  return sent < 0 ? 0 : static_cast<std::size_t>(sent);
}

} // namespace loader
