// What recorder-sim is on Windows alone.
#include <gmock/gmock.h>
#include <windows.h>

#include "tests/simulator/Clients.h"
#include "tests/simulator/RunningSimulator.h"

namespace loader::simulator {
namespace {

TEST(ProgramOnWindows, TellsThatItHasNoRtuLines) {
  const Ended ended = RunSimulator({"--tcp", "0", "--rtu", "COM1"});

  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.output, "");
  EXPECT_EQ(ended.errors,
            "recorder-sim: cannot make the line COM1: there are no RTU lines on Windows, which has no "
            "pseudo-terminals; take --tcp\n");
}

// User and kernel time of the process, in milliseconds.
std::uint64_t ProcessorMs(int process) {
  const HANDLE handle = ::OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, static_cast<DWORD>(process));
  FILETIME begin{}, end{}, kernel{}, user{};
  EXPECT_NE(::GetProcessTimes(handle, &begin, &end, &kernel, &user), 0);
  ::CloseHandle(handle);
  const auto ticks = [](const FILETIME& time) {
    return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
  };
  return (ticks(kernel) + ticks(user)) / 10'000;
}

TEST(ProgramOnWindows, UsesNoProcessorTimeWhileItWaits) {
  const RunningSimulator simulator({"--tcp", "0"});
  const ModbusClient client = ConnectTcp(simulator.Port());
  std::uint16_t value = 0;
  EXPECT_EQ(modbus_read_registers(client.get(), 0, 1, &value), 1);
  const std::uint64_t before = ProcessorMs(simulator.ProcessId());
  EXPECT_GT(before, 0U) << "it has started, and read its shape";
  // A reply that is silence: while the client waits for it, the recorder waits too.
  modbus_set_response_timeout(client.get(), 1, 0);
  EXPECT_EQ(modbus_receive_confirmation(client.get(), std::vector<std::uint8_t>(260).data()), -1);
  EXPECT_LE(ProcessorMs(simulator.ProcessId()), before + 20) << "two ticks of a clock that has few";
}

} // namespace
} // namespace loader::simulator
