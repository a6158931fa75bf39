// Serves a recorder on its lines: one loop that waits for whatever comes next and uses no processor time
// meanwhile.
#pragma once

#include <deque>
#include <functional>
#include <list>
#include <optional>

#include "simulator/Framer.h"
#include "simulator/Recorder.h"
#include "simulator/ReplyPlan.h"
#include "simulator/Sockets.h"

namespace loader::simulator {

// A request is answered by a plan; an empty plan is silence.
using RequestHandler =
    std::function<ReplyPlan(Line line, const std::string& client, std::span<const std::uint8_t>)>;

class Server {
public:
  explicit Server(RequestHandler handler) : handler_(std::move(handler)) {}

  // The name of the line, as the user may write it.
  std::string ListenOnTcp(const TcpAddress& address);

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
    Descriptor descriptor;
    std::string name;
    Framer framer;
    Time firstByte{};           // of the request that is arriving
    std::deque<Outgoing> queue; // in the order in which it leaves
    bool blocked = false;       // the peer takes nothing at present
  };

  void Receive(Connection& connection);
  void Answer(Connection& connection);
  void Send(Connection& connection, Time now);
  [[nodiscard]] std::optional<Time> NextDue() const;

  RequestHandler handler_;
  std::list<TcpListener> listeners_;
  std::list<Connection> connections_;
};

} // namespace loader::simulator
