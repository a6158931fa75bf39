#include <gtest/gtest.h>

#include "tests/support/FullDisk.h"

namespace loader::test {

struct FullDisk::Before {};

FullDisk::FullDisk(std::uint64_t /*bytes*/) {
  ADD_FAILURE() << "no limit for the files of a process here: this test is for another system";
}

FullDisk::~FullDisk() = default;

} // namespace loader::test
