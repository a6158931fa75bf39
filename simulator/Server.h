// Serves a recorder on its lines: one loop that waits for whatever comes next and uses no processor time
// meanwhile.
#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <filesystem>
#include <functional>
#include <list>
#include <memory>
#include <optional>

#include "simulator/Framer.h"
#include "simulator/ReplyPlan.h"
#include "simulator/Sockets.h"
#include "simulator/Terminal.h"
#include "simulator/Wait.h"

namespace loader::simulator {

// TCP clients at a time. Further ones wait until one has gone.
inline constexpr std::size_t MostClients = 256;
// A TCP client whose connection has carried nothing for this long is dropped: its program may be gone.
inline constexpr std::chrono::seconds UsualIdleTime{60};

// A request is answered by a plan; an empty plan is silence.
using RequestHandler =
    std::function<ReplyPlan(Line line, const std::string& client, std::span<const std::uint8_t> request)>;

class Server {
public:
  // Idle clients are kept when `idleTime` is 0.
  explicit Server(RequestHandler handler, std::chrono::seconds idleTime = UsualIdleTime)
      : handler_(std::move(handler)), idleTime_(idleTime) {}

  // Open a line. The result is its name, as a client may use it. RunTimeFailure when it cannot be opened.
  std::string ListenOnTcp(const TcpAddress& address);
  std::string ListenOnRtu(const std::filesystem::path& link);

  // Serves until `stopDescriptor` can be read.
  void Run(int stopDescriptor);

private:
  using Time = std::chrono::steady_clock::time_point;
  struct Outgoing {
    Time due;
    Bytes bytes;
    Ending ending;
  };
  struct Connection {
    Line line;
    Descriptor socket;                  // of a TCP client
    std::unique_ptr<Terminal> terminal; // of an RTU line
    std::string name;
    Framer framer{line};
    Time firstByte{};               // of the request that is arriving
    std::optional<Time> silentAt{}; // when the RTU line has been silent long enough
    std::deque<Outgoing> queue{};   // in the order in which it leaves
    bool blocked = false;           // the client takes nothing at present
    Time lastTraffic{};             // a byte came or went

    [[nodiscard]] int Number() const { return terminal ? terminal->Master() : socket.Number(); }
    [[nodiscard]] bool IsOpen() const { return terminal || socket.IsOpen(); }
  };

  [[nodiscard]] std::vector<Wait> Waits(int stopDescriptor) const;
  [[nodiscard]] std::optional<Time> NextDue() const;
  // When a client is dropped if nothing comes or goes until then; none for an RTU line.
  [[nodiscard]] std::optional<Time> IdleAt(const Connection& connection) const;
  [[nodiscard]] std::size_t Clients() const;
  void Accept(const std::vector<Wait>& waits);
  void Receive(Connection& connection);
  void Answer(Connection& connection, std::span<const std::uint8_t> request);
  void AnswerAll(Connection& connection);
  void EndSilence(Connection& connection, Time now);
  void EndIdle(Connection& connection, Time now) const;
  void Send(Connection& connection, Time now);
  // What the last client of a terminal left behind is dropped.
  static void TakeClosing(Connection& connection);
  static void End(Connection& connection, Ending ending);

  RequestHandler handler_;
  std::chrono::seconds idleTime_;
  std::list<TcpListener> listeners_;
  std::list<Connection> connections_;
};

} // namespace loader::simulator
