#include "localhttpserver.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>

namespace {

// Small pieces at a steady pace: an installer of a few hundred kilobytes
// takes seconds, long enough to interrupt it.
constexpr qsizetype tricklePiece = 4096;
constexpr int trickleIntervalMs = 50;

QByteArray reasonPhrase(int status)
{
    switch (status) {
    case 200: return QByteArrayLiteral("OK");
    case 301: return QByteArrayLiteral("Moved Permanently");
    case 302: return QByteArrayLiteral("Found");
    case 404: return QByteArrayLiteral("Not Found");
    case 500: return QByteArrayLiteral("Internal Server Error");
    default: return QByteArrayLiteral("Status");
    }
}

} // namespace

LocalHttpServer::LocalHttpServer()
{
    connect(&m_server, &QTcpServer::newConnection, this, &LocalHttpServer::whenNewConnection);
}

LocalHttpServer::~LocalHttpServer()
{
    stop();
}

bool LocalHttpServer::start()
{
    return m_server.listen(QHostAddress::LocalHost, 0);
}

void LocalHttpServer::stop()
{
    m_server.close();
    const QList<QPointer<QTcpSocket>> sockets = std::exchange(m_sockets, {});
    for (const QPointer<QTcpSocket> &socket : sockets) {
        if (socket) {
            socket->abort();
            delete socket.data();
        }
    }
    m_pending.clear();
}

quint16 LocalHttpServer::port() const
{
    return m_server.serverPort();
}

void LocalHttpServer::setRoute(const QString &path, const Route &route)
{
    m_routes.insert(path, route);
}

QUrl LocalHttpServer::url(const QString &path) const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(port()).arg(path));
}

QStringList LocalHttpServer::requests() const
{
    return m_requests;
}

int LocalHttpServer::connectionCount() const
{
    return m_connections;
}

void LocalHttpServer::whenNewConnection()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        ++m_connections;
        m_sockets.append(socket);
        m_pending.insert(socket, QByteArray());
        connect(socket, &QTcpSocket::readyRead, this, [this, socket]() { whenReadyRead(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket]() {
            m_pending.remove(socket);
            socket->deleteLater();
        });
    }
}

void LocalHttpServer::whenReadyRead(QTcpSocket *socket)
{
    auto pending = m_pending.find(socket);
    if (pending == m_pending.end()) {
        socket->readAll(); // answered already; one request per connection
        return;
    }
    pending->append(socket->readAll());
    const qsizetype headerEnd = pending->indexOf("\r\n\r\n");
    if (headerEnd < 0)
        return;
    const QList<QByteArray> requestLine = pending->left(pending->indexOf("\r\n")).split(' ');
    m_pending.erase(pending);
    const QString target = requestLine.size() >= 2 ? QString::fromLatin1(requestLine.at(1)) : QString();
    m_requests.append(QStringLiteral("%1 %2").arg(QString::fromLatin1(requestLine.value(0)), target));
    answer(socket, target);
}

void LocalHttpServer::answer(QTcpSocket *socket, const QString &target)
{
    // A proxied request names the whole address; the route is its path.
    const QString path = target.startsWith(QLatin1Char('/')) ? target.section(QLatin1Char('?'), 0, 0) : QUrl(target).path();
    const auto found = m_routes.constFind(path);
    const Route route = found != m_routes.constEnd() ? *found : Route{404, QByteArrayLiteral("no such file"), Mode::Whole, {}};

    if (route.mode == Mode::Stall)
        return;

    QByteArray head = "HTTP/1.1 " + QByteArray::number(route.status) + ' ' + reasonPhrase(route.status) + "\r\n";
    head += "Content-Type: application/octet-stream\r\n";
    if (route.mode == Mode::HugeLength)
        head += "Content-Length: " + QByteArray::number(qint64(1) << 30) + "\r\n";
    else if (route.mode != Mode::Unsized)
        head += "Content-Length: " + QByteArray::number(route.body.size()) + "\r\n";
    if (!route.location.isEmpty())
        head += "Location: " + route.location + "\r\n";
    head += "Connection: close\r\n\r\n";

    if (route.mode != Mode::Trickle) {
        socket->write(head + route.body);
        socket->disconnectFromHost();
        return;
    }
    socket->write(head);
    trickle(socket, route.body, 0);
}

void LocalHttpServer::trickle(QTcpSocket *socket, const QByteArray &body, qsizetype offset)
{
    if (offset >= body.size()) {
        socket->disconnectFromHost();
        return;
    }
    socket->write(body.mid(offset, tricklePiece));
    // The socket is the timer's context: when it goes, so does the next piece.
    QTimer::singleShot(trickleIntervalMs, socket, [this, socket, body, offset]() { trickle(socket, body, offset + tricklePiece); });
}
