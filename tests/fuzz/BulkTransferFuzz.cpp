// Whole transfers with a hostile recorder: every register, the identity and the busy state come from the
// input, for each generation of the firmware, over each link; one request may be answered badly. By the
// input's wish the set-up that was read goes back, and the two commands follow.
#include <algorithm>
#include <array>
#include <map>

#include "comm/BulkRead.h"
#include "comm/BulkWrite.h"
#include "comm/RecorderCheck.h"
#include "comm/RecorderCommands.h"
#include "comm/modComunication.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/modIni.h"
#include "core/modMain.h"
#include "tests/fuzz/FuzzPlatform.h"
#include "tests/fuzz/FuzzRecorder.h"
#include "tests/fuzz/FuzzStore.h"

namespace loader::fuzz {

namespace {

struct Identity {
  std::string_view model;
  std::string_view version;
};
// One of each generation, then some that are none.
constexpr std::array<Identity, 12> Identities{{{"KOV", "V05A"},
                                               {"KOV", "V13A"},
                                               {"KOV", "V17A"},
                                               {"KOV", "V26A"},
                                               {"KOV", "V39A"},
                                               {"KOV", "V40A"},
                                               {"RUG", "V09W"},
                                               {"RUG", "V10W"},
                                               {"KOV", "V40W"},
                                               {"RUG", "W10W"},
                                               {"DAX", "V10A"},
                                               {"", ""}}};
constexpr std::size_t IdentityRegisters = 16;
constexpr std::size_t VersionRegister = 12;
constexpr std::size_t StateRegister = 100;

class BulkRun {
public:
  explicit BulkRun(FuzzInput& input) : input_(input) {
    const auto tie = [this](FuzzWire& wire, bool tcp) {
      wire.onSend = [this, &wire, tcp](const Bytes& frame) { Answer(wire, frame, tcp); };
    };
    tie(platform_.usb.wire, false);
    tie(platform_.socket.wire, true);
    tie(platform_.serial.wire, false);
    window_ = {.setControlsEnabled = [this](bool enabled) { controlsEnabled_ = enabled; },
               .setLamp = [this](bool on) { lamp_ = on; },
               .refresh = [this] { ++refreshes_; }};
  }

  void Run() {
    ResetLink();
    const int model = input_.Choice(3);
    StartWithShippedStore(model == 1 ? "RUG" : "KOV");
    ModeCheckOff = model == 2 ? 1 : 0;
    Settings.ConfiguredLink = static_cast<std::int16_t>(input_.Choice(3));
    const int flows = input_.Byte();
    if ((flows & 8) != 0) {
      RecorderGeneration = input_.Number16(); // left from earlier
    }
    FillRegisters();
    PutIdentity();
    badRequest_ = input_.Byte();
    badKind_ = input_.Choice(5);
    if (badRequest_ == 255) {
      platform_.socket.wire.lost = platform_.serial.wire.lost = platform_.usb.wire.lost = true;
    }
    shapeIsShipped_ = input_.Choice(4) != 3;
    if (!shapeIsShipped_) {
      BendStore();
    }
    readWhole_ = ReadOnce();
    platform_.boxes.answer = (flows & 16) != 0 ? BoxAnswer::Cancel : BoxAnswer::Ok;
    if ((flows & 1) != 0) {
      WriteBack();
    }
    if ((flows & 2) != 0) {
      Flow([&] { FixSettings(window_); });
    }
    if ((flows & 4) != 0) {
      Flow([&] { SetRecorderClock({26, 11, 21, 12, 0}, window_); });
    }
  }

private:
  void FillRegisters() {
    const std::string_view repeated = input_.ShortText();
    std::uint32_t state = static_cast<std::uint32_t>(input_.Number32());
    const auto fill = [&](std::array<std::uint16_t, FuzzRecorder::TableRegisters>& table) {
      for (std::size_t i = 0; i < table.size(); ++i) {
        if (state != 0) {
          state ^= state << 13U;
          state ^= state >> 17U;
          state ^= state << 5U;
        }
        const auto byte = [&](std::size_t at) {
          return repeated.empty() ? 0U : static_cast<unsigned char>(repeated[at % repeated.size()]);
        };
        table[i] = static_cast<std::uint16_t>((byte(2 * i) | byte(2 * i + 1) << 8U) ^ (state & 0xFFFFU));
      }
    };
    fill(recorder_.input);
    fill(recorder_.holding);
    const int patches = input_.Choice(32);
    for (int patch = 0; patch < patches; ++patch) {
      auto& table = input_.Flag() ? recorder_.input : recorder_.holding;
      const auto at = static_cast<std::uint16_t>(input_.Number16());
      table[at % table.size()] = static_cast<std::uint16_t>(input_.Number16());
    }
  }

  void PutIdentity() {
    const auto choice = static_cast<std::size_t>(input_.Choice(Identities.size() + 1));
    if (choice < Identities.size()) {
      recorder_.PutText(0, Identities[choice].model, VersionRegister);
      recorder_.PutText(VersionRegister, Identities[choice].version, IdentityRegisters - VersionRegister);
    } else {
      recorder_.PutText(0, input_.ShortText(), IdentityRegisters);
    }
    recorder_.input[StateRegister] = input_.Byte(); // bit 0 recording, bit 7 computing
  }

  // Another shape of the store, as a hand-edited initial settings file makes it.
  void BendStore() {
    const int bends = 1 + input_.Choice(8);
    for (int bend = 0; bend < bends; ++bend) {
      ParamSection& section = ParamStore[input_.Byte() % ParamStore.size()];
      const int field = input_.Choice(7);
      const std::size_t at = input_.Byte();
      switch (field) {
      case 0:
        section.BaseAddress = input_.Number32();
        break;
      case 1:
        section.ItemWords = input_.Number16();
        break;
      case 2:
      case 3:
        BendRecords(section, &ParamItem::NumRecords, at,
                    [](auto& record, std::int16_t value) { record.WordOffset = value; });
        break;
      case 4:
        BendRecords(section, &ParamItem::TextRecords, at,
                    [](auto& record, std::int16_t value) { record.ByteLength = value; });
        break;
      case 5:
        section.Code = "?  "; // no section of this name any more
        break;
      default:
        for (ParamItem& item : section.Items) { // nor of this tag
          auto& records = item.TextRecords;
          if (!records.empty()) {
            records[at % records.size()].Tag = "?   ";
          } else if (!item.NumRecords.empty()) {
            item.NumRecords[at % item.NumRecords.size()].Tag = "?   ";
          }
        }
      }
    }
  }

  template <typename Record, typename Change>
  void BendRecords(ParamSection& section, std::vector<Record> ParamItem::*records, std::size_t at,
                   const Change& change) {
    const std::int16_t value = input_.Number16();
    for (ParamItem& item : section.Items) {
      auto& of = item.*records;
      if (!of.empty()) {
        change(of[at % of.size()], value);
      }
    }
  }

  void Answer(FuzzWire& wire, const Bytes& frame, bool tcp) {
    Bytes reply = recorder_.Answer(frame, tcp);
    ++requests_;
    if (requests_ != badRequest_) {
      wire.Reply(std::move(reply), 1);
      return;
    }
    switch (badKind_) {
    case 0: // nothing comes
      return;
    case 1:
      wire.Reply(ErrorReplyTo(frame, tcp), 1);
      return;
    case 2:
      reply[reply.size() / 2] ^= 0x55U;
      break;
    case 3:
      reply.resize(reply.size() / 2);
      break;
    default:
      wire.lost = true;
      return;
    }
    wire.Reply(std::move(reply), 1);
  }

  template <typename Action> void Flow(const Action& action) {
    platform_.boxes.shown.clear();
    action();
    Require(controlsEnabled_, "the controls are enabled behind a flow");
    Require(!lamp_, "the lamp is off behind a flow");
    Require(!WaitTimer.Enabled && !platform_.time.AnyTimerArmed(), "no timer runs behind a flow");
    Require(platform_.serial.wire.lost || !platform_.serial.open, "the port is closed behind a flow");
    // One that never came to stand is closed by the next opening.
    Require(platform_.socket.state != 7, "the connection is closed behind a flow");
    RequireSoundStore(ParamStore);
    RequireWholeTexts();
  }

  void RequireWholeTexts() {
    ForEachRecord(
        ParamStore, [](const ParamNumRecord&) {},
        [](const ParamTextRecord& record) {
          Require(record.Value.find(u'\0') == std::u16string::npos, "a text holds no NUL");
        });
    for (const std::u16string& unit : UnitNames) {
      Require(unit.find(u'\0') == std::u16string::npos, "a unit holds no NUL");
    }
  }

  // Right after a read nothing counts as changed.
  void RequireReadValues() {
    for (const ParamSection& section : ParamStore) {
      const bool identity = section.Code == "P  ";
      const bool oldTimes = section.Code == "E  "; // TSTR and TSTO of generation 2
      for (const ParamItem& item : section.Items) {
        for (const ParamNumRecord& record : item.NumRecords) {
          Require(record.Value == record.ReadValue || oldTimes, "a number that was read is both values");
        }
        for (const ParamTextRecord& record : item.TextRecords) {
          Require(record.Value == record.ReadValue || identity, "a text that was read is both values");
        }
      }
    }
  }

  bool ReadOnce() {
    const int refreshes = refreshes_;
    Flow([&] { ReadFromRecorder(window_); });
    RequireReadValues();
    const bool opened = refreshes_ > refreshes;
    return opened && platform_.BoxesOf(11013) == 0;
  }

  // Without the state word, which the write reads for itself.
  static std::vector<std::int16_t> Numbers() {
    std::vector<std::int16_t> numbers;
    for (const ParamSection& section : ParamStore) {
      for (const ParamItem& item : section.Items) {
        for (const ParamNumRecord& record : item.NumRecords) {
          numbers.push_back(section.Code == "S  " ? std::int16_t{0} : record.Value);
        }
      }
    }
    return numbers;
  }

  void WriteBack() {
    const auto inputBefore = recorder_.input;
    const std::vector<std::int16_t> before = Numbers();
    Flow([&] { WriteToRecorder(window_); });
    Require(recorder_.input == inputBefore, "an input register is never written");
    const bool told = platform_.BoxesOf(62701) == 1;
    Require(!told || platform_.boxes.Count() == 2, "the end of a write is told after nothing else");
    // Only today's layouts hold every number at its own place.
    const bool plain = RecorderGeneration == 5 || RecorderGeneration == 21;
    if (told && plain && shapeIsShipped_ && readWhole_) {
      Require(ReadOnce() || badRequest_ > 0, "what was written is read");
      Require(badRequest_ > 0 || Numbers() == before, "what was written is what is read");
    }
  }

  FuzzInput& input_;
  FuzzPlatform platform_;
  FuzzRecorder recorder_;
  FlowCallbacks window_;
  bool controlsEnabled_ = true;
  bool lamp_ = false;
  int refreshes_ = 0;
  int requests_ = 0;
  int badRequest_ = 0; // counted from 1; 0: none
  int badKind_ = 0;
  bool shapeIsShipped_ = true;
  bool readWhole_ = false;
};

} // namespace

} // namespace loader::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  loader::fuzz::FuzzInput input(data, size);
  loader::fuzz::BulkRun(input).Run();
  return 0;
}
