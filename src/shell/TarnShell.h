#pragma once

#include "shell/TarnAccess.h"
#include "shell/TarnAdminArea.h"
#include "shell/TarnBoardGroup.h"
#include "shell/TarnDestination.h"
#include "shell/TarnNavGroup.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

// The window's static navigation tables and the access rules over them. Every
// function is pure: the same access record always gives the same sidebar.
//
// Gates the screens follow (an app name is checked through TarnAccess::has):
//   chat, agent            "Home"; the agent's "Blocked work" also needs reviewsBlockedWork
//   sales, workPlan        "Sales"
//   support                "Support"
//   calls (and its shared  "Calls": customer texts arrive on the same numbers the
//     inbox)                 team calls from, so the inbox sits beside the call book
//   schedule               "Schedule"
//   mail                   "Mail"
//   documents              "Docs"; the books sections ("Invoices" and the other
//                            books pages) need "Books" instead, so a books owner
//                            reaches the books through them
//   payments               "Payments"
//   people                 "People"; its "Payroll" section needs "Payroll" instead
//   owner                  the owner flag: the owner's dashboard is not an app
//   company                always; "Team & access" and "Connections" only for the
//                            owner, "SOPs" with "Docs" (the handbook is documents),
//                            "Thought board" with "Overview" (it feeds planning)
//   kiln, websites, portals, marketScan, overview
//                          "Kiln", "Website", "Clients", "Market Scan", "Overview"
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
    Q_PROPERTY(QVariant child READ childVariant)

public:
    QString groupLabel;
    TarnNavItem item;
    std::optional<TarnNavChild> child;

    [[nodiscard]] QVariant childVariant() const { return child ? QVariant::fromValue(*child) : QVariant(); }

    friend bool operator==(const Active &, const Active &) = default;
};

[[nodiscard]] bool canOpen(const TarnDestination &destination, const TarnAccess &access);

// Where the window opens after sign-in; none for an account without "Home",
// which sign-in refuses.
[[nodiscard]] std::optional<TarnDestination> home(const TarnAccess &access);

[[nodiscard]] QList<TarnBoardGroup> workBoard(const TarnAccess &access);
[[nodiscard]] QList<TarnNavItem> communications(const TarnAccess &access);
[[nodiscard]] QList<TarnNavGroup> navGroups(const TarnAccess &access);
// The child groups of the sidebar item `section` (an item key) on `screen`.
[[nodiscard]] QList<TarnNavChildGroup> children(const QString &section, TarnScreen screen, const TarnAccess &access);

[[nodiscard]] std::optional<Active> active(const QList<TarnNavGroup> &groups, const TarnDestination &destination);
[[nodiscard]] QStringList trail(const QList<TarnNavGroup> &groups, const TarnDestination &destination);
[[nodiscard]] QString title(TarnScreen screen);
[[nodiscard]] QString fallbackTitle(const TarnDestination &destination);
[[nodiscard]] QString subtitle(const TarnNavChild &child, const TarnAccess &access);

[[nodiscard]] QList<TarnAdminArea> adminAreas(const TarnAccess &access);
// Whether a destination is a page of the settings window rather than a screen.
[[nodiscard]] bool inSettings(const TarnDestination &destination);

[[nodiscard]] QList<Place> places(const QList<TarnNavGroup> &groups, const TarnAccess &access);
// Places whose label contains the query, case-insensitively: those it begins,
// then those where it begins a later word, then the rest; the given order is
// kept within each rank. A blank query matches everything.
[[nodiscard]] QList<Place> matchingPlaces(const QList<Place> &places, const QString &query);

// The page name the assistant is told a request came from. These are the
// names pages have always been stored under; pageLabel turns them into the
// labels shown today.
[[nodiscard]] std::optional<QString> piloPage(const TarnDestination &destination);
[[nodiscard]] QString pageLabel(const std::optional<QString> &label);
[[nodiscard]] QString agentStatusLabel(const QString &status);

// Keyed by "sales", "support", "people", "payments", "docs", "finance", "workplan".
[[nodiscard]] const QHash<QString, QList<TarnBoardGroup>> &sectionBoards();
// One section's board with the tiles this person may open.
[[nodiscard]] QList<TarnBoardGroup> sectionBoard(const QString &key, const TarnAccess &access);
[[nodiscard]] const QHash<QString, QString> &pageSubtitles();
[[nodiscard]] const QHash<QString, QString> &documentsAliases();

} // namespace TarnShell
