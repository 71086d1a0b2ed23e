#pragma once

#include <QList>

class QWidget;

// Shows or hides a group of widgets, in the order given.
enum class Visibility : unsigned int {
    Show = 0x1010001,
    Hide = 0x1010002,
};

void setVisibility(const QList<QWidget *> &widgets, Visibility mode);
