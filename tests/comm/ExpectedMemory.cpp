#include "tests/comm/ExpectedMemory.h"

#include <optional>

#include "tests/comm/CommFixture.h"

namespace loader::test {

namespace {

// What becomes of a number: a value at a byte of its item, or nothing.
struct Written {
  int byte = 0;
  int value = 0;
};
using Result = std::optional<Written>;

// A number record among its neighbours.
struct Subject {
  const ParamItem& parent;
  std::size_t position;
  int item;
  [[nodiscard]] const ParamNumRecord& Record() const { return parent.NumRecords[position]; }
  [[nodiscard]] std::string Tag() const { return std::string(Trim(Record().Tag)); }
  [[nodiscard]] int Value() const { return Record().Value; }
  [[nodiscard]] int Before() const { return parent.NumRecords[position - 1].Value; }
  [[nodiscard]] Result Own(int value) const { return Written{2 * Record().WordOffset, value}; }
  [[nodiscard]] Result OwnOrZeroFrom(int limit) const { return Own(Value() >= limit ? 0 : Value()); }
};

// The rule of MTM2 and ETG1.
int TriggerValue(const Subject& s, int inputLimit, int alarmLimit) {
  const int timing = s.Before();
  if ((timing == 1 || timing == 2) && inputLimit > 0 && s.Value() >= inputLimit) {
    return 0;
  }
  if ((timing == 3 || timing == 4) && s.Value() >= alarmLimit) {
    return 0;
  }
  return s.Value();
}

Result InG4(char section, const Subject& s, bool older) {
  const std::string tag = s.Tag();
  switch (section) {
  case 'C':
    if (s.item > 17) {
      return std::nullopt;
    }
    if (tag == "SUBC") {
      return s.OwnOrZeroFrom(19);
    }
    if (tag == "OTCH") {
      return s.OwnOrZeroFrom(18);
    }
    if (tag == "SDIG") {
      return s.OwnOrZeroFrom(82);
    }
    return s.Own(In("TAIS SRIN", tag) ? 0 : s.Value());
  case 'A':
    return s.item > 17 ? std::nullopt : s.Own(s.Value());
  case 'G':
    return s.OwnOrZeroFrom(19);
  case 'E':
    return tag == "TEXT" ? s.OwnOrZeroFrom(82) : s.Own(s.Value());
  case 'H':
    return s.Own(In("PAS1 PAS2 RPAS", tag) || (older && tag == "BETU") ? 0 : s.Value());
  case 'M':
    return s.Own(tag == "MTM2" ? TriggerValue(s, 0, 18) : s.Value());
  case 'X':
    return s.Own(tag == "ETG1" ? TriggerValue(s, 0, 18) : s.Value());
  default:
    return s.Own(s.Value());
  }
}

constexpr std::string_view PlainOfOldChannel =
    "FILT UNIT SCAL MMIN MMAX SMIN SMAX POIN PVSI PVKA NIPO RECO RMIN "
    "RMAX DSPM ZMB1 ZMB2 ZMP1 ZMP2";

int OldKind(int kind, int of33) {
  switch (kind) {
  case 20:
    return 13;
  case 21:
    return 14;
  case 30:
    return 15;
  case 31:
    return 16;
  case 32:
    return 17;
  case 33:
    return of33;
  case 40:
    return 0;
  default:
    return kind;
  }
}

// The alarms of generations 0 to 2.
Result OldAlarm(const Subject& s) {
  const std::string kind = s.Tag().substr(2);
  return kind == "RL" ? s.OwnOrZeroFrom(11) : s.Own(s.Value());
}

Result OldMessage(const Subject& s, int alarmLimit) {
  return s.Own(s.Tag() == "MTM2" ? TriggerValue(s, 5, alarmLimit) : s.Value());
}

// H of generations 1 and 2.
Result OldGeneral(const Subject& s) {
  if (s.Tag() == "BETU") {
    return s.Own(0);
  }
  return In("TIMS YEAR MONT DAYS HOUR MINT KLOC MSMP SSMP ASBY FSTN FZTI FPOI FTIR ALMH ALML", s.Tag())
             ? s.Own(s.Value())
             : std::nullopt;
}

Result ChannelInG2(const Subject& s) {
  const std::string tag = s.Tag();
  if (s.item > 17) {
    return std::nullopt;
  }
  if (In(PlainOfOldChannel, tag) || In("COLR ROOT", tag)) {
    return s.Own(s.Value());
  }
  if (tag == "SUBC") {
    return s.OwnOrZeroFrom(19);
  }
  if (tag == "TAIS") {
    return s.Own(s.Record().DefaultValue);
  }
  if (tag == "TYPE") {
    return s.Own(OldKind(s.Value(), 18));
  }
  if (tag == "FTIO") {
    return Written{84, s.Value()};
  }
  if (tag == "SEUN") {
    return Written{80, s.Value()};
  }
  if (tag == "SECU") {
    return Written{82, s.Value()};
  }
  if (tag == "SEKI") {
    return Written{70, s.Value() == 1 && Stored("C", s.item, "STYP") == 0 ? 1 : 0};
  }
  return std::nullopt;
}

Result InG2(char section, const Subject& s) {
  switch (section) {
  case 'C':
    return ChannelInG2(s);
  case 'A':
    return s.item > 17 ? std::nullopt : OldAlarm(s);
  case 'G':
    return s.OwnOrZeroFrom(19);
  case 'H':
    return OldGeneral(s);
  case 'M':
    return OldMessage(s, 18);
  case 'D':
    return s.item > 4 ? std::nullopt : s.OwnOrZeroFrom(4);
  case 'E':
    return s.Tag() == "TCYC" ? Result(Written{4, s.Value()}) : std::nullopt; // the times: see LayTotalizer
  default:
    return s.Own(s.Value());
  }
}

Result ChannelInG1(const Subject& s, bool oldest) {
  const std::string tag = s.Tag();
  if (s.item > 8) {
    return std::nullopt;
  }
  if (In(PlainOfOldChannel, tag)) {
    return s.Own(s.Value());
  }
  if (tag == "COLR") {
    return s.Own(oldest ? s.Record().DefaultValue : s.Value());
  }
  if (tag == "TAIS") {
    return s.Own(s.Record().DefaultValue);
  }
  if (tag == "TYPE") {
    return s.Own(OldKind(s.Value(), oldest ? 17 : 18));
  }
  if (tag == "SUBC") {
    return oldest ? s.Own(0) : s.OwnOrZeroFrom(10);
  }
  return std::nullopt;
}

Result InG1(char section, const Subject& s) {
  switch (section) {
  case 'C':
    return ChannelInG1(s, false);
  case 'A':
    return s.item > 8 ? std::nullopt : OldAlarm(s);
  case 'G':
    return s.OwnOrZeroFrom(10);
  case 'H':
    return OldGeneral(s);
  case 'M':
    return OldMessage(s, 9);
  case 'D':
    return s.item > 4 ? std::nullopt : s.OwnOrZeroFrom(2);
  default:
    return s.Own(s.Value());
  }
}

Result GeneralInG0(const Subject& s) {
  const std::string tag = s.Tag();
  if (tag == "KLOC") {
    return s.Own(s.Value());
  }
  if (tag == "BETU") {
    return s.Own(0);
  }
  return tag == "MSMP"   ? Result(Written{4, s.Value()})
         : tag == "SSMP" ? Result(Written{6, s.Value()})
         : tag == "ALMH" ? Result(Written{36, s.Value()})
                         : std::nullopt;
}

Result InG0(char section, const Subject& s) {
  switch (section) {
  case 'C':
    return ChannelInG1(s, true);
  case 'T':
    return In("THOU TMCH TBUN", s.Tag()) ? s.Own(s.Value()) : std::nullopt;
  case 'B':
    return In("BHOU BPVD BPVM", s.Tag()) ? s.Own(s.Value()) : std::nullopt;
  case 'H':
    return GeneralInG0(s);
  default:
    return InG1(section, s);
  }
}

Result WrittenIn(int generation, char section, const Subject& s) {
  switch (generation) {
  case 0:
    return InG0(section, s);
  case 1:
    return InG1(section, s);
  case 2:
    return InG2(section, s);
  case 3:
    return InG4(section, s, true);
  case 4:
    return InG4(section, s, false);
  case 20:
    return s.Own(s.Tag() == "TAIS" ? s.Record().DefaultValue : s.Value());
  default:
    return s.Own(s.Value());
  }
}

bool TextIsWritten(int generation, char section, int item, std::string_view tag) {
  if (section != 'C' || generation >= 5) {
    return true;
  }
  const int channels = generation >= 2 ? 18 : 9;
  return item < channels && (generation >= 3 || tag == "TAG");
}

void LayText(Memory& memory, int first, const ParamTextRecord& record) {
  std::string bytes = ToCodePage(TrimRight(record.Value));
  bytes.resize(static_cast<std::size_t>(record.ByteLength), '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    std::uint16_t& word = memory.at(static_cast<std::size_t>(first) - 40001 + i / 2);
    const auto byte = static_cast<unsigned char>(bytes[i]);
    word = static_cast<std::uint16_t>(i % 2 == 0 ? (word & 0xFF00) | byte : (word & 0x00FF) | byte << 8);
  }
}

void LayTotalizer(Memory& memory, int first) {
  const auto put = [&](int word, int value) {
    memory.at(static_cast<std::size_t>(first + word - 40001)) = static_cast<std::uint16_t>(value & 0xFFFF);
  };
  put(6, Stored("E", 0, "TSTR") / 60);
  put(7, Stored("E", 0, "TSTR") % 60);
  put(8, Stored("E", 0, "TSTO") / 60);
  put(9, Stored("E", 0, "TSTO") % 60);
  put(0, Stored("Z", 0, "TOTA"));
  put(1, Stored("Z", 0, "TSTM"));
  put(4, Stored("Z", 0, "TSIG"));
}

} // namespace

void LaySection(Memory& memory, const Generation& generation, char code) {
  const Place place = PlaceIn(generation, code);
  const ParamSection& section = ParamStore[gFFindSection(std::string(1, code))];
  for (std::size_t i = 0; i < section.Items.size(); ++i) {
    const int item = static_cast<int>(i);
    const int first = place.base + item * place.words;
    for (const ParamTextRecord& record : section.Items[i].TextRecords) {
      if (TextIsWritten(generation.number, code, item, Trim(record.Tag))) {
        LayText(memory, first + record.WordOffset, record);
      }
    }
    for (std::size_t n = 0; n < section.Items[i].NumRecords.size(); ++n) {
      if (const Result written = WrittenIn(generation.number, code, Subject{section.Items[i], n, item})) {
        memory.at(static_cast<std::size_t>(first + written->byte / 2 - 40001)) =
            static_cast<std::uint16_t>(written->value & 0xFFFF);
      }
    }
    if (code == 'E' && generation.number == 2) {
      LayTotalizer(memory, first);
    }
  }
}

} // namespace loader::test
