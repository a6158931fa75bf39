// Connections on 127.0.0.1 for stand-ins of recorders. They block.
#pragma once

#include <cstddef>
#include <cstdint>

namespace loader::test {

// A socket; negative: none.
using LoopbackSocket = int;

// On a port that the system chooses; it takes no connection before ListenOn.
[[nodiscard]] LoopbackSocket BindToFreePort(int& port);
[[nodiscard]] bool ListenOn(LoopbackSocket listener);
// None once the listener is closed.
[[nodiscard]] LoopbackSocket AcceptOn(LoopbackSocket listener);
[[nodiscard]] LoopbackSocket ConnectTo(int port);

// How many bytes came; 0 or less at the end of the connection.
[[nodiscard]] std::ptrdiff_t ReceiveFrom(LoopbackSocket socket, std::uint8_t* room, std::size_t size);
// Whether all of it went.
[[nodiscard]] bool SendTo(LoopbackSocket socket, const std::uint8_t* bytes, std::size_t count);
// Whether there are bytes, a client or the end within so many milliseconds.
[[nodiscard]] bool WaitForNews(LoopbackSocket socket, int milliseconds);
// Until there is such a thing on one of them.
void WaitForEither(LoopbackSocket one, LoopbackSocket other);

// Whoever waits for its bytes gets the end of the connection.
void EndConnection(LoopbackSocket socket);
void CloseSocket(LoopbackSocket socket);

} // namespace loader::test
