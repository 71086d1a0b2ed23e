#include "base/identity.h"
#include "base/translations.h"
#include "downloader/kestreldownloader.h"
#include "plugins/aboutappinterface.h"
#include "plugins/sysinfointerface.h"
#include "ui/iconbutton.h"

#include "logcapture.h"
#include "modalcatcher.h"
#include "modalrun.h"
#include "testsandbox.h"
#include "windowflowtest.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPluginLoader>
#include <QPushButton>
#include <QStackedWidget>
#include <QStyle>
#include <QTableView>
#include <QTest>
#include <QTextDocument>

namespace {

const QString catalogueFolder = QStringLiteral(KESTREL_CATALOGUE_FOLDER);

QStringList languages()
{
    return QStringLiteral(KESTREL_LANGUAGES).split(QLatin1Char(' '));
}

QString sizeText(QSize size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

QString describe(const QWidget *widget, const QString &text, QSize needed, QSize room)
{
    return QStringLiteral("%1 \"%2\" needs %3, has %4").arg(widget->objectName(), text, sizeText(needed), sizeText(room));
}

// What a label's text needs, from the label's font: a wrapping label the
// height for its width, any other the whole text on its lines.
QSize neededByLabel(const QLabel *label)
{
    if (label->wordWrap())
        return {label->contentsRect().width(), label->heightForWidth(label->width()) - label->height() + label->contentsRect().height()};
    if (label->textFormat() == Qt::RichText || (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text()))) {
        QTextDocument document;
        document.setDefaultFont(label->font());
        document.setDocumentMargin(0);
        document.setHtml(label->text());
        return {int(std::ceil(document.idealWidth())), int(std::ceil(document.size().height()))};
    }
    return label->fontMetrics().size(0, label->text());
}

QString labelProblem(const QLabel *label)
{
    if (label->text().isEmpty())
        return {};
    const int margin = label->margin();
    const QSize room = label->contentsRect().adjusted(margin, margin, -margin, -margin).size();
    const QSize needed = neededByLabel(label);
    if (needed.width() <= room.width() && needed.height() <= room.height())
        return {};
    return describe(label, label->text(), needed, room);
}

QString buttonProblem(const QAbstractButton *button)
{
    // An icon button shows its text only as a tooltip.
    if (button->text().isEmpty() || qobject_cast<const IconButton *>(button))
        return {};
    const QSize needed = button->sizeHint();
    if (needed.width() <= button->width() && needed.height() <= button->height())
        return {};
    return describe(button, button->text(), needed, button->size());
}

QStringList headerProblems(const QHeaderView *header)
{
    QStringList problems;
    const int margins = 2 * header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
    for (int section = 0; section < header->count(); ++section) {
        if (header->isSectionHidden(section))
            continue;
        const QString text = header->model()->headerData(section, header->orientation()).toString();
        const QSize needed(header->fontMetrics().horizontalAdvance(text) + margins, header->fontMetrics().height());
        const QSize room(header->sectionSize(section), header->height());
        if (needed.width() > room.width() || needed.height() > room.height())
            problems << describe(header, text, needed, room);
    }
    return problems;
}

// Every visible label, button and table header under root whose text needs
// more room than its geometry gives it.
QStringList crampedTexts(const QWidget *root)
{
    QStringList problems;
    for (const QWidget *widget : root->findChildren<QWidget *>()) {
        if (!widget->isVisible())
            continue;
        if (const auto *label = qobject_cast<const QLabel *>(widget))
            problems << labelProblem(label);
        else if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
            problems << buttonProblem(button);
        else if (const auto *header = qobject_cast<const QHeaderView *>(widget); header && header->model())
            problems << headerProblems(header);
    }
    problems.removeAll(QString());
    return problems;
}

QAction *menuEntry(const QWidget *window, const QString &englishText)
{
    for (QAction *action : window->findChildren<QAction *>()) {
        if (action->data().toString() == englishText)
            return action;
    }
    qFatal("no menu entry %s", qPrintable(englishText));
}

// The button's picture as drawn at the size of the small back arrow.
QImage arrowPicture(const QIcon &icon)
{
    return icon.pixmap(QSize(33, 33), 1.0).toImage().convertToFormat(QImage::Format_ARGB32);
}

QStringList menuTexts(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions())
        texts << action->text();
    return texts;
}

} // namespace

// The window in the user's language: which catalogue the system's language
// list chooses, the built-in English texts for C, POSIX and English, the
// translated window with its failure codes and log lines unchanged, the
// mirrored window in Arabic, and room for every text on every page in every
// language (the suite runs at a device scale of 100 % and, as
// tst_translations_200, of 200 %).
class TestTranslations : public WindowFlowTest
{
    Q_OBJECT

private slots:
    void languageFollowsThePreferences_data();
    void languageFollowsThePreferences();
    void cAndEnglishShowTheBuiltInTexts_data();
    void cAndEnglishShowTheBuiltInTexts();
    void germanWindowIsTranslated();
    void failureCodeAndLogStayAsTheyAre();
    void qtTextsOutsideWindowsStayEnglish();
    void arabicMirrorsTheWindow();
    void everyPageHasRoomForItsTexts_data();
    void everyPageHasRoomForItsTexts();
    void pluginDialogsSpeakTheLanguage_data();
    void pluginDialogsSpeakTheLanguage();

private:
    // Installs the catalogues of the language and makes a new window with them.
    void speak(Translations &translations, const QString &language);
    QStringList walkEveryPage();
    QStringList boxProblems(const std::function<void()> &raise);
};

void TestTranslations::speak(Translations &translations, const QString &language)
{
    if (!language.isEmpty()) {
        QVERIFY(translations.installProgramCatalogue(language));
        QVERIFY2(translations.installQtCatalogue(language, Translations::qtCatalogueFolders()), qPrintable(language));
    }
    remakeWindow();
}

void TestTranslations::languageFollowsThePreferences_data()
{
    QTest::addColumn<QStringList>("uiLanguages");
    QTest::addColumn<QString>("language");
    QTest::newRow("C") << QStringList{QStringLiteral("C")} << QString();
    QTest::newRow("POSIX") << QStringList{QStringLiteral("POSIX")} << QString();
    QTest::newRow("English before German") << QStringList{QStringLiteral("en-US"), QStringLiteral("de-DE")} << QString();
    QTest::newRow("British English") << QStringList{QStringLiteral("en-GB")} << QString();
    QTest::newRow("a language we do not have") << QStringList{QStringLiteral("nl-NL"), QStringLiteral("nl")} << QString();
    QTest::newRow("nothing") << QStringList() << QString();
    QTest::newRow("German") << QStringList{QStringLiteral("de-DE"), QStringLiteral("de")} << QStringLiteral("de");
    QTest::newRow("Austrian German") << QStringList{QStringLiteral("de-AT")} << QStringLiteral("de");
    QTest::newRow("Dutch, then French") << QStringList{QStringLiteral("nl-NL"), QStringLiteral("fr-FR")} << QStringLiteral("fr");
    QTest::newRow("Brazilian Portuguese") << QStringList{QStringLiteral("pt-BR")} << QStringLiteral("pt_BR");
    QTest::newRow("Portuguese of Portugal") << QStringList{QStringLiteral("pt-PT")} << QString();
    QTest::newRow("Simplified Chinese") << QStringList{QStringLiteral("zh-Hans-CN")} << QStringLiteral("zh_CN");
    QTest::newRow("Traditional Chinese") << QStringList{QStringLiteral("zh-Hant-TW")} << QString();
    QTest::newRow("Japanese") << QStringList{QStringLiteral("ja-JP")} << QStringLiteral("ja");
    QTest::newRow("Egyptian Arabic") << QStringList{QStringLiteral("ar-EG")} << QStringLiteral("ar");
    QTest::newRow("Ukrainian") << QStringList{QStringLiteral("uk")} << QStringLiteral("uk");
}

void TestTranslations::languageFollowsThePreferences()
{
    QFETCH(QStringList, uiLanguages);
    QFETCH(QString, language);
    QCOMPARE(Translations(catalogueFolder).languageFor(uiLanguages), language);
}

void TestTranslations::cAndEnglishShowTheBuiltInTexts_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("C") << QStringLiteral("C");
    QTest::newRow("POSIX") << QStringLiteral("POSIX");
    QTest::newRow("en_US") << QStringLiteral("en_US");
}

void TestTranslations::cAndEnglishShowTheBuiltInTexts()
{
    QFETCH(QString, locale);
    Translations translations(catalogueFolder);
    const QString language = translations.languageFor(QLocale(locale).uiLanguages());
    QCOMPARE(language, QString());
    QVERIFY(!translations.installProgramCatalogue(language));
    QVERIFY(!translations.installQtCatalogue(language, Translations::qtCatalogueFolders()));
    remakeWindow();

    QCOMPARE(window()->windowTitle(), QStringLiteral("Kestrel Downloader"));
    const std::pair<const char *, QString> texts[] = {
        {"pushButton_Video", QString()},
        {"pushButton_Site", QStringLiteral("Go To Loomfield<br>Access 1000's of Sites")},
        {"btn_Back_from_Process", QString()},
        {"pushButton_Process", QString()},
        {"btn_Back_from_Formats", QString()},
        {"btn_Back_Last", QString()},
        {"btnStartOver", QStringLiteral("Start Over")},
        {"btnOpenFolder", QStringLiteral("Open Folder with File")},
        {"btnCancel", QStringLiteral("Cancel")},
    };
    for (const auto &[name, text] : texts)
        QCOMPARE(widget<QAbstractButton>(name)->text(), text);
    QCOMPARE(widget<QLabel>("labelTitle")->text(), QStringLiteral("title"));
    QCOMPARE(widget<QLabel>("labelTime")->text(), QStringLiteral("00:00:00"));
    QCOMPARE(widget<QLabel>("label_DL")->text(), QStringLiteral("Downloading: "));
    QCOMPARE(widget<QLabel>("label_TitleDownload")->text(), QStringLiteral("title"));
    QCOMPARE(widget<QLabel>("label_DL_OK")->text(), QStringLiteral("Video Successfully Downloaded"));

    const QMenu *menu = window()->findChild<QMenu *>();
    QCOMPARE(menuTexts(menu), (QStringList{QStringLiteral("Manually Update Software"), QStringLiteral("Logging enabled"), QString(),
                                           QStringLiteral("Change Scale Size"), QString(), QStringLiteral("Show UUID"),
                                           QStringLiteral("About")}));
    QCOMPARE(menuTexts(menu->actions().at(3)->menu()),
             (QStringList{QStringLiteral("125%"), QStringLiteral("130%"), QStringLiteral("135%"), QStringLiteral("140%")}));

    reachFormats();
    const QAbstractItemModel *model = widget<QTableView>("tableView")->model();
    QStringList headers;
    for (int column = 0; column < model->columnCount(); ++column)
        headers << model->headerData(column, Qt::Horizontal).toString();
    QCOMPARE(headers, (QStringList{QStringLiteral("Type"), QStringLiteral("ID."), QStringLiteral("Resolution"),
                                   QStringLiteral("Size"), QString()}));
    QCOMPARE(QApplication::layoutDirection(), Qt::LeftToRight);
}

void TestTranslations::germanWindowIsTranslated()
{
    Translations translations(catalogueFolder);
    speak(translations, QStringLiteral("de"));
    QCOMPARE(window()->windowTitle(), QStringLiteral("Kestrel Downloader"));
    QCOMPARE(widget<QPushButton>("btnStartOver")->text(), QStringLiteral("Neu beginnen"));
    QCOMPARE(widget<QPushButton>("btnOpenFolder")->text(), QStringLiteral("Ordner mit Datei öffnen"));
    QCOMPARE(widget<QPushButton>("btnCancel")->text(), QStringLiteral("Abbrechen"));
    QCOMPARE(widget<QLabel>("label_DL")->text(), QStringLiteral("Wird geladen: "));
    QCOMPARE(widget<QLabel>("label_DL_OK")->text(), QStringLiteral("Video erfolgreich heruntergeladen"));
    QCOMPARE(menuEntry(window(), QStringLiteral("Manually Update Software"))->text(), QStringLiteral("Software manuell aktualisieren"));
    QCOMPARE(menuEntry(window(), QStringLiteral("130%"))->text(), QStringLiteral("130 %"));
    // Qt's own catalogue: the standard buttons of the updater's question.
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "&Yes"), QStringLiteral("&Ja"));

    ModalCatcher catcher;
    enterAddress(QStringLiteral("https://vimeo.com/12345"));
    QVERIFY(catcher.waitForBoxes(1));
    QCOMPARE(catcher.boxes().first().title, QStringLiteral("WARNUNG"));
    QCOMPARE(catcher.boxes().first().text,
             QStringLiteral("WARNUNG: Bitte geben Sie eine gültige YouTube-Adresse ein, um fortzufahren"));
}

void TestTranslations::failureCodeAndLogStayAsTheyAre()
{
    Translations translations(catalogueFolder);
    speak(translations, QStringLiteral("de"));

    ModalCatcher catcher;
    window()->whenSomethingWrong(KestrelDownloader::metadataCrashed);
    QCOMPARE(catcher.boxes().size(), 1);
    QCOMPARE(catcher.boxes().first().title, QStringLiteral("FEHLER"));
    QCOMPARE(catcher.boxes().first().text,
             QStringLiteral("<h3>FEHLER:</h3>Absturz beim Abrufen der Metadaten<hr><i>Code: #0x48</i>"));

    // The menu's log line names the entry in English, and the German scale
    // entry ("130 %") still sets the scale.
    LogCapture log;
    menuEntry(window(), QStringLiteral("130%"))->trigger();
    QCOMPARE(window()->scale(), 130u);
    QCOMPARE(log.matching(QStringLiteral("whenMenuTriggered")).size(), 1);
    QVERIFY2(log.matching(QStringLiteral("whenMenuTriggered")).first().endsWith(QStringLiteral(" : 130%")),
             qPrintable(log.matching(QStringLiteral("whenMenuTriggered")).first()));
}

// Qt's catalogue gives the standard buttons, not the texts Qt writes into
// log lines or the command line's help.
void TestTranslations::qtTextsOutsideWindowsStayEnglish()
{
    Translations translations(catalogueFolder);
    QVERIFY(translations.installQtCatalogue(QStringLiteral("de"), Translations::qtCatalogueFolders()));
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen"));
    QCOMPARE(QCoreApplication::translate("QLibrary", "The shared library was not found."),
             QStringLiteral("The shared library was not found."));
    QCOMPARE(QCoreApplication::translate("QCommandLineParser", "Displays help on commandline options."),
             QStringLiteral("Displays help on commandline options."));
    QCOMPARE(QCoreApplication::translate("QCommandLineParser", "Unknown option '%1'."), QStringLiteral("Unknown option '%1'."));
}

void TestTranslations::arabicMirrorsTheWindow()
{
    {
        Translations translations(catalogueFolder);
        speak(translations, QStringLiteral("ar"));
        QCOMPARE(QApplication::layoutDirection(), Qt::RightToLeft);
        QVERIFY(window()->isRightToLeft());
        QCOMPARE(widget<QPushButton>("btnCancel")->text(), QStringLiteral("إلغاء"));
        // The small back arrows point to the right, where back lies now.
        const QImage arrow = arrowPicture(QIcon(QStringLiteral(":/img/btn_back_small")));
        QVERIFY(arrow != arrow.mirrored(true, false));
        QCOMPARE(arrowPicture(widget<QPushButton>("btn_Back_Last")->icon()), arrow.mirrored(true, false));
        QCOMPARE(arrowPicture(widget<QPushButton>("btn_Back_from_Formats")->icon()), arrow.mirrored(true, false));
    }
    remakeWindow();
    QCOMPARE(arrowPicture(widget<QPushButton>("btn_Back_Last")->icon()), arrowPicture(QIcon(QStringLiteral(":/img/btn_back_small"))));
    // Without the catalogue the application turns back.
    QCOMPARE(QApplication::layoutDirection(), Qt::LeftToRight);
}

void TestTranslations::everyPageHasRoomForItsTexts_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("en") << QString();
    for (const QString &language : languages())
        QTest::newRow(qPrintable(language)) << language;
}

void TestTranslations::everyPageHasRoomForItsTexts()
{
    QFETCH(QString, language);
    Translations translations(catalogueFolder);
    speak(translations, language);
    const QStringList problems = walkEveryPage();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
}

void TestTranslations::pluginDialogsSpeakTheLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("systemHeading");
    QTest::addColumn<QString>("identifierTitle");
    QTest::addColumn<QString>("systemLine");
    QTest::newRow("en") << QString() << QStringLiteral("System information") << QStringLiteral("Machine identifier")
                        << QStringLiteral("Operating system: ");
    QTest::newRow("de") << QStringLiteral("de") << QStringLiteral("Systeminformationen") << QStringLiteral("Rechnerkennung")
                        << QStringLiteral("Betriebssystem: ");
    QTest::newRow("ja") << QStringLiteral("ja") << QStringLiteral("システム情報") << QStringLiteral("マシン識別子")
                        << QStringLiteral("オペレーティングシステム: ");
    QTest::newRow("ar") << QStringLiteral("ar") << QStringLiteral("معلومات النظام") << QStringLiteral("معرّف الجهاز")
                        << QStringLiteral("نظام التشغيل: ");
    for (const QString &language : languages())
        QTest::newRow(qPrintable(language + QStringLiteral(", room only"))) << language << QString() << QString() << QString();
}

// The plug-ins translate through the catalogue the application installed.
void TestTranslations::pluginDialogsSpeakTheLanguage()
{
    QFETCH(QString, language);
    QFETCH(QString, systemHeading);
    QFETCH(QString, identifierTitle);
    QFETCH(QString, systemLine);
    Translations translations(catalogueFolder);
    speak(translations, language);

    QPluginLoader aboutLoader(QStringLiteral(KESTREL_PLUGIN_ABOUT));
    QPluginLoader sysInfoLoader(QStringLiteral(KESTREL_PLUGIN_SYSINFO));
    auto *about = qobject_cast<AboutAppInterface *>(aboutLoader.instance());
    auto *sysInfo = qobject_cast<SysInfoInterface *>(sysInfoLoader.instance());
    QVERIFY2(about && sysInfo, qPrintable(aboutLoader.errorString() + sysInfoLoader.errorString()));
    sysInfo->setApplicationInfo(Identity::applicationVersion(), Identity::buildDate(), 0, 1);

    QStringList problems;
    QString shownHeading, shownTitle;
    const auto check = [&problems](QWidget *dialog) {
        for (const QString &problem : crampedTexts(dialog))
            problems << QStringLiteral("%1: %2").arg(dialog->objectName(), problem);
        dialog->close();
    };
    QVERIFY(runModal([&] { about->showAbout(sysInfo->systemInformation(), Identity::description()); },
                     [&](QWidget *dialog) {
                         if (auto *heading = dialog->findChild<QLabel *>(QStringLiteral("aboutSystemHeading")))
                             shownHeading = heading->text();
                         check(dialog);
                     })
                .appeared);
    QVERIFY(runModal([&] { sysInfo->showIdentifier(); },
                     [&](QWidget *dialog) {
                         shownTitle = dialog->windowTitle();
                         check(dialog);
                     })
                .appeared);
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
    if (!systemHeading.isEmpty()) {
        QCOMPARE(shownHeading, systemHeading);
        QCOMPARE(shownTitle, identifierTitle);
        QVERIFY2(sysInfo->systemInformation().split(QLatin1Char('\n')).at(1).startsWith(systemLine),
                 qPrintable(sysInfo->systemInformation()));
    }
}

// The pages in the order a user meets them, with the boxes the window
// raises on the way.
QStringList TestTranslations::walkEveryPage()
{
    QStringList problems;
    const auto check = [&](const QString &where) {
        // A text set just now takes its room when the layout has run.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        for (const QString &problem : crampedTexts(window()))
            problems << where + QStringLiteral(": ") + problem;
    };
    check(QStringLiteral("start page"));
    QTest::mouseClick(widget<QPushButton>("pushButton_Video"), Qt::LeftButton);
    check(QStringLiteral("address page"));
    problems << boxProblems([this] { enterAddress(QStringLiteral("https://vimeo.com/12345")); });

    reachFormats();
    check(QStringLiteral("formats page"));

    useScenario(FakeTool::Kind::download(), hanging());
    pickRow(0);
    check(QStringLiteral("download page, downloading"));
    emit driver().haveVideo();
    check(QStringLiteral("download page, downloaded"));

    for (const KestrelDownloader::errorType code :
         {KestrelDownloader::metadataTooFewLines, KestrelDownloader::metadataCrashed, KestrelDownloader::formatsCrashed,
          KestrelDownloader::downloadCrashed, KestrelDownloader::formatCountError, KestrelDownloader::toolNotStarted,
          KestrelDownloader::errorType(0)})
        problems << boxProblems([this, code] { window()->whenSomethingWrong(code); });
    problems << boxProblems([this] { emit driver().resultUpdateBinary(QProcess::CrashExit); });
    problems << boxProblems([this] { emit driver().resultUpdateBinary(QProcess::NormalExit); });
    problems << boxProblems([this] { menuEntry(window(), QStringLiteral("About"))->trigger(); });
    problems.removeAll(QString());
    return problems;
}

// The problems of the one box that raise() brings up.
QStringList TestTranslations::boxProblems(const std::function<void()> &raise)
{
    QStringList problems;
    ModalCatcher catcher;
    catcher.setAction([&problems](QWidget *box) {
        for (const QString &problem : crampedTexts(box))
            problems << QStringLiteral("box \"%1\": %2").arg(box->windowTitle(), problem);
    });
    raise();
    if (!catcher.waitForBoxes(1))
        problems << QStringLiteral("no box came up");
    return problems;
}

KESTREL_TEST_MAIN(TestTranslations)
#include "tst_translations.moc"
