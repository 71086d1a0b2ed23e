#pragma once

#include <QTranslator>

// Qt's own catalogue of a language, limited to the texts Qt shows in the
// program's windows: the standard buttons, the message boxes' own texts, the
// menus of text fields and the layout direction. Qt's other texts reach the
// log and the command line (a library that does not load, --help), which stay
// English for support and for scripts.
class QtWindowTranslator : public QTranslator
{
    Q_OBJECT

public:
    using QTranslator::QTranslator;

    QString translate(const char *context, const char *sourceText, const char *disambiguation = nullptr,
                      int n = -1) const override;

    // Whether Qt's texts of this context are shown in windows.
    static bool isWindowContext(const char *context);
};
