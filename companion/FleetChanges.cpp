#include "companion/FleetChanges.h"

#include <optional>

#include "companion/Compare.h"
#include "companion/SetUps.h"
#include "core/UserUnits.h"
#include "core/WholeSetUp.h"
#include "files/ParameterFile.h"

namespace loader {

namespace {

// Another one at each reading, whatever anybody sets.
bool IsPassing(const ParameterRef& ref) {
  const MeaningRow* row = FindMeaning(ref.section, ref.tag);
  const bool isState = ref.section == "S" && ref.tag == "SYS1";
  return isState || (row != nullptr && (row->meaning.use == Use::Clock || row->meaning.use == Use::Command));
}

std::optional<WholeSetUp> Opened(std::string_view bytes, const std::filesystem::path& file,
                                 Language language) {
  const ModelFinding finding = FindModel(bytes, file, {}, language);
  if (finding.model.empty()) {
    return std::nullopt;
  }
  WholeSetUp setUp = InitialSetUp(finding.model, language);
  const bool opens = WithSetUp(setUp, [&] {
    const bool loaded = LoadParamBytes(bytes);
    UpdateUserUnitNames();
    return loaded;
  });
  return opens ? std::optional(std::move(setUp)) : std::nullopt;
}

} // namespace

FleetChanges ChangesBetween(std::string_view before, std::string_view after,
                            const std::filesystem::path& file, Language language) {
  std::optional<WholeSetUp> old = Opened(before, file, language);
  std::optional<WholeSetUp> now = Opened(after, file, language);
  FleetChanges changes;
  changes.known = old && now;
  if (!changes.known) {
    return changes;
  }
  for (const ComparedParameter& parameter : Compare(*old, *now, {}, {.language = language}).found) {
    if (!IsPassing(parameter.ref)) {
      changes.names.push_back(ShownName(parameter));
    }
  }
  return changes;
}

} // namespace loader
