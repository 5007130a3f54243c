#pragma once

#include <QString>

// One figure of the owner dashboard as shown: its label, the value and a line
// under it, and the screen (raw name) and section it opens. `attention` marks
// a figure that asks for action, such as overdue invoices.
struct OwnerFigure {
    QString key;
    QString label;
    QString value;
    QString detail;
    QString screen;
    QString section;
    bool attention = false;

    friend bool operator==(const OwnerFigure &, const OwnerFigure &) = default;
};
