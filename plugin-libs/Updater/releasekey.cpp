#include "releasekey.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QList>

namespace ReleaseKey {

namespace {

// RFC 4880, 6.1: the armour's checksum is a CRC-24 of the decoded body.
quint32 crc24(const QByteArray &data)
{
    quint32 crc = 0xB704CEu;
    for (const char byte : data) {
        crc ^= static_cast<quint32>(static_cast<unsigned char>(byte)) << 16;
        for (int bit = 0; bit < 8; ++bit) {
            crc <<= 1;
            if (crc & 0x1000000u)
                crc ^= 0x1864CFBu;
        }
    }
    return crc & 0xFFFFFFu;
}

std::optional<QByteArray> decodeBase64(const QByteArray &text)
{
    const QByteArray::FromBase64Result decoded = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return std::nullopt;
    return decoded.decoded;
}

} // namespace

std::optional<QByteArray> dearmor(const QByteArray &text)
{
    if (!text.isEmpty() && (static_cast<unsigned char>(text.at(0)) & 0x80))
        return text;

    const QList<QByteArray> lines = text.split('\n');
    qsizetype line = 0;
    while (line < lines.size() && !lines.at(line).trimmed().startsWith("-----BEGIN PGP "))
        ++line;
    // Header lines ("Comment: …") run up to the first empty line.
    ++line;
    while (line < lines.size() && !lines.at(line).trimmed().isEmpty())
        ++line;
    ++line;

    QByteArray body;
    std::optional<QByteArray> checksum;
    for (; line < lines.size(); ++line) {
        const QByteArray content = lines.at(line).trimmed();
        if (content.startsWith("-----END PGP ")) {
            const std::optional<QByteArray> packets = decodeBase64(body);
            if (!packets || packets->isEmpty() || !checksum || checksum->size() != 3)
                return std::nullopt;
            const quint32 expected = (quint32(quint8(checksum->at(0))) << 16) | (quint32(quint8(checksum->at(1))) << 8)
                                   | quint32(quint8(checksum->at(2)));
            if (crc24(*packets) != expected)
                return std::nullopt;
            return packets;
        }
        if (content.startsWith('='))
            checksum = decodeBase64(content.mid(1));
        else
            body += content;
    }
    return std::nullopt;
}

QByteArray builtInKey()
{
    QFile file(QStringLiteral(":/updater/kestrel-release-key.asc"));
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return dearmor(file.readAll()).value_or(QByteArray());
}

Keyring keyring()
{
    Keyring result;
    result.keys = builtInKey();
    result.addedFile = qEnvironmentVariable(addedKeysVariable);
    if (result.addedFile.isEmpty())
        return result;

    QFile file(result.addedFile);
    if (!file.open(QIODevice::ReadOnly)) {
        result.problem = QStringLiteral("the key file \"%1\" cannot be read: %2").arg(result.addedFile, file.errorString());
        return result;
    }
    const std::optional<QByteArray> added = dearmor(file.readAll());
    if (!added) {
        result.problem = QStringLiteral("the key file \"%1\" holds no OpenPGP key").arg(result.addedFile);
        return result;
    }
    result.keys += *added;
    return result;
}

QString gpgvPath()
{
#if defined(Q_OS_WIN)
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("gpgv.exe"));
#else
    return QStringLiteral("/usr/bin/gpgv");
#endif
}

} // namespace ReleaseKey
