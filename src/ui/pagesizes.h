#pragma once

#include <QSize>

// The sizes of the window and of its buttons for a display scale. The bases
// are the sizes designed for a scale of 130 divided by the single-precision
// 1.3, each a hair above its nominal value, so that a whole-number base times
// an integral scale never falls a pixel short when truncated.
namespace PageSizes {

struct Base
{
    double width;
    double height;
};

inline constexpr Base videoButton{280.00001043081284, 71.38461804389954};
inline constexpr Base siteButton{84.30769544839859, 72.00000268220901};
inline constexpr Base backFromProcessButton{62.153848469257355, 26.461539447307587};
inline constexpr Base processButton{153.8461595773697, 43.07692468166351};
inline constexpr Base smallBackButton{20.3076930642128, 20.3076930642128};

inline constexpr double windowWidth = 384.00001430511475;
inline constexpr double formatsPageHeight = 256.61539417505264;
inline constexpr double downloadPageHeight = 144.00000536441803;
inline constexpr double otherPageHeight = 128.00000476837158;

// base times scale percent / 100, truncated toward zero.
inline QSize scaled(Base base, unsigned int scalePercent)
{
    const double factor = scalePercent / 100.0;
    return {int(base.width * factor), int(base.height * factor)};
}

} // namespace PageSizes
