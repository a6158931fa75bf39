// What a write of a set-up to a recorder will change in it, and what of the set-up the recorder cannot take:
// told before anything is written.
//
// The values come from the writer and the reader themselves, which lay the set-up over the registers that the
// recorder has now and read them again, all in memory. The reasons come from the tables of the layouts.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "companion/Losses.h"
#include "companion/Transfer.h"

namespace loader {

// What a write does with a parameter.
enum class WriteFate {
  Goes,        // with its value, and a read brings it back
  NoSection,   // the firmware does not have the section: not written
  NoItem,      // the firmware has fewer items: not written
  NotWritten,  // the recorder keeps what it has
  Overlaid,    // its register is another parameter's in this firmware
  Zero,        // 0 goes in its place
  Default,     // the default goes in its place
  Limited,     // beyond the firmware's limit: 0 goes in its place
  Mapped,      // the firmware counts kinds differently: its nearest goes
  NotReadBack, // it goes, but no read of this firmware brings it back
  NotMoved,    // no write of the model takes it: commands, state, what belongs to the recorder alone
};
// Of a parameter of the set-up in force, with its value, by the layouts of a generation.
[[nodiscard]] WriteFate FateOfWrite(int generation, const ParameterRef& ref);

struct ChangedParameter {
  ParameterRef ref;
  StoredValue before;
  StoredValue after;
};
struct LostParameter {
  ParameterRef ref;
  WriteFate fate = WriteFate::Goes; // Goes: the text is cut, or holds what the recorder's bytes cannot
  StoredValue wanted;
  StoredValue comes; // what a read of the recorder gives after the write
};
// A register that a parameter owns, or none (`tag` empty).
struct RegisterDifference {
  std::string section;
  int item = 0;
  std::string tag;
  std::int32_t number = 0; // of the register: 4xxxx
  std::int16_t expected = 0;
  std::int16_t found = 0;
  bool operator==(const RegisterDifference&) const = default;
};

struct WriteForecast {
  WholeSetUp after;                 // as a read will give it
  std::vector<SectionBlock> blocks; // of the sections that are written, as they will be
  std::vector<ChangedParameter> changes;
  std::vector<LostParameter> losses; // in the order of the parameter file
  // Registers that change and that no read shows: a change that `changes` does not tell.
  std::vector<RegisterDifference> unseen;
};
// Of a write of `setUp` to the recorder that was read; both are of the same model.
[[nodiscard]] WriteForecast ForecastWrite(WholeSetUp& setUp, RecorderRead& present);

// The registers in which two images of a section's block differ, each by its owner in the generation. The
// blocks are of the model in force, and begin at the same register.
[[nodiscard]] std::vector<RegisterDifference> DifferentRegisters(int generation, const SectionBlock& expected,
                                                                 const SectionBlock& found);

} // namespace loader
