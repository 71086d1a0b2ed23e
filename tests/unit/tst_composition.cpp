#include "app/composition.h"
#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "plugins/plugins.h"

#include "testsandbox.h"

#include <QApplication>
#include <QTest>

// The composition place makes each of the program's single instances once
// and wires the driver to the one record.
class TestComposition : public QObject
{
    Q_OBJECT

private slots:
    void eachInstanceIsMadeOnce();
    void driverWorksOnTheRecord();
};

void TestComposition::eachInstanceIsMadeOnce()
{
    QCOMPARE(&Composition::videoRecord(), &Composition::videoRecord());
    QCOMPARE(&Composition::driver(), &Composition::driver());
    QCOMPARE(&Composition::plugins(), &Composition::plugins());
}

void TestComposition::driverWorksOnTheRecord()
{
    QVERIFY(Composition::driver().setUrl(QStringLiteral("https://www.youtube.com/watch?v=dQw4w9WgXcQ")));
    QCOMPARE(Composition::videoRecord().url, QUrl(QStringLiteral("https://www.youtube.com/watch?v=dQw4w9WgXcQ")));
}

KESTREL_TEST_MAIN(TestComposition)
#include "tst_composition.moc"
