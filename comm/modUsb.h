// The USB link: Modbus RTU frames through the recorder's USB device, which is opened and closed for each
// exchange.
#pragma once

#include <array>
#include <cstdint>

namespace loader {

constexpr std::int32_t NoUsbHandle = -1;

extern std::int32_t UsbHandle;
// How many exchanges have failed in a call and counted as success, since the program started: a program that
// has to know compares it before and after.
extern std::uint32_t UsbFailuresTakenForSuccess;
// Frames go to and from the device one byte in each word.
extern std::array<std::int32_t, 256> UsbSendWords;
extern std::array<std::int32_t, 256> UsbRecvWords;

void gFUsbRead();
void gFUsbWrite();
void gFUsbExchange();
[[nodiscard]] std::uint8_t gFUsbSendWait();

} // namespace loader
