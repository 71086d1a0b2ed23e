// The reading of a whole format table: FormatCatalogue::fromListing().

#include "fuzzsupport.h"

#include "formats/formatcatalogue.h"

#include <QSet>

#include <limits>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = Fuzz::text(data, size);
    const FormatCatalogue::Result result = FormatCatalogue::fromListing(text);

    // At most 11 formats, one entry per identifier, listed largest first, and
    // the view order names exactly the formats offered.
    FUZZ_CHECK(result.viewOrder.size() <= FormatCatalogue::maximumFormats, text);
    FUZZ_CHECK(result.viewOrder.size() == result.formats.size(), text);
    QSet<quint32> seen;
    qint64 previousSize = std::numeric_limits<qint64>::max();
    for (const quint32 id : result.viewOrder) {
        FUZZ_CHECK(id != 0, text);
        FUZZ_CHECK(!seen.contains(id), text);
        seen.insert(id);
        FUZZ_CHECK(result.formats.contains(id), text);
        const FormatInfo format = result.formats.value(id);
        FUZZ_CHECK(format.id == id, text);
        const qint64 bytes = FormatCatalogue::sizeInBytes(format.sizeText);
        FUZZ_CHECK(bytes <= previousSize, text);
        previousSize = bytes;
    }
    return 0;
}
