#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTcpServer>
#include <QUrl>

class QTcpSocket;

// A small HTTP/1.1 server on 127.0.0.1 for the updater's tests. Each path
// has a canned answer; it can also stall (accept and never answer) or trickle
// its body in small pieces. Every connection is closed after one answer, and
// stop() or the destructor ends all of them, so nothing outlives a test.
class LocalHttpServer : public QObject
{
    Q_OBJECT

public:
    enum class Mode {
        Whole,  // the complete answer at once
        Stall,  // read the request, never answer
        Trickle, // headers at once, then the body a piece at a time
        HugeLength, // announces a body of 1 GiB, sends the route's body and closes
        Unsized     // no Content-Length: the body runs until the connection closes
    };

    struct Route
    {
        int status = 200;
        QByteArray body;
        Mode mode = Mode::Whole;
        QByteArray location; // sent as Location for redirects
    };

    LocalHttpServer();
    ~LocalHttpServer() override;

    bool start();
    void stop();
    quint16 port() const;

    void setRoute(const QString &path, const Route &route);
    // http://127.0.0.1:<port><path>
    QUrl url(const QString &path) const;

    // "GET <target>" for each request, in order of arrival; a request sent
    // through this server as a proxy shows its absolute target.
    QStringList requests() const;
    int connectionCount() const;

private:
    void whenNewConnection();
    void whenReadyRead(QTcpSocket *socket);
    void answer(QTcpSocket *socket, const QString &target);
    void trickle(QTcpSocket *socket, const QByteArray &body, qsizetype offset);

    QTcpServer m_server;
    QHash<QString, Route> m_routes;
    QHash<QTcpSocket *, QByteArray> m_pending;
    QList<QPointer<QTcpSocket>> m_sockets;
    QStringList m_requests;
    int m_connections = 0;
};
