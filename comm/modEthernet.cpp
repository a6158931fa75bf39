#include "comm/modEthernet.h"

#include "comm/ModbusFrames.h"
#include "comm/modComunication.h"
#include "core/ModelProfile.h"
#include "core/TextTable.h"

namespace loader {

namespace {

bool TransactionDiffers() {
  return CommLink.SendBuf[0] != CommLink.RecvBuf[0] || CommLink.SendBuf[1] != CommLink.RecvBuf[1];
}

} // namespace

bool gFEtherConnect() {
  SocketControl& socket = ThePlatform().winSock;
  CommLink.Connected = 0;
  socket.onConnect = [] { CommLink.Connected = 1; };
  if (socket.State() > 0) {
    socket.Close();
  }
  socket.RemoteHost = Settings.RecorderIpAddress;
  socket.RemotePort = ModbusPort;
  socket.Connect();
  return WaitUntil([] { return CommLink.Connected == 1; });
}

void gFEtherClose() {
  CommLink.Connected = 0;
  SocketControl& socket = ThePlatform().winSock;
  if (socket.State() != 0) {
    socket.Close();
  }
}

void gFEtherRead() {
  BuildTcpRead();
  gFEtherExchange();
  if (CommLink.ResultCode == ResultOk) {
    TakeRegisters(TcpReplyRegisters);
  }
}

void gFEtherWrite() {
  CommLink.ResultCode = ResultRefused;
  if (BuildTcpWrite()) {
    gFEtherExchange();
  }
}

void gFEtherExchange() {
  try {
    CommLink.ResultCode = gFEtherSendWait();
  } catch (const RunTimeFailure&) {
    CommLink.ResultCode = ResultRunTimeFailure;
    ShowMessage(LoadText(11000));
  }
}

std::uint8_t gFEtherSendWait() {
  SocketControl& socket = ThePlatform().winSock;
  std::uint8_t code = ResultOk;
  for (int attempt = 1; attempt <= LastAttempt; ++attempt) {
    CommLink.RecvLen = 0;
    socket.SendData(FrameToSend());
    // Deliberately exact, as on the serial link.
    if (!WaitUntil([&] { return socket.BytesReceived() == CommLink.ExpectLen; })) {
      ShowMessage(LoadText(11000));
      return ResultNoAnswer;
    }
    CommLink.RecvLen = ToByte(socket.BytesReceived());
    TakeReply(socket.GetData());
    if (TransactionDiffers()) {
      code = ResultWrongTransaction;
    } else if (HasErrorFunction(TcpFunctionAt)) { // here without any test of the length
      code = ResultErrorReply;
    } else {
      return ResultOk;
    }
    PauseAfterBadReply();
  }
  return code;
}

} // namespace loader
