#pragma once

#include <QByteArray>
#include <QHash>
#include <QHostAddress>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <gtest/gtest.h>

namespace quenvolta::test
{

/// A web service on the loopback that answers each path with the bytes it was given, and writes down the requests. It
/// works in the event loop of the test.
class LocalWebService
{
public:
    enum class End { Close, KeepOpen };

    LocalWebService()
    {
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { Accept(); });
    }

    QString Address() const { return QStringLiteral("http://127.0.0.1:%1").arg(m_server.serverPort()); }
    /// Stops listening; the port stays free.
    void Stop() { m_server.close(); }

    /// A whole answer.
    void Answer(const QString& path, const QByteArray& body, const QByteArray& status = "200 OK")
    {
        AnswerRaw(path,
                  "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
    }
    void Redirect(const QString& path, const QByteArray& target)
    {
        AnswerRaw(path, "HTTP/1.1 302 Found\r\nLocation: " + target + "\r\nContent-Length: 0\r\n\r\n");
    }
    void AnswerRaw(const QString& path, const QByteArray& bytes, End end = End::Close)
    {
        m_answers.insert(path, {bytes, end});
    }

    /// The targets of the requests, with their queries.
    QStringList requests;

private:
    void Accept()
    {
        QTcpSocket* socket = m_server.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
            m_heads[socket] += socket->readAll();
            const QByteArray head = m_heads[socket];
            if (!head.contains("\r\n\r\n"))
                return;
            m_heads.remove(socket);
            const QString target = QString::fromUtf8(head.split(' ').value(1));
            requests.append(target);
            const auto [bytes, end] =
                m_answers.value(QUrl(target).path(), {"HTTP/1.1 404 Not Found\r\n\r\n", End::Close});
            socket->write(bytes);
            if (end == End::Close)
                socket->disconnectFromHost();
        });
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }

    QTcpServer m_server;
    QHash<QTcpSocket*, QByteArray> m_heads;
    QHash<QString, std::pair<QByteArray, End>> m_answers;
};

} // namespace quenvolta::test
