#include "qtwindowtranslator.h"

#include <cstring>

bool QtWindowTranslator::isWindowContext(const char *context)
{
    static const char *const windowContexts[] = {
        "QPlatformTheme",     // the standard buttons: OK, Cancel, Yes, No, …
        "QDialogButtonBox",
        "QMessageBox",
        "QProgressDialog",
        "QGuiApplication",    // the layout direction
        "QLineEdit",          // the menu of a text field: Undo, Copy, Paste, …
        "QWidgetTextControl", // the same for the About box's system text
    };
    if (!context)
        return false;
    for (const char *windowContext : windowContexts) {
        if (std::strcmp(context, windowContext) == 0)
            return true;
    }
    return false;
}

QString QtWindowTranslator::translate(const char *context, const char *sourceText, const char *disambiguation, int n) const
{
    if (!isWindowContext(context))
        return {};
    return QTranslator::translate(context, sourceText, disambiguation, n);
}
