// The bulk read: the recorder's whole set-up into the store.
//
// The register layout has changed with the recorder's firmware. Each reader takes the values that its
// firmware has and gives every other parameter its default value, so that the store is complete after any
// read. What the layouts differ in is told by the tables in comm/ReadLayouts.h.
#pragma once

#include <string_view>

#include "comm/FlowCallbacks.h"
#include "comm/TransferResult.h"

namespace loader {

// The flow of btnRegRead: asks, opens the link, reads, closes, takes over the user units and refreshes. A
// read that failed is told by text 11013 and is not rolled back: the sections before the failure stay.
void ReadFromRecorder(const FlowCallbacks& window);

// The same without question and message: opens the link, reads, closes. What became of it is told to `talk`
// on the way, and returned.
[[nodiscard]] TransferResult ReadSetUp(const FlowCallbacks& window, const TransferTalk& talk);

// Over a link that is open: checks the recorder and reads the sections of its generation in their order up to
// the first failure. A generation without an order ends in NothingToTransfer.
[[nodiscard]] TransferResult ReadAll();

// ReadAll with the messages of the check. False at the first failure.
[[nodiscard]] bool gFReadAll();

// One section by the layout of a generation. False when a request failed or the section cannot be read at
// all; what was stored until then stays.
[[nodiscard]] bool gFReadSectionG0(std::string_view sectionCode);
[[nodiscard]] bool gFReadSectionG1(std::string_view sectionCode);
[[nodiscard]] bool gFReadSectionG2(std::string_view sectionCode);
[[nodiscard]] bool gFReadSectionG3(std::string_view sectionCode);
[[nodiscard]] bool gFReadSectionPlain(std::string_view sectionCode); // generations 4, 5, 20, 21

// --- What a read of a generation is, for programs that tell of it

struct GenerationRead;
struct SectionRead;
struct TagRead;
enum class ReadRule;

struct ReadPlan {
  int generation;
  const GenerationRead& layout;
  std::string_view sections; // in their order, one letter each
};
// nullptr for a generation that has none.
[[nodiscard]] const ReadPlan* FindReadPlan(int generation);
[[nodiscard]] const SectionRead& LayoutOf(const GenerationRead& generation, std::string_view sectionCode);
// Of a tag that the layout does not name: `otherwise`, which is the layout's rule of texts or of numbers.
[[nodiscard]] TagRead RuleOf(const SectionRead& layout, std::string_view tag, ReadRule otherwise);
// A section's block, from BlockBuf into the store. RunTimeFailure for a value that no register can hold.
void StoreSection(const GenerationRead& generation, std::string_view sectionCode);

} // namespace loader
