#pragma once

#include "shell/TarnAdminArea.h"
#include "shell/TarnBoardGroup.h"
#include "shell/TarnDestination.h"
#include "shell/TarnScreen.h"

#include <QLatin1StringView>
#include <QList>
#include <QString>
#include <QStringList>

#include <span>

// The window's navigation facts, one row per thing they describe. The rules
// over them (who may open what, which entry is lit) are in TarnShell.
namespace TarnShellTables {

// A top-level screen; screens() holds one per TarnScreen, in its order.
struct Screen {
    TarnScreen screen;
    QLatin1StringView rawValue;
    QLatin1StringView title;
    // The app that opens it, through TarnAccess::has; empty for none.
    QLatin1StringView app;
    // Only the owner opens it: the owner's dashboard is not an app.
    bool ownerOnly;
    // The name the assistant is told a request came from: the names pages
    // have always been stored under (TarnShell::pageLabel shows today's).
    // Empty for none.
    QLatin1StringView piloPage;
};

[[nodiscard]] std::span<const Screen> screens();
[[nodiscard]] const Screen &screen(TarnScreen screen);

// A sidebar item, in sidebar order; consecutive rows of one `group` form a
// labelled group.
struct Item {
    QString group;
    QString key;
    QString label;
    QString symbol;
    TarnDestination destination;
    // Shown under the trail on the item's own page.
    QString subtitle;
};

[[nodiscard]] const QList<Item> &items();

// A section listed under a sidebar item: the item's screen at the section
// named by `label`. A section with prompts is also a tile of its item's
// board. The company item lists the administration areas instead.
struct Child {
    QString item;
    // The labelled run of sections it belongs to; empty for none.
    QString group;
    QString key;
    QString label;
    QString symbol;
    QString subtitle;
    QStringList prompts;
};

[[nodiscard]] const QList<Child> &children();

// A board tile that is no sidebar section: the home work board's ("home"),
// and those of the items that list no sections.
struct Tile {
    QString board;
    TarnBoardGroup tile;
};

[[nodiscard]] const QList<Tile> &tiles();

// Sections of the company screen, and the settings window's pages.
[[nodiscard]] const QList<TarnAdminArea> &adminAreas();

} // namespace TarnShellTables
