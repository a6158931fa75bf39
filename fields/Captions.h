// The labels and frames of a screen, from tables of their captions.
#pragma once

#include <deque>
#include <span>
#include <string_view>

#include "core/TextTable.h"
#include "platform/Controls.h"

namespace loader {

struct CaptionOf {
  std::string_view control;
  TextId text;
  int elements = 0;            // of an array: each element has the next text
  std::string_view field = {}; // the label goes with this field (or array of fields) when it is hidden
};

// Makes the labels in the screen, each with its caption; no label moves once it stands.
void MakeLabels(Screen& screen, std::deque<Label>& labels, std::span<const CaptionOf> captions);
void MakeFrames(Screen& screen, std::deque<Frame>& frames, std::span<const CaptionOf> captions);
// Shows the labels of the fields that are shown, and hides those of the others.
void ShowLabelsWithFields(Screen& screen, std::span<const CaptionOf> captions);

} // namespace loader
