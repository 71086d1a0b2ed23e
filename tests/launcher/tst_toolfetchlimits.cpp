// Every download of the launcher ends at its deadline and when it is too
// slow: the pace rules on their own with a clock the test moves, and the
// download library's rules against the local feed server with small limits.

#include "fetch.h"
#include "localreleasefeed.h"
#include "testfiles.h"
#include "testsandbox.h"
#include "transferpace.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <memory>

using Launcher::TransferPace;
using namespace std::chrono_literals;

namespace {

Launcher::Fetch::Limits limits(int deadlineSeconds, std::uint64_t minimumBytesPerSecond, int rateWindowSeconds)
{
    Launcher::Fetch::Limits result;
    result.deadlineSeconds = deadlineSeconds;
    result.minimumBytesPerSecond = minimumBytesPerSecond;
    result.rateWindowSeconds = rateWindowSeconds;
    return result;
}

} // namespace

class TestToolFetchLimits : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void defaultsAreTenMinutesAndTenKibibytesASecondOverHalfAMinute();
    void paceEndsAtTheDeadline();
    void paceEndsAWindowBelowTheMinimumRate();
    void paceForgivesAPauseWithinAFastWindow();
    void tricklingServerEndsByTheRateRule();
    void longDownloadEndsByTheDeadline();
    void downloadWithinTheLimitsSucceeds();

private:
    TestSandbox m_sandbox;
    TestSigningKeys m_keys;
    QTemporaryDir m_root;
    std::unique_ptr<LocalReleaseFeed> m_feed;
    QString feedFile(const char *name) const { return m_feed->folder() + QLatin1Char('/') + QLatin1String(name); }
};

void TestToolFetchLimits::initTestCase()
{
    QVERIFY(m_root.isValid());
    m_feed = std::make_unique<LocalReleaseFeed>(m_keys, m_root.filePath(QStringLiteral("feed")));
    // Served at about 640 KiB a second: about five seconds for 3 MiB.
    QVERIFY(TestFiles::writeFile(feedFile("large"), QByteArray(3 * 1024 * 1024, 'k')));
    QVERIFY(TestFiles::writeFile(feedFile("small"), QByteArray(200, 's')));
    QVERIFY(m_feed->start());
}

void TestToolFetchLimits::defaultsAreTenMinutesAndTenKibibytesASecondOverHalfAMinute()
{
    const Launcher::Fetch::Limits defaults;
    QCOMPARE(TransferPace::pastDeadline(defaults), std::string("not finished within 600 seconds"));
    QCOMPARE(TransferPace::stalled(defaults), std::string("stalled: less than 10240 bytes a second for 30 seconds"));
}

void TestToolFetchLimits::paceEndsAtTheDeadline()
{
    const TransferPace::Clock::time_point start{};
    TransferPace pace(limits(60, 1, 30), start);
    QVERIFY(!pace.problem(1000, start + 30s));
    QVERIFY(!pace.problem(2000, start + 59s));
    QCOMPARE(pace.problem(3000, start + 60s).value_or(""), std::string("not finished within 60 seconds"));
}

void TestToolFetchLimits::paceEndsAWindowBelowTheMinimumRate()
{
    const TransferPace::Clock::time_point start{};
    TransferPace pace(limits(600, 100, 10), start);
    QVERIFY(!pace.problem(500, start + 9s));
    QVERIFY(!pace.problem(1000, start + 10s));
    // 999 bytes in the second window: one short of 100 a second.
    QCOMPARE(pace.problem(1999, start + 20s).value_or(""),
             std::string("stalled: less than 100 bytes a second for 10 seconds"));
}

void TestToolFetchLimits::paceForgivesAPauseWithinAFastWindow()
{
    const TransferPace::Clock::time_point start{};
    TransferPace pace(limits(600, 100, 10), start);
    QVERIFY(!pace.problem(5000, start + 1s));
    QVERIFY(!pace.problem(5000, start + 9s));
    QVERIFY(!pace.problem(5000, start + 10s));
}

void TestToolFetchLimits::tricklingServerEndsByTheRateRule()
{
    m_feed->setBehaviour(QStringLiteral("small"), QStringLiteral("trickle"));
    std::string text;
    QElapsedTimer timer;
    timer.start();
    const Launcher::Fetch::Result result
        = Launcher::Fetch::toText(m_feed->address().toStdString() + "small", &text, 1024, limits(600, 100, 3));
    QVERIFY(!result.ok);
    QCOMPARE(QString::fromStdString(result.problem), QStringLiteral("stalled: less than 100 bytes a second for 3 seconds"));
    // The body alone would take 200 seconds.
    QVERIFY2(timer.elapsed() < 60000, qPrintable(QString::number(timer.elapsed())));
}

void TestToolFetchLimits::longDownloadEndsByTheDeadline()
{
    m_feed->setBehaviour(QStringLiteral("large"), QStringLiteral("slow"));
    std::string text;
    QElapsedTimer timer;
    timer.start();
    const Launcher::Fetch::Result result = Launcher::Fetch::toText(m_feed->address().toStdString() + "large", &text,
                                                                   8 * 1024 * 1024, limits(2, 1, 30));
    QVERIFY(!result.ok);
    QCOMPARE(QString::fromStdString(result.problem), QStringLiteral("not finished within 2 seconds"));
    QVERIFY(timer.elapsed() >= 1900);
    QVERIFY(text.size() < std::size_t(3 * 1024 * 1024));
}

void TestToolFetchLimits::downloadWithinTheLimitsSucceeds()
{
    m_feed->setBehaviour(QStringLiteral("large"), QStringLiteral("slow"));
    std::string text;
    const Launcher::Fetch::Result result = Launcher::Fetch::toText(m_feed->address().toStdString() + "large", &text,
                                                                   8 * 1024 * 1024, limits(120, 1024, 3));
    QVERIFY2(result.ok, result.problem.c_str());
    QCOMPARE(text.size(), std::size_t(3 * 1024 * 1024));
}

KESTREL_TEST_MAIN(TestToolFetchLimits)
#include "tst_toolfetchlimits.moc"
