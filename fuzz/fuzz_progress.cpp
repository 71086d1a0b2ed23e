// The reading of the download's progress lines:
// KestrelDownloader::progressFromChunk(), what the download's output handler
// runs on every chunk the tool writes.

#include "fuzzsupport.h"

#include "downloader/kestreldownloader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString chunk = Fuzz::text(data, size);
    const std::optional<int> value = KestrelDownloader::progressFromChunk(chunk);

    // From 99 % on the progress shows as complete; nothing reads as more.
    if (value)
        FUZZ_CHECK(*value <= 100, chunk);
    return 0;
}
