#pragma once

#include "shell/TarnDestination.h"

#include <QObject>
#include <QString>

// One line of the sidebar as it is drawn: the groups, their items, and the
// lit item's sections, flattened in drawing order.
struct TarnSidebarRow {
    Q_GADGET

public:
    enum class Kind {
        groupHeading,
        item,
        sectionHeading,
        section,
    };
    Q_ENUM(Kind)

    Kind kind = Kind::item;
    // Unique within the sidebar: "sales", "sales/leads", "group/Work", "docs/group/Signing".
    QString key;
    QString label;
    QString symbol;
    // Where choosing the line goes; headings go nowhere.
    TarnDestination destination;
    // The line of the current place (an item and its open section both are).
    bool lit = false;

    friend bool operator==(const TarnSidebarRow &, const TarnSidebarRow &) = default;
};
