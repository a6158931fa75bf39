#include "simulator/Framer.h"

#include <utility>

namespace loader::simulator {

namespace {

constexpr std::size_t HeaderLength = 6;  // transaction, protocol, length
constexpr std::size_t ShortestBody = 2;  // station and function
constexpr std::size_t LongestBody = 254; // station and the 253 bytes of a request

} // namespace

std::optional<std::size_t> Framer::TcpLength() {
  if (waiting_.size() < HeaderLength) {
    return std::nullopt;
  }
  const auto body = static_cast<std::size_t>(waiting_[4] * 256 + waiting_[5]);
  if (waiting_[2] != 0 || waiting_[3] != 0 || body < ShortestBody || body > LongestBody) {
    lost_ = true;
    return std::nullopt;
  }
  return HeaderLength + body;
}

std::optional<Bytes> Framer::Next() {
  const std::optional<std::size_t> length = line_ == Line::Tcp ? TcpLength() : RtuRequestLength(waiting_);
  if (!length || waiting_.size() < *length) {
    return std::nullopt;
  }
  const auto end = waiting_.begin() + static_cast<std::ptrdiff_t>(*length);
  Bytes frame(waiting_.begin(), end);
  waiting_.erase(waiting_.begin(), end);
  return frame;
}

Bytes Framer::TakeRest() {
  return std::exchange(waiting_, {});
}

} // namespace loader::simulator
