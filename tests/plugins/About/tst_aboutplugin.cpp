#include "plugins/aboutappinterface.h"

#include "modalrun.h"
#include "testsandbox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPluginLoader>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <functional>

namespace {

const QString description = QStringLiteral("simple downloader from YouTube, full version is on Loomfield site");
const QString systemText = QStringLiteral("Kestrel Downloader 2.0.023 (build 25.0826)\n"
                                          "Operating system: Debian GNU/Linux 12 (bookworm)\n"
                                          "Kernel: linux 6.1.0-25-amd64\n"
                                          "CPU architecture: x86_64\n"
                                          "Qt version: 6.4.2");

QString labelText(QWidget *dialog, const QString &objectName)
{
    auto *label = dialog->findChild<QLabel *>(objectName);
    return label ? label->text() : QStringLiteral("<no label %1>").arg(objectName);
}

bool isShown(QWidget *dialog, const QString &objectName)
{
    auto *widget = dialog->findChild<QWidget *>(objectName);
    return widget && widget->isVisible();
}

} // namespace

class TestAboutPlugin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void dialogShowsNameVersionAndTexts_data();
    void dialogShowsNameVersionAndTexts();
    void noVersionMeansNoVersionLine();
    void systemTextIsSelectableAndWhollyVisible();
    void closesWithItsButton_data();
    void closesWithItsButton();
    void dialogBelongsToTheWindow();

private:
    QPluginLoader m_loader{QStringLiteral(ABOUT_PLUGIN_PATH)};
    AboutAppInterface *m_about = nullptr;
};

void TestAboutPlugin::initTestCase()
{
    QObject *root = m_loader.instance();
    QVERIFY2(root, qPrintable(m_loader.errorString()));
    QCOMPARE(m_loader.metaData().value(QLatin1String("IID")).toString(), QStringLiteral("me.brisant.AboutAppInterface"));
    m_about = qobject_cast<AboutAppInterface *>(root);
    QVERIFY(m_about);
}

void TestAboutPlugin::init()
{
    QCoreApplication::setApplicationVersion(QStringLiteral("2.0.023"));
}

void TestAboutPlugin::dialogShowsNameVersionAndTexts_data()
{
    QTest::addColumn<QString>("system");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("systemShown");
    QTest::addColumn<bool>("descriptionShown");

    QTest::newRow("as the application calls it") << systemText << description << true << true;
    QTest::newRow("one-line system text") << QStringLiteral("Qt version: 6.4.2") << description << true << true;
    QTest::newRow("no system text") << QString() << description << false << true;
    QTest::newRow("blank system text") << QStringLiteral(" \n") << description << false << true;
    QTest::newRow("no description") << systemText << QString() << true << false;
}

void TestAboutPlugin::dialogShowsNameVersionAndTexts()
{
    QFETCH(QString, system);
    QFETCH(QString, text);
    QFETCH(bool, systemShown);
    QFETCH(bool, descriptionShown);

    QString title;
    Qt::WindowModality modality = Qt::NonModal;
    QString heading, version, shownDescription, shownSystem;
    bool sawSystem = false, sawDescription = false, sawHeading = false;
    const ModalRun run = runModal([&] { m_about->showAbout(system, text); }, [&](QWidget *dialog) {
        title = dialog->windowTitle();
        modality = dialog->windowModality();
        heading = labelText(dialog, QStringLiteral("aboutHeading"));
        version = labelText(dialog, QStringLiteral("aboutVersion"));
        shownDescription = labelText(dialog, QStringLiteral("aboutDescription"));
        if (auto *edit = dialog->findChild<QPlainTextEdit *>(QStringLiteral("aboutSystemText")))
            shownSystem = edit->toPlainText();
        sawHeading = isShown(dialog, QStringLiteral("aboutHeading"));
        sawSystem = isShown(dialog, QStringLiteral("aboutSystemSection"));
        sawDescription = isShown(dialog, QStringLiteral("aboutDescription"));
        dialog->close();
    });

    QVERIFY(run.appeared);
    QVERIFY(modality != Qt::NonModal);
    QCOMPARE(title, QStringLiteral("Kestrel Downloader"));
    QCOMPARE(heading, QStringLiteral("Kestrel Downloader"));
    QVERIFY(sawHeading);
    QCOMPARE(version, QStringLiteral("Version 2.0.023"));
    QCOMPARE(sawDescription, descriptionShown);
    if (descriptionShown)
        QCOMPARE(shownDescription, text);
    QCOMPARE(sawSystem, systemShown);
    if (systemShown)
        QCOMPARE(shownSystem, system);
}

void TestAboutPlugin::noVersionMeansNoVersionLine()
{
    QCoreApplication::setApplicationVersion(QString());
    bool versionShown = true;
    const ModalRun run = runModal([this] { m_about->showAbout(systemText, description); }, [&](QWidget *dialog) {
        versionShown = isShown(dialog, QStringLiteral("aboutVersion"));
        dialog->close();
    });
    QVERIFY(run.appeared);
    QVERIFY(!versionShown);
}

void TestAboutPlugin::systemTextIsSelectableAndWhollyVisible()
{
    bool readOnly = false;
    Qt::TextInteractionFlags flags;
    int scrollRange = -1;
    int lastLineBottom = 0;
    int viewportHeight = 0;
    const ModalRun run = runModal([this] { m_about->showAbout(systemText, description); }, [&](QWidget *dialog) {
        auto *edit = dialog->findChild<QPlainTextEdit *>(QStringLiteral("aboutSystemText"));
        if (!edit)
            return;
        readOnly = edit->isReadOnly();
        flags = edit->textInteractionFlags();
        scrollRange = edit->verticalScrollBar()->maximum();
        QTextCursor end(edit->document());
        end.movePosition(QTextCursor::End);
        lastLineBottom = edit->cursorRect(end).bottom();
        viewportHeight = edit->viewport()->height();
        dialog->close();
    });
    QVERIFY(run.appeared);
    QVERIFY(readOnly);
    QVERIFY(flags.testFlag(Qt::TextSelectableByMouse));
    QVERIFY(flags.testFlag(Qt::TextSelectableByKeyboard));
    // Five lines need no scrolling.
    QCOMPARE(scrollRange, 0);
    QVERIFY2(lastLineBottom < viewportHeight, qPrintable(QStringLiteral("%1 >= %2").arg(lastLineBottom).arg(viewportHeight)));
}

void TestAboutPlugin::closesWithItsButton_data()
{
    QTest::addColumn<int>("key"); // 0: click the button
    QTest::newRow("OK button") << 0;
    QTest::newRow("Escape key") << int(Qt::Key_Escape);
    QTest::newRow("Return key") << int(Qt::Key_Return);
}

void TestAboutPlugin::closesWithItsButton()
{
    QFETCH(int, key);
    QStringList buttons;
    QString focused;
    const ModalRun run = runModal([this] { m_about->showAbout(systemText, description); }, [&](QWidget *dialog) {
        for (QAbstractButton *button : dialog->findChildren<QAbstractButton *>())
            buttons << button->text().remove(QLatin1Char('&'));
        if (auto *button = qobject_cast<QAbstractButton *>(dialog->focusWidget()))
            focused = button->text().remove(QLatin1Char('&'));
        if (key != 0) {
            QTest::keyClick(dialog->focusWidget() ? dialog->focusWidget() : dialog, Qt::Key(key));
        } else if (QAbstractButton *ok = buttonWithText(dialog, QStringLiteral("OK"))) {
            ok->click();
        }
    });
    QVERIFY(run.appeared);
    QCOMPARE(buttons, QStringList{QStringLiteral("OK")});
    // Not the system text, which would show a text cursor as if editable.
    QCOMPARE(focused, QStringLiteral("OK"));
    QVERIFY2(run.closedByTest, "the dialog stayed open");
}

void TestAboutPlugin::dialogBelongsToTheWindow()
{
    QDialog window;
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QWidget *parent = nullptr;
    const ModalRun run = runModal([this] { m_about->showAbout(systemText, description); }, [&](QWidget *dialog) {
        parent = dialog->parentWidget();
        buttonWithText(dialog, QStringLiteral("OK"))->click();
    });
    QVERIFY(run.appeared);
    QCOMPARE(parent, &window);
}

KESTREL_TEST_MAIN(TestAboutPlugin)
#include "tst_aboutplugin.moc"
