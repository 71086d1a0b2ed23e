#include "log.h"

namespace Log {

QString location(const char *signature, int line)
{
    return QStringLiteral("[%2] %1 :").arg(QString::fromUtf8(signature), 0, QLatin1Char(' ')).arg(line, 0, 10);
}

QDebug entry(const char *signature, int line)
{
    QDebug stream = qDebug();
    stream.noquote() << "-->" << location(signature, line);
    return stream;
}

QDebug info(const char *signature, int line)
{
    QDebug stream = qInfo();
    stream.noquote() << location(signature, line);
    return stream;
}

QDebug error(const char *signature, int line)
{
    QDebug stream = qCritical();
    stream.noquote() << location(signature, line) << "!!! ERROR:";
    stream.quote();
    return stream;
}

QDebug warning(const char *signature, int line)
{
    QDebug stream = qWarning();
    stream.noquote() << location(signature, line) << "WARNING:";
    stream.quote();
    return stream;
}

QDebug warning()
{
    QDebug stream = qWarning();
    stream << "WARNING:";
    return stream;
}

void ok(const char *label, const QString &value)
{
    qDebug().noquote() << "OK:" << label << value;
}

} // namespace Log
