#include "core/UserUnits.h"

#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modIni.h"
#include "core/modMain.h"

namespace loader {

void UpdateUserUnitNames() {
  for (int item = 0; item < Profile.UnitCount; ++item) {
    if (const ParamTextRecord* unit = FindTextRecord("U", item, "UNIT")) {
      UnitNames.at(UserUnitIndex(item + 1, Profile.UnitCount)) = TrimRight(unit->Value);
    }
  }
}

} // namespace loader
