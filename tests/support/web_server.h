#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

namespace orvane::test {

// A web server on this computer that says word for word what it is told to say. It lives in the
// thread of the test and answers while that waits.
class WebServer {
public:
    enum class Then {
        close,
        wait,    // says nothing more
        repeat,  // says the last thousand bytes again without an end
    };

    // No proxy of whoever runs the tests stands between.
    WebServer() {
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        listener.listen(QHostAddress::LocalHost);
        QObject::connect(&listener, &QTcpServer::newConnection, [this] { Accept(); });
    }

    QUrl Address(const char* path = "/") const {
        return QUrl(QStringLiteral("http://127.0.0.1:%1%2")
                        .arg(listener.serverPort())
                        .arg(QLatin1String(path)));
    }
    // The whole answer, its head included.
    void Say(const char* path, const QByteArray& bytes, Then then = Then::close) {
        answers[path] = {bytes, then};
    }
    void SayPage(const char* path, const QByteArray& type, const QByteArray& body) {
        Say(path, "HTTP/1.1 200 OK\r\nContent-Type: " + type +
                      "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
    }
    void SendOn(const char* path, const QByteArray& target, const char* status = "302 Found") {
        Say(path, QByteArray("HTTP/1.1 ") + status + "\r\nLocation: " + target +
                      "\r\nContent-Length: 0\r\n\r\n");
    }
    // From here on nobody is there.
    void Leave() { listener.close(); }

    QList<QByteArray> questions;  // the heads, in the order in which they came
    int openConnections = 0;

private:
    struct Answer {
        QByteArray bytes;
        Then then = Then::close;
    };

    void Accept() {
        QTcpSocket* const socket = listener.nextPendingConnection();  // the listener owns it
        ++openConnections;
        QObject::connect(socket, &QTcpSocket::readyRead, [this, socket] { Read(*socket); });
        QObject::connect(socket, &QTcpSocket::disconnected, [this] { --openConnections; });
    }
    void Read(QTcpSocket& socket) {
        QByteArray& head = heads[&socket];
        head += socket.readAll();
        if (!head.endsWith("\r\n\r\n")) return;
        questions += head;
        const QByteArray path = head.split(' ').value(1);
        head.clear();
        const Answer answer =
            answers.value(path, {"HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n", {}});
        socket.write(answer.bytes);
        if (answer.then == Then::close) socket.disconnectFromHost();
        if (answer.then != Then::repeat) return;
        QObject::connect(&socket, &QTcpSocket::bytesWritten,
                         [&socket, more = answer.bytes.right(1000)] {
                             if (socket.bytesToWrite() < 100'000) socket.write(more);
                         });
    }

    QHash<QByteArray, Answer> answers;
    QHash<QTcpSocket*, QByteArray> heads;
    QTcpServer listener;
};

}  // namespace orvane::test
