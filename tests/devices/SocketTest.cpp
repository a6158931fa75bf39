// winSock against a real server on a free port.
#include <QTcpServer>
#include <QTcpSocket>

#include "platform/RunTimeFailure.h"
#include "tests/devices/DeviceTest.h"
#include "tests/devices/TestSystem.h"

namespace loader::test {
namespace {

struct Socket : DeviceTest {
  QTcpServer server;
  QTcpSocket* peer = nullptr;
  int connects = 0;
  SocketControl& socket = ThePlatform().winSock;

  void SetUp() override {
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    serverPort = server.serverPort();
    socket.RemoteHost = u"127.0.0.1";
    socket.RemotePort = 502;
    socket.onConnect = [this] { ++connects; };
  }
  void ConnectBoth() {
    socket.Connect();
    ASSERT_TRUE(Until([&] { return connects == 1 && server.hasPendingConnections(); }));
    peer = server.nextPendingConnection();
  }
  void PeerSends(const char* bytes) {
    peer->write(bytes);
    peer->flush();
  }
};

TEST_F(Socket, IsClosedAtFirst) {
  EXPECT_EQ(0, socket.State());
  EXPECT_EQ(0, socket.BytesReceived());
}

TEST_F(Socket, TellsThatTheConnectionStandsFromTheEventLoop) {
  socket.Connect();
  EXPECT_EQ(0, connects);
  EXPECT_GT(socket.State(), 0);
  EXPECT_TRUE(Until([&] { return connects == 1; }));
  EXPECT_EQ(7, socket.State());
}

TEST_F(Socket, SendsWhatItIsGiven) {
  ConnectBoth();
  const Bytes all = AllBytes();
  socket.SendData(all);
  ASSERT_TRUE(Until([&] { return peer->bytesAvailable() == 256; }));
  const QByteArray got = peer->readAll();
  EXPECT_EQ(all, Bytes(got.begin(), got.end()));
}

TEST_F(Socket, CountsBytesThatTrickleInAndGivesThemAllAtOnce) {
  ConnectBoth();
  for (const char* piece : {"a", "bc", "def"}) {
    const int before = socket.BytesReceived();
    PeerSends(piece);
    ASSERT_TRUE(Until([&] { return socket.BytesReceived() == before + static_cast<int>(strlen(piece)); }));
  }
  const Bytes data = socket.GetData();
  EXPECT_EQ("abcdef", std::string(data.begin(), data.end()));
  EXPECT_EQ(0, socket.BytesReceived());
}

TEST_F(Socket, KeepsWhatCameBeforeTheOtherEndClosed) {
  ConnectBoth();
  PeerSends("half");
  peer->disconnectFromHost();
  ASSERT_TRUE(Until([&] { return socket.State() == 8; }));
  EXPECT_EQ(4, socket.BytesReceived());
  EXPECT_EQ(4U, socket.GetData().size());
  EXPECT_THROW(socket.SendData(AllBytes()), RunTimeFailure);
}

TEST_F(Socket, AResetIsToldByNothing) {
  ConnectBoth();
  ResetWhenClosed(peer->socketDescriptor());
  peer->abort();
  ASSERT_TRUE(Until([&] { return socket.State() > 7; }));
  EXPECT_THROW(socket.SendData(AllBytes()), RunTimeFailure);
  socket.Close();
  EXPECT_EQ(0, socket.State());
}

TEST_F(Socket, ARefusedConnectionIsToldByNothing) {
  server.close();
  socket.Connect();
  ASSERT_TRUE(Until([&] { return socket.State() == 9; }));
  EXPECT_EQ(0, connects);
  EXPECT_LT(ProcessorMsOfWaiting(100), 20);
}

TEST_F(Socket, AHostThatIsNoneIsToldByNothing) {
  socket.RemoteHost = u"999.1.1.1";
  socket.Connect();
  ASSERT_TRUE(Until([&] { return socket.State() == 9; }));
  EXPECT_EQ(0, connects);
}

// Not eight and ten, as a resolver reads them that takes a leading zero for octal.
TEST_F(Socket, APartWithLeadingZerosIsDecimal) {
  server.close();
  ASSERT_TRUE(server.listen(QHostAddress(QStringLiteral("127.0.0.12"))));
  serverPort = server.serverPort();
  socket.RemoteHost = u"127.000.00.012";
  socket.Connect();
  EXPECT_TRUE(Until([&] { return connects == 1; }));
  ASSERT_TRUE(Until([&] { return server.hasPendingConnections(); }));
}

TEST_F(Socket, AHostNameIsLookedUpAsItIs) {
  socket.RemoteHost = u"localhost";
  socket.Connect();
  EXPECT_TRUE(Until([&] { return connects == 1; }));
}

TEST_F(Socket, ConnectsAgainAfterClose) {
  ConnectBoth();
  PeerSends("rest of the last exchange");
  ASSERT_TRUE(Until([&] { return socket.BytesReceived() > 0; }));
  socket.Close();
  EXPECT_EQ(0, socket.State());
  EXPECT_EQ(0, socket.BytesReceived());
  socket.Connect();
  EXPECT_TRUE(Until([&] { return connects == 2; }));
}

TEST_F(Socket, HasToBeClosedBeforeTheNextConnect) {
  ConnectBoth();
  EXPECT_THROW(socket.Connect(), RunTimeFailure);
  EXPECT_EQ(7, socket.State());
}

TEST_F(Socket, ClosedWhileConnectingItNeverConnects) {
  socket.Connect();
  socket.Close();
  EXPECT_EQ(0, socket.State());
  ProcessorMsOfWaiting(20);
  EXPECT_EQ(0, connects);
}

TEST_F(Socket, SendingWithoutAConnectionIsARunTimeFailure) {
  EXPECT_THROW(socket.SendData(AllBytes()), RunTimeFailure);
}

TEST_F(Socket, APortThatIsNoneIsARunTimeFailure) {
  serverPort = 70000;
  EXPECT_THROW(socket.Connect(), RunTimeFailure);
  EXPECT_EQ(0, socket.State());
}

TEST_F(Socket, ADeadPeerCostsNoProcessorTime) {
  ConnectBoth();
  peer->disconnectFromHost();
  ASSERT_TRUE(Until([&] { return socket.State() == 8; }));
  EXPECT_LT(ProcessorMsOfWaiting(200), 20);
}

} // namespace
} // namespace loader::test
