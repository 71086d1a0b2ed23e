#include "translations.h"

#include "base/qtwindowtranslator.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

// Qt mirrors every window when the installed catalogues translate this entry
// to "RTL". The program's catalogues carry it too, so that the window mirrors
// in Arabic even where Qt's own catalogue is not installed.
[[maybe_unused]] constexpr const char *layoutDirectionEntry = QT_TRANSLATE_NOOP("QGuiApplication", "QT_LAYOUT_DIRECTION");

bool keepsEnglish(const QLocale &locale)
{
    return locale.language() == QLocale::C || locale.language() == QLocale::English;
}

} // namespace

Translations::Translations(const QString &folder)
    : m_folder(folder)
{
}

Translations::~Translations() = default;

QString Translations::folderBesideProgram()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("translations"));
}

QStringList Translations::qtCatalogueFolders()
{
    return {folderBesideProgram(), QLibraryInfo::path(QLibraryInfo::TranslationsPath)};
}

QString Translations::catalogueFile(const QString &language) const
{
    return QDir(m_folder).filePath(QStringLiteral("kestrel_%1.qm").arg(language));
}

QString Translations::languageFor(const QStringList &uiLanguages) const
{
    for (const QString &entry : uiLanguages) {
        const QLocale locale(entry);
        if (keepsEnglish(locale))
            return {};
        // "pt-BR" finds pt_BR, "de-AT" the German of de.
        const QString candidates[] = {locale.name(), QLocale::languageToCode(locale.language())};
        for (const QString &candidate : candidates) {
            if (QFileInfo::exists(catalogueFile(candidate)))
                return candidate;
        }
    }
    return {};
}

bool Translations::installProgramCatalogue(const QString &language)
{
    auto translator = std::make_unique<QTranslator>();
    if (language.isEmpty() || !translator->load(catalogueFile(language)))
        return false;
    QCoreApplication::installTranslator(translator.get());
    m_program = std::move(translator);
    return true;
}

bool Translations::installQtCatalogue(const QString &language, const QStringList &folders)
{
    if (language.isEmpty())
        return false;
    for (const QString &folder : folders) {
        auto translator = std::make_unique<QtWindowTranslator>();
        if (translator->load(QStringLiteral("qtbase_%1").arg(language), folder)) {
            QCoreApplication::installTranslator(translator.get());
            m_qt = std::move(translator);
            return true;
        }
    }
    return false;
}
