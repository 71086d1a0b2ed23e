#include "images.h"

#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QPixmap>

namespace Images {

QIcon icon(const QString &resource)
{
    QIcon icon(resource);
    const QString dense = resource + QStringLiteral("@2x");
    if (QFile::exists(dense) && !icon.availableSizes().contains(QImageReader(dense).size()))
        icon.addFile(dense);
    return icon;
}

QIcon mirroredIcon(const QString &resource)
{
    QIcon mirrored;
    for (const QString &file : {resource, resource + QStringLiteral("@2x")}) {
        if (!QFile::exists(file))
            continue;
        const QImage image = QImageReader(file).read();
        QImage flipped = image.mirrored(true, false);
        flipped.setDevicePixelRatio(image.devicePixelRatio());
        mirrored.addPixmap(QPixmap::fromImage(flipped));
    }
    return mirrored;
}

} // namespace Images
