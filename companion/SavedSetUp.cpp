#include "companion/SavedSetUp.h"

#include <algorithm>

#include "core/Text.h"

namespace loader {

namespace {

// Both are of the same model.
std::vector<NotKept> Differing(WholeSetUp& setUp, WholeSetUp& opened) {
  const std::vector<StoredValue> values = WithSetUp(setUp, AllValues);
  const std::vector<StoredValue> inFile = WithSetUp(opened, AllValues);
  if (values == inFile) {
    return {};
  }
  const std::vector<ParameterRef> refs = WithSetUp(setUp, AllParameters);
  std::vector<NotKept> differing;
  for (std::size_t i = 0; i < refs.size(); ++i) {
    if (values.at(i) != inFile.at(i)) {
      differing.push_back({refs[i], values[i], inFile[i]});
    }
  }
  return differing;
}

} // namespace

std::vector<NotKept> NotKeptByFile(WholeSetUp& setUp, Language language) {
  const std::string bytes = WithSetUp(setUp, ParamFileBytes);
  WholeSetUp opened = InitialSetUp(setUp.modelCode, language);
  std::u16string defect;
  const bool opens = WithSetUp(opened, [&] {
    return LoadParamBytes(bytes, [&](const FileDefect& bad) {
      if (defect.empty() && PreventsOpening(bad.reason)) {
        defect = FromCodePage(bad.key) + u": " + std::u16string(DefectText(bad.reason, language));
      }
    });
  });
  if (!opens) {
    throw Undone{Say(Phrase::NoFileOfThis, language, {{u"REASON", defect}})};
  }
  return Differing(setUp, opened);
}

std::vector<NotKept> SaveAndProve(WholeSetUp& setUp, const std::filesystem::path& file, Language language) {
  const std::vector<NotKept> expected = NotKeptByFile(setUp, language);
  WithSetUp(setUp, [&] { SaveSetUp(file, language); });
  OpenedSetUp opened =
      OpenSetUp({.text = file.u16string(), .where = file.u16string()}, setUp.modelCode, language);
  std::vector<NotKept> differing = Differing(setUp, opened.setUp);
  const auto same = [](const NotKept& one, const NotKept& other) {
    return one.ref == other.ref && one.inFile == other.inFile;
  };
  if (!std::ranges::equal(differing, expected, same)) {
    throw Undone{Say(Phrase::FileHoldsOther, language, {{u"FILE", file.u16string()}})};
  }
  return differing;
}

} // namespace loader
