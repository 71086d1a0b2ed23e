// The reading of the tool's title-and-duration output:
// KestrelDownloader::requestMetadataFinished() on VideoInfo::rawOutput.

#include "fuzzsupport.h"

#include "downloader/kestreldownloader.h"
#include "downloader/videoinfo.h"

namespace {

// One driver for the whole run, with the outcome of the latest parse.
struct Harness
{
    VideoInfo info;
    KestrelDownloader driver{info};
    int metadata = 0;
    int failures = 0;
    KestrelDownloader::errorType code{};

    Harness()
    {
        // A successful parse chains into the format request, which would start
        // the tool; the fuzzer wants the parse alone.
        if (!QObject::disconnect(&driver, &KestrelDownloader::haveMetadata, &driver, &KestrelDownloader::requestFormats))
            Fuzz::fail("the metadata signal no longer chains into the format request: make sure nothing else "
                       "starts the tool before fuzzing",
                       QString());
        QObject::connect(&driver, &KestrelDownloader::haveMetadata, &driver, [this] { ++metadata; });
        QObject::connect(&driver, &KestrelDownloader::somethingWrong, &driver,
                         [this](KestrelDownloader::errorType reported) {
                             ++failures;
                             code = reported;
                         });
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Harness harness;
    harness.metadata = 0;
    harness.failures = 0;

    const QString text = Fuzz::text(data, size);
    VideoInfo &info = harness.info;
    info.rawOutput = text;
    harness.driver.requestMetadataFinished();

    // Every parse ends in exactly one outcome: the metadata, or one of the two
    // metadata failure codes.
    FUZZ_CHECK(harness.metadata + harness.failures == 1, text);
    if (harness.metadata == 1) {
        FUZZ_CHECK(info.duration.isValid(), text);
        FUZZ_CHECK(!info.title.contains(QLatin1Char('\n')), text);
    } else {
        FUZZ_CHECK(harness.code == KestrelDownloader::metadataTooFewLines
                       || harness.code == KestrelDownloader::metadataBadDuration,
                   text);
    }
    FUZZ_CHECK(KestrelDownloader::processObjectCount() == 0, text);
    return 0;
}
