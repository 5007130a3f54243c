#pragma once

#include "mail/TarnMailRun.h"

#include <QList>

// A data table of a mail: rows of cells, a cell being its text as runs. A cell
// spanning several columns is followed by empty cells for the columns it
// covers, so that every column lines up in the drawn grid.
struct TarnMailTable {
    using Cell = QList<TarnMailRun>;
    using Row = QList<Cell>;

    QList<Row> rows;
    int headerRows = 0; // how many leading rows are header rows

    friend bool operator==(const TarnMailTable &, const TarnMailTable &) = default;
};
