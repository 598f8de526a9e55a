#pragma once

#include <QByteArray>
#include <QHash>
#include <QHostAddress>
#include <QList>
#include <QPointer>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>
#include <utility>

/// The bytes of an HTTP answer. `length` is the body's length as the client is told, -1 for the
/// true one.
inline QByteArray httpAnswer(int status, const QByteArray& body, qint64 length = -1,
                             const QByteArray& header = {}) {
    return "HTTP/1.1 " + QByteArray::number(status) + " Text\r\nConnection: close\r\n" + header +
           "Content-Length: " + QByteArray::number(length < 0 ? body.size() : length) + "\r\n\r\n" +
           body;
}

inline QByteArray httpRedirect(const QString& target) {
    return httpAnswer(302, {}, -1, "Location: " + target.toUtf8() + "\r\n");
}

/// A web server on the loopback with prepared answers, in the event loop of the thread that made
/// it.
class HttpServer {
  public:
    /// What becomes of a connection once its answer is written.
    enum class After { Close, Hold };

    HttpServer() {
        server_.listen(QHostAddress::LocalHost);
        QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
            QTcpSocket* const socket = server_.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            QObject::connect(socket, &QTcpSocket::readyRead, socket,
                             [this, socket] { read(*socket); });
        });
    }

    QString address(const QString& path) const {
        return QString("http://127.0.0.1:%1%2").arg(server_.serverPort()).arg(path);
    }

    void answer(const QByteArray& path, const QByteArray& bytes, After after = After::Close) {
        answers_[path] = {bytes, after};
    }

    /// Whether a connection stands open, and more for it.
    bool holds() const { return !held_.isNull(); }
    void writeHeld(const QByteArray& bytes) { held_->write(bytes); }

    /// The heads of all requests so far: request line and headers.
    const QList<QByteArray>& requests() const { return requests_; }

  private:
    void read(QTcpSocket& socket) {
        if (!socket.peek(1 << 16).contains("\r\n\r\n")) return;
        requests_.append(socket.readAll());
        const auto [bytes, after] = answers_.value(requests_.last().split(' ').value(1));
        socket.write(bytes);
        if (after == After::Hold) {
            held_ = &socket;
        } else {
            socket.disconnectFromHost();
        }
    }

    QTcpServer server_;
    QHash<QByteArray, std::pair<QByteArray, After>> answers_;
    QPointer<QTcpSocket> held_;
    QList<QByteArray> requests_;
};
