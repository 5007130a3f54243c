#pragma once

#include "shell/TarnAccess.h"
#include "shell/TarnAdminArea.h"
#include "shell/TarnBoardGroup.h"
#include "shell/TarnDestination.h"
#include "shell/TarnNavGroup.h"
#include "shell/TarnSidebarRow.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

// The rules over the navigation tables (TarnShellTables): what the signed-in
// person may open, and the sidebar, boards, trail and search places that
// follow. Every function is pure: the same access always gives the same
// sidebar.
namespace TarnShell {

// One entry of the command search: an item or section of the sidebar, or a
// settings page.
struct Place {
    Q_GADGET
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(TarnDestination destination MEMBER destination)

public:
    QString key;
    QString label;
    // Where the place sits: its sidebar item or group, or "Settings".
    QString detail;
    QString symbol;
    TarnDestination destination;

    friend bool operator==(const Place &, const Place &) = default;
};

// The sidebar entries that match a destination.
struct Active {
    Q_GADGET
    Q_PROPERTY(QString groupLabel MEMBER groupLabel)
    Q_PROPERTY(TarnNavItem item MEMBER item)
    Q_PROPERTY(bool hasChild READ hasChild)
    Q_PROPERTY(TarnNavChild child READ childOrNone)

public:
    QString groupLabel;
    TarnNavItem item;
    std::optional<TarnNavChild> child;

    [[nodiscard]] bool hasChild() const { return child.has_value(); }
    [[nodiscard]] TarnNavChild childOrNone() const { return child.value_or(TarnNavChild()); }

    friend bool operator==(const Active &, const Active &) = default;
};

[[nodiscard]] bool canOpen(const TarnDestination &destination, const TarnAccess &access);

// Where the window opens after sign-in; none for an account without "Home",
// which sign-in refuses.
[[nodiscard]] std::optional<TarnDestination> home(const TarnAccess &access);

[[nodiscard]] QList<TarnBoardGroup> workBoard(const TarnAccess &access);
[[nodiscard]] QList<TarnNavItem> communications(const TarnAccess &access);
[[nodiscard]] QList<TarnNavGroup> navGroups(const TarnAccess &access);
// The sections listed under the sidebar item `item` (a key) that the person may open.
[[nodiscard]] QList<TarnNavChildGroup> children(const QString &item, const TarnAccess &access);
// The board of the sidebar item `item`: its sections that have prompts, then
// its own tiles, as far as the person may open them.
[[nodiscard]] QList<TarnBoardGroup> sectionBoard(const QString &item, const TarnAccess &access);

[[nodiscard]] std::optional<Active> active(const QList<TarnNavGroup> &groups, const TarnDestination &destination);
// The sidebar's lines; collapsed, only the items.
[[nodiscard]] QList<TarnSidebarRow> sidebarRows(
    const QList<TarnNavGroup> &groups, const TarnDestination &destination, bool collapsed);
[[nodiscard]] QStringList trail(const QList<TarnNavGroup> &groups, const TarnDestination &destination);
[[nodiscard]] QString title(TarnScreen screen);
[[nodiscard]] QString fallbackTitle(const TarnDestination &destination);

[[nodiscard]] QList<TarnAdminArea> adminAreas(const TarnAccess &access);
// Whether a destination is a page of the settings window rather than a screen.
[[nodiscard]] bool inSettings(const TarnDestination &destination);

[[nodiscard]] QList<Place> places(const QList<TarnNavGroup> &groups, const TarnAccess &access);
// Places whose label contains the query, case-insensitively: those it begins,
// then those where it begins a later word, then the rest; the given order is
// kept within each rank. A blank query matches everything.
[[nodiscard]] QList<Place> matchingPlaces(const QList<Place> &places, const QString &query);

// The page name the assistant is told a request came from; none for chat.
[[nodiscard]] std::optional<QString> piloPage(const TarnDestination &destination);
// A stored page name as the label shown today.
[[nodiscard]] QString pageLabel(const std::optional<QString> &label);
[[nodiscard]] QString agentStatusLabel(const QString &status);

} // namespace TarnShell
