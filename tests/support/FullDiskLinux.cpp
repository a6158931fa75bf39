#include "tests/support/FullDisk.h"

#include <csignal>
#include <sys/resource.h>

namespace loader::test {

struct FullDisk::Before {
  rlimit limit{};
  void (*handler)(int) = nullptr;
};

FullDisk::FullDisk(std::uint64_t bytes) : before_(std::make_unique<Before>()) {
  getrlimit(RLIMIT_FSIZE, &before_->limit);
  const rlimit limit{bytes, before_->limit.rlim_max};
  before_->handler = std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &limit);
}

FullDisk::~FullDisk() {
  setrlimit(RLIMIT_FSIZE, &before_->limit);
  std::signal(SIGXFSZ, before_->handler);
}

} // namespace loader::test
