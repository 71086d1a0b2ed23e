#include "installerdownload.h"

#include "localhttpserver.h"
#include "testsandbox.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

// One installer download against its size limit, compiled in with a limit of
// a few KiB: a body that passes the limit without announcing its size is
// stopped and its partial file removed, one within it arrives whole.
class TestUpdaterDownloadLimit : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void bodyPastTheLimitIsRefused_data();
    void bodyPastTheLimitIsRefused();
    void bodyWithinTheLimitArrives();

private:
    InstallerDownload::Target target(const QByteArray &body) const;

    QTemporaryDir m_folder;
    LocalHttpServer m_server;
    QNetworkAccessManager m_network;
};

namespace {

constexpr qint64 limit = 8 * 1024;

} // namespace

void TestUpdaterDownloadLimit::initTestCase()
{
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::NoProxy));
    QVERIFY(m_folder.isValid());
    QVERIFY(m_server.start());
}

InstallerDownload::Target TestUpdaterDownloadLimit::target(const QByteArray &body) const
{
    InstallerDownload::Target result;
    result.url = m_server.url(QStringLiteral("/installer"));
    result.sha256 = QCryptographicHash::hash(body, QCryptographicHash::Sha256);
    result.finalPath = m_folder.filePath(QStringLiteral("KestrelD.deb"));
    result.timeoutMs = 5000;
    result.maximumSize = limit;
    return result;
}

void TestUpdaterDownloadLimit::bodyPastTheLimitIsRefused_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("size unannounced") << int(LocalHttpServer::Mode::Unsized);
    QTest::newRow("size announced") << int(LocalHttpServer::Mode::Whole);
    QTest::newRow("arriving piece by piece") << int(LocalHttpServer::Mode::Trickle);
}

void TestUpdaterDownloadLimit::bodyPastTheLimitIsRefused()
{
    QFETCH(int, mode);
    const QByteArray body(limit + 1, 'k');
    m_server.setRoute(QStringLiteral("/installer"), {200, body, LocalHttpServer::Mode(mode), {}});
    InstallerDownload download(&m_network, target(body));
    QSignalSpy succeeded(&download, &InstallerDownload::succeeded);
    QSignalSpy failed(&download, &InstallerDownload::failed);
    QString error;
    QVERIFY2(download.start(&error), qPrintable(error));

    QTRY_COMPARE_WITH_TIMEOUT(succeeded.count() + failed.count(), 1, 10000);
    QCOMPARE(failed.count(), 1);
    QCOMPARE(failed.first().first().toString(),
             QStringLiteral("The installer was refused: it is larger than 8 KiB, more than an installer may be."));
    QVERIFY(!QFile::exists(download.partPath()));
    QVERIFY(!QFile::exists(target(body).finalPath));
}

void TestUpdaterDownloadLimit::bodyWithinTheLimitArrives()
{
    const QByteArray body(limit, 'k');
    m_server.setRoute(QStringLiteral("/installer"), {200, body, LocalHttpServer::Mode::Unsized, {}});
    InstallerDownload download(&m_network, target(body));
    QSignalSpy succeeded(&download, &InstallerDownload::succeeded);
    QSignalSpy failed(&download, &InstallerDownload::failed);
    QString error;
    QVERIFY2(download.start(&error), qPrintable(error));

    QTRY_COMPARE_WITH_TIMEOUT(succeeded.count() + failed.count(), 1, 10000);
    QCOMPARE(succeeded.count(), 1);
    QFile installed(target(body).finalPath);
    QVERIFY(installed.open(QIODevice::ReadOnly));
    QCOMPARE(installed.readAll(), body);
}

KESTREL_TEST_MAIN(TestUpdaterDownloadLimit)
#include "tst_updaterdownloadlimit.moc"
