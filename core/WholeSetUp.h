// A whole set-up beside the one in force, for programs that look at two of them.
//
// All look-ups work on the one ParamStore, and what they answer depends on the model as well: its profile,
// its name, the user units. SetUpInForce is the one place where another set-up takes the place of all that.
#pragma once

#include <cstdint>
#include <string>

#include "core/ModelProfile.h"
#include "core/modIni.h"
#include "core/modMain.h"

namespace loader {

// ParamStoreBackup is none of it: it belongs to a change of model, which makes one set-up from another.
struct WholeSetUp {
  ParamStoreTable store;
  ModelProfile profile;
  std::string modelCode;
  std::string versionTag;
  std::int32_t modeCheckOff = 0;
  Catalogue unitNames; // with its user units
};

// A copy of the set-up that is in force.
[[nodiscard]] WholeSetUp CopyOfSetUp();

// Puts `setUp` in force from the making of this to its end; what is written meanwhile is written to it. One
// within another is good, as long as none is that of an outer one. A record that was found before stays a
// record of its own set-up. No event loop may run meanwhile in a program with a window, which would show the
// wrong set-up.
class SetUpInForce {
public:
  explicit SetUpInForce(WholeSetUp& setUp) noexcept;
  ~SetUpInForce();
  SetUpInForce(const SetUpInForce&) = delete;
  SetUpInForce& operator=(const SetUpInForce&) = delete;

private:
  WholeSetUp& setUp_; // while this stands it holds the set-up that was in force before
};

// What `work` returns with `setUp` in force.
template <typename Work> auto WithSetUp(WholeSetUp& setUp, const Work& work) {
  const SetUpInForce inForce(setUp);
  return work();
}

} // namespace loader
