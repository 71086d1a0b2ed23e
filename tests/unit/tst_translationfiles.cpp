#include "testsandbox.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>

namespace {

struct Entry
{
    QString context;
    QString source;
    QString type; // the translation's "type": unfinished, obsolete, vanished or empty
    QStringList translations; // one, or one per plural form
};

QList<Entry> readCatalogue(const QByteArray &xml, QString *error)
{
    QList<Entry> entries;
    QXmlStreamReader reader(xml);
    QString context;
    bool numerus = false;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto name = reader.name();
        if (name == QLatin1String("name")) {
            context = reader.readElementText();
        } else if (name == QLatin1String("message")) {
            numerus = reader.attributes().value(QLatin1String("numerus")) == QLatin1String("yes");
            entries << Entry{context, {}, {}, {}};
        } else if (name == QLatin1String("source") && !entries.isEmpty()) {
            entries.last().source = reader.readElementText();
        } else if (name == QLatin1String("translation") && !entries.isEmpty()) {
            entries.last().type = reader.attributes().value(QLatin1String("type")).toString();
            if (!numerus)
                entries.last().translations << reader.readElementText();
        } else if (name == QLatin1String("numerusform") && !entries.isEmpty()) {
            entries.last().translations << reader.readElementText();
        }
    }
    if (reader.hasError())
        *error = reader.errorString();
    return entries;
}

// The pieces of a text that a translation must keep as they are: the
// placeholders the program fills in and the markup it is shown with.
QStringList fixedPieces(const QString &text)
{
    static const QRegularExpression pieces(QStringLiteral("%L?\\d+|%n|<[^>]*>"));
    QStringList found;
    for (const QRegularExpressionMatch &match : pieces.globalMatch(text))
        found << match.captured().toLower();
    found.sort();
    return found;
}

bool hasMnemonic(const QString &text)
{
    static const QRegularExpression mnemonic(QStringLiteral("&[^&\\s]"));
    return text.contains(mnemonic);
}

QStringList problemsIn(const QByteArray &xml)
{
    QString error;
    const QList<Entry> entries = readCatalogue(xml, &error);
    QStringList problems;
    if (!error.isEmpty())
        problems << QStringLiteral("not readable: %1").arg(error);
    for (const Entry &entry : entries) {
        const QString where = QStringLiteral("%1 \"%2\"").arg(entry.context, entry.source);
        if (!entry.type.isEmpty()) {
            problems << QStringLiteral("%1 is %2").arg(where, entry.type);
            continue;
        }
        for (const QString &translation : entry.translations) {
            if (translation.isEmpty())
                problems << QStringLiteral("%1 has an empty translation").arg(where);
            else if (fixedPieces(translation) != fixedPieces(entry.source))
                problems << QStringLiteral("%1: \"%2\" changes the placeholders or markup").arg(where, translation);
            else if (hasMnemonic(entry.source) != hasMnemonic(translation))
                problems << QStringLiteral("%1: \"%2\" loses or adds the keyboard shortcut").arg(where, translation);
        }
    }
    return problems;
}

QByteArray catalogue(const QString &messages)
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?><!DOCTYPE TS><TS version=\"2.1\" language=\"de\">"
                          "<context><name>Navigation</name>%1</context></TS>")
        .arg(messages)
        .toUtf8();
}

QByteArray message(const QString &source, const QString &translation, const QString &type = QString())
{
    const QString typeAttribute = type.isEmpty() ? QString() : QStringLiteral(" type=\"%1\"").arg(type);
    return QStringLiteral("<message><source>%1</source><translation%2>%3</translation></message>")
        .arg(source.toHtmlEscaped(), typeAttribute, translation.toHtmlEscaped())
        .toUtf8();
}

QString cataloguePath(const QString &language)
{
    return QDir(QStringLiteral(KESTREL_TRANSLATION_SOURCES)).filePath(QStringLiteral("kestrel_%1.ts").arg(language));
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

} // namespace

// The translation catalogues in translations/: complete, current, and true
// to the English texts' placeholders and markup.
class TestTranslationFiles : public QObject
{
    Q_OBJECT

private slots:
    void checkerAcceptsAFaithfulTranslation();
    void checkerFindsUnfinishedAndObsoleteEntries_data();
    void checkerFindsUnfinishedAndObsoleteEntries();
    void checkerFindsChangedPlaceholdersAndMarkup_data();
    void checkerFindsChangedPlaceholdersAndMarkup();
    void checkerFindsLostShortcut();
    void everyLanguageHasACatalogue();
    void catalogueIsComplete_data();
    void catalogueIsComplete();
    void layoutDirectionFollowsTheScript_data();
    void layoutDirectionFollowsTheScript();
};

void TestTranslationFiles::checkerAcceptsAFaithfulTranslation()
{
    const QByteArray xml = catalogue(QString::fromUtf8(message(QStringLiteral("<h3>ERROR:</h3>%1<hr><i>Code: #0x%2</i>"),
                                                               QStringLiteral("<h3>FEHLER:</h3>%1<hr><i>Code: #0x%2</i>"))
                                                       + message(QStringLiteral("Version %1 of %2"), QStringLiteral("%2, Version %1"))
                                                       + message(QStringLiteral("&Copy"), QStringLiteral("复制(&C)"))));
    QCOMPARE(problemsIn(xml), QStringList());
}

void TestTranslationFiles::checkerFindsUnfinishedAndObsoleteEntries_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("unfinished") << QStringLiteral("unfinished");
    QTest::newRow("obsolete") << QStringLiteral("obsolete");
    QTest::newRow("vanished") << QStringLiteral("vanished");
}

void TestTranslationFiles::checkerFindsUnfinishedAndObsoleteEntries()
{
    QFETCH(QString, type);
    const QByteArray xml = catalogue(QString::fromUtf8(message(QStringLiteral("Cancel"), QStringLiteral("Abbrechen"), type)));
    QCOMPARE(problemsIn(xml), QStringList{QStringLiteral("Navigation \"Cancel\" is %1").arg(type)});
}

void TestTranslationFiles::checkerFindsChangedPlaceholdersAndMarkup_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("translation");
    QTest::newRow("placeholder lost") << QStringLiteral("| %1 sec.") << QStringLiteral("| Sek.");
    QTest::newRow("placeholder renumbered") << QStringLiteral("%1 version: %2") << QStringLiteral("%1 Version: %3");
    QTest::newRow("placeholder doubled") << QStringLiteral("Downloading %1") << QStringLiteral("%1 wird geladen %1");
    QTest::newRow("markup lost") << QStringLiteral("Go To Loomfield<br>Access") << QStringLiteral("Zu Loomfield Zugang");
    QTest::newRow("markup changed") << QStringLiteral("<i>Code: #0x%2</i>") << QStringLiteral("<b>Code: #0x%2</b>");
    QTest::newRow("empty") << QStringLiteral("Cancel") << QString();
}

void TestTranslationFiles::checkerFindsChangedPlaceholdersAndMarkup()
{
    QFETCH(QString, source);
    QFETCH(QString, translation);
    const QByteArray xml = catalogue(QString::fromUtf8(message(source, translation)));
    QCOMPARE(problemsIn(xml).size(), 1);
}

void TestTranslationFiles::checkerFindsLostShortcut()
{
    const QByteArray xml = catalogue(QString::fromUtf8(message(QStringLiteral("&Copy"), QStringLiteral("Kopieren"))));
    QCOMPARE(problemsIn(xml).size(), 1);
}

void TestTranslationFiles::everyLanguageHasACatalogue()
{
    const QStringList languages = QStringLiteral(KESTREL_LANGUAGES).split(QLatin1Char(' '));
    QCOMPARE(languages.size(), 12);
    for (const QString &language : languages) {
        const QByteArray xml = readFile(cataloguePath(language));
        QVERIFY2(!xml.isEmpty(), qPrintable(cataloguePath(language)));
        QVERIFY2(xml.contains(QStringLiteral("language=\"%1\"").arg(language).toUtf8()), qPrintable(language));
    }
    // Nothing in the folder that the build would leave out.
    const QStringList files = QDir(QStringLiteral(KESTREL_TRANSLATION_SOURCES)).entryList({QStringLiteral("*.ts")});
    QCOMPARE(files.size(), languages.size());
}

void TestTranslationFiles::catalogueIsComplete_data()
{
    QTest::addColumn<QString>("language");
    for (const QString &language : QStringLiteral(KESTREL_LANGUAGES).split(QLatin1Char(' ')))
        QTest::newRow(qPrintable(language)) << language;
}

void TestTranslationFiles::catalogueIsComplete()
{
    QFETCH(QString, language);
    const QByteArray xml = readFile(cataloguePath(language));
    QVERIFY(!xml.isEmpty());
    QString error;
    QVERIFY(readCatalogue(xml, &error).size() > 90);
    const QStringList problems = problemsIn(xml);
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
}

void TestTranslationFiles::layoutDirectionFollowsTheScript_data()
{
    catalogueIsComplete_data();
}

void TestTranslationFiles::layoutDirectionFollowsTheScript()
{
    QFETCH(QString, language);
    QString error;
    const QList<Entry> entries = readCatalogue(readFile(cataloguePath(language)), &error);
    const auto direction = std::find_if(entries.cbegin(), entries.cend(), [](const Entry &entry) {
        return entry.context == QLatin1String("QGuiApplication") && entry.source == QLatin1String("QT_LAYOUT_DIRECTION");
    });
    QVERIFY(direction != entries.cend());
    QCOMPARE(direction->translations, QStringList{language == QLatin1String("ar") ? QStringLiteral("RTL") : QStringLiteral("LTR")});
}

KESTREL_TEST_MAIN(TestTranslationFiles)
#include "tst_translationfiles.moc"
