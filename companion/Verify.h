// Writing a recorder with proof: what was written is read back, register by register.
#pragma once

#include <string>
#include <vector>

#include "companion/LossesOfWrite.h"

namespace loader {

enum class WriteEnd {
  Verified,    // every register of every section that was written holds what the write had to leave there
  Different,   // not every one
  NotWritten,  // it ended before anything was written
  Mixture,     // it ended on its way: part of the set-up may be in the recorder
  NotCompared, // all was written, but what the recorder holds now could not be read
  NotStored,   // all is as it has to be, but the command to store it did not go through
};

struct WriteOutcome {
  WriteEnd end = WriteEnd::NotWritten;
  std::u16string reason = {}; // of all but Verified and Different, in the user's words
  std::string sections = {};  // that were written whole, one letter each
  std::vector<RegisterDifference> different = {};
  std::size_t registers = 0; // that were compared
  bool stored = false;
};

// Writes the set-up as the window does, with the same requests; reads every section back that was written
// and, when all of it is as it has to be and `store` is set, has the recorder store it. Never throws for what
// the line does.
[[nodiscard]] WriteOutcome WriteAndVerify(const RecorderLine& line, WholeSetUp& setUp, bool store);

} // namespace loader
