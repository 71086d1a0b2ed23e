#pragma once

#include <cmath>
#include <optional>

// The first table row that no longer fits a viewport: a row that would show by
// more than 0.3 of its height stays, a smaller remainder is cut. Nothing when
// there is no row to measure.
inline std::optional<int> firstHiddenRow(int viewportHeight, int rowHeight)
{
    if (rowHeight <= 0)
        return std::nullopt;
    const double rows = double(viewportHeight) / rowHeight;
    return int(rows - std::floor(rows) > 0.3 ? std::ceil(rows) : std::floor(rows));
}
