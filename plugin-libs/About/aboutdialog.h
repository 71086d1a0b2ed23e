#pragma once

#include <QDialog>

// Name, version and description of the application, and below them the
// description of the system, which a user can select and copy into a
// support request. The system part is left out when there is none.
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    AboutDialog(const QString &systemInformation, const QString &description, QWidget *parent = nullptr);
};
