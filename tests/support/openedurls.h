#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

// Stands in for the desktop's handler of a URL scheme
// (QDesktopServices::setUrlHandler(scheme, &opened, "open")): records what
// the program asked to open instead of opening it.
class OpenedUrls : public QObject
{
    Q_OBJECT

public:
    // What was asked to be opened, first first.
    const QList<QUrl> &urls() const { return m_urls; }

public slots:
    void open(const QUrl &url);

private:
    QList<QUrl> m_urls;
};
