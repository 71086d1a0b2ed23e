#pragma once

#include <QObject>

class QTableView;

// Keeps a table showing only the rows that fit its viewport (firstHiddenRow()),
// so that it never scrolls. The viewport and the row height reach their final
// values only after the table is filled: the page lays itself out again once
// its busy bar is gone, and a font, style or display scale change moves the
// header, the frame or the rows. So the rows are fitted again whenever the
// viewport's height or the first row's height changes.
class RowFitter : public QObject
{
    Q_OBJECT

public:
    // Watches view, which owns the fitter.
    explicit RowFitter(QTableView *view);

    // Fits the rows of the table's current model to its current viewport.
    void fit();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void whenRowResized(int row);
    int measuredRowHeight() const;

    QTableView *m_table;
    // Hiding and showing rows resizes them; those changes are the fitter's own.
    bool m_fitting = false;
};
