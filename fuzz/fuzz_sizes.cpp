// The two readings of a size text: FormatCatalogue::sizeInBytes() and
// FormatCatalogue::sizeInMiB().

#include "fuzzsupport.h"

#include "formats/formatcatalogue.h"

#include <cmath>
#include <limits>

namespace {

// As sizeInBytes() turns its double into bytes: too large a size is the
// largest number rather than an overflow.
qint64 clampedBytes(double bytes)
{
    if (bytes >= double(std::numeric_limits<qint64>::max()))
        return std::numeric_limits<qint64>::max();
    return qint64(bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = Fuzz::text(data, size);
    const qint64 bytes = FormatCatalogue::sizeInBytes(text);
    const double mebibytes = FormatCatalogue::sizeInMiB(text);

    FUZZ_CHECK(bytes >= 0, text);
    FUZZ_CHECK(!std::isnan(mebibytes), text);
    FUZZ_CHECK(mebibytes >= 0.0, text);
    // Both read the same size: with a unit the bytes are the mebibytes times
    // 2^20 (every unit factor is a power of two, so the products agree
    // exactly); a bare number is the same number in either reading.
    FUZZ_CHECK(bytes == clampedBytes(mebibytes * 1048576.0) || bytes == clampedBytes(mebibytes), text);
    return 0;
}
