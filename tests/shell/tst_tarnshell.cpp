#include "shell/DemoPeople.h"

#include "shell/TarnOpenRecord.h"
#include "shell/TarnShell.h"

#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

TarnDestination at(TarnScreen screen, std::optional<QString> section = std::nullopt)
{
    return { .screen = screen, .section = std::move(section) };
}

const QStringList allApps { u"Home"_s, u"Sales"_s, u"Support"_s, u"Docs"_s, u"Books"_s, u"Payments"_s, u"Payroll"_s,
    u"Kiln"_s, u"Website"_s, u"Clients"_s, u"Calls"_s, u"Market Scan"_s, u"Overview"_s, u"Schedule"_s, u"Mail"_s,
    u"People"_s };

// Everything a person could be given: every app, both flags, the reviewer.
TarnAccess everything()
{
    TarnAccess access;
    access.apps = allApps;
    access.owner = true;
    access.booksOwner = true;
    access.role = u"admin"_s;
    access.email = TarnAccess::defaultOwnerAddress;
    return access;
}

// Each screen's own page and every section the full sidebar lists.
QList<TarnDestination> everyDestination()
{
    QList<TarnDestination> all;
    for (const TarnScreen screen : TarnScreens::all)
        all.append(at(screen));
    for (const TarnNavGroup &group : TarnShell::navGroups(everything())) {
        for (const TarnNavItem &item : group.items) {
            all.append(item.destination);
            for (const TarnNavChildGroup &childGroup : item.childGroups) {
                for (const TarnNavChild &child : childGroup.items)
                    all.append(child.destination);
            }
        }
    }
    return all;
}

template <typename T> QStringList fieldOf(const QList<T> &records, QString T::*field)
{
    QStringList out;
    for (const T &record : records)
        out.append(record.*field);
    return out;
}

QStringList itemKeys(const QList<TarnNavGroup> &groups)
{
    QStringList keys;
    for (const TarnNavGroup &group : groups)
        keys += fieldOf(group.items, &TarnNavItem::key);
    return keys;
}

QStringList labels(const QList<TarnShell::Place> &places)
{
    return fieldOf(places, &TarnShell::Place::label);
}

TarnShell::Place place(const QString &label)
{
    return { .key = label, .label = label, .detail = {}, .symbol = {}, .destination = at(TarnScreen::chat) };
}

} // namespace

class TestTarnShell : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void resolvedSection_data();
    void resolvedSection();
    void gates_data();
    void gates();
    void absentAndEmptyAppLists_data();
    void absentAndEmptyAppLists();
    void demoPeople_data();
    void demoPeople();
    void sidebarShowsExactlyWhatOpens_data();
    void sidebarShowsExactlyWhatOpens();
    void trail_data();
    void trail();
    void pageLabel_data();
    void pageLabel();
    void agentStatusLabel_data();
    void agentStatusLabel();
    void matchingPlaces_data();
    void matchingPlaces();
    void sectionTables();
    void openRecordNeighbour_data();
    void openRecordNeighbour();
};

struct SectionRow {
    const char *name;
    TarnDestination destination;
    QString resolved;
};

void TestTarnShell::resolvedSection_data()
{
    QTest::addColumn<SectionRow>("row");
    using S = TarnScreen;
    const QList<SectionRow> rows {
        { "documents without a section", at(S::documents), u"Worksheets"_s },
        { "documents with an empty section", at(S::documents, u""_s), u"Worksheets"_s },
        { "documents alias Templates", at(S::documents, u"Templates"_s), u"Worksheets"_s },
        { "documents alias All documents", at(S::documents, u"All documents"_s), u"Agreements"_s },
        { "aliases belong to documents only", at(S::sales, u"Templates"_s), u"Templates"_s },
        { "people with an empty section", at(S::people, u""_s), u"HR"_s },
        { "agent default", at(S::agent), u"New chat"_s },
        { "chat has no default", at(S::chat), u""_s },
        { "an unlisted screen has none", at(S::mail, u""_s), u""_s },
    };
    for (const SectionRow &row : rows)
        QTest::newRow(row.name) << row;
}

void TestTarnShell::resolvedSection()
{
    QFETCH(SectionRow, row);
    QCOMPARE(row.destination.resolvedSection(), row.resolved);
}

// What a destination needs. Each gate is checked both ways: the full access
// opens it, taking away that one thing closes it, and the gate alone opens
// it (so no other app is quietly required).
struct GateRow {
    const char *name;
    TarnDestination destination;
    QString app;
    bool owner = false;
    bool booksOwner = false;
    bool reviewer = false;
};

void TestTarnShell::gates_data()
{
    QTest::addColumn<GateRow>("row");
    using S = TarnScreen;
    const QList<GateRow> rows {
        { "chat", at(S::chat), u"Home"_s },
        { "agent", at(S::agent), u"Home"_s },
        { "agent blocked work", at(S::agent, u"Blocked work"_s), u"Home"_s, false, false, true },
        { "sales", at(S::sales), u"Sales"_s },
        { "work plan", at(S::workPlan), u"Sales"_s },
        { "support", at(S::support), u"Support"_s },
        { "documents", at(S::documents), u"Docs"_s },
        { "documents through an alias", at(S::documents, u"All documents"_s), u"Docs"_s },
        { "documents invoices", at(S::documents, u"Invoices"_s), u"Books"_s, false, true },
        { "documents bank feed", at(S::documents, u"Bank feed"_s), u"Books"_s, false, true },
        { "payments", at(S::payments), u"Payments"_s, true },
        { "kiln", at(S::kiln), u"Kiln"_s },
        { "owner dashboard", at(S::owner), u""_s, true },
        { "company my account", at(S::company), u""_s },
        { "company team", at(S::company, u"Team & access"_s), u""_s, true },
        { "company connections", at(S::company, u"Connections"_s), u""_s, true },
        { "company SOPs", at(S::company, u"SOPs"_s), u"Docs"_s },
        { "company thought board", at(S::company, u"Thought board"_s), u"Overview"_s },
        { "websites", at(S::websites), u"Website"_s },
        { "portals", at(S::portals), u"Clients"_s },
        { "calls", at(S::calls), u"Calls"_s },
        { "shared inbox", at(S::calls, u"Inbox"_s), u"Calls"_s },
        { "market scan", at(S::marketScan), u"Market Scan"_s },
        { "overview", at(S::overview), u"Overview"_s },
        { "schedule", at(S::schedule), u"Schedule"_s },
        { "mail", at(S::mail), u"Mail"_s },
        { "people", at(S::people), u"People"_s },
        { "people payroll", at(S::people, u"Payroll"_s), u"Payroll"_s, true },
    };
    for (const GateRow &row : rows)
        QTest::newRow(row.name) << row;
}

void TestTarnShell::gates()
{
    QFETCH(GateRow, row);
    QVERIFY(TarnShell::canOpen(row.destination, everything()));

    if (!row.app.isEmpty()) {
        TarnAccess without = everything();
        without.apps->removeAll(row.app);
        QVERIFY2(!TarnShell::canOpen(row.destination, without), "opens without its app");
    }
    if (row.owner) {
        TarnAccess without = everything();
        without.owner = false;
        QVERIFY2(!TarnShell::canOpen(row.destination, without), "opens without the owner flag");
    }
    if (row.booksOwner) {
        TarnAccess without = everything();
        without.booksOwner = false;
        QVERIFY2(!TarnShell::canOpen(row.destination, without), "opens without the books-owner flag");
    }
    if (row.reviewer) {
        TarnAccess without = everything();
        without.email = u"tomas@halvard.example"_s;
        QVERIFY2(!TarnShell::canOpen(row.destination, without), "opens for another admin");
    }

    TarnAccess only = everything();
    only.apps = row.app.isEmpty() ? QStringList() : QStringList { row.app };
    only.owner = row.owner;
    only.booksOwner = row.booksOwner;
    if (!row.reviewer)
        only.role.reset();
    QVERIFY2(TarnShell::canOpen(row.destination, only), "needs more than its gate");
}

struct ListRow {
    const char *name;
    TarnDestination destination;
    bool withAbsentList;
    bool withEmptyList;
};

void TestTarnShell::absentAndEmptyAppLists_data()
{
    QTest::addColumn<ListRow>("row");
    using S = TarnScreen;
    const QList<ListRow> rows {
        { "chat", at(S::chat), true, false },
        { "market scan", at(S::marketScan), true, false },
        { "people HR", at(S::people), true, false },
        // The money screens need a flag that no app list grants.
        { "books invoices", at(S::documents, u"Invoices"_s), false, false },
        { "payroll", at(S::people, u"Payroll"_s), false, false },
        { "owner dashboard", at(S::owner), false, false },
        { "company my account", at(S::company), true, true },
        { "company SOPs", at(S::company, u"SOPs"_s), true, false },
        { "company team", at(S::company, u"Team & access"_s), false, false },
    };
    for (const ListRow &row : rows)
        QTest::newRow(row.name) << row;
}

void TestTarnShell::absentAndEmptyAppLists()
{
    QFETCH(ListRow, row);
    TarnAccess access;
    QCOMPARE(TarnShell::canOpen(row.destination, access), row.withAbsentList);
    access.apps = QStringList();
    QCOMPARE(TarnShell::canOpen(row.destination, access), row.withEmptyList);
}

struct PersonRow {
    QString id;
    QString items;
    QString tiles;
};

void TestTarnShell::demoPeople_data()
{
    // Sidebar item keys and work-board tile keys, in order.
    QTest::addColumn<PersonRow>("row");
    const QList<PersonRow> rows {
        { u"p-maren"_s,
            u"pilo owner overview home calls mail schedule sales workplan support docs portals websites marketscan "
            u"kiln finance payments people company"_s,
            u"chat images prospects clients operations marketing"_s },
        { u"p-tomas"_s, u"pilo overview home calls mail schedule sales workplan support docs portals finance company"_s,
            u"chat images prospects clients operations"_s },
        { u"p-priya"_s, u"pilo home calls mail schedule sales workplan support docs company"_s,
            u"chat images prospects operations"_s },
        { u"p-jonah"_s, u"pilo home calls mail support company"_s, u"chat images operations"_s },
        { u"p-sam"_s, u"pilo home mail schedule docs websites marketscan kiln company"_s, u"chat images marketing"_s },
        { u"p-ada"_s, u"sales workplan docs company"_s, u""_s },
    };
    for (const PersonRow &row : rows)
        QTest::addRow("%s", qPrintable(row.id)) << row;
}

void TestTarnShell::demoPeople()
{
    QFETCH(PersonRow, row);
    const TarnAccess access = DemoPeople::person(row.id);
    QCOMPARE(itemKeys(TarnShell::navGroups(access)), row.items.split(u' '));
    QCOMPARE(fieldOf(TarnShell::workBoard(access), &TarnBoardGroup::key), row.tiles.split(u' ', Qt::SkipEmptyParts));

    // Sign-in lets in exactly those with "Home", and home is a place they may open.
    const std::optional<TarnDestination> home = TarnShell::home(access);
    QCOMPARE(home.has_value(), access.has(u"Home"_s));
    if (home)
        QVERIFY(TarnShell::canOpen(*home, access));
}

void TestTarnShell::sidebarShowsExactlyWhatOpens_data()
{
    QTest::addColumn<TarnAccess>("access");
    for (const DemoPeople::Person &person : DemoPeople::all())
        QTest::addRow("%s", qPrintable(person.id)) << person.access;
    TarnAccess payrollOnly;
    payrollOnly.apps = QStringList { u"Home"_s, u"Payroll"_s };
    payrollOnly.owner = true;
    QTest::newRow("owner with payroll but not people") << payrollOnly;
    TarnAccess booksOnly;
    booksOnly.apps = QStringList { u"Home"_s, u"Books"_s };
    booksOnly.booksOwner = true;
    QTest::newRow("books owner without documents") << booksOnly;
    QTest::newRow("absent list, no flags") << TarnAccess();
    QTest::newRow("everything") << everything();
}

void TestTarnShell::sidebarShowsExactlyWhatOpens()
{
    QFETCH(TarnAccess, access);
    const QList<TarnNavGroup> groups = TarnShell::navGroups(access);

    QSet<QString> shown;
    for (const TarnNavGroup &group : groups) {
        QVERIFY(!group.items.isEmpty());
        for (const TarnNavItem &item : group.items) {
            QVERIFY2(TarnShell::canOpen(item.destination, access), qPrintable(item.key));
            QVERIFY2(!shown.contains(item.key), qPrintable(u"item listed twice: "_s + item.key));
            shown.insert(item.key);
            for (const TarnNavChildGroup &childGroup : item.childGroups) {
                QVERIFY(!childGroup.items.isEmpty());
                for (const TarnNavChild &child : childGroup.items) {
                    QVERIFY2(TarnShell::canOpen(child.destination, access), qPrintable(child.label));
                    // Picking a child lights up that child and nothing else.
                    const std::optional<TarnShell::Active> lit = TarnShell::active(groups, child.destination);
                    QVERIFY(lit.has_value());
                    QCOMPARE(lit->item.key, item.key);
                    QCOMPARE(lit->child, child);
                }
            }
        }
    }

    // Every place the person may open has its entry, so the window never
    // shows a page with nothing lit in the sidebar.
    for (const TarnDestination &destination : everyDestination()) {
        const bool opens = TarnShell::canOpen(destination, access);
        const std::optional<TarnShell::Active> lit = TarnShell::active(groups, destination);
        if (opens)
            QVERIFY2(lit.has_value(), qPrintable(destination.screenName() + u' ' + destination.resolvedSection()));
        if (lit && lit->child)
            QVERIFY2(opens, qPrintable(u"closed section listed: "_s + destination.resolvedSection()));
        // The assistant is told a page name that reads back as what the sidebar shows.
        if (opens && destination.screen != TarnScreen::chat) {
            const QString shownName = TarnShell::pageLabel(TarnShell::piloPage(destination));
            QVERIFY2(TarnShell::trail(groups, destination).contains(shownName), qPrintable(shownName));
        }
    }

    const QList<TarnShell::Place> places = TarnShell::places(groups, access);
    for (const TarnShell::Place &p : places)
        QVERIFY2(TarnShell::canOpen(p.destination, access), qPrintable(p.label));
    for (const TarnNavGroup &group : groups) {
        for (const TarnNavItem &item : group.items)
            QVERIFY2(labels(places).contains(item.label), qPrintable(item.label));
    }
    for (const TarnBoardGroup &tile : TarnShell::workBoard(access)) {
        if (tile.open)
            QVERIFY(TarnShell::canOpen(*tile.open, access));
    }
    for (const QString &key : TarnShell::sectionBoards().keys()) {
        for (const TarnBoardGroup &tile : TarnShell::sectionBoard(key, access))
            QVERIFY(!tile.open || TarnShell::canOpen(*tile.open, access));
    }
}

struct TrailRow {
    const char *name;
    QString person;
    TarnDestination destination;
    QStringList trail;
};

void TestTarnShell::trail_data()
{
    QTest::addColumn<TrailRow>("row");
    using S = TarnScreen;
    const QString maren = u"p-maren"_s;
    const QList<TrailRow> rows {
        { "documents default", maren, at(S::documents), { u"Documents"_s, u"Worksheets"_s } },
        { "documents alias", maren, at(S::documents, u"Templates"_s), { u"Documents"_s, u"Worksheets"_s } },
        { "books section on the documents screen", maren, at(S::documents, u"Invoices"_s),
            { u"Books"_s, u"Invoices"_s } },
        { "child named like its item", maren, at(S::calls), { u"Calls"_s } },
        { "section the sidebar does not list", maren, at(S::sales, u"Lost deals"_s), { u"Sales"_s, u"Lost deals"_s } },
        { "payroll through people", maren, at(S::people, u"Payroll"_s), { u"People"_s, u"Payroll"_s } },
        { "a screen with no entry for this person", u"p-priya"_s, at(S::payments), { u"Payments"_s } },
    };
    for (const TrailRow &row : rows)
        QTest::newRow(row.name) << row;
}

void TestTarnShell::trail()
{
    QFETCH(TrailRow, row);
    const QList<TarnNavGroup> groups = TarnShell::navGroups(DemoPeople::person(row.person));
    QCOMPARE(TarnShell::trail(groups, row.destination), row.trail);
}

void TestTarnShell::pageLabel_data()
{
    QTest::addColumn<std::optional<QString>>("stored");
    QTest::addColumn<QString>("shown");
    QTest::newRow("absent") << std::optional<QString>() << u"Chat"_s;
    QTest::newRow("empty") << std::optional<QString>(u""_s) << u"Chat"_s;
    QTest::newRow("Sales") << std::optional<QString>(u"Sales"_s) << u"Work plan"_s;
    QTest::newRow("Docs") << std::optional<QString>(u"Docs"_s) << u"Documents"_s;
    QTest::newRow("other labels pass") << std::optional<QString>(u"Everything"_s) << u"Everything"_s;
    QTest::newRow("exact match only") << std::optional<QString>(u"sales"_s) << u"sales"_s;
    QTest::newRow("no second mapping") << std::optional<QString>(u"Work plan"_s) << u"Work plan"_s;
}

void TestTarnShell::pageLabel()
{
    QFETCH(std::optional<QString>, stored);
    QFETCH(QString, shown);
    QCOMPARE(TarnShell::pageLabel(stored), shown);
}

void TestTarnShell::agentStatusLabel_data()
{
    QTest::addColumn<QString>("status");
    QTest::addColumn<QString>("shown");
    QTest::newRow("queued") << u"queued"_s << u"Waiting to start"_s;
    QTest::newRow("blocked reads as ongoing") << u"blocked"_s << u"Still working"_s;
    QTest::newRow("failed") << u"failed"_s << u"Couldn't finish"_s;
    QTest::newRow("unknown status") << u"cancelled"_s << u"Done"_s;
    QTest::newRow("statuses are exact") << u"Queued"_s << u"Done"_s;
    QTest::newRow("empty") << u""_s << u"Done"_s;
}

void TestTarnShell::agentStatusLabel()
{
    QFETCH(QString, status);
    QFETCH(QString, shown);
    QCOMPARE(TarnShell::agentStatusLabel(status), shown);
}

void TestTarnShell::matchingPlaces_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("prefix before a later word") << u"scan"_s << QStringList { u"Scanner"_s, u"Market Scan"_s };
    QTest::newRow("prefixes keep their order, any case")
        << u"CALL"_s << QStringList { u"Calls"_s, u"Call notes"_s, u"Uncalled calls"_s, u"Recalled items"_s };
    QTest::newRow("word after a symbol") << u"access"_s << QStringList { u"Access log"_s, u"Team & access"_s };
    QTest::newRow("substring only, list order") << u"ink"_s << QStringList { u"Booking links"_s, u"Links"_s };
    QTest::newRow("spaces around the query") << u"  links "_s << QStringList { u"Links"_s, u"Booking links"_s };
    QTest::newRow("spaces inside the query") << u"& acc"_s << QStringList { u"Team & access"_s };
    QTest::newRow("nothing matches") << u"zzz"_s << QStringList();
    QTest::newRow("blank query keeps every place")
        << u"  "_s
        << QStringList { u"Recalled items"_s, u"Calls"_s, u"Market Scan"_s, u"Uncalled calls"_s, u"Call notes"_s,
               u"Scanner"_s, u"Booking links"_s, u"Team & access"_s, u"Access log"_s, u"Links"_s };
}

void TestTarnShell::matchingPlaces()
{
    QFETCH(QString, query);
    QFETCH(QStringList, expected);
    QList<TarnShell::Place> places;
    for (const QString &label : { u"Recalled items"_s, u"Calls"_s, u"Market Scan"_s, u"Uncalled calls"_s,
             u"Call notes"_s, u"Scanner"_s, u"Booking links"_s, u"Team & access"_s, u"Access log"_s, u"Links"_s })
        places.append(place(label));
    QCOMPARE(labels(TarnShell::matchingPlaces(places, query)), expected);
}

void TestTarnShell::sectionTables()
{
    // The per-section tables are looked up by sidebar item key: a key that
    // names no item is a board nobody can reach.
    const QStringList sidebarKeys = itemKeys(TarnShell::navGroups(everything()));
    QCOMPARE(TarnShell::sectionBoards().size(), 7);
    for (const QString &key : TarnShell::sectionBoards().keys()) {
        QVERIFY2(sidebarKeys.contains(key), qPrintable(key));
        QVERIFY2(TarnShell::pageSubtitles().contains(key), qPrintable(key));
    }
    QCOMPARE(TarnShell::pageSubtitles().size(), 7);
}

struct NeighbourRow {
    const char *name;
    QString current;
    qsizetype step;
    std::optional<QString> expected;
};

void TestTarnShell::openRecordNeighbour_data()
{
    QTest::addColumn<NeighbourRow>("row");
    const QList<NeighbourRow> rows {
        { "next", u"b"_s, 1, u"c"_s },
        { "previous", u"b"_s, -1, u"a"_s },
        { "past the end", u"c"_s, 1, std::nullopt },
        { "before the start", u"a"_s, -1, std::nullopt },
        { "not among its siblings", u"z"_s, 1, std::nullopt },
    };
    for (const NeighbourRow &row : rows)
        QTest::newRow(row.name) << row;
}

void TestTarnShell::openRecordNeighbour()
{
    QFETCH(NeighbourRow, row);
    QList<TarnOpenRecord> siblings;
    for (const QString &id : { u"a"_s, u"b"_s, u"c"_s })
        siblings.append({ id, id.toUpper(), {} });
    const TarnOpenRecord record { row.current, row.current.toUpper(), siblings };
    const std::optional<TarnOpenRecord> next = record.neighbour(row.step);
    QCOMPARE(next.has_value(), row.expected.has_value());
    if (next) {
        QCOMPARE(next->id, *row.expected);
        QCOMPARE(next->name, row.expected->toUpper());
        // Stepping on from the neighbour must still work.
        QCOMPARE(next->siblings, siblings);
    }
}

QTEST_APPLESS_MAIN(TestTarnShell)
#include "tst_tarnshell.moc"
