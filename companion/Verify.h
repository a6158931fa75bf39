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
//
// `present`: what a read has just found there, and what the user was told and has a backup of. A recorder
// that now says anything else of itself (model, serial number, version) is not written, and one that says so
// behind the write is not compared.
[[nodiscard]] WriteOutcome WriteAndVerify(const RecorderLine& line, WholeSetUp& setUp, bool store,
                                          const RecorderRead* present = nullptr);

} // namespace loader
