#include "identifierdialog.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

IdentifierDialog::IdentifierDialog(const QString &identifier, QWidget *parent)
    : QDialog(parent), m_identifier(identifier), m_copyStatus(new QLabel(this))
{
    setObjectName(QStringLiteral("identifierDialog"));
    setWindowTitle(tr("Machine identifier"));

    auto *explanation = new QLabel(tr("The identifier of this computer:"), this);
    explanation->setObjectName(QStringLiteral("identifierExplanation"));

    auto *field = new QLineEdit(identifier, this);
    field->setObjectName(QStringLiteral("identifierField"));
    field->setReadOnly(true);
    field->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    // Wide enough for the whole identifier, so nobody copies it by hand
    // from a field that has scrolled.
    const int textWidth = field->fontMetrics().horizontalAdvance(identifier);
    field->setMinimumWidth(textWidth + 4 * field->fontMetrics().averageCharWidth());
    field->setCursorPosition(0);

    m_copyStatus->setObjectName(QStringLiteral("identifierCopyStatus"));
    // Keeps its room while empty, so the dialog does not grow on the first copy.
    m_copyStatus->setMinimumHeight(m_copyStatus->fontMetrics().height());

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    buttons->setObjectName(QStringLiteral("identifierButtons"));
    QPushButton *copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("identifierCopyButton"));
    copy->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(copy, &QPushButton::clicked, this, &IdentifierDialog::copyIdentifier);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(explanation);
    layout->addWidget(field);
    layout->addWidget(m_copyStatus);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void IdentifierDialog::copyIdentifier()
{
    QGuiApplication::clipboard()->setText(m_identifier);
    m_copyStatus->setText(tr("Copied to the clipboard."));
}
