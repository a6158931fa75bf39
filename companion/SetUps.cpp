#include "companion/SetUps.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <utility>

#include "companion/CheckParts.h"
#include "companion/Parameters.h"
#include "core/PathText.h"
#include "core/Text.h"
#include "core/UserUnits.h"
#include "core/modFile.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"
#include "platform/WholeFile.h"

namespace loader {

namespace {

constexpr int LastPort = 65535;
constexpr int LastStation = 255;

struct Scheme {
  std::u16string_view prefix;
  Place place;
};
constexpr std::array<Scheme, 4> Schemes{{
    {u"tcp:", Place::Tcp},
    {u"serial:", Place::Serial},
    {u"usb:", Place::Usb},
    {u"default:", Place::Default},
}};

// Reads the parts of an address from its end.
class AddressReader {
public:
  AddressReader(std::u16string_view text, Language language) : rest_(text), language_(language) {
    address_.text = text;
  }

  SetUpAddress Read() {
    const auto scheme =
        std::ranges::find_if(Schemes, [&](const Scheme& entry) { return rest_.starts_with(entry.prefix); });
    if (scheme != Schemes.end()) {
      address_.place = scheme->place;
      rest_.remove_prefix(scheme->prefix.size());
    }
    switch (address_.place) {
    case Place::Tcp:
      TakeStation();
      TakePort();
      Require(Phrase::AddressHost);
      break;
    case Place::Serial:
      TakeStation();
      TakeBaud();
      Require(Phrase::AddressDevice);
      break;
    case Place::Usb:
      TakeStation();
      Require(Phrase::AddressDevice);
      break;
    case Place::Default:
      TakeModel();
      break;
    case Place::File:
      Require(Phrase::AddressEmpty);
      break;
    }
    address_.where = rest_;
    return address_;
  }

private:
  [[noreturn]] void Refuse(Phrase reason) const {
    throw Undone{Say(Phrase::NoSuchAddress, language_,
                     {{u"SETUP", address_.text}, {u"REASON", PhraseText(reason, language_)}})};
  }
  void Require(Phrase reason) const {
    if (rest_.empty()) {
      Refuse(reason);
    }
  }

  // What stands behind the last `mark`, as a number within limits; nothing where there is no mark.
  std::optional<int> TakeBehind(char16_t mark, int first, int last, Phrase reason) {
    const std::size_t at = rest_.rfind(mark);
    if (at == std::u16string_view::npos) {
      return std::nullopt;
    }
    const std::u16string_view digits = rest_.substr(at + 1);
    const auto number = std::ranges::all_of(digits, IsDigit) ? ParseInt32(digits) : std::nullopt;
    if (!number || *number < first || *number > last) {
      Refuse(reason);
    }
    rest_ = rest_.substr(0, at);
    return static_cast<int>(*number);
  }

  void TakeStation() {
    address_.station = TakeBehind(u'#', 0, LastStation, Phrase::AddressStation).value_or(address_.station);
  }
  void TakeBaud() {
    constexpr int FastestLine = 4000000;
    address_.baud = TakeBehind(u'@', 1, FastestLine, Phrase::AddressBaud).value_or(address_.baud);
  }
  void TakePort() {
    if (!rest_.ends_with(u']')) {
      address_.port = TakeBehind(u':', 1, LastPort, Phrase::AddressPort).value_or(address_.port);
    }
    if (rest_.starts_with(u'[') && rest_.ends_with(u']')) {
      rest_ = rest_.substr(1, rest_.size() - 2);
    }
  }
  void TakeModel() {
    if (!IsModelCode(Narrow(rest_))) {
      Refuse(Phrase::AddressModel);
    }
  }

  SetUpAddress address_;
  std::u16string_view rest_;
  Language language_;
};

// --- The model of a file

bool OpensAs(std::string_view model, std::string_view bytes, Language language) {
  WholeSetUp setUp = InitialSetUp(model, language);
  return WithSetUp(setUp, [&] { return LoadParamBytes(bytes); });
}

// Sections and items, as a key begins with them: "C02".
using ItemSet = std::set<std::string, std::less<>>;

ItemSet ItemsNamedBy(std::string_view bytes) {
  ItemSet items;
  while (!bytes.empty()) {
    const std::string_view line = TakeLine(bytes);
    if (const auto ref = RefOfKey(line.substr(0, line.find(',')))) {
      items.insert(KeyOf({ref->section, ref->item, {}}));
    }
  }
  return items;
}

// Those with parameters: a file does not name the others.
ItemSet ItemsOf(const ParamStoreTable& store) {
  ItemSet items;
  for (const ParamSection& section : store) {
    for (std::size_t i = 0; i < section.Items.size(); ++i) {
      if (!section.Items[i].NumRecords.empty() || !section.Items[i].TextRecords.empty()) {
        items.insert(KeyOf({std::string(Trim(section.Code)), static_cast<int>(i), {}}));
      }
    }
  }
  return items;
}

// What the file says of its recorder: the value of P00PILC.
std::string ModelFieldOf(std::string_view bytes) {
  constexpr std::string_view Key = "P00PILC,";
  while (!bytes.empty()) {
    const std::string_view line = TakeLine(bytes);
    if (line.starts_with(Key)) {
      const std::string model(line.substr(Key.size(), 3));
      return IsModelCode(model) ? model : std::string();
    }
  }
  return {};
}

void RefuseRecorder(const SetUpAddress& address, Language language) {
  if (IsRecorder(address.place)) {
    throw Undone{Say(Phrase::RecorderNotHere, language, {{u"SETUP", address.text}})};
  }
}

// In the user's language, and without the name of the file, which stands in front of it.
Phrase WhyNotRead(const std::filesystem::path& file) {
  std::error_code none;
  if (!std::filesystem::exists(file, none)) {
    return Phrase::FileNotThere;
  }
  return std::filesystem::is_regular_file(file, none) ? Phrase::FileNotRead : Phrase::WriteNoFile;
}

std::string ReadFileOf(const SetUpAddress& address, Language language) {
  const std::filesystem::path file = PathOf(address.where);
  try {
    return ReadRegularFile(file);
  } catch (const RunTimeFailure&) {
    throw Undone{Say(Phrase::SetUpNotThere, language,
                     {{u"SETUP", address.text}, {u"REASON", PhraseText(WhyNotRead(file), language)}})};
  }
}

void LayFile(OpenedSetUp& opened) {
  const SetUpInForce inForce(opened.setUp);
  opened.opens =
      LoadParamBytes(opened.bytes, [&](const FileDefect& defect) { opened.defects.push_back(defect); });
  UpdateUserUnitNames();
}

[[noreturn]] void RefuseToOpen(const OpenedSetUp& opened, Language language) {
  const auto worst = std::ranges::find_if(
      opened.defects, [](const FileDefect& defect) { return PreventsOpening(defect.reason); });
  throw Undone{Say(Phrase::SetUpDoesNotOpen, language,
                   {{u"SETUP", opened.address.text},
                    {u"LINE", DecimalText(static_cast<std::int64_t>(worst->line))},
                    {u"KEY", DefectKey(*worst)},
                    {u"REASON", DefectText(worst->reason, language)}})};
}

// --- Files that are written

Phrase WhyNotWritten(Replacement replacement) {
  switch (replacement) {
  case Replacement::NoName:
    return Phrase::WriteNoName;
  case Replacement::NoFile:
    return Phrase::WriteNoFile;
  case Replacement::ReadOnly:
    return Phrase::WriteReadOnly;
  case Replacement::NoNameBeside:
    return Phrase::WriteNoNameBeside;
  case Replacement::NotReadBack:
    return Phrase::WriteNotReadBack;
  case Replacement::NotPutInPlace:
    return Phrase::WriteNotPutInPlace;
  case Replacement::NotWritten:
  case Replacement::Done:
    break;
  }
  return Phrase::WriteNotWritten;
}

void RequireDone(Replacement replacement, const std::filesystem::path& file, Language language) {
  if (replacement != Replacement::Done) {
    throw Undone{
        Say(Phrase::FileNotWritten, language,
            {{u"FILE", PathText(file)}, {u"REASON", PhraseText(WhyNotWritten(replacement), language)}})};
  }
}

} // namespace

std::u16string DefectKey(const FileDefect& defect) {
  std::u16string key = ShownKey(defect.key);
  return LooksLikeKey(key) ? key : u"?";
}

SetUpAddress ParseAddress(std::u16string_view text, Language language) {
  return AddressReader(text, language).Read();
}

const WholeSetUp& InitialSetUp(std::string_view model, Language language) {
  static std::map<std::string, WholeSetUp, std::less<>> loaded;
  const auto found = loaded.find(model);
  if (found != loaded.end()) {
    return found->second;
  }
  WholeSetUp initial = CopyOfSetUp();
  try {
    const SetUpInForce inForce(initial);
    LoadModel(model);
  } catch (const RunTimeFailure& failure) {
    throw Undone{Say(Phrase::NoInitialSettings, language, {{u"REASON", FromUtf8(failure.what())}})};
  }
  return loaded.emplace(std::string(model), std::move(initial)).first->second;
}

ModelFinding FindModel(std::string_view bytes, const std::filesystem::path& file, const std::string& asked,
                       Language language) {
  if (!asked.empty()) {
    return {ModelBasis::Asked, asked};
  }
  // All of the smaller model's parameters exist in the larger one, and a damaged line of it may be a good one
  // there: a whole file is of the model whose items it names, whatever it opens as.
  if (std::string model = ModelByItems(bytes, language); !model.empty()) {
    return {ModelBasis::Content, std::move(model)};
  }
  std::vector<std::string> fitting;
  for (const std::string_view model : ModelCodes) {
    if (OpensAs(model, bytes, language)) {
      fitting.emplace_back(model);
    }
  }
  if (fitting.size() == 1) {
    return {ModelBasis::Content, fitting.front()};
  }
  if (const std::string model = ModelFieldOf(bytes); !model.empty()) {
    return {ModelBasis::ModelField, model};
  }
  if (fitting.empty()) {
    return {ModelBasis::Neither, {}};
  }
  const std::string model = ModelOfName(file);
  return model.empty() ? ModelFinding{ModelBasis::Both, {}} : ModelFinding{ModelBasis::FileName, model};
}

std::string ModelByItems(std::string_view bytes, Language language) {
  constexpr std::size_t OneIn = 10; // items may differ
  const ItemSet named = ItemsNamedBy(bytes);
  for (const std::string_view model : ModelCodes) {
    const ItemSet items = ItemsOf(InitialSetUp(model, language).store);
    std::vector<std::string> different;
    std::ranges::set_symmetric_difference(named, items, std::back_inserter(different));
    if (different.size() * OneIn <= items.size()) {
      return std::string(model);
    }
  }
  return {};
}

std::string ModelOfName(const std::filesystem::path& file) {
  std::string ending = ToUtf8(PathText(file.extension()));
  std::ranges::transform(ending, ending.begin(),
                         [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  const auto model = std::ranges::find_if(
      ModelCodes, [&](std::string_view name) { return ending == "." + std::string(name); });
  return model == ModelCodes.end() ? std::string() : std::string(*model);
}

std::string FileBytesOf(const SetUpAddress& address, Language language) {
  RefuseRecorder(address, language);
  if (address.place == Place::Default) {
    WholeSetUp initial = InitialSetUp(Narrow(address.where), language);
    return WithSetUp(initial, [] { return ParamFileBytes(); });
  }
  return ReadFileOf(address, language);
}

OpenedSetUp OpenStrictly(const SetUpAddress& address, const std::string& model, Language language) {
  RefuseRecorder(address, language);
  OpenedSetUp opened;
  opened.address = address;
  if (address.place == Place::Default) {
    opened.finding = {ModelBasis::Asked, Narrow(address.where)};
    opened.setUp = InitialSetUp(opened.finding.model, language);
    return opened;
  }
  opened.bytes = ReadFileOf(address, language);
  opened.finding = FindModel(opened.bytes, PathOf(address.where), model, language);
  if (opened.finding.model.empty()) {
    throw Undone{
        Say(opened.finding.basis == ModelBasis::Both ? Phrase::ModelUnsettled : Phrase::ModelFitsNeither,
            language, {{u"SETUP", address.text}})};
  }
  opened.setUp = InitialSetUp(opened.finding.model, language);
  LayFile(opened);
  return opened;
}

OpenedSetUp OpenSetUp(const SetUpAddress& address, const std::string& model, Language language) {
  OpenedSetUp opened = OpenStrictly(address, model, language);
  if (!opened.opens) {
    RefuseToOpen(opened, language);
  }
  return opened;
}

std::u16string_view DefectText(LineDefect reason, Language language) {
  switch (reason) {
  case LineDefect::NoComma:
    return PhraseText(Phrase::DefectNoComma, language);
  case LineDefect::ItemIsNoNumber:
    return PhraseText(Phrase::DefectItemIsNoNumber, language);
  case LineDefect::UnknownSection:
    return PhraseText(Phrase::DefectUnknownSection, language);
  case LineDefect::UnknownItem:
    return PhraseText(Phrase::DefectUnknownItem, language);
  case LineDefect::UnknownTag:
    return PhraseText(Phrase::DefectUnknownTag, language);
  case LineDefect::NotANumber:
    return PhraseText(Phrase::DefectNotANumber, language);
  case LineDefect::Beyond16Bits:
    return PhraseText(Phrase::DefectBeyond16Bits, language);
  case LineDefect::TimeBeyond16Bits:
    return PhraseText(Phrase::DefectTimeBeyond16Bits, language);
  case LineDefect::TextWithComma:
    return PhraseText(Phrase::DefectTextWithComma, language);
  case LineDefect::TextBeyond64Characters:
    return PhraseText(Phrase::DefectTextBeyond64Characters, language);
  }
  return {};
}

void SaveSetUp(const std::filesystem::path& file, Language language) {
  RequireDone(SaveParamFileProved(file), file, language);
}

void SaveBytes(const std::filesystem::path& file, std::string_view bytes, Language language) {
  RequireDone(ReplaceFileProved(file, bytes, Neighbours::OfOthers), file, language);
}

} // namespace loader
