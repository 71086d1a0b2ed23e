#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class QTranslator;
class QtWindowTranslator;

// The program's texts in the user's language. The language is the first of
// the system's preferred user-interface languages for which the program has
// a catalogue; English, C and POSIX keep the built-in English texts, and so
// does a list that holds no language the program has. Qt's own catalogue of
// the same language translates its standard buttons (QtWindowTranslator).
//
// The installed catalogues stay in force as long as the object lives.
class Translations
{
public:
    // folder: where the program's catalogues lie, named kestrel_<language>.qm.
    explicit Translations(const QString &folder);
    ~Translations();
    Translations(const Translations &) = delete;
    Translations &operator=(const Translations &) = delete;

    // The folder beside the executable that holds the program's catalogues
    // (and, on Windows, Qt's).
    static QString folderBesideProgram();
    // Where Qt's own catalogues (qtbase_<language>.qm) are looked for, in order.
    static QStringList qtCatalogueFolders();

    // The catalogue's language ("de", "pt_BR") for a list of preferred
    // languages as QLocale::uiLanguages() gives it; empty for English.
    QString languageFor(const QStringList &uiLanguages) const;

    // Installs the program's catalogue of the language into the application;
    // false when it cannot be loaded (nothing is installed then).
    bool installProgramCatalogue(const QString &language);
    // Installs Qt's own catalogue of the language from the first folder that
    // has it; false when none has.
    bool installQtCatalogue(const QString &language, const QStringList &folders);

private:
    QString catalogueFile(const QString &language) const;

    QString m_folder;
    std::unique_ptr<QTranslator> m_program;
    std::unique_ptr<QtWindowTranslator> m_qt;
};
