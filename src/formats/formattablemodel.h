#pragma once

#include "formats/formatinfo.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>
#include <QList>

// Shows the downloader's kept formats as a five-column table. It owns no
// format data: row r is the format whose identifier is the order list's r-th.
class FormatTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { TypeColumn, IdColumn, ResolutionColumn, SizeColumn, DownloadColumn, ColumnCount };

    explicit FormatTableModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // Points the model at the owner's formats and their order. Wrap the call
    // in beginResetModel()/endResetModel() through setSource().
    void setSource(const QHash<quint32, FormatInfo> *formats, const QList<quint32> *order);

private:
    const QHash<quint32, FormatInfo> *m_formats = nullptr;
    const QList<quint32> *m_order = nullptr;
    QIcon m_mediaIcon;
    QIcon m_downloadIcon;
};
