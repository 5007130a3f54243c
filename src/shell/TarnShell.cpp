#include "shell/TarnShell.h"

#include "shell/TarnShellTables.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace TarnShell {

namespace {

const QString blockedWorkSection = u"Blocked work"_s;
const QString payrollSection = u"Payroll"_s;
const QString booksItem = u"finance"_s;

TarnDestination at(TarnScreen screen, std::optional<QString> section = std::nullopt)
{
    return { .screen = screen, .section = std::move(section) };
}

// The books pages live on the documents screen and follow "Books".
bool isBooksSection(const QString &section)
{
    static const QStringList sections = [] {
        QStringList labels;
        for (const TarnShellTables::Child &row : TarnShellTables::children()) {
            if (row.item == booksItem)
                labels.append(row.label);
        }
        return labels;
    }();
    return sections.contains(section);
}

bool mayUse(const TarnAdminArea &area, const TarnAccess &access)
{
    return (!area.ownerOnly || access.owner) && access.has(area.app.value_or(QString()));
}

bool companySectionAllowed(const QString &section, const TarnAccess &access)
{
    for (const TarnAdminArea &area : TarnShellTables::adminAreas()) {
        if (area.destination.resolvedSection() == section)
            return mayUse(area, access);
    }
    return true;
}

QString sectionSubtitle(const QString &key, const QString &subtitle, const TarnAccess &access)
{
    if (key == "account"_L1 && !access.email.isEmpty())
        return access.email;
    if (key == "history"_L1 && access.reviewsBlockedWork())
        return u"Every request to Pilo, yours and the team's"_s;
    return subtitle;
}

std::optional<TarnScreen> itemScreen(const QString &item)
{
    for (const TarnShellTables::Item &row : TarnShellTables::items()) {
        if (row.key == item)
            return row.destination.screen;
    }
    return std::nullopt;
}

// The sections of an item before access is applied, with their group labels.
QList<std::pair<QString, TarnNavChild>> sectionsOf(const QString &item, const TarnAccess &access)
{
    QList<std::pair<QString, TarnNavChild>> sections;
    if (item == "company"_L1) {
        for (const TarnAdminArea &area : TarnShellTables::adminAreas()) {
            if (!area.settings) {
                sections.append({ QString(),
                    { area.key, area.label, area.symbol, area.destination,
                        sectionSubtitle(area.key, area.subtitle, access) } });
            }
        }
        return sections;
    }
    const std::optional<TarnScreen> screen = itemScreen(item);
    if (!screen)
        return sections;
    for (const TarnShellTables::Child &row : TarnShellTables::children()) {
        if (row.item == item) {
            sections.append({ row.group,
                { row.key, row.label, row.symbol, at(*screen, row.label),
                    sectionSubtitle(row.key, row.subtitle, access) } });
        }
    }
    return sections;
}

// Applies access to an item: its children are filtered, and an item whose own
// page is closed to the person opens its first child they may open instead,
// or disappears.
std::optional<TarnNavItem> admitted(const TarnShellTables::Item &row, const TarnAccess &access)
{
    TarnNavItem entry { .key = row.key,
        .label = row.label,
        .symbol = row.symbol,
        .destination = row.destination,
        .screens = { row.destination.screen },
        .childGroups = children(row.key, access),
        .subtitle = row.subtitle };
    if (canOpen(entry.destination, access))
        return entry;
    if (entry.childGroups.isEmpty())
        return std::nullopt;
    entry.destination = entry.childGroups.constFirst().items.constFirst().destination;
    return entry;
}

QList<TarnBoardGroup> openTiles(const QString &board, const TarnAccess &access)
{
    QList<TarnBoardGroup> kept;
    for (const TarnShellTables::Tile &row : TarnShellTables::tiles()) {
        if (row.board == board && (!row.tile.open || canOpen(*row.tile.open, access)))
            kept.append(row.tile);
    }
    return kept;
}

bool startsWord(const QString &text, qsizetype index)
{
    if (index == 0)
        return true;
    const QChar before = text.at(index - 1);
    return !before.isLetterOrNumber();
}

// 0 prefix, 1 start of a later word, 2 elsewhere; none when absent.
std::optional<int> matchRank(const QString &label, const QString &query)
{
    qsizetype from = 0;
    std::optional<int> rank;
    for (;;) {
        const qsizetype index = label.indexOf(query, from, Qt::CaseInsensitive);
        if (index < 0)
            return rank;
        if (index == 0)
            return 0;
        if (startsWord(label, index))
            return 1;
        rank = 2;
        from = index + 1;
    }
}

} // namespace

bool canOpen(const TarnDestination &destination, const TarnAccess &access)
{
    const QString section = destination.resolvedSection();
    switch (destination.screen) {
    case TarnScreen::agent:
        if (section == blockedWorkSection && !access.reviewsBlockedWork())
            return false;
        break;
    case TarnScreen::documents:
        if (isBooksSection(section))
            return access.has(u"Books"_s);
        break;
    case TarnScreen::people:
        if (section == payrollSection)
            return access.has(payrollSection);
        break;
    case TarnScreen::company:
        if (!companySectionAllowed(section, access))
            return false;
        break;
    default:
        break;
    }
    const TarnShellTables::Screen &row = TarnShellTables::screen(destination.screen);
    return (!row.ownerOnly || access.owner) && access.has(row.app);
}

std::optional<TarnDestination> home(const TarnAccess &access)
{
    if (!access.has(u"Home"_s))
        return std::nullopt;
    // The assistant's new chat, where the work board sits.
    return at(TarnScreen::agent);
}

QList<TarnBoardGroup> workBoard(const TarnAccess &access)
{
    return access.has(u"Home"_s) ? openTiles(u"home"_s, access) : QList<TarnBoardGroup>();
}

QList<TarnNavItem> communications(const TarnAccess &access)
{
    for (const TarnNavGroup &group : navGroups(access)) {
        if (group.label == "Communication"_L1)
            return group.items;
    }
    return {};
}

QList<TarnNavGroup> navGroups(const TarnAccess &access)
{
    QList<TarnNavGroup> groups;
    for (const TarnShellTables::Item &row : TarnShellTables::items()) {
        if (groups.isEmpty() || groups.constLast().label != row.group)
            groups.append({ .label = row.group, .items = {} });
        if (std::optional<TarnNavItem> entry = admitted(row, access))
            groups.last().items.append(*entry);
    }
    groups.removeIf([](const TarnNavGroup &g) { return g.items.isEmpty(); });
    return groups;
}

QList<TarnNavChildGroup> children(const QString &item, const TarnAccess &access)
{
    QList<TarnNavChildGroup> groups;
    QString lastGroup;
    for (auto &[group, section] : sectionsOf(item, access)) {
        if (!canOpen(section.destination, access))
            continue;
        if (groups.isEmpty() || lastGroup != group)
            groups.append({ .label = group, .items = {} });
        lastGroup = group;
        groups.last().items.append(std::move(section));
    }
    return groups;
}

QList<TarnBoardGroup> sectionBoard(const QString &item, const TarnAccess &access)
{
    QList<TarnBoardGroup> board;
    const std::optional<TarnScreen> screen = itemScreen(item);
    if (!screen)
        return board;
    for (const TarnShellTables::Child &row : TarnShellTables::children()) {
        if (row.item != item || row.prompts.isEmpty())
            continue;
        TarnBoardGroup tile { row.key, row.label, row.symbol, at(*screen, row.label), row.prompts };
        if (canOpen(*tile.open, access))
            board.append(std::move(tile));
    }
    return board + openTiles(item, access);
}

std::optional<Active> active(const QList<TarnNavGroup> &groups, const TarnDestination &destination)
{
    // A section listed under an item wins over an item that only shares the
    // screen: the documents screen belongs to both Documents and Books.
    for (const TarnNavGroup &g : groups) {
        for (const TarnNavItem &entry : g.items) {
            for (const TarnNavChildGroup &childGroup : entry.childGroups) {
                for (const TarnNavChild &c : childGroup.items) {
                    if (c.destination.samePlace(destination))
                        return Active { .groupLabel = g.label, .item = entry, .child = c };
                }
            }
        }
    }
    for (const TarnNavGroup &g : groups) {
        for (const TarnNavItem &entry : g.items) {
            if (entry.destination.samePlace(destination))
                return Active { .groupLabel = g.label, .item = entry, .child = std::nullopt };
        }
    }
    for (const TarnNavGroup &g : groups) {
        for (const TarnNavItem &entry : g.items) {
            if (entry.screens.contains(destination.screen))
                return Active { .groupLabel = g.label, .item = entry, .child = std::nullopt };
        }
    }
    return std::nullopt;
}

QList<TarnSidebarRow> sidebarRows(const QList<TarnNavGroup> &groups, const TarnDestination &destination, bool collapsed)
{
    using Kind = TarnSidebarRow::Kind;
    const std::optional<Active> lit = active(groups, destination);
    QList<TarnSidebarRow> rows;
    for (const TarnNavGroup &group : groups) {
        if (!collapsed && !group.label.isEmpty())
            rows.append({ Kind::groupHeading, u"group/"_s + group.label, group.label, {}, {}, false });
        for (const TarnNavItem &entry : group.items) {
            const bool itemLit = lit && lit->item.key == entry.key;
            rows.append({ Kind::item, entry.key, entry.label, entry.symbol, entry.destination, itemLit });
            if (!itemLit || collapsed)
                continue;
            for (const TarnNavChildGroup &childGroup : entry.childGroups) {
                if (!childGroup.label.isEmpty()) {
                    rows.append({ Kind::sectionHeading, entry.key % u"/group/"_s % childGroup.label, childGroup.label,
                        {}, {}, false });
                }
                for (const TarnNavChild &c : childGroup.items) {
                    rows.append({ Kind::section, entry.key % u'/' % c.key, c.label, c.symbol, c.destination,
                        lit->child && lit->child->key == c.key });
                }
            }
        }
    }
    return rows;
}

QStringList trail(const QList<TarnNavGroup> &groups, const TarnDestination &destination)
{
    const std::optional<Active> match = active(groups, destination);
    const QString head = match ? match->item.label : title(destination.screen);
    const QString tail = match && match->child ? match->child->label : destination.resolvedSection();
    QStringList labels { head };
    if (!tail.isEmpty() && tail != head)
        labels.append(tail);
    return labels;
}

QString title(TarnScreen screen)
{
    return TarnShellTables::screen(screen).title;
}

QString fallbackTitle(const TarnDestination &destination)
{
    const QString section = destination.resolvedSection();
    return section.isEmpty() ? title(destination.screen) : section;
}

QList<TarnAdminArea> adminAreas(const TarnAccess &access)
{
    QList<TarnAdminArea> kept;
    for (const TarnAdminArea &area : TarnShellTables::adminAreas()) {
        if (mayUse(area, access))
            kept.append(area);
    }
    return kept;
}

bool inSettings(const TarnDestination &destination)
{
    const QList<TarnAdminArea> &areas = TarnShellTables::adminAreas();
    return std::any_of(areas.cbegin(), areas.cend(),
        [&](const TarnAdminArea &area) { return area.settings && area.destination.samePlace(destination); });
}

QList<Place> places(const QList<TarnNavGroup> &groups, const TarnAccess &access)
{
    QList<Place> result;
    const auto add = [&](const Place &place) {
        if (!canOpen(place.destination, access))
            return;
        const bool known = std::any_of(result.cbegin(), result.cend(),
            [&](const Place &p) { return p.label == place.label && p.destination.samePlace(place.destination); });
        if (!known)
            result.append(place);
    };
    for (const TarnNavGroup &g : groups) {
        for (const TarnNavItem &entry : g.items) {
            add({ entry.key, entry.label, g.label, entry.symbol, entry.destination });
            for (const TarnNavChildGroup &childGroup : entry.childGroups) {
                for (const TarnNavChild &c : childGroup.items)
                    add({ entry.key % u'/' % c.key, c.label, entry.label, c.symbol, c.destination });
            }
        }
    }
    for (const TarnAdminArea &area : adminAreas(access)) {
        if (area.settings)
            add({ area.key, area.label, u"Settings"_s, area.symbol, area.destination });
    }
    return result;
}

QList<Place> matchingPlaces(const QList<Place> &places, const QString &query)
{
    const QString needle = query.trimmed();
    if (needle.isEmpty())
        return places;
    std::array<QList<Place>, 3> ranks;
    for (const Place &place : places) {
        if (const std::optional<int> rank = matchRank(place.label, needle))
            ranks.at(static_cast<std::size_t>(*rank)).append(place);
    }
    return ranks[0] + ranks[1] + ranks[2];
}

std::optional<QString> piloPage(const TarnDestination &destination)
{
    const QString section = destination.resolvedSection();
    switch (destination.screen) {
    case TarnScreen::sales:
        return section;
    case TarnScreen::documents:
        if (isBooksSection(section))
            return u"Books"_s;
        break;
    case TarnScreen::people:
        if (section == payrollSection)
            return payrollSection;
        break;
    default:
        break;
    }
    const QLatin1StringView page = TarnShellTables::screen(destination.screen).piloPage;
    return page.isEmpty() ? std::nullopt : std::optional<QString>(page);
}

QString pageLabel(const std::optional<QString> &label)
{
    if (!label || label->isEmpty())
        return u"Chat"_s;
    static const QHash<QString, QString> renamed {
        { u"Sales"_s, u"Work plan"_s },
        { u"Docs"_s, u"Documents"_s },
        { u"Tools"_s, u"Company"_s },
        { u"Clients"_s, u"Portals"_s },
        { u"Website"_s, u"Websites"_s },
    };
    return renamed.value(*label, *label);
}

QString agentStatusLabel(const QString &status)
{
    if (status == "queued"_L1)
        return u"Waiting to start"_s;
    if (status == "running"_L1)
        return u"Working on it"_s;
    // Blocked work is reviewed by someone else; its author sees it as ongoing.
    if (status == "blocked"_L1)
        return u"Still working"_s;
    if (status == "failed"_L1)
        return u"Couldn't finish"_s;
    return u"Done"_s;
}

} // namespace TarnShell
