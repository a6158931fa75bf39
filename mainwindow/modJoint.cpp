#include "mainwindow/modJoint.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "channel/InputTypeRules.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modMain.h"
#include "mainwindow/CellsKept.h"
#include "mainwindow/ParameterTables.h"

namespace loader {

namespace {

using Tags = std::span<const std::string_view>;

// COLR and the totalizer's tags are no part of a copy: the target keeps its colour and its totals.
constexpr std::string_view ChannelTags[]{"TAG",  "TAG2", "TYPE", "OTCH", "UNIT", "POIN", "FILT", "SCAL",
                                         "MMIN", "MMAX", "SMIN", "SMAX", "ROOT", "PVSI", "PVKA", "SUBC",
                                         "RECO", "RECM", "RMIN", "RMAX", "FTIO", "TAIS"};
constexpr std::string_view AlarmTags[]{"A1TY", "A1VL", "A1RL", "A2TY", "A2VL", "A2RL",
                                       "A3TY", "A3VL", "A3RL", "A4TY", "A4VL", "A4RL"};
constexpr std::string_view FormulaTags[]{
    "OP11", "S111", "S211", "OP12", "S112", "S212", "OP13", "S113", "S213", "OP21", "S121", "S221",
    "OP22", "S122", "S222", "OP23", "S123", "S223", "OP31", "S131", "S231", "OP32", "S132", "S232",
    "OP33", "S133", "S233", "OP41", "S141", "S241", "OP42", "S142", "S242", "OP43", "S143", "S243"};
constexpr std::string_view MessageTags[]{"MESS", "MTM1", "MTM2", "MTM3"};
constexpr std::string_view UnitTags[]{"UNIT"};

void CopyRecords(std::string_view section, Tags tags, int source, int target) {
  for (const std::string_view tag : tags) {
    const ParamTextRecord* fromText = FindTextRecord(section, source, tag);
    ParamTextRecord* toText = FindTextRecord(section, target, tag);
    if (fromText != nullptr && toText != nullptr) {
      toText->Value = fromText->Value;
    }
    const ParamNumRecord* fromNumber = FindNumRecord(section, source, tag);
    ParamNumRecord* toNumber = FindNumRecord(section, target, tag);
    if (fromNumber != nullptr && toNumber != nullptr) {
      toNumber->Value = fromNumber->Value;
    }
  }
}

// The entry of the current row, from 0; none while it is a heading.
std::optional<int> CurrentEntry(const Grid& table) {
  return table.Row < table.FixedRows || table.Row >= table.Rows()
             ? std::nullopt
             : std::optional(table.Row - table.FixedRows);
}

// What the copy of an entry is called, and how its question counts it.
struct CopyQuestion {
  TextId text;
  TextId title;
  int firstNumber;
};

std::u16string QuestionText(const CopyQuestion& question, int source, int target) {
  return Replace(Replace(LoadText(question.text), u"@COPYCH@", DecimalText(source + question.firstNumber)),
                 u"@CHNOSAKI@", DecimalText(target + question.firstNumber));
}

bool AskToCopy(const CopyQuestion& question, int source, int target) {
  return AskOkCancel(QuestionText(question, source, target), LoadText(question.title));
}

// The channel that shares the target's terminals, where it cannot stay beside the source's kind.
std::optional<int> LostPartner(int source, int target) {
  const int pairKind = ChannelPairKind(target);
  if (pairKind == PairIndependent) {
    return std::nullopt;
  }
  const int partner = pairKind == PairLeader ? target + 1 : target - 1;
  const int sourceClass = PairClass(NumValue("C", source, "TYPE"));
  const int partnerClass = PairClass(NumValue("C", partner, "TYPE"));
  const bool conflict = sourceClass != 0 && partnerClass != 0 && sourceClass != partnerClass;
  return conflict ? std::optional(partner) : std::nullopt;
}

void PasteChannel(int source, int target) {
  const CopyQuestion question{20112, 20114, 1};
  const std::optional<int> lost = LostPartner(source, target);
  std::u16string text = QuestionText(question, source, target);
  if (lost) {
    text += u"\n" + Replace(LoadText(20113), u"@CHNOSAPR@", DecimalText(*lost + 1));
  }
  if (!AskOkCancel(text, LoadText(question.title))) {
    return;
  }
  if (lost) {
    ChannelInit(*lost, NumValue("C", source, "TYPE"));
  }
  CopyChannelRecords(source, target);
  RefreshAll();
}

void PasteOperationChannel(int source, int target) {
  const int first = Profile.FirstOperationChannel;
  if (!AskToCopy({20112, 20114, first}, source, target)) {
    return;
  }
  CopyChannelRecords(source + first - 1, target + first - 1);
  CopyOperationFormulas(source, target);
  RefreshAll();
}

// The tables of messages and units are not rewritten, deliberately: the row shows the new entry after their
// next rewrite.
void PasteMessage(int source, int target) {
  if (AskToCopy({20109, 20110, 1}, source, target)) {
    CopyMessageRecords(source, target);
  }
}

void PasteUnit(int source, int target) {
  if (AskToCopy({20109, 20111, 1}, source, target)) {
    CopyUnitRecords(source, target);
  }
}

// The tables whose entries are copied, each on its page.
struct CopyTable {
  CopyKinds kind;
  int page;
  Grid ParamLoaderScreen::*table;
  void (*paste)(int source, int target);
};
constexpr std::array<CopyTable, 4> CopyTables{{
    {CopyKinds::Channels, ChannelPage, &ParamLoaderScreen::fgrCh, PasteChannel},
    {CopyKinds::OperationChannels, OperationPage, &ParamLoaderScreen::fgrOperationChSet,
     PasteOperationChannel},
    {CopyKinds::Messages, DisplayPage, &ParamLoaderScreen::fgrMess, PasteMessage},
    {CopyKinds::Units, DisplayPage, &ParamLoaderScreen::fgrUnit, PasteUnit},
}};

} // namespace

void CopyEntry(ParamLoaderScreen& window) {
  for (const CopyTable& row : CopyTables) {
    if (row.kind == window.CopyKind) {
      if (const auto entry = CurrentEntry(window.*row.table)) {
        window.CopySourceRow = static_cast<std::int16_t>(*entry);
      }
    }
  }
}

void PasteEntry(ParamLoaderScreen& window) {
  // A read would overwrite the paste, and a write would send half of it.
  if (ExchangeUnderWay(window)) {
    return;
  }
  for (const CopyTable& row : CopyTables) {
    // Only the page of the displays has two such tables. Elsewhere the page alone decides, deliberately, also
    // while the focus is on the constants.
    const bool meant = row.page != DisplayPage || row.kind == window.CopyKind;
    if (row.page == window.tbsParameter.current && meant) {
      if (const auto target = CurrentEntry(window.*row.table)) {
        const CellsKept kept(window);
        row.paste(window.CopySourceRow, *target);
      }
      return;
    }
  }
}

void CopyChannelRecords(int source, int target) {
  CopyRecords("C", ChannelTags, source, target);
  CopyRecords("A", AlarmTags, source, target);
}

void CopyOperationFormulas(int source, int target) {
  CopyRecords("O", FormulaTags, source, target);
}

void CopyMessageRecords(int source, int target) {
  CopyRecords("M", MessageTags, source, target);
}

void CopyUnitRecords(int source, int target) {
  CopyRecords("U", UnitTags, source, target);
}

} // namespace loader
