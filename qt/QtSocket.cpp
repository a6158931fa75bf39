#include "qt/QtSocket.h"

#include <QNetworkProxy>

#include "platform/RunTimeFailure.h"
#include "qt/QtText.h"
#include "qt/UserInterface.h"

namespace loader {

QtSocket::QtSocket(UserInterface& userInterface, PortMap portMap) : portMap_(std::move(portMap)) {
  socket_.setProxy(QNetworkProxy::NoProxy); // the recorder is on the plant's own network
  QObject::connect(&socket_, &QAbstractSocket::connected, &socket_,
                   [this, &userInterface] { userInterface.Run(onConnect); });
  QObject::connect(&socket_, &QAbstractSocket::errorOccurred, &socket_,
                   [this](QAbstractSocket::SocketError error) {
                     failed_ = error != QAbstractSocket::RemoteHostClosedError;
                   });
}

int QtSocket::State() const {
  constexpr int Closed = 0;
  constexpr int LookingUp = 4;
  constexpr int Connecting = 6;
  constexpr int Connected = 7;
  constexpr int ClosedByPeer = 8;
  constexpr int Failed = 9;
  if (!inUse_) {
    return Closed;
  }
  switch (socket_.state()) {
  case QAbstractSocket::HostLookupState:
    return LookingUp;
  case QAbstractSocket::ConnectingState:
    return Connecting;
  case QAbstractSocket::ConnectedState:
    return Connected;
  default:
    return failed_ ? Failed : ClosedByPeer;
  }
}

void QtSocket::Close() {
  inUse_ = false;
  failed_ = false;
  socket_.abort();
}

void QtSocket::Connect() {
  if (inUse_) {
    throw RunTimeFailure("the socket isn't closed");
  }
  const int port = portMap_ ? portMap_(RemotePort) : RemotePort;
  constexpr int LastPort = 65535;
  if (port < 1 || port > LastPort) {
    throw RunTimeFailure("no such port");
  }
  inUse_ = true;
  socket_.connectToHost(ToQt(RemoteHost), static_cast<quint16>(port));
}

void QtSocket::SendData(std::span<const std::uint8_t> bytes) {
  const auto size = static_cast<qint64>(bytes.size());
  if (socket_.state() != QAbstractSocket::ConnectedState ||
      socket_.write(reinterpret_cast<const char*>(bytes.data()), size) != size) {
    throw RunTimeFailure("there is no connection");
  }
  socket_.flush();
}

int QtSocket::BytesReceived() const {
  return static_cast<int>(socket_.bytesAvailable());
}

Bytes QtSocket::GetData() {
  const QByteArray data = socket_.readAll();
  return {data.begin(), data.end()};
}

} // namespace loader
