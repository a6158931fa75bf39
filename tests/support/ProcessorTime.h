#pragma once

namespace loader::test {

// Processor time of this process, in milliseconds.
[[nodiscard]] double ProcessorMs();

} // namespace loader::test
