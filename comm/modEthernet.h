// The Ethernet link: Modbus/TCP at port 502 of RecorderIpAddress.
#pragma once

#include <cstdint>

namespace loader {

constexpr int ModbusPort = 502;

// False after 5 s without the connect event. A refused connection is not told earlier.
[[nodiscard]] bool gFEtherConnect();
void gFEtherClose();
void gFEtherRead();
void gFEtherWrite();
void gFEtherExchange();
[[nodiscard]] std::uint8_t gFEtherSendWait();

} // namespace loader
