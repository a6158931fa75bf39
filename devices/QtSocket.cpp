#include "devices/QtSocket.h"

#include <QNetworkProxy>

#include "devices/QtText.h"
#include "devices/SendAtOnce.h"
#include "platform/RunTimeFailure.h"

namespace loader {

namespace {

// How many of the bytes the system takes right now; the rest is the socket's own business, and so is a
// connection that has gone. A whole frame practically always goes at once, and the socket's own write would
// turn a notifier on and off for it, which wakes the event loop twice.
std::size_t SentAtOnce(const QTcpSocket& socket, std::span<const std::uint8_t> bytes) {
  return socket.bytesToWrite() == 0 ? SendAtOnce(socket.socketDescriptor(), bytes) : 0;
}

// An address whose parts may be written with leading zeros, all of them decimal: the system's resolver would
// take "010" for eight and reach another recorder. Any other host name stays as it is.
QString DecimalAddress(const QString& host) {
  QStringList parts = host.split(u'.');
  for (QString& part : parts) {
    bool decimal = false;
    const uint number = part.toUInt(&decimal, 10);
    if (!decimal) {
      return host;
    }
    part = QString::number(number);
  }
  return parts.join(u'.');
}

} // namespace

QtSocket::QtSocket(PortMap portMap) : portMap_(std::move(portMap)) {
  socket_.setProxy(QNetworkProxy::NoProxy); // the recorder is on the plant's own network
  QObject::connect(&socket_, &QAbstractSocket::connected, &socket_, [this] {
    socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1); // a request is one small frame
    if (onConnect) {
      onConnect(); // tells the link layer and writes no record: there is nothing to show
    }
  });
  QObject::connect(&socket_, &QAbstractSocket::errorOccurred, &socket_,
                   [this](QAbstractSocket::SocketError error) {
                     failed_ = error != QAbstractSocket::RemoteHostClosedError;
                     TellDeviceFailure(ToQt(RemoteHost), socket_.errorString());
                     if (!starting_) {
                       TellFailure();
                       return;
                     }
                     // Nobody waits for it yet: from the event loop, as everything that becomes of it, unless
                     // the socket has been closed or connected anew by then.
                     QMetaObject::invokeMethod(
                         &socket_,
                         [this] {
                           if (inUse_ && socket_.state() == QAbstractSocket::UnconnectedState) {
                             TellFailure();
                           }
                         },
                         Qt::QueuedConnection);
                   });
}

void QtSocket::TellFailure() const {
  if (onFailure) {
    onFailure();
  }
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
  starting_ = true;
  socket_.connectToHost(DecimalAddress(ToQt(RemoteHost)), static_cast<quint16>(port));
  starting_ = false;
}

void QtSocket::SendData(std::span<const std::uint8_t> bytes) {
  if (socket_.state() != QAbstractSocket::ConnectedState) {
    throw RunTimeFailure("there is no connection");
  }
  const std::span<const std::uint8_t> rest = bytes.subspan(SentAtOnce(socket_, bytes));
  const auto size = static_cast<qint64>(rest.size());
  if (size == 0) {
    return;
  }
  if (socket_.write(reinterpret_cast<const char*>(rest.data()), size) != size) {
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
