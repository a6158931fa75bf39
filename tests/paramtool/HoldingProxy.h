// Stands between the program and a recorder on TCP, counts the requests of all connections, and holds one of
// them: whoever does something to the program at that very moment does it in the middle of a transfer.
#pragma once

#include <atomic>
#include <future>
#include <string>
#include <thread>

namespace loader::test {

class HoldingProxy {
public:
  enum class Held {
    Request, // the recorder never gets it
    Reply,   // the recorder has done what it was asked, and nobody hears of it
  };
  // Request number `hold`, from 1, is held; 0: none.
  HoldingProxy(int recorderPort, int hold, Held held = Held::Request);
  ~HoldingProxy();
  HoldingProxy(const HoldingProxy&) = delete;
  HoldingProxy& operator=(const HoldingProxy&) = delete;

  [[nodiscard]] std::string Address() const { return "tcp:127.0.0.1:" + std::to_string(port_); }
  // Until the request is held; false when it does not come.
  [[nodiscard]] bool WaitUntilHeld();
  [[nodiscard]] int Requests() const { return requests_; }

private:
  void Run();
  void Serve(int client);

  int recorderPort_;
  int hold_;
  Held held_;
  int port_ = 0;
  int listener_; // after the port, which it sets
  std::atomic<bool> ending_ = false;
  std::atomic<int> requests_ = 0;
  std::atomic<int> open_ = -1;
  std::promise<void> holding_;
  std::future<void> whenHeld_ = holding_.get_future();
  std::thread thread_;
};

} // namespace loader::test
