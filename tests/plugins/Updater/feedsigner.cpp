#include "feedsigner.h"

#include "gpgrun.h"

#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkProxy>
#include <QNetworkRequest>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTimer>

namespace {


bool writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

FeedSigner::FeedSigner()
    : m_signer(qEnvironmentVariable("KESTREL_TEST_SIGNER"))
{
    if (!m_home.isValid())
        return;
    if (!m_signer.isEmpty()) {
        const std::optional<QByteArray> armoured = askSigner(QStringLiteral("release.asc"));
        m_valid = armoured && writeFile(releaseKeyFile(), *armoured);
        return;
    }
    const std::optional<QByteArray> armoured = GpgRun::makeTestKeys(m_home.path());
    m_valid = armoured && writeFile(releaseKeyFile(), *armoured);
}

FeedSigner::~FeedSigner()
{
    if (!m_signer.isEmpty())
        return;
    QProcess::execute(QStringLiteral("gpgconf"), {QStringLiteral("--homedir"), m_home.path(), QStringLiteral("--kill"),
                                                  QStringLiteral("gpg-agent")});
}

QByteArray FeedSigner::sign(const QByteArray &document, Key key) const
{
    if (!m_signer.isEmpty())
        return askSigner(key == Key::Release ? QStringLiteral("sign/release") : QStringLiteral("sign/stranger"), document)
            .value_or(QByteArray());
    const QString documentPath = m_home.filePath(QStringLiteral("document"));
    const QString signaturePath = documentPath + QStringLiteral(".sig");
    const char *user = key == Key::Release ? GpgRun::releaseUser : GpgRun::strangerUser;
    if (!writeFile(documentPath, document) || !GpgRun::signFile(m_home.path(), user, documentPath, signaturePath))
        return QByteArray();
    return readFile(signaturePath);
}

std::optional<QByteArray> FeedSigner::askSigner(const QString &path, const std::optional<QByteArray> &body) const
{
    QNetworkAccessManager network;
    // The signer is on this machine; no proxy stands between.
    network.setProxy(QNetworkProxy::NoProxy);
    QNetworkRequest request(m_signer.resolved(QUrl(path)));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/octet-stream"));
    QNetworkReply *reply = body ? network.post(request, *body) : network.get(request);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(60000, &loop, &QEventLoop::quit);
    loop.exec();
    const bool answered = reply->isFinished() && reply->error() == QNetworkReply::NoError;
    const QByteArray answer = answered ? reply->readAll() : QByteArray();
    if (!answered)
        qWarning("the signer did not answer: %s", qPrintable(reply->errorString()));
    reply->abort();
    delete reply;
    return answered ? std::optional<QByteArray>(answer) : std::nullopt;
}
