#include "composition.h"

#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"
#include "plugins/plugins.h"

namespace Composition {

VideoInfo &videoRecord()
{
    static VideoInfo record;
    return record;
}

KestrelDownloader &driver()
{
    static KestrelDownloader driver(videoRecord());
    return driver;
}

Plugins &plugins()
{
    static Plugins plugins;
    return plugins;
}

} // namespace Composition
