#include "companion/Verify.h"

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

// False with end and reason when it did not go through.
bool Write(const RecorderLine& line, std::vector<SectionBlock>& written, WriteOutcome& outcome) {
  const LineInUse link(line);
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

WriteOutcome WriteAndVerify(const RecorderLine& line, WholeSetUp& setUp, bool store) {
  WriteOutcome outcome;
  const SetUpInForce inForce(setUp);
  std::vector<SectionBlock> written;
  if (!Write(line, written, outcome)) {
    return outcome;
  }
  outcome.end = WriteEnd::NotCompared;
  try {
    LineInUse link(line);
    link.Open();
    const FlowFrame frame(NoWindow);
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
