#include "plugins/updateinterface.h"

#include "logcapture.h"
#include "modalcatcher.h"
#include "testsandbox.h"
#include "updaterfixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>
#include <QTest>

#if !defined(Q_OS_WIN)
namespace {

// The folder's mode bits for owner, group and others; Qt's "user" bits,
// which repeat the owner's for the running user, are left out.
QFileDevice::Permissions folderMode(const QString &folder)
{
    const QFileDevice::Permissions modeBits = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner
                                            | QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup
                                            | QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
    return QFile::permissions(folder) & modeBits;
}

} // namespace
#endif

// Replaces the installer the moment the updater has saved it.
class InstallerSwapper : public QObject
{
    Q_OBJECT

public:
    QString swappedPath() const { return m_swappedPath; }

public slots:
    void whenInstallerSaved(const QString &path)
    {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write("something else entirely") > 0)
            m_swappedPath = path;
    }

private:
    QString m_swappedPath;
};

// The installer is handled as a program about to run with administrator
// rights: it waits in a folder of the user's alone, is capped in size, is
// checked once more from the disk right before its start and is started by
// its absolute path.
class TestUpdaterInstaller : public UpdaterFixture
{
    Q_OBJECT

private slots:
    void installerWaitsInAPrivateFolder();
    void earlierContentOfThePrivateFolderIsRemoved();
    void installerSwappedOnDiskIsRefusedAndRemoved();
    void oversizedInstallerIsRefused();
};

void TestUpdaterInstaller::installerWaitsInAPrivateFolder()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Yes}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_done->count(), 1, 10000);

    QVERIFY(QFileInfo(finalPath()).isAbsolute());
    QFile installed(finalPath());
    QVERIFY(installed.open(QIODevice::ReadOnly));
    QVERIFY(installed.readAll() == m_installer);
    // Started (here: logged) by its absolute path in that folder.
    QCOMPARE(log.matching(launchLine()).size(), 1);
    QVERIFY(QDir(QStandardPaths::writableLocation(QStandardPaths::DownloadLocation)).entryList(QDir::Files).isEmpty());
#if !defined(Q_OS_WIN)
    QCOMPARE(folderMode(installerFolder()), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    // The package stays the user's to install, and the user is told where.
    QCOMPARE(log.matching(QStringLiteral("[UPD] the package is kept for you to install in %1").arg(installerFolder())).size(), 1);
#endif
    QCOMPARE(m_error->count(), 0);
}

// Whatever else lies in the folder, a library waiting to be loaded by the
// installer above all, is gone before the installer arrives.
void TestUpdaterInstaller::earlierContentOfThePrivateFolderIsRemoved()
{
    QVERIFY(QDir().mkpath(installerFolder()));
    const QString planted = QDir(installerFolder()).filePath(QStringLiteral("version.dll"));
    QFile file(planted);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("not ours");
    file.close();
#if !defined(Q_OS_WIN)
    QVERIFY(QFile::setPermissions(installerFolder(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner
                                                         | QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther));
#endif
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    ModalCatcher answerer({QMessageBox::Yes}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_done->count(), 1, 10000);

    QVERIFY(!QFile::exists(planted));
    QCOMPARE(QDir(installerFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
             QStringList{QFileInfo(finalPath()).fileName()});
#if !defined(Q_OS_WIN)
    QCOMPARE(folderMode(installerFolder()), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
#endif
}

// Between its check and its start the file is replaced, as a process of the
// same user could: the changed file is refused and removed.
void TestUpdaterInstaller::installerSwappedOnDiskIsRefusedAndRemoved()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Yes, QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);
    InstallerSwapper swapper;
    // By signature: the plug-in's class is not known to this program.
    QVERIFY(connect(m_updater, SIGNAL(installerSaved(QString)), &swapper, SLOT(whenInstallerSaved(QString)), Qt::DirectConnection));

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_error->count(), 1, 10000);
    QTRY_COMPARE(answerer.boxes().size(), 2);

    QCOMPARE(swapper.swappedPath(), finalPath());
    const QString message = QStringLiteral("The downloaded installer was changed after its check and was deleted; it was not started.");
    QCOMPARE(answerer.boxes().at(1).text, message);
    QCOMPARE(log.matching(QStringLiteral("[UPD] WARNING: ") + message).size(), 1);
    QVERIFY(!QFile::exists(finalPath()));
    QVERIFY(log.matching(launchLine()).isEmpty());
    QCOMPARE(m_done->count(), 0);
}

void TestUpdaterInstaller::oversizedInstallerIsRefused()
{
    serveFeed(2024, QStringLiteral("2.0.024"), QStringLiteral("25.0901"));
    m_server->setRoute(installerPath, {200, m_installer, LocalHttpServer::Mode::HugeLength, {}});
    LogCapture log;
    ModalCatcher answerer({QMessageBox::Yes, QMessageBox::Ok}, ModalCatcher::Reach::MessageBoxesOnly);

    m_updater->updateNow(2023, QStringLiteral("25.0826"));
    QTRY_COMPARE_WITH_TIMEOUT(m_error->count(), 1, 10000);
    QTRY_COMPARE(answerer.boxes().size(), 2);

    const QString message = QStringLiteral("The installer was refused: it is larger than 512 MiB, more than an installer may be.");
    QCOMPARE(answerer.boxes().at(1).text, message);
    QCOMPARE(log.matching(QStringLiteral("[UPD] WARNING: ") + message).size(), 1);
    QVERIFY(!QFile::exists(finalPath()));
    QVERIFY(!QFile::exists(partPath()));
    QVERIFY(log.matching(launchLine()).isEmpty());
    QCOMPARE(m_done->count(), 0);
}

KESTREL_TEST_MAIN(TestUpdaterInstaller)
#include "tst_updaterinstaller.moc"
