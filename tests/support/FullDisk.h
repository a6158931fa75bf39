// A disk that is full, as far as this process can tell.
#pragma once

#include <csignal>
#include <sys/resource.h>

namespace loader::test {

// No file grows above the limit while this lives; writing more fails as on a full disk.
class FullDisk {
public:
  explicit FullDisk(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    handler_ = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

private:
  rlimit before_{};
  void (*handler_)(int) = nullptr;
};

} // namespace loader::test
