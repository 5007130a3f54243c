#include "shell/TarnShell.h"

using namespace Qt::StringLiterals;

namespace TarnShell {

namespace {

TarnDestination at(TarnScreen screen, std::optional<QString> section = std::nullopt)
{
    return { .screen = screen, .section = std::move(section) };
}

// A child's section is its label: the label is what destinations carry.
TarnNavChild child(const QString &key, const QString &label, const QString &symbol, TarnScreen screen)
{
    return { .key = key, .label = label, .symbol = symbol, .destination = at(screen, label) };
}

const QString blockedWorkSection = u"Blocked work"_s;
const QString payrollSection = u"Payroll"_s;

const QList<TarnAdminArea> &adminTable();

TarnNavChildGroup companyChildren()
{
    TarnNavChildGroup group;
    for (const TarnAdminArea &area : adminTable()) {
        if (!area.settings)
            group.items.append({ area.key, area.label, area.symbol, area.destination });
    }
    return group;
}

// Every child group of the sidebar, before access is applied, by item key.
// The company item lists the administration areas that are not in the
// settings window.
QList<TarnNavChildGroup> childTable(const QString &key)
{
    using S = TarnScreen;
    static const QHash<QString, QList<TarnNavChildGroup>> table {
        { u"pilo"_s,
            { { u""_s,
                { child(u"newchat"_s, u"New chat"_s, u"square.and.pencil"_s, S::agent),
                    child(u"history"_s, u"History"_s, u"clock.arrow.circlepath"_s, S::agent),
                    child(u"blocked"_s, blockedWorkSection, u"exclamationmark.triangle"_s, S::agent) } } } },
        { u"overview"_s,
            { { u""_s,
                { child(u"team"_s, u"Team"_s, u"person.3"_s, S::overview),
                    child(u"boards"_s, u"Product boards"_s, u"square.grid.2x2"_s, S::overview),
                    child(u"fulfilment"_s, u"Fulfilment"_s, u"shippingbox"_s, S::overview) } } } },
        { u"calls"_s,
            { { u""_s,
                { child(u"callbook"_s, u"Calls"_s, u"phone"_s, S::calls),
                    child(u"inbox"_s, u"Inbox"_s, u"tray"_s, S::calls),
                    child(u"recordings"_s, u"Recordings"_s, u"waveform"_s, S::calls) } } } },
        { u"schedule"_s,
            { { u""_s,
                { child(u"calendar"_s, u"Calendar"_s, u"calendar"_s, S::schedule),
                    child(u"booking"_s, u"Booking links"_s, u"link"_s, S::schedule) } } } },
        { u"sales"_s,
            { { u""_s,
                { child(u"leads"_s, u"Lead Generation"_s, u"magnifyingglass"_s, S::sales),
                    child(u"customers"_s, u"Customers"_s, u"person.2"_s, S::sales),
                    child(u"pipeline"_s, u"Pipeline"_s, u"list.bullet.rectangle"_s, S::sales) } } } },
        { u"support"_s,
            { { u""_s,
                { child(u"maintenance"_s, u"Maintenance"_s, u"wrench.and.screwdriver"_s, S::support),
                    child(u"recurring"_s, u"Recurring"_s, u"repeat"_s, S::support),
                    child(u"time"_s, u"Time"_s, u"timer"_s, S::support) } } } },
        { u"docs"_s,
            { { u"Documents"_s,
                         { child(u"worksheets"_s, u"Worksheets"_s, u"doc.plaintext"_s, S::documents),
                             child(u"agreements"_s, u"Agreements"_s, u"doc.text"_s, S::documents),
                             child(u"proposals"_s, u"Proposals"_s, u"doc.richtext"_s, S::documents) } },
                { u"Signing"_s, { child(u"envelopes"_s, u"Envelopes"_s, u"signature"_s, S::documents) } } } },
        { u"finance"_s,
            { { u"Books"_s,
                         { child(u"books"_s, u"Dashboard"_s, u"chart.pie"_s, S::documents),
                             child(u"transactions"_s, u"Transactions"_s, u"arrow.left.arrow.right"_s, S::documents),
                             child(u"invoices"_s, u"Invoices"_s, u"doc.text.magnifyingglass"_s, S::documents),
                             child(u"expenses"_s, u"Expenses"_s, u"cart"_s, S::documents),
                             child(u"reports"_s, u"Reports"_s, u"chart.bar.doc.horizontal"_s, S::documents) } },
                { u"Bank"_s, { child(u"bankfeed"_s, u"Bank feed"_s, u"building.columns"_s, S::documents) } } } },
        { u"people"_s,
            { { u""_s,
                { child(u"hr"_s, u"HR"_s, u"person.text.rectangle"_s, S::people),
                    child(u"timeclock"_s, u"Time clock"_s, u"clock"_s, S::people),
                    child(u"payroll"_s, payrollSection, u"dollarsign.circle"_s, S::people) } } } },
        { u"company"_s, { companyChildren() } },
    };
    return table.value(key);
}

// The books pages live on the documents screen and follow "Books".
bool isBooksSection(const QString &section)
{
    static const QStringList sections = [] {
        QStringList labels;
        for (const TarnNavChildGroup &group : childTable(u"finance"_s)) {
            for (const TarnNavChild &entry : group.items)
                labels.append(entry.label);
        }
        return labels;
    }();
    return sections.contains(section);
}

const QList<TarnAdminArea> &adminTable()
{
    using S = TarnScreen;
    static const QList<TarnAdminArea> areas {
        { u"account"_s, u"My account"_s, {}, false, false, u"person.crop.circle"_s, at(S::company, u"My account"_s) },
        { u"appearance"_s, u"Appearance"_s, {}, false, true, u"paintpalette"_s, at(S::company, u"Appearance"_s) },
        { u"team"_s, u"Team & access"_s, {}, true, false, u"person.badge.key"_s, at(S::company, u"Team & access"_s) },
        { u"connections"_s, u"Connections"_s, {}, true, false, u"link"_s, at(S::company, u"Connections"_s) },
        { u"sops"_s, u"SOPs"_s, u"Docs"_s, false, false, u"book"_s, at(S::company, u"SOPs"_s) },
        { u"thoughts"_s, u"Thought board"_s, u"Overview"_s, false, false, u"lightbulb"_s,
            at(S::company, u"Thought board"_s) },
    };
    return areas;
}

bool mayUse(const TarnAdminArea &area, const TarnAccess &access)
{
    return (!area.ownerOnly || access.owner) && access.has(area.app.value_or(QString()));
}

bool companySectionAllowed(const QString &section, const TarnAccess &access)
{
    for (const TarnAdminArea &area : adminTable()) {
        if (area.destination.resolvedSection() == section)
            return mayUse(area, access);
    }
    return true;
}

TarnNavItem item(const QString &key, const QString &label, const QString &symbol, const TarnDestination &destination)
{
    return { .key = key,
        .label = label,
        .symbol = symbol,
        .destination = destination,
        .screens = { destination.screen },
        .childGroups = {} };
}

// Applies access to an item: its children are filtered, and an item whose own
// page is closed to the person opens its first child they may open instead,
// or disappears.
std::optional<TarnNavItem> admitted(TarnNavItem entry, const TarnAccess &access)
{
    entry.childGroups = children(entry.key, entry.destination.screen, access);
    if (canOpen(entry.destination, access))
        return entry;
    for (const TarnNavChildGroup &group : entry.childGroups) {
        if (!group.items.isEmpty()) {
            entry.destination = group.items.constFirst().destination;
            return entry;
        }
    }
    return std::nullopt;
}

TarnNavGroup group(const QString &label, const QList<TarnNavItem> &candidates, const TarnAccess &access)
{
    TarnNavGroup result { .label = label, .items = {} };
    for (const TarnNavItem &candidate : candidates) {
        if (auto entry = admitted(candidate, access))
            result.items.append(*entry);
    }
    return result;
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
    case TarnScreen::chat:
        return access.has(u"Home"_s);
    case TarnScreen::agent:
        return access.has(u"Home"_s) && (section != blockedWorkSection || access.reviewsBlockedWork());
    case TarnScreen::sales:
    case TarnScreen::workPlan:
        return access.has(u"Sales"_s);
    case TarnScreen::support:
        return access.has(u"Support"_s);
    case TarnScreen::documents:
        return access.has(isBooksSection(section) ? u"Books"_s : u"Docs"_s);
    case TarnScreen::payments:
        return access.has(u"Payments"_s);
    case TarnScreen::kiln:
        return access.has(u"Kiln"_s);
    case TarnScreen::owner:
        return access.owner;
    case TarnScreen::company:
        return companySectionAllowed(section, access);
    case TarnScreen::websites:
        return access.has(u"Website"_s);
    case TarnScreen::portals:
        return access.has(u"Clients"_s);
    case TarnScreen::calls:
        return access.has(u"Calls"_s);
    case TarnScreen::marketScan:
        return access.has(u"Market Scan"_s);
    case TarnScreen::overview:
        return access.has(u"Overview"_s);
    case TarnScreen::schedule:
        return access.has(u"Schedule"_s);
    case TarnScreen::mail:
        return access.has(u"Mail"_s);
    case TarnScreen::people:
        return access.has(section == payrollSection ? payrollSection : u"People"_s);
    }
    return false;
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
    using S = TarnScreen;
    static const QList<TarnBoardGroup> tiles {
        { u"chat"_s, u"New chat"_s, u"square.and.pencil"_s, at(S::agent, u"New chat"_s),
            { u"What should I work on first today?"_s, u"Summarise what I missed in chat since yesterday"_s,
                u"Draft a reply to my newest email"_s } },
        { u"images"_s, u"Images"_s, u"photo.on.rectangle.angled"_s, std::nullopt,
            { u"Make a header image for our next newsletter"_s, u"Turn a photo into a square social post"_s } },
        { u"prospects"_s, u"Prospects"_s, u"person.badge.plus"_s, at(S::sales, u"Lead Generation"_s),
            { u"Find companies like our best clients"_s, u"Which leads have not heard from us this week?"_s } },
        { u"clients"_s, u"Clients"_s, u"person.2"_s, at(S::portals),
            { u"Which client portals have open alerts?"_s, u"Draft this month's report for a client"_s } },
        { u"operations"_s, u"Operations"_s, u"gearshape.2"_s, at(S::support),
            { u"What maintenance work is overdue?"_s, u"Plan next week's recurring work"_s } },
        { u"marketing"_s, u"Marketing"_s, u"chart.line.uptrend.xyaxis"_s, at(S::marketScan),
            { u"What changed in our market this month?"_s, u"Suggest three topics for the website"_s } },
    };
    QList<TarnBoardGroup> kept;
    if (!access.has(u"Home"_s))
        return kept;
    for (const TarnBoardGroup &tile : tiles) {
        if (!tile.open || canOpen(*tile.open, access))
            kept.append(tile);
    }
    return kept;
}

QList<TarnNavItem> communications(const TarnAccess &access)
{
    using S = TarnScreen;
    return group(u"Communication"_s,
        { item(u"home"_s, u"Messages"_s, u"message"_s, at(S::chat)),
            item(u"calls"_s, u"Calls"_s, u"phone"_s, at(S::calls)),
            item(u"mail"_s, u"Email"_s, u"envelope"_s, at(S::mail)),
            item(u"schedule"_s, u"Calendar"_s, u"calendar"_s, at(S::schedule, u"Calendar"_s)) },
        access)
        .items;
}

QList<TarnNavGroup> navGroups(const TarnAccess &access)
{
    using S = TarnScreen;
    QList<TarnNavGroup> groups {
        group(u""_s,
            { item(u"pilo"_s, u"Pilo"_s, u"sparkles"_s, at(S::agent)),
                item(u"owner"_s, u"Dashboard"_s, u"gauge.with.dots.needle.67percent"_s, at(S::owner)),
                item(u"overview"_s, u"Overview"_s, u"rectangle.3.group"_s, at(S::overview, u"Team"_s)) },
            access),
        { .label = u"Communication"_s, .items = communications(access) },
        group(u"Work"_s,
            { item(u"sales"_s, u"Sales"_s, u"briefcase"_s, at(S::sales)),
                item(u"workplan"_s, u"Work plan"_s, u"checklist"_s, at(S::workPlan)),
                item(u"support"_s, u"Support"_s, u"lifepreserver"_s, at(S::support)),
                item(u"docs"_s, u"Documents"_s, u"doc.text"_s, at(S::documents)),
                item(u"portals"_s, u"Portals"_s, u"person.2.crop.square.stack"_s, at(S::portals)),
                item(u"websites"_s, u"Websites"_s, u"globe"_s, at(S::websites)),
                item(u"marketscan"_s, u"Market Scan"_s, u"scope"_s, at(S::marketScan)),
                item(u"kiln"_s, u"Kiln"_s, u"flame"_s, at(S::kiln)) },
            access),
        group(u"Money"_s,
            { item(u"finance"_s, u"Books"_s, u"book.closed"_s, at(S::documents, u"Dashboard"_s)),
                item(u"payments"_s, u"Payments"_s, u"creditcard"_s, at(S::payments)) },
            access),
        group(u"Company"_s,
            { item(u"people"_s, u"People"_s, u"person.crop.rectangle.stack"_s, at(S::people)),
                item(u"company"_s, u"Company"_s, u"building.2"_s, at(S::company)) },
            access),
    };
    groups.removeIf([](const TarnNavGroup &g) { return g.items.isEmpty(); });
    return groups;
}

QList<TarnNavChildGroup> children(const QString &section, TarnScreen screen, const TarnAccess &access)
{
    QList<TarnNavChildGroup> result;
    for (TarnNavChildGroup entry : childTable(section)) {
        entry.items.removeIf(
            [&](const TarnNavChild &c) { return c.destination.screen != screen || !canOpen(c.destination, access); });
        if (!entry.items.isEmpty())
            result.append(entry);
    }
    return result;
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
    switch (screen) {
    case TarnScreen::chat:
        return u"Messages"_s;
    case TarnScreen::agent:
        return u"Pilo"_s;
    case TarnScreen::sales:
        return u"Sales"_s;
    case TarnScreen::support:
        return u"Support"_s;
    case TarnScreen::workPlan:
        return u"Work plan"_s;
    case TarnScreen::documents:
        return u"Documents"_s;
    case TarnScreen::payments:
        return u"Payments"_s;
    case TarnScreen::kiln:
        return u"Kiln"_s;
    case TarnScreen::owner:
        return u"Dashboard"_s;
    case TarnScreen::company:
        return u"Company"_s;
    case TarnScreen::websites:
        return u"Websites"_s;
    case TarnScreen::portals:
        return u"Portals"_s;
    case TarnScreen::calls:
        return u"Calls"_s;
    case TarnScreen::marketScan:
        return u"Market Scan"_s;
    case TarnScreen::overview:
        return u"Overview"_s;
    case TarnScreen::schedule:
        return u"Calendar"_s;
    case TarnScreen::mail:
        return u"Email"_s;
    case TarnScreen::people:
        return u"People"_s;
    }
    return {};
}

QString fallbackTitle(const TarnDestination &destination)
{
    const QString section = destination.resolvedSection();
    return section.isEmpty() ? title(destination.screen) : section;
}

QString subtitle(const TarnNavChild &child, const TarnAccess &access)
{
    if (child.key == "account"_L1 && !access.email.isEmpty())
        return access.email;
    if (child.key == "history"_L1 && access.reviewsBlockedWork())
        return u"Every request to Pilo, yours and the team's"_s;
    static const QHash<QString, QString> lines {
        { u"newchat"_s, u"Ask Pilo to do something"_s },
        { u"history"_s, u"Your earlier requests to Pilo"_s },
        { u"blocked"_s, u"Requests Pilo could not finish alone"_s },
        { u"team"_s, u"Who is working on what"_s },
        { u"boards"_s, u"Products and their stages"_s },
        { u"fulfilment"_s, u"Orders on their way to customers"_s },
        { u"callbook"_s, u"Recent and upcoming calls"_s },
        { u"inbox"_s, u"Customer texts for the whole team"_s },
        { u"recordings"_s, u"Recorded calls"_s },
        { u"calendar"_s, u"Your events and meetings"_s },
        { u"booking"_s, u"Links customers book time with"_s },
        { u"leads"_s, u"New prospects to reach"_s },
        { u"customers"_s, u"Every customer and their history"_s },
        { u"pipeline"_s, u"Customers by stage"_s },
        { u"maintenance"_s, u"Client maintenance tasks"_s },
        { u"recurring"_s, u"Work that repeats on a schedule"_s },
        { u"time"_s, u"Tracked and logged time"_s },
        { u"worksheets"_s, u"Templates to start from"_s },
        { u"agreements"_s, u"Contracts and signed documents"_s },
        { u"proposals"_s, u"Proposals sent to prospects"_s },
        { u"envelopes"_s, u"Documents out for signature"_s },
        { u"books"_s, u"Income and expenses by month"_s },
        { u"transactions"_s, u"Money in and out"_s },
        { u"invoices"_s, u"Customer invoices and what is still owed"_s },
        { u"expenses"_s, u"Spending by account"_s },
        { u"reports"_s, u"Profit and loss, balance sheet"_s },
        { u"bankfeed"_s, u"Balances and rows from the bank"_s },
        { u"hr"_s, u"Team records"_s },
        { u"timeclock"_s, u"Clock-ins and hours"_s },
        { u"payroll"_s, u"Pay runs and adjustments"_s },
        { u"account"_s, u"Your name and sign-in"_s },
        { u"connections"_s, u"Google and bank connections"_s },
        { u"sops"_s, u"How the company does things"_s },
        { u"thoughts"_s, u"Ideas for what comes next"_s },
    };
    return lines.value(child.key);
}

QList<TarnAdminArea> adminAreas(const TarnAccess &access)
{
    QList<TarnAdminArea> kept;
    for (const TarnAdminArea &area : adminTable()) {
        if (mayUse(area, access))
            kept.append(area);
    }
    return kept;
}

bool inSettings(const TarnDestination &destination)
{
    return std::any_of(adminTable().cbegin(), adminTable().cend(),
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
    case TarnScreen::chat:
        return std::nullopt;
    case TarnScreen::sales:
        // "Sales" is the work plan's stored name, so the sales screen reports
        // the page itself.
        return section;
    case TarnScreen::workPlan:
        return u"Sales"_s;
    case TarnScreen::documents:
        return isBooksSection(section) ? u"Books"_s : u"Docs"_s;
    case TarnScreen::company:
        return u"Tools"_s;
    case TarnScreen::portals:
        return u"Clients"_s;
    case TarnScreen::websites:
        return u"Website"_s;
    case TarnScreen::people:
        return section == payrollSection ? payrollSection : u"People"_s;
    default:
        return title(destination.screen);
    }
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

const QHash<QString, QList<TarnBoardGroup>> &sectionBoards()
{
    using S = TarnScreen;
    static const QHash<QString, QList<TarnBoardGroup>> boards {
        { u"sales"_s,
            { { u"leads"_s, u"Leads"_s, u"magnifyingglass"_s, at(S::sales, u"Lead Generation"_s),
                  { u"Find ten companies like our best clients"_s,
                      u"Which leads have not heard from us this week?"_s } },
                { u"customers"_s, u"Customers"_s, u"person.2"_s, at(S::sales, u"Customers"_s),
                    { u"Summarise what changed with my customers this month"_s,
                        u"Draft follow-ups for customers waiting on us"_s } },
                { u"pipeline"_s, u"Pipeline"_s, u"list.bullet.rectangle"_s, at(S::sales, u"Pipeline"_s),
                    { u"Which deals have been stuck in one stage too long?"_s } } } },
        { u"support"_s,
            { { u"maintenance"_s, u"Maintenance"_s, u"wrench.and.screwdriver"_s, at(S::support, u"Maintenance"_s),
                  { u"What maintenance work is overdue?"_s, u"Group today's requests by client"_s } },
                { u"recurring"_s, u"Recurring"_s, u"repeat"_s, at(S::support, u"Recurring"_s),
                    { u"Plan next week's recurring work"_s } },
                { u"time"_s, u"Time"_s, u"timer"_s, at(S::support, u"Time"_s),
                    { u"How much time went to each client this month?"_s } } } },
        { u"people"_s,
            { { u"hr"_s, u"HR"_s, u"person.text.rectangle"_s, at(S::people, u"HR"_s),
                  { u"Who is out this week?"_s, u"Draft a welcome note for a new hire"_s } },
                { u"timeclock"_s, u"Time clock"_s, u"clock"_s, at(S::people, u"Time clock"_s),
                    { u"Who forgot to clock out yesterday?"_s } },
                { u"payroll"_s, u"Payroll"_s, u"dollarsign.circle"_s, at(S::people, payrollSection),
                    { u"What changed since the last pay run?"_s } } } },
        { u"payments"_s,
            { { u"received"_s, u"Received"_s, u"creditcard"_s, at(S::payments),
                  { u"How much came in this month?"_s, u"Which refunds are waiting for a decision?"_s } },
                { u"invoices"_s, u"Open invoices"_s, u"doc.text.magnifyingglass"_s, at(S::documents, u"Invoices"_s),
                    { u"Which invoices are overdue?"_s } } } },
        { u"docs"_s,
            { { u"worksheets"_s, u"Worksheets"_s, u"doc.plaintext"_s, at(S::documents, u"Worksheets"_s),
                  { u"Start a worksheet for a new client"_s } },
                { u"agreements"_s, u"Agreements"_s, u"doc.text"_s, at(S::documents, u"Agreements"_s),
                    { u"Which agreements renew this quarter?"_s } },
                { u"envelopes"_s, u"Envelopes"_s, u"signature"_s, at(S::documents, u"Envelopes"_s),
                    { u"Which envelopes are still waiting for a signature?"_s } } } },
        { u"finance"_s,
            { { u"books"_s, u"Books"_s, u"chart.pie"_s, at(S::documents, u"Dashboard"_s),
                  { u"How did this month compare with last month?"_s } },
                { u"bankfeed"_s, u"Bank feed"_s, u"building.columns"_s, at(S::documents, u"Bank feed"_s),
                    { u"Which bank rows still need a category?"_s } },
                { u"reports"_s, u"Reports"_s, u"chart.bar.doc.horizontal"_s, at(S::documents, u"Reports"_s),
                    { u"Prepare the month-end reconciliation"_s } } } },
        { u"workplan"_s,
            { { u"plan"_s, u"This week"_s, u"checklist"_s, at(S::workPlan),
                  { u"What is left on my plan this week?"_s, u"Move unfinished work to next week"_s } },
                { u"team"_s, u"Team"_s, u"person.3"_s, std::nullopt,
                    { u"Who has room for more work this week?"_s } } } },
    };
    return boards;
}

QList<TarnBoardGroup> sectionBoard(const QString &key, const TarnAccess &access)
{
    QList<TarnBoardGroup> kept;
    for (const TarnBoardGroup &tile : sectionBoards().value(key)) {
        if (!tile.open || canOpen(*tile.open, access))
            kept.append(tile);
    }
    return kept;
}

const QHash<QString, QString> &pageSubtitles()
{
    static const QHash<QString, QString> subtitles {
        { u"sales"_s, u"Find leads, keep customers moving and follow up on time."_s },
        { u"support"_s, u"Client maintenance, recurring work and tracked time."_s },
        { u"people"_s, u"Team records, the time clock and payroll."_s },
        { u"payments"_s, u"Card and offline payments, refunds and saved cards."_s },
        { u"docs"_s, u"Worksheets, agreements, proposals and envelopes for signing."_s },
        { u"finance"_s, u"The company's books: transactions, invoices, expenses and bank rows."_s },
        { u"workplan"_s, u"This week's plan for you and the team."_s },
    };
    return subtitles;
}

const QHash<QString, QString> &documentsAliases()
{
    return TarnDestination::documentsAliases();
}

} // namespace TarnShell
