#include "openedurls.h"

void OpenedUrls::open(const QUrl &url)
{
    m_urls << url;
}
