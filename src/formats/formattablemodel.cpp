#include "formattablemodel.h"

#include "base/images.h"
#include "formats/formatcatalogue.h"

namespace {

constexpr int sizeAlignment = Qt::AlignRight | Qt::AlignVCenter;

// Every format list gets a model of its own and the earlier ones are kept, so
// the icons are loaded once and shared: a copy of a QIcon shares its images.
const QIcon &sharedIcon(const QString &resource)
{
    static QHash<QString, QIcon> icons;
    auto found = icons.find(resource);
    if (found == icons.end())
        found = icons.insert(resource, Images::icon(resource));
    return *found;
}

} // namespace

FormatTableModel::FormatTableModel(QObject *parent)
    : QAbstractTableModel(parent)
    , m_mediaIcon(sharedIcon(QStringLiteral(":/img/sign_media")))
    , m_downloadIcon(sharedIcon(QStringLiteral(":/img/sign_download")))
{
}

void FormatTableModel::setSource(const QHash<quint32, FormatInfo> *formats, const QList<quint32> *order)
{
    beginResetModel();
    m_formats = formats;
    m_order = order;
    endResetModel();
}

int FormatTableModel::rowCount(const QModelIndex &) const
{
    return m_order ? int(m_order->size()) : 0;
}

int FormatTableModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}

QVariant FormatTableModel::data(const QModelIndex &index, int role) const
{
    if (!m_formats || !m_order || !index.isValid() || index.row() < 0 || index.column() < 0
        || index.row() >= m_order->size() || m_formats->isEmpty())
        return {};
    const auto found = m_formats->constFind(m_order->at(index.row()));
    if (found == m_formats->constEnd())
        return {};
    const FormatInfo &format = *found;

    switch (role) {
    case Qt::UserRole:
        return index.column() == SizeColumn ? QVariant(FormatCatalogue::sizeInMiB(format.sizeText)) : QVariant();
    case Qt::TextAlignmentRole:
        return index.column() == SizeColumn ? QVariant(sizeAlignment) : QVariant();
    case Qt::DecorationRole:
        if (index.column() == TypeColumn)
            return m_mediaIcon.pixmap(QSize(48, 23), QIcon::Normal, QIcon::Off);
        if (index.column() == DownloadColumn)
            return m_downloadIcon.pixmap(QSize(22, 22), QIcon::Normal, QIcon::Off);
        return {};
    case Qt::DisplayRole:
        if (index.column() == IdColumn)
            return format.id;
        if (index.column() == ResolutionColumn)
            return format.resolution;
        if (index.column() == SizeColumn)
            return format.sizeText;
        return {};
    default:
        return {};
    }
}

QVariant FormatTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case TypeColumn:
        return tr("Type");
    case IdColumn:
        return tr("ID.");
    case ResolutionColumn:
        return tr("Resolution");
    case SizeColumn:
        return tr("Size");
    case DownloadColumn:
        return QString();
    default:
        return {};
    }
}
