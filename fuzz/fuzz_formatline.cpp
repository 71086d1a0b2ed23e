// The reading of one line of the format table: FormatCatalogue::parseLine()
// and FormatCatalogue::leadingIdentifier().

#include "fuzzsupport.h"

#include "formats/formatcatalogue.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString line = Fuzz::text(data, size);
    constexpr qint32 position = 7;
    const quint32 leading = FormatCatalogue::leadingIdentifier(line);
    const std::optional<FormatCandidate> candidate = FormatCatalogue::parseLine(line, position);
    if (!candidate)
        return 0;

    // A usable line starts with its non-zero identifier, is no audio-only
    // format, and its size, if any, carries a unit.
    FUZZ_CHECK(candidate->id != 0, line);
    FUZZ_CHECK(candidate->id == leading, line);
    FUZZ_CHECK(!line.contains(QStringLiteral("audio only")), line);
    FUZZ_CHECK(candidate->category >= 0 && candidate->category <= 5, line);
    FUZZ_CHECK(candidate->position == position, line);
    FUZZ_CHECK(candidate->sizeText.isEmpty() || candidate->sizeText.endsWith(QStringLiteral("iB")), line);
    FUZZ_CHECK(candidate->sizeText.isEmpty() || line.contains(candidate->sizeText), line);
    return 0;
}
