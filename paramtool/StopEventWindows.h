// The event by which one program asks another to end: the name of it goes down in the environment.
#pragma once

namespace loader::paramtool {

inline constexpr const char* StopEventVariable = "PARAMTOOL_STOP_EVENT";

} // namespace loader::paramtool
