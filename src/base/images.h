#pragma once

#include <QIcon>
#include <QString>

namespace Images {

// The image of a resource name (":/img/btn_process") with its "@2x" file for
// screens of twice the density. QIcon adds that file by itself only when a
// screen of that density is present at the moment it is made, so a window
// moved to a denser screen later would be drawn blown up from the small one.
QIcon icon(const QString &resource);

// The same image flipped left to right, both densities: an arrow that points
// back in a window laid out right to left.
QIcon mirroredIcon(const QString &resource);

} // namespace Images
