#include "releasefeed.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QJsonValue>
#include <QRegularExpression>

#include <limits>

namespace ReleaseFeed {

namespace {

// A version longer than this is not a version but a mistake in the feed, and
// it would be shown to the user as it is.
constexpr qsizetype maximumVersionLength = 64;

// The reasons given here end up inside the plug-in's translated boxes ("The
// update address %1."), so they are translated too, under a context of their
// own: this namespace has no QObject to lend its tr().
bool fail(QString *error, const QString &reason)
{
    if (error)
        *error = reason;
    return false;
}

bool readReleaseNumber(const QJsonObject &root, int *number, QString *error)
{
    const QJsonValue value = root.value(QStringLiteral("releaseNumber"));
    if (!value.isDouble())
        //: The word in quotes is a key of the release feed file and stays as it is.
        return fail(error, QCoreApplication::translate("ReleaseFeed", "\"releaseNumber\" is missing or not a number"));
    const double given = value.toDouble();
    // JSON numbers are doubles; only whole numbers that fit an int are release numbers.
    if (given < 1 || given > std::numeric_limits<int>::max() || given != static_cast<double>(static_cast<int>(given)))
        //: The word in quotes is a key of the release feed file and stays as it is.
        return fail(
            error, QCoreApplication::translate("ReleaseFeed", "\"releaseNumber\" is not a positive whole number"));
    *number = static_cast<int>(given);
    return true;
}

bool readText(const QJsonObject &object, const QString &key, QString *text, QString *error)
{
    const QJsonValue value = object.value(key);
    if (!value.isString() || value.toString().trimmed().isEmpty())
        //: %1 is a key of the release feed file, as "version"; it stays as it is.
        return fail(error, QCoreApplication::translate("ReleaseFeed", "\"%1\" is missing or not a text").arg(key));
    *text = value.toString().trimmed();
    return true;
}

bool readInstaller(const QJsonObject &entry, const QString &platform, Installer *installer, QString *error)
{
    QString address;
    QString digest;
    if (!readText(entry, QStringLiteral("url"), &address, error) || !readText(entry, QStringLiteral("sha256"), &digest, error)) {
        //: %1 is the system's key in the release feed file ("linux", "windows"), %2 what is wrong with its entry.
        *error = QCoreApplication::translate("ReleaseFeed", "installer for \"%1\": %2").arg(platform, *error);
        return false;
    }

    const QUrl url(address, QUrl::StrictMode);
    const QString refusal = addressRefusal(url);
    if (!refusal.isEmpty())
        //: %1 is the system's key in the release feed file ("linux", "windows"), %2 what is wrong with its entry.
        return fail(
            error, QCoreApplication::translate("ReleaseFeed", "installer for \"%1\": %2").arg(platform, refusal));

    // fromHex() skips what is not a hex digit, so the shape is checked first.
    static const QRegularExpression hexDigest(QRegularExpression::anchoredPattern(QStringLiteral("[0-9A-Fa-f]{64}")));
    if (!hexDigest.match(digest).hasMatch())
        //: %1 is the system's key in the release feed file ("linux", "windows"); "sha256" is a key of that file and
        //: stays as it is.
        return fail(error,
            QCoreApplication::translate("ReleaseFeed", "installer for \"%1\": \"sha256\" is not 64 hexadecimal digits")
                .arg(platform));

    installer->url = url;
    installer->sha256 = QByteArray::fromHex(digest.toLatin1());
    return true;
}

std::optional<Release> parseDocument(const QByteArray &document, const QString &platform, QString *error)
{
    QJsonParseError parseError;
    const QJsonDocument json = QJsonDocument::fromJson(document, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        //: %1 is the JSON reader's own message, %2 the position in the file where it stopped.
        fail(error,
            QCoreApplication::translate("ReleaseFeed", "not valid JSON (%1 at offset %2)")
                .arg(parseError.errorString())
                .arg(parseError.offset));
        return std::nullopt;
    }
    if (!json.isObject()) {
        fail(error, QCoreApplication::translate("ReleaseFeed", "the document is not a JSON object"));
        return std::nullopt;
    }
    const QJsonObject root = json.object();

    Release release;
    if (!readReleaseNumber(root, &release.releaseNumber, error)
        || !readText(root, QStringLiteral("version"), &release.version, error)
        || !readText(root, QStringLiteral("buildDate"), &release.buildDate, error))
        return std::nullopt;
    if (release.version.size() > maximumVersionLength) {
        //: The word in quotes is a key of the release feed file and stays as it is.
        fail(error, QCoreApplication::translate("ReleaseFeed", "\"version\" is too long"));
        return std::nullopt;
    }
    if (!looksLikeBuildDate(release.buildDate)) {
        //: "buildDate" is a key of the release feed file and stays as it is; NN.NNNN shows the form of its value (two
        //: digits, a dot, four digits).
        fail(error, QCoreApplication::translate("ReleaseFeed", "\"buildDate\" is not of the form NN.NNNN"));
        return std::nullopt;
    }

    const QJsonValue installers = root.value(QStringLiteral("installers"));
    if (!installers.isObject()) {
        //: The word in quotes is a key of the release feed file and stays as it is.
        fail(error, QCoreApplication::translate("ReleaseFeed", "\"installers\" is missing or not an object"));
        return std::nullopt;
    }
    if (!platform.isEmpty() && installers.toObject().contains(platform)) {
        const QJsonValue entry = installers.toObject().value(platform);
        if (!entry.isObject()) {
            //: %1 is the system's key in the release feed file ("linux", "windows").
            fail(error,
                QCoreApplication::translate("ReleaseFeed", "installer for \"%1\" is not an object").arg(platform));
            return std::nullopt;
        }
        Installer installer;
        if (!readInstaller(entry.toObject(), platform, &installer, error))
            return std::nullopt;
        release.installer = installer;
    }
    return release;
}

} // namespace

QString platformKey()
{
#if defined(Q_OS_WIN)
    return QStringLiteral("windows");
#elif defined(Q_OS_LINUX)
    return QStringLiteral("linux");
#else
    return QString();
#endif
}

QString installerFileName()
{
#if defined(Q_OS_WIN)
    return QStringLiteral("KestrelD.exe");
#else
    return QStringLiteral("KestrelD.deb");
#endif
}

std::optional<Release> parse(const QByteArray &document, const QString &platform, QString *error)
{
    // The helpers write their reason through this pointer; it must not be null.
    QString reason;
    std::optional<Release> release = parseDocument(document, platform, &reason);
    if (!release && error)
        *error = reason;
    return release;
}

bool looksLikeBuildDate(const QString &text)
{
    static const QRegularExpression buildDate(QRegularExpression::anchoredPattern(QStringLiteral("[0-9]{2}\\.[0-9]{4}")));
    return buildDate.match(text).hasMatch();
}

bool isNewer(const Release &release, int releaseNumber, const QString &text)
{
    if (release.releaseNumber != releaseNumber)
        return release.releaseNumber > releaseNumber;
    return looksLikeBuildDate(text) && release.buildDate > text;
}

QString addressRefusal(const QUrl &url)
{
    if (!url.isValid() || url.isRelative() || url.host().isEmpty())
        //: %1 is a web address. Shown inside "The update address %1." and similar messages.
        return QCoreApplication::translate("ReleaseFeed", "\"%1\" is not a usable address").arg(url.toString());
    const QString scheme = url.scheme().toLower();
    if (scheme == QLatin1String("https"))
        return QString();
    if (scheme == QLatin1String("http") && url.host() == QLatin1String("127.0.0.1"))
        return QString();
    //: %1 is a web address. Shown inside "The update address %1." and similar messages.
    return QCoreApplication::translate("ReleaseFeed", "\"%1\" was refused: only secure https addresses are accepted")
        .arg(url.toString());
}

} // namespace ReleaseFeed
