// A recorder's registers, and what a read of them has to give.
#pragma once

#include <modbus/modbus.h>

#include <cstdint>
#include <map>
#include <string>

#include "tests/comm/Generations.h"

namespace loader::test {

// Register number to value.
using Registers = std::map<int, int>;

// All registers by a client that is not ours; a failed read fails the test.
[[nodiscard]] Registers RegistersOverTcp(int port);

// Puts something else into every value, so that a read has to bring each one.
void FillStoreWithHeld();
// The store against the registers, value by value, after a read by FillStoreWithHeld and a whole read.
void ExpectStoreOf(const Generation& generation, const Registers& registers);

// What the registers have to be after the store was written into them.
[[nodiscard]] Registers AfterWrite(const Generation& generation, const Registers& before);
void ExpectRegisters(const Registers& expected, const Registers& found);

} // namespace loader::test
