// The user units at the end of the unit list follow section U of the store.
#pragma once

namespace loader {

// Enters the UNIT text of each user unit (items 0 up of section U, Profile.UnitCount of them) into UnitNames,
// without its trailing blanks. A unit that the store does not hold keeps its entry.
//
// Run after a parameter file was opened and after a recorder was read: the store is otherwise ahead of the
// list.
void UpdateUserUnitNames();

} // namespace loader
