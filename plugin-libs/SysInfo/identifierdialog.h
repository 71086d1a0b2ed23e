#pragma once

#include <QDialog>

class QLabel;

// Shows the machine identifier, selectable, with a button that copies it to
// the clipboard; support asks for it when a licence is tied to a computer.
class IdentifierDialog : public QDialog
{
    Q_OBJECT

public:
    explicit IdentifierDialog(const QString &identifier, QWidget *parent = nullptr);

private:
    void copyIdentifier();

    QString m_identifier;
    QLabel *m_copyStatus;
};
