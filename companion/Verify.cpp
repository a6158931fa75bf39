#include "companion/Verify.h"

#include <algorithm>
#include <utility>

#include "comm/BulkWrite.h"
#include "comm/ParameterTelegram.h"
#include "comm/RecorderCheck.h"
#include "comm/RecorderCommands.h"
#include "comm/TransferWatch.h"
#include "comm/modComunication.h"
#include "core/Text.h"
#include "core/TextTable.h"

namespace loader {

namespace {

const FlowCallbacks NoWindow;

// Whether a request that may have changed the recorder has gone out.
bool MayHaveWritten(const TransferResult& result) {
  return !result.sections.empty() || result.request.writing;
}

const SectionBlock* IdentityIn(const std::vector<SectionBlock>& blocks) {
  const auto found = std::ranges::find(blocks, "P", &SectionBlock::section);
  return found == blocks.end() ? nullptr : &*found;
}

// A write asks the recorder what it is before it writes anything: it goes on as long as that is what a read
// has found there.
class SameRecorder {
public:
  explicit SameRecorder(const RecorderRead* present)
      : expected_(present == nullptr ? nullptr : IdentityIn(present->blocks)), keep_(read_, false),
        mayGo_(WatchOfTransfers.mayGo) {
    WatchOfTransfers.mayGo = [this](const BlockStep& step) {
      return !IsAnother() && (!mayGo_ || mayGo_(step));
    };
  }
  ~SameRecorder() { WatchOfTransfers.mayGo = mayGo_; }
  SameRecorder(const SameRecorder&) = delete;
  SameRecorder& operator=(const SameRecorder&) = delete;

  [[nodiscard]] bool IsAnother() const {
    const SectionBlock* found = IdentityIn(read_);
    return expected_ != nullptr && found != nullptr && found->bytes != expected_->bytes;
  }

private:
  const SectionBlock* expected_; // nullptr: whichever stands there
  std::vector<SectionBlock> read_;
  KeepBlocks keep_;
  std::function<bool(const BlockStep&)> mayGo_;
};

// False with end and reason when it did not go through.
bool Write(const RecorderLine& line, const RecorderRead* present, std::vector<SectionBlock>& written,
           WriteOutcome& outcome) {
  const LineInUse link(line);
  const SameRecorder same(present);
  const KeepBlocks keep(written, true);
  const TransferResult result = WriteSetUp(
      NoWindow, {.whileOpen = [](const TransferResult& ended) { TellCheck(ended); }, .whenClosed = {}});
  outcome.sections = result.sections;
  if (result.end == TransferEnd::Done && !link.HasSwallowed()) {
    return true;
  }
  if (result.end == TransferEnd::LinkNotOpened) {
    TellLinkNotOpened();
  }
  if (result.end == TransferEnd::RecorderBusy) {
    ShowMessage(LoadText(20107));
  }
  if (same.IsAnother()) { // its first request that writes has not gone out
    outcome.reason = Say(Phrase::RecorderIsAnother, line.language, {{u"SETUP", line.address.text}});
    return false;
  }
  outcome.reason = line.address.text + u": " + link.Reason(result);
  outcome.end = MayHaveWritten(result) || link.HasSwallowed() ? WriteEnd::Mixture : WriteEnd::NotWritten;
  return false;
}

// A section's block as the recorder has it now.
SectionBlock ReadBack(const LineInUse& link, const SectionBlock& written) {
  const StoreIndex section = gFFindSection(written.section);
  const auto offset = static_cast<std::int16_t>(written.firstRegister - ParamStore.at(section).BaseAddress);
  if (!gFReadBlock(section, offset)) {
    link.RequireDone({.end = TransferEnd::RequestFailed,
                      .sections = {},
                      .section = written.section,
                      .request = RequestUnderWay(false)});
  }
  link.RequireNothingSwallowed();
  SectionBlock found = written;
  std::copy_n(CommLink.BlockBuf.begin(), found.bytes.size(), found.bytes.begin());
  return found;
}

// The comparison has a connection of its own: what it proves has to be proved of the recorder that was
// written.
void RequireSame(const RecorderLine& line, const LineInUse& link, const RecorderRead* present) {
  const SectionBlock* identity = present == nullptr ? nullptr : IdentityIn(present->blocks);
  if (identity != nullptr && ReadBack(link, *identity).bytes != identity->bytes) {
    throw Undone{Say(Phrase::RecorderIsAnother, line.language, {{u"SETUP", line.address.text}})};
  }
}

void Compare(const LineInUse& link, const std::vector<SectionBlock>& written, WriteOutcome& outcome) {
  for (const SectionBlock& block : written) {
    for (RegisterDifference& different :
         DifferentRegisters(RecorderGeneration, block, ReadBack(link, block))) {
      outcome.different.push_back(std::move(different));
    }
    outcome.registers += block.bytes.size() / 2;
  }
}

void Store(const LineInUse& link, WriteOutcome& outcome) {
  outcome.end = WriteEnd::NotStored;
  const bool stored = gFFixSettings();
  if (!stored) {
    link.RequireDone({.end = TransferEnd::RequestFailed,
                      .sections = {},
                      .section = "F",
                      .request = RequestUnderWay(true)});
  }
  link.RequireNothingSwallowed();
  outcome.stored = true;
  outcome.end = WriteEnd::Verified;
}

} // namespace

WriteOutcome WriteAndVerify(const RecorderLine& line, WholeSetUp& setUp, bool store,
                            const RecorderRead* present) {
  WriteOutcome outcome;
  const SetUpInForce inForce(setUp);
  std::vector<SectionBlock> written;
  if (!Write(line, present, written, outcome)) {
    return outcome;
  }
  outcome.end = WriteEnd::NotCompared;
  try {
    LineInUse link(line);
    link.Open();
    const FlowFrame frame(NoWindow);
    RequireSame(line, link, present);
    Compare(link, written, outcome);
    outcome.end = outcome.different.empty() ? WriteEnd::Verified : WriteEnd::Different;
    if (store && outcome.different.empty()) {
      Store(link, outcome);
    }
  } catch (const Undone& undone) {
    outcome.reason = undone.message;
  } catch (const RunTimeFailure& failure) {
    outcome.reason = line.address.text + u": " + FromUtf8(failure.what());
  }
  return outcome;
}

} // namespace loader
