// The bulk write: the store into the recorder's working memory.
//
// A section is never written blind: its whole block is read first, the parameters that the firmware knows are
// laid over it, and the whole block is written back, so that every other register keeps what the recorder
// had. Older firmware needs translated values, fixed places and lower limits; they are told by the tables in
// comm/WriteLayouts.h.
#pragma once

#include <string_view>

#include "comm/FlowCallbacks.h"
#include "comm/TransferResult.h"

namespace loader {

// The flow of btnRegWrite: asks, opens the link, refuses a busy recorder (text 20107), writes, closes. A
// write that failed has no message of its own and is not rolled back.
void WriteToRecorder(const FlowCallbacks& window);

// The same without question and message: opens the link, looks whether the recorder is busy, writes, closes.
// What became of it is told to `talk` on the way, and returned.
[[nodiscard]] TransferResult WriteSetUp(const FlowCallbacks& window, const TransferTalk& talk);

// Over a link that is open: checks the recorder and writes the sections of its generation in their order up
// to the first failure. A generation without an order ends in NothingToTransfer.
[[nodiscard]] TransferResult WriteAll();

// WriteAll with the messages of the check, and with text 62701 at its end. False at the first failure,
// without that text.
[[nodiscard]] bool gFWriteAll();

// One section by the layout of a generation. False when a request failed or the section cannot be written at
// all; the recorder may then hold part of it.
[[nodiscard]] bool gFWriteSectionG0(std::string_view sectionCode);
[[nodiscard]] bool gFWriteSectionG1(std::string_view sectionCode);
[[nodiscard]] bool gFWriteSectionG2(std::string_view sectionCode);
[[nodiscard]] bool gFWriteSectionG3(std::string_view sectionCode);
[[nodiscard]] bool gFWriteSectionG4(std::string_view sectionCode);
[[nodiscard]] bool gFWriteSectionPlain(std::string_view sectionCode); // generations 5 and 21
[[nodiscard]] bool gFWriteSectionG20(std::string_view sectionCode);

// --- What a write to a generation is, for programs that tell of it

struct GenerationWrite;
struct SectionWrite;
struct TagWrite;

struct WritePlan {
  int generation;
  const GenerationWrite& layout;
  std::string_view sections; // in their order, one letter each
};
// nullptr for a generation that has none.
[[nodiscard]] const WritePlan* FindWritePlan(int generation);
[[nodiscard]] const SectionWrite& LayoutOf(const GenerationWrite& generation, std::string_view sectionCode);
// Of a tag that the layout does not name: `otherwise`, which is the layout's rule of texts or of numbers.
[[nodiscard]] TagWrite RuleOf(const SectionWrite& layout, std::string_view tag, const TagWrite& otherwise);
// The store's section over the block in BlockBuf, as a write lays it there.
void LaySectionOver(const GenerationWrite& generation, std::string_view sectionCode);

} // namespace loader
