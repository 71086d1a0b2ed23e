#include "openedurls.h"

void OpenedUrls::open(const QUrl &url)
{
    urls << url;
}
