#include "core/WholeSetUp.h"

#include <utility>

namespace loader {

namespace {

void SwapWithTheOneInForce(WholeSetUp& setUp) noexcept {
  std::swap(setUp.store, ParamStore);
  std::swap(setUp.profile, Profile);
  std::swap(setUp.modelCode, ModelCode);
  std::swap(setUp.versionTag, VersionTag);
  std::swap(setUp.modeCheckOff, ModeCheckOff);
  std::swap(setUp.unitNames, UnitNames);
}

} // namespace

WholeSetUp CopyOfSetUp() {
  return {ParamStore, Profile, ModelCode, VersionTag, ModeCheckOff, UnitNames};
}

SetUpInForce::SetUpInForce(WholeSetUp& setUp) noexcept : setUp_(setUp) {
  SwapWithTheOneInForce(setUp_);
}

SetUpInForce::~SetUpInForce() {
  SwapWithTheOneInForce(setUp_);
}

} // namespace loader
