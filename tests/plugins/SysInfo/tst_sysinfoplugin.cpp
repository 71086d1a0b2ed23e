#include "plugins/sysinfointerface.h"

#include "machineidentifier.h"
#include "modalrun.h"
#include "testsandbox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPluginLoader>
#include <QStandardPaths>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUuid>

#include <functional>

namespace {

// What a test saw of a modal dialog.
struct SeenDialog
{
    bool appeared = false;
    Qt::WindowModality modality = Qt::NonModal;
    QString title;
    QStringList texts;   // of labels and line edits, in creation order
    QStringList buttons; // without their mnemonic marks
    bool closedByTest = false;
};

QString withoutMnemonic(QString text)
{
    return text.remove(QLatin1Char('&'));
}

void recordTexts(QWidget *dialog, SeenDialog &seen)
{
    seen.modality = dialog->windowModality();
    seen.title = dialog->windowTitle();
    for (QObject *child : dialog->findChildren<QObject *>()) {
        if (auto *label = qobject_cast<QLabel *>(child))
            seen.texts << label->text();
        else if (auto *edit = qobject_cast<QLineEdit *>(child))
            seen.texts << edit->text();
        else if (auto *button = qobject_cast<QAbstractButton *>(child))
            seen.buttons << withoutMnemonic(button->text());
    }
}

// Runs a modal dialog as runModal() does and records what it showed.
SeenDialog runModalSeen(const std::function<void()> &show, const std::function<void(QWidget *)> &act)
{
    SeenDialog seen;
    const ModalRun run = runModal(show, [&](QWidget *dialog) {
        recordTexts(dialog, seen);
        act(dialog);
    });
    seen.appeared = run.appeared;
    seen.closedByTest = run.closedByTest;
    return seen;
}

QString expectedIdentifier()
{
    const QByteArray system = QSysInfo::machineUniqueId();
    if (!system.isEmpty())
        return QString::fromLatin1(system);
    QFile stored(QDir(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation)).filePath(QStringLiteral("machine-id")));
    if (!stored.open(QIODevice::ReadOnly))
        return QStringLiteral("<no stored identifier>");
    return QString::fromLatin1(stored.readAll().trimmed());
}

bool isPlainUuid(const QString &text)
{
    return text.size() == 36 && !QUuid::fromString(text).isNull();
}

} // namespace

class TestSysInfoPlugin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    // First on purpose: nothing has called setApplicationInfo yet.
    void systemTextBeforeApplicationInfo();
    void systemTextDescribesApplicationAndSystem_data();
    void systemTextDescribesApplicationAndSystem();
    void identifierIsShownInAModalBox();
    void identifierBoxBelongsToTheWindow_data();
    void identifierBoxBelongsToTheWindow();
    void copyPutsTheIdentifierOnTheClipboard();
    void identifierIsTheSameEachTime();

    void systemIdentifierComesFirst();
    void madeUpIdentifierIsStoredAndKept();
    void storedIdentifierIsReadBack_data();
    void storedIdentifierIsReadBack();
    void unwritableStoreStillGivesAnIdentifier();

private:
    QStringList systemLines() const;
    QString shownIdentifier();

    QPluginLoader m_loader{QStringLiteral(SYSINFO_PLUGIN_PATH)};
    SysInfoInterface *m_sysInfo = nullptr;
};

void TestSysInfoPlugin::initTestCase()
{
    QCoreApplication::setApplicationVersion(QStringLiteral("2.0.023"));
    QObject *root = m_loader.instance();
    QVERIFY2(root, qPrintable(m_loader.errorString()));
    QCOMPARE(m_loader.metaData().value(QLatin1String("IID")).toString(), QStringLiteral("me.brisant.SysInfoInterface"));
    m_sysInfo = qobject_cast<SysInfoInterface *>(root);
    QVERIFY(m_sysInfo);
}

// Everything after the line about the application.
QStringList TestSysInfoPlugin::systemLines() const
{
    return {
        QStringLiteral("Operating system: ") + QSysInfo::prettyProductName(),
        QStringLiteral("Kernel: %1 %2").arg(QSysInfo::kernelType(), QSysInfo::kernelVersion()),
        QStringLiteral("CPU architecture: ") + QSysInfo::currentCpuArchitecture(),
        QStringLiteral("Qt version: ") + QLatin1String(qVersion()),
    };
}

void TestSysInfoPlugin::systemTextBeforeApplicationInfo()
{
    const QString text = m_sysInfo->systemInformation();
    QCOMPARE(text.split(QLatin1Char('\n')), QStringList{QStringLiteral("Kestrel Downloader 2.0.023")} + systemLines());
    QVERIFY(!text.contains(QStringLiteral("build")));
}

void TestSysInfoPlugin::systemTextDescribesApplicationAndSystem_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("buildDate");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::addColumn<QString>("expectedFirstLine");

    QTest::newRow("as the application calls it")
        << QStringLiteral("2.0.023") << QStringLiteral("25.0826") << 0 << 1 << QStringLiteral("Kestrel Downloader 2.0.023 (build 25.0826)");
    QTest::newRow("another version")
        << QStringLiteral("3.1.4") << QStringLiteral("26.0101") << 0 << 1 << QStringLiteral("Kestrel Downloader 3.1.4 (build 26.0101)");
    QTest::newRow("the numbers change nothing")
        << QStringLiteral("3.1.4") << QStringLiteral("26.0101") << 7 << -2 << QStringLiteral("Kestrel Downloader 3.1.4 (build 26.0101)");
    QTest::newRow("no version given")
        << QString() << QStringLiteral("25.0826") << 0 << 1 << QStringLiteral("Kestrel Downloader 2.0.023 (build 25.0826)");
    QTest::newRow("no build date given")
        << QStringLiteral("2.0.023") << QString() << 0 << 1 << QStringLiteral("Kestrel Downloader 2.0.023");
}

void TestSysInfoPlugin::systemTextDescribesApplicationAndSystem()
{
    QFETCH(QString, version);
    QFETCH(QString, buildDate);
    QFETCH(int, first);
    QFETCH(int, second);
    QFETCH(QString, expectedFirstLine);

    m_sysInfo->setApplicationInfo(version, buildDate, first, second);
    const QString text = m_sysInfo->systemInformation();
    QCOMPARE(text.split(QLatin1Char('\n')), QStringList{expectedFirstLine} + systemLines());
    QVERIFY(text.contains(QLatin1String(qVersion())));
    QVERIFY(text.contains(QSysInfo::currentCpuArchitecture()));
}

void TestSysInfoPlugin::identifierIsShownInAModalBox()
{
    const SeenDialog seen = runModalSeen([this] { m_sysInfo->showIdentifier(); },
                                     [](QWidget *dialog) { buttonWithText(dialog, QStringLiteral("OK"))->click(); });
    QVERIFY(seen.appeared);
    QVERIFY(seen.modality != Qt::NonModal);
    QCOMPARE(seen.title, QStringLiteral("Machine identifier"));
    QCOMPARE(seen.texts.filter(expectedIdentifier()).size(), 1);
    QCOMPARE(seen.buttons, (QStringList{QStringLiteral("OK"), QStringLiteral("Copy")}));
    QVERIFY(seen.closedByTest);
}

void TestSysInfoPlugin::identifierBoxBelongsToTheWindow_data()
{
    QTest::addColumn<bool>("active");
    QTest::newRow("active window") << true;
    // As at start-up, when the window is shown but not yet activated.
    QTest::newRow("shown, not yet active") << false;
}

void TestSysInfoPlugin::identifierBoxBelongsToTheWindow()
{
    QFETCH(bool, active);
    QDialog window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    if (active) {
        QApplication::setActiveWindow(&window);
        QVERIFY(QTest::qWaitForWindowActive(&window));
    } else {
        QApplication::setActiveWindow(nullptr);
    }
    QWidget *parent = nullptr;
    const ModalRun run = runModal([this] { m_sysInfo->showIdentifier(); }, [&](QWidget *dialog) {
        parent = dialog->parentWidget();
        buttonWithText(dialog, QStringLiteral("OK"))->click();
    });
    QVERIFY(run.appeared);
    QCOMPARE(parent, &window);
}

void TestSysInfoPlugin::copyPutsTheIdentifierOnTheClipboard()
{
    QGuiApplication::clipboard()->setText(QStringLiteral("something else"));
    QString copied;
    QString status;
    bool openAfterCopy = false;
    const SeenDialog seen = runModalSeen([this] { m_sysInfo->showIdentifier(); }, [&](QWidget *dialog) {
        auto *statusLabel = dialog->findChild<QLabel *>(QStringLiteral("identifierCopyStatus"));
        buttonWithText(dialog, QStringLiteral("Copy"))->click();
        copied = QGuiApplication::clipboard()->text();
        status = statusLabel ? statusLabel->text() : QStringLiteral("<no status label>");
        openAfterCopy = dialog->isVisible();
        buttonWithText(dialog, QStringLiteral("OK"))->click();
    });
    QVERIFY(seen.appeared);
    QCOMPARE(copied, expectedIdentifier());
    QCOMPARE(status, QStringLiteral("Copied to the clipboard."));
    QVERIFY2(openAfterCopy, "copying closed the box");
    QVERIFY(seen.closedByTest);
}

QString TestSysInfoPlugin::shownIdentifier()
{
    QString shown;
    runModal([this] { m_sysInfo->showIdentifier(); }, [&](QWidget *dialog) {
        if (auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("identifierField")))
            shown = field->text();
        dialog->close();
    });
    return shown;
}

void TestSysInfoPlugin::identifierIsTheSameEachTime()
{
    const QString first = shownIdentifier();
    QVERIFY(!first.isEmpty());
    QCOMPARE(first, expectedIdentifier());
    QCOMPARE(shownIdentifier(), first);
}

void TestSysInfoPlugin::systemIdentifierComesFirst()
{
    QTemporaryDir store;
    QCOMPARE(machineIdentifier("3d1219c7c4c5404aaa1f6d2a48adfda4\n", store.path()), QStringLiteral("3d1219c7c4c5404aaa1f6d2a48adfda4"));
    QVERIFY(!QFile::exists(store.filePath(machineIdentifierFileName())));
}

void TestSysInfoPlugin::madeUpIdentifierIsStoredAndKept()
{
    QTemporaryDir root;
    const QString store = root.filePath(QStringLiteral("not/yet/there"));
    const QString made = machineIdentifier(QByteArray(), store);
    QVERIFY2(isPlainUuid(made), qPrintable(made));

    QFile file(QDir(store).filePath(machineIdentifierFileName()));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), made.toLatin1() + '\n');
    QCOMPARE(machineIdentifier(QByteArray(), store), made);
    QCOMPARE(machineIdentifier(" \n", store), made);
}

void TestSysInfoPlugin::storedIdentifierIsReadBack_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QString>("expected"); // empty: a new one is made

    QTest::newRow("plain") << QByteArray("6f1c2a0e-54b3-4f7e-9d0a-2b8e3c4d5f60\n")
                           << QStringLiteral("6f1c2a0e-54b3-4f7e-9d0a-2b8e3c4d5f60");
    QTest::newRow("braces, no line break") << QByteArray("{6f1c2a0e-54b3-4f7e-9d0a-2b8e3c4d5f60}")
                                           << QStringLiteral("6f1c2a0e-54b3-4f7e-9d0a-2b8e3c4d5f60");
    QTest::newRow("damaged") << QByteArray("6f1c2a0e-54b3-4f7e") << QString();
    QTest::newRow("empty") << QByteArray() << QString();
}

void TestSysInfoPlugin::storedIdentifierIsReadBack()
{
    QFETCH(QByteArray, stored);
    QFETCH(QString, expected);

    QTemporaryDir store;
    const QString path = store.filePath(machineIdentifierFileName());
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(stored);
    }
    const QString identifier = machineIdentifier(QByteArray(), store.path());
    QVERIFY2(isPlainUuid(identifier), qPrintable(identifier));
    if (!expected.isEmpty()) {
        QCOMPARE(identifier, expected);
        return;
    }
    // A new one replaced the unusable file and is kept from now on.
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), identifier.toLatin1() + '\n');
    QCOMPARE(machineIdentifier(QByteArray(), store.path()), identifier);
}

void TestSysInfoPlugin::unwritableStoreStillGivesAnIdentifier()
{
    QTemporaryDir root;
    const QString blocker = root.filePath(QStringLiteral("afile"));
    {
        QFile file(blocker);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    const QString identifier = machineIdentifier(QByteArray(), blocker + QStringLiteral("/sub"));
    QVERIFY2(isPlainUuid(identifier), qPrintable(identifier));
    QVERIFY(QFileInfo(blocker).isFile());
}

KESTREL_TEST_MAIN(TestSysInfoPlugin)
#include "tst_sysinfoplugin.moc"
