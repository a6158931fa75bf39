#include "companion/Transfer.h"

#include <array>
#include <utility>

#include "comm/BulkRead.h"
#include "comm/FlowCallbacks.h"
#include "comm/RecorderCheck.h"
#include "comm/TransferWatch.h"
#include "comm/modComunication.h"
#include "comm/modUsb.h"
#include "companion/Losses.h"
#include "core/ModelProfile.h"
#include "core/Text.h"
#include "core/TextTable.h"
#include "core/UserUnits.h"
#include "platform/BarePlatform.h"

namespace loader {

namespace {

const FlowCallbacks NoWindow;

Phrase CodePhrase(std::uint8_t code) {
  switch (code) {
  case ResultRefused:
    return Phrase::CodeRefused;
  case ResultDamaged:
    return Phrase::CodeDamaged;
  case ResultErrorReply:
    return Phrase::CodeErrorReply;
  case ResultWrongLength:
    return Phrase::CodeWrongLength;
  case ResultWrongTransaction:
    return Phrase::CodeWrongTransaction;
  case ResultRunTimeFailure:
    return Phrase::CodeLineLost;
  case ResultStopped:
    return Phrase::CodeStopped;
  default:
    return Phrase::CodeNoAnswer;
  }
}

Phrase EndPhrase(const TransferResult& result) {
  switch (result.end) {
  case TransferEnd::LinkNotOpened:
    return Phrase::EndLinkNotOpened;
  case TransferEnd::RecorderBusy:
    return Phrase::EndRecorderBusy;
  case TransferEnd::OtherModel:
    return Phrase::EndOtherModel;
  case TransferEnd::NoVersion:
    return Phrase::EndNoVersion;
  case TransferEnd::NothingToTransfer:
    return Phrase::EndNothingToTransfer;
  default:
    if (result.request.registers == 0) {
      return Phrase::EndSectionUnfit;
    }
    return result.request.writing ? Phrase::EndWriteFailed : Phrase::EndReadFailed;
  }
}

std::u16string Number(std::int64_t number) {
  return DecimalText(number);
}

// The recorder of an address, as the link layer is told of it.
void TakeAddress(const SetUpAddress& address) {
  Settings.ConfiguredLink = address.place == Place::Usb   ? LinkUsb
                            : address.place == Place::Tcp ? LinkEthernet
                                                          : LinkSerial;
  Settings.StationSetting = static_cast<std::int16_t>(address.station);
  Settings.RecorderIpAddress = address.where;
}

[[noreturn]] void Refuse(Phrase phrase, const RecorderLine& line, std::u16string_view model,
                         std::u16string_view other, std::u16string_view box) {
  throw Undone{Say(phrase, line.language,
                   {{u"SETUP", line.address.text}, {u"MODEL", model}, {u"OTHER", other}, {u"BOX", box}})};
}

// Section P lies at the same place in both models: either one reads it.
RecorderThere Identify(const RecorderLine& line, const LineInUse& link, const std::string& asked) {
  WholeSetUp either = InitialSetUp("KOV", line.language);
  const RecorderIdentity identity = WithSetUp(either, ReadIdentity);
  link.RequireDone(identity.result);
  link.RequireNothingSwallowed();
  RecorderThere there{identity.model, identity.versionTag, 0};
  if (there.model != "KOV" && there.model != "RUG") {
    Refuse(Phrase::RecorderOfNoModel, line, Widen(there.model), there.versionTag, {});
  }
  if (!asked.empty() && asked != there.model) {
    Refuse(Phrase::RecorderOfOtherModel, line, Widen(there.model), Widen(asked), LoadText(11015));
  }
  const std::optional<std::int16_t> generation = GenerationOfTag(there.model, there.versionTag);
  if (!generation) {
    Refuse(Phrase::RecorderOfNoVersion, line, Widen(there.model), there.versionTag, LoadText(11012));
  }
  there.generation = *generation;
  return there;
}

// Section S lies at the same place in both models too, and is no part of a set-up.
bool IsBusy(const RecorderLine& line, const LineInUse& link) {
  WholeSetUp either = InitialSetUp("KOV", line.language);
  const TransferResult state = WithSetUp(either, CheckState);
  if (state.end != TransferEnd::RecorderBusy) {
    link.RequireDone(state);
  }
  return state.end == TransferEnd::RecorderBusy;
}

} // namespace

KeepBlocks::KeepBlocks(std::vector<SectionBlock>& blocks, bool written) : before_(WatchOfTransfers.whole) {
  WatchOfTransfers.whole = [&blocks, written](const WholeBlock& block) {
    if (block.writing != written) {
      return;
    }
    const ParamSection& section = ParamStore.at(block.section);
    blocks.push_back({std::string(Trim(section.Code)),
                      section.BaseAddress + block.registerOffset,
                      {block.bytes.begin(), block.bytes.end()}});
  };
}
KeepBlocks::~KeepBlocks() {
  WatchOfTransfers.whole = std::move(before_);
}

struct LineInUse::Inside {
  explicit Inside(const SetUpAddress& address) {
    platform.winSock.onFailure = [] { StopTimer(WaitTimer); };
    // What a USB call that failed has brought is the exchange before: nothing goes on from there.
    WatchOfTransfers.mayGo = [this](const BlockStep& step) {
      return !Swallowed() && (!mayGo || mayGo(step));
    };
    WhenDeviceFails = [this](std::u16string_view, std::u16string_view reason) {
      if (deviceReason.empty()) {
        deviceReason = reason; // what comes behind follows from it
      }
    };
    TakeAddress(address);
  }
  ~Inside() {
    WatchOfTransfers.mayGo = mayGo;
    platform.winSock.onFailure = {};
    WhenDeviceFails = {};
    SetPlatform(before);
    Settings = settings;
  }
  Inside(const Inside&) = delete;
  Inside& operator=(const Inside&) = delete;

  [[nodiscard]] bool Swallowed() const { return UsbFailuresTakenForSuccess != swallowed; }

  CommSettings settings = Settings;
  std::u16string deviceReason; // in the system's words
  std::function<bool(const BlockStep&)> mayGo = WatchOfTransfers.mayGo;
  BareBoxes boxes;
  Platform platform = WithParts(ThePlatform(), {.boxes = &boxes});
  Platform* before = SetPlatform(&platform);
  std::uint32_t swallowed = UsbFailuresTakenForSuccess;
};

LineInUse::LineInUse(const RecorderLine& line)
    : line_(line), inside_(std::make_unique<Inside>(line.address)) {}
LineInUse::~LineInUse() = default;

void LineInUse::Open() {
  if (!OpenLink()) {
    TellLinkNotOpened();
    RequireDone({.end = TransferEnd::LinkNotOpened});
  }
}

std::u16string LineInUse::Reason(const TransferResult& result) const {
  const bool stopped = line_.stopped && line_.stopped();
  const FailedRequest& request = result.request;
  if (inside_->Swallowed()) {
    return std::u16string(PhraseText(Phrase::ExchangeSwallowed, line_.language));
  }
  const std::u16string code(
      PhraseText(stopped ? Phrase::CodeStopped : CodePhrase(request.code), line_.language));
  std::u16string reason = Say(EndPhrase(result), line_.language,
                              {{u"SECTION", SectionName(result.section, line_.language)},
                               {u"CODE", Widen(result.section)},
                               {u"FIRST", Number(request.firstRegister)},
                               {u"LAST", Number(std::int64_t{request.firstRegister} + request.registers - 1)},
                               {u"REASON", result.detail.empty() ? code : FromUtf8(result.detail)}});
  if (stopped) {
    return std::u16string(PhraseText(Phrase::Stopped, line_.language)) + reason;
  }
  if (!inside_->deviceReason.empty()) {
    reason += Say(Phrase::DeviceReason, line_.language, {{u"REASON", inside_->deviceReason}});
  }
  for (const std::u16string& box : inside_->boxes.shown) {
    reason += Say(Phrase::BoxText, line_.language, {{u"BOX", box}});
  }
  return reason;
}

void LineInUse::RequireDone(const TransferResult& result) const {
  if (result.end != TransferEnd::Done) {
    throw Undone{line_.address.text + u": " + Reason(result)};
  }
}

bool LineInUse::HasSwallowed() const {
  return inside_->Swallowed();
}

void LineInUse::RequireNothingSwallowed() const {
  if (inside_->Swallowed()) {
    throw Undone{line_.address.text + u": " +
                 std::u16string(PhraseText(Phrase::ExchangeSwallowed, line_.language))};
  }
}

RecorderRead ReadRecorder(const RecorderLine& line, const std::string& asked, AskState state) {
  static_cast<void>(InitialSetUp("KOV", line.language)); // nothing is looked for while the recorder waits
  LineInUse link(line);
  link.Open();
  FlowFrame frame(NoWindow);
  RecorderRead read;
  read.recorder = Identify(line, link, asked);
  if (state == AskState::Yes) {
    read.busy = IsBusy(line, link);
  }
  read.setUp = InitialSetUp(read.recorder.model, line.language);
  const SetUpInForce inForce(read.setUp);
  const KeepBlocks keep(read.blocks, false);
  TransferResult result = ReadAll();
  TellCheck(result);
  link.RequireDone(result);
  link.RequireNothingSwallowed();
  UpdateUserUnitNames();
  return read;
}

std::u16string RecorderText(const RecorderThere& recorder, const RecorderLine& line) {
  return Say(Phrase::RecorderThereIs, line.language,
             {{u"MODEL", Widen(recorder.model)},
              {u"VERSION", recorder.versionTag},
              {u"GENERATION", Number(recorder.generation)},
              {u"STATION", Number(line.address.station)}});
}

} // namespace loader
