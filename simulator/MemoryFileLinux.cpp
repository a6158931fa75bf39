#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "simulator/MemoryFile.h"
#include "simulator/Sockets.h"

namespace loader::simulator {

void WriteWholeFile(const std::filesystem::path& file, std::string_view content) {
  const std::filesystem::path part = file.string() + ".part" + std::to_string(::getpid());
  const auto fail = [&] {
    const std::string reason = std::strerror(errno);
    std::error_code ignored;
    std::filesystem::remove(part, ignored);
    throw RunTimeFailure("cannot write " + file.string() + ": " + reason);
  };
  Descriptor out(::open(part.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
  if (!out.IsOpen()) {
    fail();
  }
  while (!content.empty()) {
    const ssize_t written = ::write(out.Number(), content.data(), content.size());
    if (written < 0 && errno != EINTR) {
      fail();
    }
    content.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
  }
  if (::fsync(out.Number()) != 0 || ::rename(part.c_str(), file.c_str()) != 0) {
    fail();
  }
}

} // namespace loader::simulator
