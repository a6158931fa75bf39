// The rows as they are written down; Meaning.cpp makes the table of them.
#pragma once

#include <span>

#include "meaning/Meaning.h"

namespace loader {

[[nodiscard]] std::span<const Meaning> MeaningRows();

} // namespace loader
