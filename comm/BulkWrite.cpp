#include "comm/BulkWrite.h"

#include <algorithm>
#include <utility>

#include "comm/GenerationLayout.h"
#include "comm/ParameterTelegram.h"
#include "comm/RecorderCheck.h"
#include "comm/WriteLayouts.h"
#include "comm/modComunication.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/modIni.h"

namespace loader {

namespace {

// Deliberately not the order of the read in generation 5: O goes before N.
constexpr std::array<WritePlan, 8> WritePlans{{
    {0, WriteLayoutG0, "CAGTBHMUD"},
    {1, WriteLayoutG1, "CAGTBHMUD"},
    {2, WriteLayoutG2, "CAGTBHMUDE"},
    {3, WriteLayoutG3, "CAGTBHMUDE"},
    {4, WriteLayoutG4, "CAGTBHMUDEJKXLY"},
    {5, WriteLayoutPlain, "CAGTBHMUDEONJKXLY"},
    {20, WriteLayoutG20, "CAGTBEONHMUDJKX"},
    {21, WriteLayoutPlain, "CAGTBEONHMUDJKX"},
}};

std::int16_t ZeroFrom(std::int16_t value, std::int16_t limit) {
  return value >= limit ? std::int16_t{0} : value;
}

std::int16_t InputKindOfRecorder(std::int16_t kind, std::int16_t OldInputKind::*number) {
  const auto found = std::find_if(OldInputKinds.begin(), OldInputKinds.end(),
                                  [&](const OldInputKind& entry) { return entry.kind == kind; });
  return found == OldInputKinds.end() ? kind : (*found).*number;
}

std::int16_t TriggerChannel(std::int16_t timing, std::int16_t value, const TriggerLimit& limit) {
  switch (timing) {
  case 1:
  case 2:
    return limit.inputs == NoLimit ? value : ZeroFrom(value, limit.inputs);
  case 3:
  case 4:
    return ZeroFrom(value, limit.alarms);
  default:
    return value;
  }
}

// One item under one layout, from the store into BlockBuf.
struct ItemWriter {
  int index;
  std::int32_t start; // byte of BlockBuf
  const ParamItem& item;
  const SectionWrite& layout;

  void Write() const {
    for (const ParamTextRecord& record : item.TextRecords) {
      WriteText(record);
    }
    for (std::size_t i = 0; i < item.NumRecords.size(); ++i) {
      WriteNumber(i);
    }
    if (layout.oldTotalizer) {
      WriteOldTotalizer();
    }
  }

  void WriteText(const ParamTextRecord& record) const {
    if (RuleOf(layout, record.Tag, {{}, layout.texts}).rule == WriteRule::Value) {
      // Blanks at the right end fill the record, they are not written: the field ends in NULs.
      gFBlockPutText(TrimRight(record.Value), start + 2 * record.WordOffset, record.ByteLength);
    }
  }

  void WriteNumber(std::size_t position) const {
    const ParamNumRecord& record = item.NumRecords[position];
    const TagWrite entry = RuleOf(layout, record.Tag, layout.numbers);
    const auto put = [&](std::int16_t value) { gFBlockPutWord(value, start + 2 * record.WordOffset); };
    const auto putAt = [&](std::int16_t value) { gFBlockPutWord(value, start + entry.argument); };
    switch (entry.rule) {
    case WriteRule::Untouched:
      break;
    case WriteRule::Value:
      put(record.Value);
      break;
    case WriteRule::Zero:
      put(0);
      break;
    case WriteRule::Default:
      put(record.DefaultValue);
      break;
    case WriteRule::ZeroFrom:
      put(ZeroFrom(record.Value, entry.argument));
      break;
    case WriteRule::AtByte:
      putAt(record.Value);
      break;
    case WriteRule::InputKind:
      put(InputKindOfRecorder(record.Value, &OldInputKind::old));
      break;
    case WriteRule::InputKind0:
      put(InputKindOfRecorder(record.Value, &OldInputKind::oldest));
      break;
    case WriteRule::TotalKind:
      putAt(record.Value == 1 && ValueInItem("STYP") == 0 ? 1 : 0);
      break;
    case WriteRule::TriggerChannel:
      put(TriggerChannel(ValueBefore(position), record.Value,
                         TriggerLimits.at(static_cast<std::size_t>(entry.argument))));
      break;
    case WriteRule::HoursThenMinutes:
      putAt(static_cast<std::int16_t>(record.Value / MinutesOfHour));
      gFBlockPutWord(static_cast<std::int16_t>(record.Value % MinutesOfHour), start + entry.argument + 2);
      break;
    }
  }

  // The value of the record in front of it in the table; 0 for the first.
  [[nodiscard]] std::int16_t ValueBefore(std::size_t position) const {
    return position == 0 ? std::int16_t{0} : item.NumRecords[position - 1].Value;
  }

  // Another number of the same item; -1 where there is none.
  [[nodiscard]] int ValueInItem(std::string_view tag) const {
    const auto found = std::find_if(item.NumRecords.begin(), item.NumRecords.end(),
                                    [&](const ParamNumRecord& record) { return Trim(record.Tag) == tag; });
    return found == item.NumRecords.end() ? -1 : found->Value;
  }

  void WriteOldTotalizer() const {
    for (const OldTotalizerWord& word : OldTotalizerWords) {
      if (const ParamNumRecord* record = FindNumRecord("Z", index, word.tagOfZ)) {
        gFBlockPutWord(record->Value, start + word.byte);
      }
    }
  }
};

// The one writer. A run-time failure, also that of a section which the store does not hold, is a failed
// write.
TransferResult WriteSection(const GenerationWrite& generation, std::string_view sectionCode) {
  TransferResult result{.section = std::string(sectionCode)};
  const auto requestFailed = [&](bool writing) {
    result.end = TransferEnd::RequestFailed;
    result.request = RequestUnderWay(writing);
    return result;
  };
  try {
    const StoreIndex section = gFFindSection(sectionCode);
    const std::int16_t offset = RegisterOffset(Trim(sectionCode), generation.generation);
    if (!gFReadBlock(section, offset)) {
      return requestFailed(false);
    }
    LaySectionOver(generation, sectionCode);
    return gFWriteBlock(section, offset) ? TransferResult{} : requestFailed(true);
  } catch (const RunTimeFailure& failure) {
    result.end = TransferEnd::SectionUnfit;
    result.detail = failure.what();
    return result;
  }
}

} // namespace

const WritePlan* FindWritePlan(int generation) {
  const auto plan = std::ranges::find(WritePlans, generation, &WritePlan::generation);
  return plan == WritePlans.end() ? nullptr : &*plan;
}

const SectionWrite& LayoutOf(const GenerationWrite& generation, std::string_view sectionCode) {
  const auto found = std::ranges::find(generation.sections, Trim(sectionCode), &SectionWrite::section);
  return found == generation.sections.end() ? generation.others : *found;
}

TagWrite RuleOf(const SectionWrite& layout, std::string_view tag, const TagWrite& otherwise) {
  const auto rule = std::ranges::find(layout.tags, Trim(tag), &TagWrite::tag);
  return rule == layout.tags.end() ? otherwise : *rule;
}

void LaySectionOver(const GenerationWrite& generation, std::string_view sectionCode) {
  const ParamSection& section = ParamStore.at(gFFindSection(sectionCode));
  const SectionWrite& layout = LayoutOf(generation, sectionCode);
  for (std::size_t i = 0; i < section.Items.size(); ++i) {
    const int index = static_cast<int>(i);
    if (index < layout.items) {
      ItemWriter{index, ItemByteStart(section, index), section.Items[i], layout}.Write();
    }
  }
}

bool gFWriteSectionG0(std::string_view sectionCode) {
  return WriteSection(WriteLayoutG0, sectionCode).IsDone();
}
bool gFWriteSectionG1(std::string_view sectionCode) {
  return WriteSection(WriteLayoutG1, sectionCode).IsDone();
}
bool gFWriteSectionG2(std::string_view sectionCode) {
  return WriteSection(WriteLayoutG2, sectionCode).IsDone();
}
bool gFWriteSectionG3(std::string_view sectionCode) {
  return WriteSection(WriteLayoutG3, sectionCode).IsDone();
}
bool gFWriteSectionG4(std::string_view sectionCode) {
  return WriteSection(WriteLayoutG4, sectionCode).IsDone();
}
bool gFWriteSectionPlain(std::string_view sectionCode) {
  return WriteSection(WriteLayoutPlain, sectionCode).IsDone();
}
bool gFWriteSectionG20(std::string_view sectionCode) {
  return WriteSection(WriteLayoutG20, sectionCode).IsDone();
}

TransferResult WriteAll() {
  TransferResult all = CheckRecorder();
  if (!all.IsDone()) {
    return all;
  }
  CommLink.BlockBuf.fill(0);
  const WritePlan* plan = FindWritePlan(RecorderGeneration);
  if (plan == nullptr) {
    return {.end = TransferEnd::NothingToTransfer};
  }
  const std::string_view sections = plan->sections;
  for (std::size_t i = 0; i < sections.size(); ++i) {
    TransferResult section = WriteSection(plan->layout, sections.substr(i, 1));
    if (!section.IsDone()) {
      section.sections = std::move(all.sections);
      return section;
    }
    all.sections += sections[i];
  }
  return all;
}

namespace {

void TellWriteAll(const TransferResult& result) {
  TellCheck(result);
  if (result.IsDone()) {
    // Deliberately also for a generation that has no sections.
    ShowMessage(LoadText(62701));
  }
}

} // namespace

bool gFWriteAll() {
  const TransferResult result = WriteAll();
  TellWriteAll(result);
  return result.IsDone();
}

TransferResult WriteSetUp(const FlowCallbacks& window, const TransferTalk& talk) {
  if (!OpenLink()) {
    return {.end = TransferEnd::LinkNotOpened};
  }
  FlowFrame frame(window);
  TransferResult result = CheckState();
  if (result.IsDone()) {
    result = WriteAll();
  }
  Tell(talk.whileOpen, result);
  frame.CloseLink();
  frame.StopLamp();
  Tell(talk.whenClosed, result);
  frame.EnableControls();
  return result;
}

void WriteToRecorder(const FlowCallbacks& window) {
  if (!AskOkCancel(LoadText(20106))) {
    return;
  }
  const auto tellBusy = [](const TransferResult& result) {
    if (result.end == TransferEnd::RecorderBusy) {
      ShowMessage(LoadText(20107));
    }
  };
  // Deliberately no message of its own for any other failure: the link has spoken.
  if (WriteSetUp(window, {.whileOpen = TellWriteAll, .whenClosed = tellBusy}).end ==
      TransferEnd::LinkNotOpened) {
    TellLinkNotOpened();
  }
}

} // namespace loader
