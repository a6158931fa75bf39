#include "simulator/Server.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "platform/RunTimeFailure.h"

namespace loader::simulator {

namespace {

constexpr std::size_t MostConnections = 64;

timespec WaitUntil(std::chrono::steady_clock::time_point due) {
  const auto left =
      std::max(std::chrono::nanoseconds{0},
               std::chrono::duration_cast<std::chrono::nanoseconds>(due - std::chrono::steady_clock::now()));
  return {static_cast<time_t>(left.count() / 1'000'000'000), static_cast<long>(left.count() % 1'000'000'000)};
}

} // namespace

std::string Server::ListenOnTcp(const TcpAddress& address) {
  listeners_.push_back(Listen(address));
  return listeners_.back().name;
}

std::optional<Server::Time> Server::NextDue() const {
  std::optional<Time> next;
  for (const Connection& connection : connections_) {
    if (!connection.queue.empty() && !connection.blocked && (!next || connection.queue.front().due < *next)) {
      next = connection.queue.front().due;
    }
  }
  return next;
}

void Server::Run(int stopDescriptor) {
  for (;;) {
    std::vector<pollfd> waits{{stopDescriptor, POLLIN, 0}};
    for (const TcpListener& listener : listeners_) {
      const bool room = connections_.size() < MostConnections;
      waits.push_back({listener.socket.Number(), static_cast<short>(room ? POLLIN : 0), 0});
    }
    for (const Connection& connection : connections_) {
      const int events = POLLIN | (connection.blocked ? POLLOUT : 0);
      waits.push_back({connection.descriptor.Number(), static_cast<short>(events), 0});
    }
    const std::optional<Time> due = NextDue();
    const timespec timeout = due ? WaitUntil(*due) : timespec{};
    if (::ppoll(waits.data(), waits.size(), due ? &timeout : nullptr, nullptr) < 0 && errno != EINTR) {
      throw RunTimeFailure(std::string("poll: ") + std::strerror(errno));
    }
    if (waits.front().revents != 0) {
      return;
    }
    auto wait = waits.begin() + 1 + static_cast<std::ptrdiff_t>(listeners_.size());
    for (Connection& connection : connections_) {
      const short events = (wait++)->revents;
      if ((events & POLLOUT) != 0) {
        connection.blocked = false;
      }
      if ((events & (POLLIN | POLLHUP | POLLERR)) != 0) {
        Receive(connection);
      }
    }
    wait = waits.begin() + 1;
    for (const TcpListener& listener : listeners_) {
      if (((wait++)->revents & POLLIN) != 0) {
        TcpClient client = Accept(listener);
        if (client.socket.IsOpen()) {
          connections_.push_back(
              {Line::Tcp, std::move(client.socket), client.name, Framer(Line::Tcp), {}, {}, false});
        }
      }
    }
    const Time now = std::chrono::steady_clock::now();
    for (Connection& connection : connections_) {
      Send(connection, now);
    }
    connections_.remove_if([](const Connection& connection) { return !connection.descriptor.IsOpen(); });
  }
}

void Server::Receive(Connection& connection) {
  std::array<std::uint8_t, 4096> part{};
  const ssize_t got = ::read(connection.descriptor.Number(), part.data(), part.size());
  if (got < 0 && (errno == EAGAIN || errno == EINTR)) {
    return;
  }
  if (got <= 0) {
    connection.descriptor.Close();
    return;
  }
  if (!connection.framer.Waits()) {
    connection.firstByte = std::chrono::steady_clock::now();
  }
  connection.framer.Feed({part.data(), static_cast<std::size_t>(got)});
  Answer(connection);
}

void Server::Answer(Connection& connection) {
  while (const std::optional<Bytes> request = connection.framer.Next()) {
    for (ReplyStep& step : handler_(connection.line, connection.name, *request)) {
      connection.queue.push_back({connection.firstByte + step.after, std::move(step.bytes), step.ending});
    }
    connection.firstByte = std::chrono::steady_clock::now();
  }
  if (connection.framer.Lost()) {
    connection.descriptor.Close();
  }
}

void Server::Send(Connection& connection, Time now) {
  while (connection.descriptor.IsOpen() && !connection.blocked && !connection.queue.empty() &&
         connection.queue.front().due <= now) {
    Outgoing& next = connection.queue.front();
    if (!next.bytes.empty()) {
      const ssize_t sent = ::send(connection.descriptor.Number(), next.bytes.data(), next.bytes.size(),
                                  MSG_NOSIGNAL | MSG_DONTWAIT);
      if (sent < 0) {
        if (errno == EAGAIN) {
          connection.blocked = true;
        } else if (errno != EINTR) {
          connection.descriptor.Close();
        }
        return;
      }
      next.bytes.erase(next.bytes.begin(), next.bytes.begin() + sent);
      if (!next.bytes.empty()) {
        continue;
      }
    }
    const Ending ending = next.ending;
    connection.queue.pop_front();
    if (ending == Ending::Close) {
      connection.descriptor.Close();
    } else if (ending == Ending::Reset) {
      CloseWithReset(connection.descriptor);
    }
  }
}

} // namespace loader::simulator
