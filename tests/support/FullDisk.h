// A disk that is full, as far as this process can tell.
#pragma once

#include <cstdint>
#include <memory>

namespace loader::test {

// No file grows above the limit while this lives; writing more fails as on a full disk. A test that needs it
// fails on a system that cannot do this (Windows): it is in the list of those that do not run there.
class FullDisk {
public:
  explicit FullDisk(std::uint64_t bytes);
  ~FullDisk();
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

private:
  struct Before;
  std::unique_ptr<Before> before_;
};

} // namespace loader::test
