// The check of a pasted address: KestrelDownloader::setUrl().

#include "fuzzsupport.h"

#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"

#include <QUrl>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static VideoInfo info;
    static KestrelDownloader driver(info);
    static const QUrl before(QStringLiteral("https://www.youtube.com/watch?v=before"));

    const QString text = Fuzz::text(data, size);
    info.url = before;

    // An accepted address becomes the video's address; a refused one leaves
    // the earlier address alone.
    if (driver.setUrl(text)) {
        FUZZ_CHECK(info.url.isValid(), text);
        FUZZ_CHECK(!info.url.isEmpty(), text);
    } else {
        FUZZ_CHECK(info.url == before, text);
    }
    FUZZ_CHECK(KestrelDownloader::processObjectCount() == 0, text);
    return 0;
}
