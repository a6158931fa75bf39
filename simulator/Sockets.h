// TCP listening and small owners of descriptors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

namespace loader::simulator {

// Owns a descriptor; on Windows a socket, whose handle has no more than 32 bits that count.
class Descriptor {
public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { Close(); }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this != &other) {
      Close();
      number_ = std::exchange(other.number_, -1);
    }
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] int Number() const { return number_; }
  [[nodiscard]] bool IsOpen() const { return number_ >= 0; }
  void Close();

private:
  int number_ = -1;
};

struct TcpAddress {
  std::string host = "127.0.0.1";
  int port = 502;
};

struct TcpListener {
  Descriptor socket;
  std::string name; // "127.0.0.1:502", with the port that was taken for port 0
};

// RunTimeFailure with a message for the user when the address is unknown, taken or not allowed.
[[nodiscard]] TcpListener Listen(const TcpAddress& address);

struct TcpClient {
  Descriptor socket; // does not block, no delay
  std::string name;
};
// A closed descriptor when no client waits.
[[nodiscard]] TcpClient Accept(const TcpListener& listener);

// How many bytes passed on a line that does not block. 0: none can at present.
using Passed = std::ptrdiff_t;
inline constexpr Passed LineEnded = -1;
[[nodiscard]] Passed Read(const Descriptor& socket, std::span<std::uint8_t> room);
[[nodiscard]] Passed Write(const Descriptor& socket, std::span<const std::uint8_t> bytes);

// The connection ends with a reset in place of an orderly end.
void CloseWithReset(Descriptor& socket);

} // namespace loader::simulator
