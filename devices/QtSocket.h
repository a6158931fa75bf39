// winSock: the TCP connection.
#pragma once

#include <QTcpSocket>
#include <functional>

#include "platform/Devices.h"

namespace loader {

// Which port is really connected to for a remote port; tests reach a server on a free port by it.
using PortMap = std::function<int(int)>;

class QtSocket final : public SocketControl {
public:
  explicit QtSocket(PortMap portMap = {});

  // 0 closed, 4 the host is looked up, 6 connecting, 7 connected, 8 closed by the other end, 9 failed. All
  // but 0 last until Close.
  [[nodiscard]] int State() const override;
  void Close() override;
  // RunTimeFailure when it isn't closed.
  void Connect() override;
  // RunTimeFailure when there is no connection.
  void SendData(std::span<const std::uint8_t> bytes) override;
  // What came before the other end closed stays to be fetched.
  [[nodiscard]] int BytesReceived() const override;
  [[nodiscard]] Bytes GetData() override;

private:
  void TellFailure() const;

  QTcpSocket socket_;
  PortMap portMap_;
  bool inUse_ = false; // between Connect and Close
  bool failed_ = false;
  bool starting_ = false; // within Connect: what cannot be reached may be told there already
};

} // namespace loader
