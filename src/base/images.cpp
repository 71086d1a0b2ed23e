#include "images.h"

#include <QFile>
#include <QImageReader>

namespace Images {

QIcon icon(const QString &resource)
{
    QIcon icon(resource);
    const QString dense = resource + QStringLiteral("@2x");
    if (QFile::exists(dense) && !icon.availableSizes().contains(QImageReader(dense).size()))
        icon.addFile(dense);
    return icon;
}

} // namespace Images
