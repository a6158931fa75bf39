#include "simulator/Plant.h"

#include "core/Text.h"

namespace loader::simulator {

namespace {

// Ten pens that stay apart on a white trend, by their colour numbers.
constexpr int Pens[] = {1, 2, 4, 3, 11, 10, 12, 8, 9, 5};

ParamItem* FindItem(ParamStoreTable& setup, std::string_view code, int item) {
  for (ParamSection& section : setup) {
    if (Trim(section.Code) == code && item >= 0 && static_cast<std::size_t>(item) < section.Items.size()) {
      return &section.Items[static_cast<std::size_t>(item)];
    }
  }
  return nullptr;
}

void Put(ParamStoreTable& setup, std::string_view code, int item, std::string_view tag, int value) {
  if (ParamItem* found = FindItem(setup, code, item)) {
    for (ParamNumRecord& record : found->NumRecords) {
      if (Trim(record.Tag) == tag) {
        record.Value = static_cast<std::int16_t>(value);
      }
    }
  }
}

void Put(ParamStoreTable& setup, std::string_view code, int item, std::string_view tag,
         std::u16string_view text) {
  if (ParamItem* found = FindItem(setup, code, item)) {
    for (ParamTextRecord& record : found->TextRecords) {
      if (Trim(record.Tag) == tag) {
        record.Value = FixedText(text);
      }
    }
  }
}

// Every channel has a name and a pen, used or not.
void NameChannel(ParamStoreTable& setup, int item) {
  const std::u16string name = u"CH " + PaddedDecimal(item + 1, 2);
  Put(setup, "C", item, "TAG", name);
  Put(setup, "C", item, "STAG", name);
  Put(setup, "C", item, "COLR", Pens[static_cast<std::size_t>(item) % std::size(Pens)]);
}

void PutChannel(ParamStoreTable& setup, int item, const ChannelRow& row) {
  Put(setup, "C", item, "TAG", row.tag);
  Put(setup, "C", item, "TAG2", row.tag2);
  Put(setup, "C", item, "STAG", row.totalTag);
  const NumberRow numbers[] = {
      {"C", item, "TYPE", row.kind},        {"C", item, "UNIT", row.unit},
      {"C", item, "SCAL", row.scaled},      {"C", item, "POIN", row.point},
      {"C", item, "MMIN", row.measure.low}, {"C", item, "MMAX", row.measure.high},
      {"C", item, "SMIN", row.scale.low},   {"C", item, "SMAX", row.scale.high},
      {"C", item, "RMIN", row.record.low},  {"C", item, "RMAX", row.record.high},
  };
  for (const NumberRow& number : numbers) {
    Put(setup, number.section, number.item, number.tag, number.value);
  }
  constexpr std::string_view AlarmTags[][3] = {
      {"A1TY", "A1VL", "A1RL"}, {"A2TY", "A2VL", "A2RL"}, {"A3TY", "A3VL", "A3RL"}, {"A4TY", "A4VL", "A4RL"}};
  for (std::size_t i = 0; i < row.alarms.size(); ++i) {
    Put(setup, "A", item, AlarmTags[i][0], row.alarms[i].type);
    Put(setup, "A", item, AlarmTags[i][1], row.alarms[i].value);
    Put(setup, "A", item, AlarmTags[i][2], row.alarms[i].relay);
  }
}

// A pair of numbers in one register: the first in the high byte.
constexpr int Pair(int high, int low) {
  return high * 256 + low;
}

void PutTerm(ParamStoreTable& setup, const TermRow& row) {
  const std::string place = std::to_string(row.formula) + std::to_string(row.term);
  Put(setup, "O", row.channel, "OP" + place, Pair(row.function, row.rule));
  Put(setup, "O", row.channel, "S1" + place, Pair(row.kind1, row.number1 - 1));
  Put(setup, "O", row.channel, "S2" + place, Pair(row.kind2, row.number2 - 1));
}

} // namespace

const Plant& PlantOf(Model model) {
  return model == Model::Kov ? KovPlant : RugPlant;
}

ParamStoreTable PlantSetup(const ParamStoreTable& shape, Model model) {
  const Plant& plant = PlantOf(model);
  ParamStoreTable setup = shape;
  for (int item = 0; item < plant.measuringChannels + plant.operationChannels; ++item) {
    NameChannel(setup, item);
    // An operation channel is shown only, unless the plant records it.
    Put(setup, "C", item, "RECO", item >= plant.measuringChannels ? 1 : 0);
  }
  for (std::size_t i = 0; i < plant.measuring.size(); ++i) {
    PutChannel(setup, static_cast<int>(i), plant.measuring[i]);
  }
  for (std::size_t i = 0; i < plant.operation.size(); ++i) {
    PutChannel(setup, plant.measuringChannels + static_cast<int>(i), plant.operation[i]);
  }
  for (const TermRow& term : plant.terms) {
    PutTerm(setup, term);
  }
  for (const NumberRow& number : plant.numbers) {
    Put(setup, number.section, number.item, number.tag, number.value);
  }
  for (const TextRow& text : plant.texts) {
    Put(setup, text.section, text.item, text.tag, text.text);
  }
  return setup;
}

} // namespace loader::simulator
