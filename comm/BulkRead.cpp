#include "comm/BulkRead.h"

#include <algorithm>
#include <utility>

#include "comm/GenerationLayout.h"
#include "comm/ParameterTelegram.h"
#include "comm/ReadLayouts.h"
#include "comm/RecorderCheck.h"
#include "comm/modComunication.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/UserUnits.h"
#include "core/modIni.h"

namespace loader {

namespace {

constexpr std::string_view OrderOfKov = "CAGTBHMUDENOJKXLY";
// Without L and Y, which this model does not have.
constexpr std::string_view OrderOfRug = "CAGTBEONHMUDJKX";
constexpr std::array<ReadPlan, 8> ReadPlans{{
    {0, ReadLayoutG0, OrderOfKov},
    {1, ReadLayoutG1, OrderOfKov},
    {2, ReadLayoutG2, OrderOfKov},
    {3, ReadLayoutG3, OrderOfKov},
    {4, ReadLayoutPlain, OrderOfKov},
    {5, ReadLayoutPlain, OrderOfKov},
    {20, ReadLayoutPlain, OrderOfRug},
    {21, ReadLayoutPlain, OrderOfRug},
}};

void TakeDefault(ParamNumRecord& record) {
  SetNumber(record, record.DefaultValue, SlotBoth);
}
void TakeDefault(ParamTextRecord& record) {
  SetText(record, record.DefaultValue, SlotBoth);
}

void TakeDefaults(ParamItem& item) {
  std::for_each(item.TextRecords.begin(), item.TextRecords.end(), [](auto& record) { TakeDefault(record); });
  std::for_each(item.NumRecords.begin(), item.NumRecords.end(), [](auto& record) { TakeDefault(record); });
}

// One item under one layout, from BlockBuf into the store.
struct ItemReader {
  std::string_view section;
  int index;
  std::int32_t start; // byte of BlockBuf
  ParamItem& item;
  const SectionRead& layout;

  void Read() const {
    for (ParamTextRecord& record : item.TextRecords) {
      ReadText(record);
    }
    for (ParamNumRecord& record : item.NumRecords) {
      ReadNumber(record);
    }
    if (layout.oldTotalizer) {
      ReadOldTotalizer();
    }
  }

  void ReadText(ParamTextRecord& record) const {
    if (RuleOf(layout, record.Tag, layout.texts).rule == ReadRule::Default) {
      TakeDefault(record);
    } else {
      StoreRead(section, index, record.Tag, gFBlockGetText(start + 2 * record.WordOffset, record.ByteLength));
    }
  }

  void ReadNumber(ParamNumRecord& record) const {
    const TagRead entry = RuleOf(layout, record.Tag, layout.numbers);
    const auto own = [&] { return gFBlockGetWord(start + 2 * record.WordOffset); };
    const auto fixed = [&] { return gFBlockGetWord(start + entry.byte); };
    switch (entry.rule) {
    case ReadRule::Plain:
      StoreRead(section, index, record.Tag, own());
      break;
    case ReadRule::Default:
      TakeDefault(record);
      break;
    case ReadRule::AtByte:
      StoreRead(section, index, record.Tag, fixed());
      break;
    case ReadRule::TotalKind:
      StoreRead(section, index, record.Tag, 1); // deliberately whatever the word is
      StoreRead(section, index, "STYP", fixed() == 1 ? 0 : 15);
      break;
    case ReadRule::SetByOther:
      break;
    case ReadRule::InputKind:
      StoreRead(section, index, record.Tag, InputKindToday(own(), InputKindOfOld.size()));
      break;
    case ReadRule::InputKind0:
      StoreRead(section, index, record.Tag, InputKindToday(own(), OldestInputKinds));
      break;
    }
  }

  void ReadOldTotalizer() const {
    for (const OldTotalizerWord& word : OldTotalizerWords) {
      StoreRead("Z", index, word.tagOfZ, gFBlockGetWord(start + word.byte));
    }
    for (const OldTime& time : OldTimes) {
      const std::int32_t minutes =
          MinutesOfHour * gFBlockGetWord(start + time.hourByte) + gFBlockGetWord(start + time.minuteByte);
      // Deliberately the value alone: the read value keeps the default.
      gFParamValue(section, index, time.tag, DecimalText(minutes), SlotValue);
    }
  }
};

// The one reader. A run-time failure, also that of a section which the store does not hold, is a failed read.
TransferResult ReadSection(const GenerationRead& generation, std::string_view sectionCode) {
  TransferResult result{.section = std::string(sectionCode)};
  try {
    const StoreIndex section = gFFindSection(sectionCode);
    if (!gFReadBlock(section, RegisterOffset(Trim(sectionCode), generation.generation))) {
      result.end = TransferEnd::RequestFailed;
      result.request = RequestUnderWay(false);
      return result;
    }
    StoreSection(generation, sectionCode);
    return {};
  } catch (const RunTimeFailure& failure) {
    result.end = TransferEnd::SectionUnfit;
    result.detail = failure.what();
    return result;
  }
}

} // namespace

const ReadPlan* FindReadPlan(int generation) {
  const auto plan = std::ranges::find(ReadPlans, generation, &ReadPlan::generation);
  return plan == ReadPlans.end() ? nullptr : &*plan;
}

const SectionRead& LayoutOf(const GenerationRead& generation, std::string_view sectionCode) {
  const auto found = std::ranges::find(generation.sections, Trim(sectionCode), &SectionRead::section);
  return found == generation.sections.end() ? generation.others : *found;
}

TagRead RuleOf(const SectionRead& layout, std::string_view tag, ReadRule otherwise) {
  const auto rule = std::ranges::find(layout.tags, Trim(tag), &TagRead::tag);
  return rule == layout.tags.end() ? TagRead{tag, otherwise} : *rule;
}

// The whole block is read first, also when none of it is used.
void StoreSection(const GenerationRead& generation, std::string_view sectionCode) {
  ParamSection& section = ParamStore.at(gFFindSection(sectionCode));
  const SectionRead& layout = LayoutOf(generation, sectionCode);
  for (std::size_t i = 0; i < section.Items.size(); ++i) {
    const int index = static_cast<int>(i);
    if (index < layout.items) {
      ItemReader{sectionCode, index, ItemByteStart(section, index), section.Items[i], layout}.Read();
    } else if (layout.beyond == ItemsBeyond::Default) {
      TakeDefaults(section.Items[i]);
    }
  }
}

bool gFReadSectionG0(std::string_view sectionCode) {
  return ReadSection(ReadLayoutG0, sectionCode).IsDone();
}
bool gFReadSectionG1(std::string_view sectionCode) {
  return ReadSection(ReadLayoutG1, sectionCode).IsDone();
}
bool gFReadSectionG2(std::string_view sectionCode) {
  return ReadSection(ReadLayoutG2, sectionCode).IsDone();
}
bool gFReadSectionG3(std::string_view sectionCode) {
  return ReadSection(ReadLayoutG3, sectionCode).IsDone();
}
bool gFReadSectionPlain(std::string_view sectionCode) {
  return ReadSection(ReadLayoutPlain, sectionCode).IsDone();
}

TransferResult ReadAll() {
  TransferResult all = CheckRecorder();
  if (!all.IsDone()) {
    return all;
  }
  const ReadPlan* plan = FindReadPlan(RecorderGeneration);
  if (plan == nullptr) {
    return {.end = TransferEnd::NothingToTransfer};
  }
  const std::string_view sections = plan->sections;
  for (std::size_t i = 0; i < sections.size(); ++i) {
    TransferResult section = ReadSection(plan->layout, sections.substr(i, 1));
    if (!section.IsDone()) {
      section.sections = std::move(all.sections);
      return section;
    }
    all.sections += sections[i];
  }
  return all;
}

bool gFReadAll() {
  const TransferResult result = ReadAll();
  TellCheck(result);
  return result.IsDone();
}

TransferResult ReadSetUp(const FlowCallbacks& window, const TransferTalk& talk) {
  if (!OpenLink()) {
    return {.end = TransferEnd::LinkNotOpened};
  }
  FlowFrame frame(window);
  TransferResult result = ReadAll();
  Tell(talk.whileOpen, result);
  frame.CloseLink();
  frame.StopLamp();
  Tell(talk.whenClosed, result);
  // Whatever the result: the sections that came through are in the store.
  UpdateUserUnitNames();
  if (window.refresh) {
    window.refresh();
  }
  frame.EnableControls();
  return result;
}

void ReadFromRecorder(const FlowCallbacks& window) {
  if (!AskOkCancel(LoadText(20104))) {
    return;
  }
  const auto tellFailure = [](const TransferResult& result) {
    TellCheck(result);
    if (!result.IsDone()) {
      ShowMessage(LoadText(11013));
    }
  };
  if (ReadSetUp(window, {.whileOpen = tellFailure}).end == TransferEnd::LinkNotOpened) {
    TellLinkNotOpened();
  }
}

} // namespace loader
