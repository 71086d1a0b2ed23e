#include "aboutdialog.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace {

// Beyond this the system text scrolls rather than making the dialog tall.
constexpr int maximumVisibleSystemLines = 10;
constexpr int maximumSystemTextWidth = 640;
constexpr int maximumDescriptionWidth = 520;
constexpr int minimumTextWidth = 360;

QLabel *makeLabel(const QString &objectName, const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setVisible(!text.isEmpty());
    return label;
}

} // namespace

AboutDialog::AboutDialog(const QString &systemInformation, const QString &description, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("aboutDialog"));
    const QString name = QCoreApplication::applicationName();
    setWindowTitle(name);

    QLabel *heading = makeLabel(QStringLiteral("aboutHeading"), name, this);
    QFont headingFont = heading->font();
    headingFont.setBold(true);
    headingFont.setPointSizeF(headingFont.pointSizeF() * 1.5);
    heading->setFont(headingFont);

    const QString version = QCoreApplication::applicationVersion();
    QLabel *versionLabel = makeLabel(QStringLiteral("aboutVersion"),
                                     version.isEmpty() ? QString() : tr("Version %1").arg(version), this);

    QLabel *descriptionLabel = makeLabel(QStringLiteral("aboutDescription"), description, this);
    descriptionLabel->setWordWrap(true);

    auto *texts = new QVBoxLayout;
    texts->addWidget(heading);
    texts->addWidget(versionLabel);
    texts->addSpacing(style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing));
    texts->addWidget(descriptionLabel);
    texts->addStretch();

    auto *top = new QHBoxLayout;
    const QIcon icon = QApplication::windowIcon();
    if (!icon.isNull()) {
        auto *iconLabel = new QLabel(this);
        iconLabel->setObjectName(QStringLiteral("aboutIcon"));
        const int extent = style()->pixelMetric(QStyle::PM_MessageBoxIconSize) * 2;
        iconLabel->setPixmap(icon.pixmap(QSize(extent, extent), devicePixelRatio()));
        iconLabel->setAlignment(Qt::AlignTop);
        top->addWidget(iconLabel);
    }
    top->addLayout(texts, 1);

    auto *systemSection = new QWidget(this);
    systemSection->setObjectName(QStringLiteral("aboutSystemSection"));
    auto *systemHeading = makeLabel(QStringLiteral("aboutSystemHeading"), tr("System information"), systemSection);
    auto *systemText = new QPlainTextEdit(systemInformation, systemSection);
    systemText->setObjectName(QStringLiteral("aboutSystemText"));
    systemText->setReadOnly(true);
    systemText->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    systemText->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    {
        // Sized to show the whole text where it is short, so a user sees at
        // a glance everything a support request needs.
        const QFontMetrics metrics = systemText->fontMetrics();
        const QStringList lines = systemInformation.split(QLatin1Char('\n'));
        int widest = 0;
        for (const QString &line : lines)
            widest = std::max(widest, metrics.horizontalAdvance(line));
        const int frame = 2 * (systemText->frameWidth() + int(systemText->document()->documentMargin())) + 4;
        const int visibleLines = std::min(int(lines.size()), maximumVisibleSystemLines);
        systemText->setMinimumWidth(std::min(widest + frame + metrics.averageCharWidth(), maximumSystemTextWidth));
        systemText->setFixedHeight(visibleLines * metrics.lineSpacing() + frame);
    }
    auto *systemLayout = new QVBoxLayout(systemSection);
    systemLayout->setContentsMargins(0, 0, 0, 0);
    systemLayout->addWidget(systemHeading);
    systemLayout->addWidget(systemText);
    systemSection->setVisible(!systemInformation.trimmed().isEmpty());

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    buttons->setObjectName(QStringLiteral("aboutButtons"));
    QPushButton *ok = buttons->button(QDialogButtonBox::Ok);
    ok->setDefault(true);
    // Otherwise the system text takes the focus and shows a text cursor as
    // if it could be edited.
    ok->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addSpacing(style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing));
    layout->addWidget(systemSection);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    // A short description stays on one line; a long one wraps into a few
    // lines of a comfortable width instead of a tall narrow column.
    const int descriptionWidth = descriptionLabel->fontMetrics().horizontalAdvance(description) + 2;
    descriptionLabel->setMinimumWidth(std::max({minimumTextWidth, systemText->minimumWidth(),
                                                std::min(descriptionWidth, maximumDescriptionWidth)}));
}
