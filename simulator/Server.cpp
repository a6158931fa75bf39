#include "simulator/Server.h"

#include <algorithm>
#include <array>

#include "simulator/CheckValue.h"

namespace loader::simulator {

namespace {

using Clock = std::chrono::steady_clock;

// Descriptors in front of the connections' in the list of what is waited for; a connection has two: its line,
// and the news of its terminal.
constexpr std::size_t OwnWaits = 1, WaitsOfConnection = 2;

Nanoseconds Until(Clock::time_point due) {
  return std::max(Nanoseconds{0}, std::chrono::duration_cast<Nanoseconds>(due - Clock::now()));
}

} // namespace

std::string Server::ListenOnTcp(const TcpAddress& address) {
  listeners_.push_back(Listen(address));
  return listeners_.back().name;
}

std::string Server::ListenOnRtu(const std::filesystem::path& link) {
  auto terminal = std::make_unique<Terminal>(link);
  std::string name = terminal->Name();
  connections_.push_back({Line::Rtu, Descriptor(), std::move(terminal), name});
  return name;
}

std::vector<Wait> Server::Waits(int stopDescriptor) const {
  std::vector<Wait> waits{{stopDescriptor}};
  const bool room = Clients() < MostClients;
  for (const TcpListener& listener : listeners_) {
    waits.push_back({room ? listener.socket.Number() : NoDescriptor});
  }
  for (const Connection& connection : connections_) {
    waits.push_back({connection.Number(), connection.blocked});
    waits.push_back({connection.terminal ? connection.terminal->Watch() : NoDescriptor});
  }
  return waits;
}

std::optional<Server::Time> Server::NextDue() const {
  std::optional<Time> next;
  const auto take = [&](Time due) { next = next ? std::min(*next, due) : due; };
  for (const Connection& connection : connections_) {
    if (!connection.queue.empty() && !connection.blocked) {
      take(connection.queue.front().due);
    }
    if (connection.silentAt) {
      take(*connection.silentAt);
    }
    if (const std::optional<Time> idle = IdleAt(connection)) {
      take(*idle);
    }
  }
  return next;
}

std::optional<Server::Time> Server::IdleAt(const Connection& connection) const {
  if (connection.terminal || idleTime_ == std::chrono::seconds{0}) {
    return std::nullopt;
  }
  // A client that waits for a late reply is not idle; one that takes nothing of a reply is.
  Time last = connection.lastTraffic;
  if (!connection.queue.empty()) {
    last = std::max(last, connection.queue.front().due);
  }
  return last + idleTime_;
}

std::size_t Server::Clients() const {
  return static_cast<std::size_t>(
      std::ranges::count_if(connections_, [](const Connection& connection) { return !connection.terminal; }));
}

void Server::Run(int stopDescriptor) {
  KeepTime();
  for (;;) {
    std::vector<Wait> waits = Waits(stopDescriptor);
    const std::optional<Time> due = NextDue();
    WaitForAny(waits, due ? std::optional(Until(*due)) : std::nullopt);
    if (waits.front().news) {
      return;
    }
    auto wait = waits.begin() + static_cast<std::ptrdiff_t>(OwnWaits + listeners_.size());
    for (Connection& connection : connections_) {
      if (wait->news || wait->room) {
        connection.blocked = connection.blocked && !wait->room;
        if (wait->news) {
          Receive(connection);
        }
      } else if ((wait + 1)->news) {
        TakeClosing(connection);
      }
      wait += WaitsOfConnection;
    }
    Accept(waits);
    const Time now = Clock::now();
    for (Connection& connection : connections_) {
      EndSilence(connection, now);
      Send(connection, now);
      EndIdle(connection, now);
    }
    connections_.remove_if([](const Connection& connection) { return !connection.IsOpen(); });
  }
}

void Server::Accept(const std::vector<Wait>& waits) {
  auto wait = waits.begin() + OwnWaits;
  for (const TcpListener& listener : listeners_) {
    if (!(wait++)->news) {
      continue;
    }
    while (Clients() < MostClients) {
      TcpClient client = simulator::Accept(listener);
      if (!client.socket.IsOpen()) {
        break;
      }
      connections_.push_back({Line::Tcp, std::move(client.socket), nullptr, client.name});
      connections_.back().lastTraffic = Clock::now();
    }
  }
}

void Server::TakeClosing(Connection& connection) {
  if (connection.terminal && connection.terminal->TakeClosing()) {
    connection.framer = Framer(Line::Rtu);
    connection.silentAt.reset();
    connection.queue.clear();
    connection.blocked = false;
  }
}

void Server::Receive(Connection& connection) {
  std::array<std::uint8_t, 4096> part{};
  const Passed got = connection.terminal ? connection.terminal->Read(part) : Read(connection.socket, part);
  // Asked after the bytes were taken: a client that opened the line and wrote has not got its reply yet, so
  // what is dropped here is its predecessor's.
  TakeClosing(connection);
  if (got == 0) {
    return;
  }
  if (got == LineEnded) {
    End(connection, Ending::Close);
    return;
  }
  const Time now = Clock::now();
  connection.lastTraffic = now;
  if (!connection.framer.Waits()) {
    connection.firstByte = now;
  }
  connection.framer.Feed({part.data(), static_cast<std::size_t>(got)});
  AnswerAll(connection);
  connection.silentAt.reset();
  if (connection.line == Line::Rtu && connection.framer.Waits()) {
    connection.silentAt = now + LineSilence;
  }
}

void Server::AnswerAll(Connection& connection) {
  while (const std::optional<Bytes> request = connection.framer.Next()) {
    Answer(connection, *request);
    connection.firstByte = Clock::now();
    if (connection.line == Line::Rtu && CheckValue(*request) != 0) {
      (void)connection.framer.TakeRest(); // behind a damaged request nobody knows where the next one starts
    }
  }
  if (connection.framer.Lost()) {
    End(connection, Ending::Close);
  }
}

void Server::Answer(Connection& connection, std::span<const std::uint8_t> request) {
  // A recorder works off one request after the other: a late reply holds up those behind it.
  Time earliest = connection.queue.empty() ? connection.firstByte : connection.queue.back().due;
  for (ReplyStep& step : handler_(connection.line, connection.name, request)) {
    earliest = std::max(earliest, connection.firstByte + step.after);
    connection.queue.push_back({earliest, std::move(step.bytes), step.ending});
  }
}

void Server::EndSilence(Connection& connection, Time now) {
  if (connection.silentAt && *connection.silentAt <= now) {
    connection.silentAt.reset();
    Answer(connection, connection.framer.TakeRest());
  }
}

void Server::EndIdle(Connection& connection, Time now) const {
  const std::optional<Time> idle = IdleAt(connection);
  if (connection.IsOpen() && idle && *idle <= now) {
    End(connection, Ending::Close);
  }
}

void Server::Send(Connection& connection, Time now) {
  while (connection.IsOpen() && !connection.blocked && !connection.queue.empty() &&
         connection.queue.front().due <= now) {
    Outgoing& next = connection.queue.front();
    if (!next.bytes.empty()) {
      const Passed sent =
          connection.terminal ? connection.terminal->Write(next.bytes) : Write(connection.socket, next.bytes);
      if (sent == LineEnded) {
        End(connection, Ending::Close);
        return;
      }
      if (sent == 0) {
        connection.blocked = true;
        return;
      }
      connection.lastTraffic = now;
      next.bytes.erase(next.bytes.begin(), next.bytes.begin() + sent);
      if (!next.bytes.empty()) {
        continue;
      }
    }
    const Ending ending = next.ending;
    connection.queue.pop_front();
    End(connection, ending);
  }
}

void Server::End(Connection& connection, Ending ending) {
  if (ending == Ending::None) {
    return;
  }
  if (connection.terminal) {
    connection.terminal->Replug();
    connection.framer = Framer(Line::Rtu);
    connection.silentAt.reset();
    connection.queue.clear();
    connection.blocked = false;
  } else if (ending == Ending::Reset) {
    CloseWithReset(connection.socket);
  } else {
    connection.socket.Close();
  }
}

} // namespace loader::simulator
