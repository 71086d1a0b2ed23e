// Unpacking the runtime's executable from its zip: an entry that would
// unpack to more than the cap is refused, whether its header says so or
// understates its size.

#include "unzip.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::uint64_t testCap = 64 * 1024;

// Makes a zip at archive whose entry "deno" is size zero bytes, deflated.
// With understatedSize, its local and central headers both claim that many
// bytes instead.
bool makeZip(const QString &archive, qint64 size, qint64 understatedSize = -1)
{
    const QString script = QStringLiteral(
        "import struct, sys, zipfile\n"
        "path, size, claim = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])\n"
        "with zipfile.ZipFile(path, 'w', zipfile.ZIP_DEFLATED) as z:\n"
        "    z.writestr('deno', b'\\0' * size)\n"
        "if claim >= 0:\n"
        "    data = bytearray(open(path, 'rb').read())\n"
        "    struct.pack_into('<I', data, 22, claim)\n"
        "    central = data.find(b'PK\\x01\\x02')\n"
        "    struct.pack_into('<I', data, central + 24, claim)\n"
        "    open(path, 'wb').write(data)\n");
    return QProcess::execute(QStringLiteral("python3"), {QStringLiteral("-c"), script, archive, QString::number(size),
                                                         QString::number(understatedSize)})
           == 0;
}

struct Unpacked
{
    bool ok = false;
    std::string problem;
    qint64 size = -1;
};

Unpacked unpack(const QString &archive, const QString &target, std::uint64_t cap)
{
    Unpacked result;
    const int fd = ::open(QFile::encodeName(target).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (fd < 0)
        return result;
    result.ok = Launcher::extractZipEntry(archive.toStdString(), "deno", fd, &result.problem, cap);
    ::close(fd);
    result.size = QFileInfo(target).size();
    return result;
}

} // namespace

class TestToolUnzip : public QObject
{
    Q_OBJECT

private slots:
    void entryWithinTheCapIsUnpacked();
    void entryDeclaredPastTheCapIsRefused();
    void entryUnderstatingItsSizeIsRefusedByWhatItWrites();

private:
    QTemporaryDir m_folder;
    QString path(const QString &name) const { return m_folder.filePath(name); }
};

void TestToolUnzip::entryWithinTheCapIsUnpacked()
{
    QVERIFY(makeZip(path(QStringLiteral("fits.zip")), testCap));
    const Unpacked result = unpack(path(QStringLiteral("fits.zip")), path(QStringLiteral("fits")), testCap);
    QVERIFY2(result.ok, result.problem.c_str());
    QCOMPARE(result.size, qint64(testCap));
}

void TestToolUnzip::entryDeclaredPastTheCapIsRefused()
{
    QVERIFY(makeZip(path(QStringLiteral("bomb.zip")), 16 * testCap));
    const Unpacked result = unpack(path(QStringLiteral("bomb.zip")), path(QStringLiteral("bomb")), testCap);
    QVERIFY(!result.ok);
    QCOMPARE(QString::fromStdString(result.problem), QStringLiteral("deno unpacks to more than 65536 bytes (zip bomb)"));
    QCOMPARE(result.size, qint64(0));
}

void TestToolUnzip::entryUnderstatingItsSizeIsRefusedByWhatItWrites()
{
    QVERIFY(makeZip(path(QStringLiteral("liar.zip")), 16 * testCap, 1000));
    const Unpacked result = unpack(path(QStringLiteral("liar.zip")), path(QStringLiteral("liar")), testCap);
    QVERIFY(!result.ok);
    QCOMPARE(QString::fromStdString(result.problem), QStringLiteral("deno unpacks to more than 65536 bytes (zip bomb)"));
    QVERIFY(result.size <= qint64(testCap));
}

QTEST_GUILESS_MAIN(TestToolUnzip)
#include "tst_toolunzip.moc"
