#include "formats/formatcatalogue.h"

#include "testsandbox.h"

#include <QApplication>
#include <QTest>

// The size texts of the format table as numbers: bytes, and mebibytes.
class TestFormatSizes : public QObject
{
    Q_OBJECT

private slots:
    void sizeInBytes_data();
    void sizeInBytes();
    void sizeInMiB_data();
    void sizeInMiB();
};

void TestFormatSizes::sizeInBytes_data()
{
    QTest::addColumn<QString>("sizeText");
    QTest::addColumn<qint64>("bytes");

    QTest::newRow("1.5GiB") << QStringLiteral("1.5GiB") << Q_INT64_C(1610612736);
    QTest::newRow("0.5KiB") << QStringLiteral("0.5KiB") << Q_INT64_C(512);
    QTest::newRow("1023.9KiB is truncated") << QStringLiteral("1023.9KiB") << Q_INT64_C(1048473);
    QTest::newRow("empty") << QString() << Q_INT64_C(0);
    QTest::newRow("bare number is bytes") << QStringLiteral("2048") << Q_INT64_C(2048);
    QTest::newRow("bare fraction is truncated bytes") << QStringLiteral("512.75") << Q_INT64_C(512);
    QTest::newRow("3GiB") << QStringLiteral("3GiB") << Q_INT64_C(3221225472);
    QTest::newRow("900MiB") << QStringLiteral("900MiB") << Q_INT64_C(943718400);
    QTest::newRow("2000KiB") << QStringLiteral("2000KiB") << Q_INT64_C(2048000);
    QTest::newRow("12.5MiB") << QStringLiteral("12.5MiB") << Q_INT64_C(13107200);
    QTest::newRow("1.50GiB as printed") << QStringLiteral("1.50GiB") << Q_INT64_C(1610612736);
    QTest::newRow("units in any case") << QStringLiteral("1.5gib") << Q_INT64_C(1610612736);
    QTest::newRow("blank before the unit") << QStringLiteral("12 MiB") << Q_INT64_C(12582912);
    QTest::newRow("estimate marks are not part of the number") << QStringLiteral("~ 3.50MiB") << Q_INT64_C(3670016);
    QTest::newRow("tebibytes are not a unit here") << QStringLiteral("2.50TiB") << Q_INT64_C(2);
    QTest::newRow("no digits") << QStringLiteral("MiB") << Q_INT64_C(0);
    QTest::newRow("two decimal points") << QStringLiteral("1.2.3MiB") << Q_INT64_C(0);
    QTest::newRow("text") << QStringLiteral("unknown") << Q_INT64_C(0);
}

void TestFormatSizes::sizeInBytes()
{
    QFETCH(QString, sizeText);
    QTEST(FormatCatalogue::sizeInBytes(sizeText), "bytes");
}

void TestFormatSizes::sizeInMiB_data()
{
    QTest::addColumn<QString>("sizeText");
    QTest::addColumn<double>("mebibytes");

    QTest::newRow("1.5GiB") << QStringLiteral("1.5GiB") << 1536.0;
    QTest::newRow("512KiB") << QStringLiteral("512KiB") << 0.5;
    QTest::newRow("12.25MiB") << QStringLiteral("12.25MiB") << 12.25;
    // Unlike sizeInBytes, a bare number counts as mebibytes.
    QTest::newRow("bare number is MiB") << QStringLiteral("7") << 7.0;
    QTest::newRow("bare fraction is MiB") << QStringLiteral("2.5") << 2.5;
    QTest::newRow("empty") << QString() << 0.0;
    QTest::newRow("1000.00KiB keeps the fraction") << QStringLiteral("1000.00KiB") << 0.9765625;
    QTest::newRow("units in any case") << QStringLiteral("0.5gib") << 512.0;
    QTest::newRow("no digits") << QStringLiteral("GiB") << 0.0;
    QTest::newRow("two decimal points") << QStringLiteral("1.2.3MiB") << 0.0;
}

void TestFormatSizes::sizeInMiB()
{
    QFETCH(QString, sizeText);
    QTEST(FormatCatalogue::sizeInMiB(sizeText), "mebibytes");
}

KESTREL_TEST_MAIN(TestFormatSizes)
#include "tst_formatsizes.moc"
