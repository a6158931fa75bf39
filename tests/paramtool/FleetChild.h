// fleet-child: a program that a fleet runs in the place of paramtool and that does what a script tells it,
// which stands in the file of the variable FLEET_CHILD. A line is a step:
//
//   print TEXT       on the standard output       complain TEXT  on the standard error output
//   need FILE        else it ends with 1          mark FILE      makes it
//   note FILE        its arguments, a line each   exit STATUS
//   await GATE       until another one has told   tell GATE
//   crash            as a fault ends a program    kill           as another program ends one
//   hang             for ever                     deaf           to the request to end
//   stop STATUS TEXT printed when it is asked to end, which it then does with that status
//   job NAME         what follows is for the one whose first argument it is
#pragma once

#include <filesystem>
#include <string>

namespace loader::test {

// What it does when it is asked to end, from now on.
struct WhenAsked {
  bool deaf = false;
  int status = 143;
  std::string text = {};
};
void PrepareToBeAsked(const WhenAsked& when);

// A gate is one of FleetGate.h.
void AwaitGate(const std::filesystem::path& gate);
void TellGate(const std::filesystem::path& gate);

[[noreturn]] void Hang();
[[noreturn]] void Crash();
[[noreturn]] void EndFromOutside();

} // namespace loader::test
