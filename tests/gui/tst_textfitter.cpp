#include "ui/textfitter.h"

#include "testsandbox.h"

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace {

// A window of fixed width with one label and one button in a row, as the
// download page's rows are.
struct Row
{
    QDialog window;
    QLabel *label = new QLabel(&window);
    QPushButton *button = new QPushButton(&window);

    Row(const QString &labelText, const QString &buttonText, int width)
    {
        QFont font = window.font();
        font.setPointSizeF(12);
        label->setFont(font);
        button->setFont(font);
        label->setText(labelText);
        button->setText(buttonText);
        auto *layout = new QHBoxLayout(&window);
        layout->addWidget(label);
        layout->addWidget(button);
        window.setFixedSize(width, 60);
    }
};

bool fitsLabel(const QLabel *label)
{
    return label->fontMetrics().horizontalAdvance(label->text()) <= label->contentsRect().width();
}

bool fitsButton(const QPushButton *button)
{
    return button->sizeHint().width() <= button->width();
}

} // namespace

// Texts that need more room than a fixed-size window gives them step their
// font down; texts that fit keep it.
class TestTextFitter : public QObject
{
    Q_OBJECT

private slots:
    void textsThatFitKeepTheirFont();
    void longerTextsStepDownUntilTheyFit();
    void fontStopsAtThreeQuartersOfItsSize();
};

void TestTextFitter::textsThatFitKeepTheirFont()
{
    Row row(QStringLiteral("Downloading: "), QStringLiteral("Cancel"), 400);
    TextFitter fitter(&row.window);
    fitter.watch(row.label);
    fitter.watch(row.button);
    row.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&row.window));
    QCOMPARE(row.label->font().pointSizeF(), 12.0);
    QCOMPARE(row.button->font().pointSizeF(), 12.0);
}

void TestTextFitter::longerTextsStepDownUntilTheyFit()
{
    const QString labelText = QStringLiteral("Video erfolgreich heruntergeladen");
    const QString buttonText = QStringLiteral("Ordner mit Datei öffnen");
    // A little less room than both need at their 12 points.
    int width = 0;
    {
        Row roomy(labelText, buttonText, 2000);
        const QMargins margins = roomy.window.layout()->contentsMargins();
        width = roomy.label->sizeHint().width() + roomy.button->sizeHint().width() + margins.left() + margins.right()
                + roomy.window.layout()->spacing() - 12;
    }
    Row row(labelText, buttonText, width);
    TextFitter fitter(&row.window);
    fitter.watch(row.label);
    fitter.watch(row.button);
    row.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&row.window));
    QTRY_VERIFY(fitsLabel(row.label) && fitsButton(row.button));
    QVERIFY(row.label->font().pointSizeF() < 12.0 || row.button->font().pointSizeF() < 12.0);
    QVERIFY(row.label->font().pointSizeF() >= 9.0);
    QVERIFY(row.button->font().pointSizeF() >= 9.0);
}

void TestTextFitter::fontStopsAtThreeQuartersOfItsSize()
{
    Row row(QStringLiteral("A text far too long for the little room this window has to offer it"), QString(), 120);
    TextFitter fitter(&row.window);
    fitter.watch(row.label);
    row.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&row.window));
    QTRY_COMPARE(row.label->font().pointSizeF(), 9.0);
    QVERIFY(!fitsLabel(row.label));
}

KESTREL_TEST_MAIN(TestTextFitter)
#include "tst_textfitter.moc"
