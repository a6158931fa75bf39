// Which device stands behind a port of the program, among the ports that a system has.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace loader {

// The number of "COM12"; 0 for what is no such name: class Ports has printer ports as well.
[[nodiscard]] int ComNumber(std::u16string_view name);
// The COM port with the lowest number; empty when there is none.
[[nodiscard]] std::u16string FirstComPort(std::span<const std::u16string> names);

} // namespace loader
