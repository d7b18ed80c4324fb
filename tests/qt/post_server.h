// A small server that keeps what it is sent.
#pragma once

#include <QTcpServer>
#include <QTcpSocket>

namespace marovane {

/// Answers every request with a page and keeps its bytes.
class PostServer {
 public:
  PostServer() {
    server_.listen(QHostAddress::LocalHost);
    QObject::connect(&server_, &QTcpServer::newConnection, [this] {
      QTcpSocket* const socket = server_.nextPendingConnection();
      QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { Read(*socket); });
      QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    });
  }

  QString Root() const { return QString("http://127.0.0.1:%1/").arg(server_.serverPort()); }

  /// What is answered with.
  QByteArray type = "text/html;charset=utf-8";
  QByteArray page = "<html><title>answer</title><body>ok</body></html>";
  /// Where "/moved" leads to; "" for nowhere.
  QByteArray movedTo;
  /// Method and path of each request, and of posts the body.
  QList<QByteArray> requests;
  /// Values of the header Marovane-Token, "" for none.
  QList<QByteArray> tokens;
  QList<QByteArray> bodies;

 private:
  void Read(QTcpSocket& socket) {
    QByteArray bytes = socket.property("bytes").toByteArray() + socket.readAll();
    socket.setProperty("bytes", bytes);
    const qsizetype headEnd = bytes.indexOf("\r\n\r\n");
    if (headEnd < 0 || bytes.size() < headEnd + 4 + Length(bytes.left(headEnd))) return;
    requests << bytes.left(bytes.indexOf(" HTTP"));
    bodies << bytes.mid(headEnd + 4);
    tokens << Header(bytes.left(headEnd), "marovane-token:");
    if (!movedTo.isEmpty() && requests.back().endsWith("/moved")) {
      socket.write("HTTP/1.0 302 Found\r\nLocation: " + movedTo + "\r\nContent-Length: 0\r\n\r\n");
      return socket.disconnectFromHost();
    }
    socket.write("HTTP/1.0 200 OK\r\nContent-Type: " + type +
                 "\r\nContent-Length: " + QByteArray::number(page.size()) + "\r\n\r\n" + page);
    socket.disconnectFromHost();
  }

  static qsizetype Length(const QByteArray& head) { return Header(head, "content-length:").toLongLong(); }

  static QByteArray Header(const QByteArray& head, const QByteArray& name) {
    for (const QByteArray& line : head.split('\n')) {
      if (line.toLower().startsWith(name)) return line.mid(name.size()).trimmed();
    }
    return "";
  }

  QTcpServer server_;
};

}  // namespace marovane
