#include "fields/Captions.h"

#include <string>

#include "fields/NamedControls.h"

namespace loader {

namespace {

// Runs for each control of the row: its name, its text, the name of its field.
template <typename Act> void ForEach(const CaptionOf& row, const Act& act) {
  if (row.elements == 0) {
    act(std::string(row.control), row.text, std::string(row.field));
    return;
  }
  for (int n = 0; n < row.elements; ++n) {
    act(ElementName(row.control, n), row.text + n,
        row.field.empty() ? std::string() : ElementName(row.field, n));
  }
}

template <typename ControlType>
void MakeControls(Screen& screen, std::deque<ControlType>& controls, std::span<const CaptionOf> captions) {
  for (const CaptionOf& row : captions) {
    ForEach(row, [&](const std::string& name, TextId text, const std::string& /*field*/) {
      controls.emplace_back(screen, name).caption = LoadText(text);
    });
  }
}

} // namespace

void MakeLabels(Screen& screen, std::deque<Label>& labels, std::span<const CaptionOf> captions) {
  MakeControls(screen, labels, captions);
}

void MakeFrames(Screen& screen, std::deque<Frame>& frames, std::span<const CaptionOf> captions) {
  MakeControls(screen, frames, captions);
}

void ShowLabelsWithFields(Screen& screen, std::span<const CaptionOf> captions) {
  for (const CaptionOf& row : captions) {
    ForEach(row, [&](const std::string& name, TextId /*text*/, const std::string& field) {
      if (!field.empty()) {
        LabelNamed(screen, name).visible = ControlNamed(screen, field).visible;
      }
    });
  }
}

} // namespace loader
