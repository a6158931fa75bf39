// Bytes to a connected socket without its own buffer.
#pragma once

#include <cstdint>
#include <span>

#include <QtGlobal>

namespace loader {

// How many of the bytes the system takes right now; never waits. 0 as well for a connection that has gone.
[[nodiscard]] std::size_t SendAtOnce(qintptr socket, std::span<const std::uint8_t> bytes);

} // namespace loader
