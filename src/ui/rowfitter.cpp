#include "rowfitter.h"

#include "ui/rowfit.h"

#include <QHeaderView>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QTableView>

RowFitter::RowFitter(QTableView *view)
    : QObject(view)
    , m_table(view)
{
    m_table->viewport()->installEventFilter(this);
    connect(m_table->verticalHeader(), &QHeaderView::sectionResized, this, &RowFitter::whenRowResized);
}

void RowFitter::fit()
{
    if (m_fitting || !m_table->model())
        return;
    const QScopedValueRollback<bool> busy(m_fitting, true);
    const std::optional<int> firstHidden = firstHiddenRow(m_table->viewport()->height(), measuredRowHeight());
    if (!firstHidden)
        return;
    const int rowCount = m_table->model()->rowCount();
    for (int row = 0; row < rowCount; ++row)
        m_table->setRowHidden(row, row >= *firstHidden);
}

bool RowFitter::eventFilter(QObject *watched, QEvent *event)
{
    // The type first: the viewport also reports its own destruction, when
    // the table is no longer one to ask.
    if (event->type() == QEvent::Resize && watched == m_table->viewport()) {
        const auto *resize = static_cast<QResizeEvent *>(event);
        if (resize->size().height() != resize->oldSize().height())
            fit();
    }
    return QObject::eventFilter(watched, event);
}

// Every row of the list has the first row's height, so only its changes
// count. The header reports them before it has taken the new heights, and a
// row hidden meanwhile would upset its count: the fit waits until it is done.
// The fit's own hiding and showing is no change.
void RowFitter::whenRowResized(int row)
{
    if (row == 0 && !m_fitting)
        QMetaObject::invokeMethod(this, &RowFitter::fit, Qt::QueuedConnection);
}

// A hidden row measures 0: the first row shows while it is measured, and the
// fit hides it again when not even it fits.
int RowFitter::measuredRowHeight() const
{
    m_table->setRowHidden(0, false);
    return m_table->verticalHeader()->sectionSize(0);
}
