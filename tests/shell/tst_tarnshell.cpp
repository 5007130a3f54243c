#include "service/TarnDecodeError.h"
#include "service/TarnJSONObject.h"
#include "service/TarnSession.h"
#include "shell/ShellTestAccess.h"
#include "shell/TarnShell.h"
#include "shell/TarnShellTables.h"

#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

using ShellTestAccess::at;
using ShellTestAccess::withApps;

namespace {

// Everything a person could be given: every app, both flags, the reviewer.
TarnAccess everything()
{
    TarnAccess access = withApps({ u"Home"_s, u"Sales"_s, u"Support"_s, u"Docs"_s, u"Books"_s, u"Payments"_s,
                                     u"Payroll"_s, u"Kiln"_s, u"Website"_s, u"Clients"_s, u"Calls"_s, u"Market Scan"_s,
                                     u"Overview"_s, u"Schedule"_s, u"Mail"_s, u"People"_s },
        true, true);
    access.role = u"admin"_s;
    access.email = TarnAccess::defaultOwnerAddress;
    return access;
}

// Each screen's own page and every section the full sidebar lists.
QList<TarnDestination> everyDestination()
{
    QList<TarnDestination> all;
    for (const TarnShellTables::Screen &row : TarnShellTables::screens())
        all.append(at(row.screen));
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

} // namespace

class TestTarnShell : public QObject {
    Q_OBJECT

private slots:
    void has_data();
    void has();
    void reviewsBlockedWork_data();
    void reviewsBlockedWork();
    void fromSessionKeepsAnEmptyAppList();
    void resolvedSection_data();
    void resolvedSection();
    void gates_data();
    void gates();
    void sidebarShowsExactlyWhatOpens_data();
    void sidebarShowsExactlyWhatOpens();
    void trail_data();
    void trail();
    void labels_data();
    void labels();
    void matchingPlaces_data();
    void matchingPlaces();
};

struct HasRow {
    const char *name;
    std::optional<QStringList> apps;
    bool owner;
    bool booksOwner;
    QString app;
    bool allowed;
};

void TestTarnShell::has_data()
{
    QTest::addColumn<HasRow>("row");
    const std::optional<QStringList> every;
    const QList<HasRow> rows {
        { "no app name passes an empty list", QStringList(), false, false, u""_s, true },
        { "absent list allows a plain app", every, false, false, u"Kiln"_s, true },
        { "empty list refuses a plain app", QStringList(), false, false, u"Home"_s, false },
        { "listed app", QStringList { u"Home"_s }, false, false, u"Home"_s, true },
        { "names are exact", QStringList { u"Home"_s }, false, false, u"home"_s, false },
        { "books: absent list without the flag", every, true, false, u"Books"_s, false },
        { "books: the flag with an absent list", every, false, true, u"Books"_s, true },
        { "books: the flag but not listed", QStringList { u"Home"_s }, false, true, u"Books"_s, false },
        { "payroll: owner with an absent list", every, true, false, u"Payroll"_s, true },
        { "payroll: books owner is not the owner", every, false, true, u"Payroll"_s, false },
        { "payroll: listed without the owner flag", QStringList { u"Payroll"_s }, false, true, u"Payroll"_s, false },
        { "payments: owner but only payroll listed", QStringList { u"Payroll"_s }, true, true, u"Payments"_s, false },
    };
    for (const HasRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestTarnShell::has()
{
    QFETCH(HasRow, row);
    TarnAccess access;
    access.apps = row.apps;
    access.owner = row.owner;
    access.booksOwner = row.booksOwner;
    QCOMPARE(access.has(row.app), row.allowed);
}

struct ReviewRow {
    const char *name;
    std::optional<QString> role;
    QString email;
    QString ownerAddress;
    bool reviews;
};

void TestTarnShell::reviewsBlockedWork_data()
{
    QTest::addColumn<ReviewRow>("row");
    const QString maren = TarnAccess::defaultOwnerAddress;
    const QList<ReviewRow> rows {
        { "the owner's admin account", u"admin"_s, maren, maren, true },
        { "email in capitals", u"admin"_s, u"Maren@Halvard.Example"_s, maren, true },
        { "role is exact", u"Admin"_s, maren, maren, false },
        { "another admin", u"admin"_s, u"tomas@halvard.example"_s, maren, false },
        { "another deployment's owner", u"admin"_s, u"boss@elsewhere.example"_s, u"boss@elsewhere.example"_s, true },
        { "no address configured", u"admin"_s, u""_s, u""_s, false },
    };
    for (const ReviewRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestTarnShell::reviewsBlockedWork()
{
    QFETCH(ReviewRow, row);
    TarnAccess access;
    access.role = row.role;
    access.email = row.email;
    access.ownerAddress = row.ownerAddress;
    QCOMPARE(access.reviewsBlockedWork(), row.reviews);
    // Only the reviewer may open the blocked work at all.
    const TarnDestination blocked { .screen = TarnScreen::agent, .section = u"Blocked work"_s };
    QCOMPARE(TarnShell::canOpen(blocked, access), row.reviews);
}

void TestTarnShell::fromSessionKeepsAnEmptyAppList()
{
    // A session always carries its list; an empty one must not turn into
    // "every app", which is what an absent list means.
    const auto access
        = [](const QByteArray &answer) { return TarnAccess::fromSession(TarnJSON::decode<TarnSession>(answer)); };
    const TarnAccess none
        = access(R"({"id":"p","name":"N","email":"n@x","csrf":"c","apps":[],"owner":null,"books_owner":null})");
    QVERIFY(none.apps.has_value() && none.apps->isEmpty());
    QVERIFY(!none.owner && !none.booksOwner && !none.role.has_value());
    QVERIFY(!TarnShell::home(none).has_value());
    QVERIFY_THROWS_EXCEPTION(TarnDecodeError, access(R"({"id":"p","name":"N","email":"n@x","csrf":"c"})"));
}

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
        { "chat has no default", at(S::chat), u""_s },
    };
    for (const SectionRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestTarnShell::resolvedSection()
{
    QFETCH(SectionRow, row);
    QCOMPARE(row.destination.resolvedSection(), row.resolved);
}

// What a destination needs. Each gate is checked both ways: the full access
// opens it, taking away that one thing closes it, and the gate alone opens
// it (so no other app is quietly required). The money screens need a flag
// that no app list grants, so neither an absent nor an empty list opens them.
struct GateRow {
    const char *name;
    TarnDestination destination;
    QString app;
    bool owner;
    bool booksOwner;
    bool withAbsentList;
    bool withEmptyList;
};

void TestTarnShell::gates_data()
{
    QTest::addColumn<GateRow>("row");
    using S = TarnScreen;
    const QList<GateRow> rows {
        { "chat", at(S::chat), u"Home"_s, false, false, true, false },
        { "documents invoices", at(S::documents, u"Invoices"_s), u"Books"_s, false, true, false, false },
        { "owner dashboard", at(S::owner), u""_s, true, false, false, false },
        { "company my account", at(S::company), u""_s, false, false, true, true },
        { "company team", at(S::company, u"Team & access"_s), u""_s, true, false, false, false },
        { "company SOPs", at(S::company, u"SOPs"_s), u"Docs"_s, false, false, true, false },
        { "people payroll", at(S::people, u"Payroll"_s), u"Payroll"_s, true, false, false, false },
    };
    for (const GateRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestTarnShell::gates()
{
    QFETCH(GateRow, row);
    QVERIFY(TarnShell::canOpen(row.destination, everything()));
    TarnAccess without = everything();
    without.apps->removeAll(row.app);
    QVERIFY2(row.app.isEmpty() || !TarnShell::canOpen(row.destination, without), "opens without its app");
    without = everything();
    without.owner = false;
    QVERIFY2(!row.owner || !TarnShell::canOpen(row.destination, without), "opens without the owner flag");
    without = everything();
    without.booksOwner = false;
    QVERIFY2(!row.booksOwner || !TarnShell::canOpen(row.destination, without), "opens without the books flag");

    TarnAccess only = withApps(row.app.isEmpty() ? QStringList() : QStringList { row.app }, row.owner, row.booksOwner);
    QVERIFY2(TarnShell::canOpen(row.destination, only), "needs more than its gate");
    QCOMPARE(TarnShell::canOpen(row.destination, TarnAccess()), row.withAbsentList);
    QCOMPARE(TarnShell::canOpen(row.destination, withApps({})), row.withEmptyList);
}

void TestTarnShell::sidebarShowsExactlyWhatOpens_data()
{
    QTest::addColumn<TarnAccess>("access");
    QTest::addRow("everything") << everything();
    QTest::addRow("member") << withApps({ u"Home"_s, u"Sales"_s, u"Docs"_s, u"Calls"_s, u"Mail"_s });
    QTest::addRow("owner with payroll but not people") << withApps({ u"Home"_s, u"Payroll"_s }, true);
    QTest::addRow("books owner without documents") << withApps({ u"Home"_s, u"Books"_s }, false, true);
    QTest::addRow("absent list, no flags") << TarnAccess();
    QTest::addRow("empty list") << withApps({});
}

void TestTarnShell::sidebarShowsExactlyWhatOpens()
{
    QFETCH(TarnAccess, access);
    const QList<TarnNavGroup> groups = TarnShell::navGroups(access);
    QStringList placeLabels;
    for (const TarnShell::Place &place : TarnShell::places(groups, access)) {
        QVERIFY2(TarnShell::canOpen(place.destination, access), qPrintable(place.label));
        placeLabels.append(place.label);
    }

    QSet<QString> shown;
    for (const TarnNavGroup &group : groups) {
        QVERIFY(!group.items.isEmpty());
        for (const TarnNavItem &item : group.items) {
            QVERIFY2(TarnShell::canOpen(item.destination, access), qPrintable(item.key));
            QVERIFY2(!shown.contains(item.key), qPrintable(u"item listed twice: "_s + item.key));
            shown.insert(item.key);
            QVERIFY2(placeLabels.contains(item.label), qPrintable(u"not searchable: "_s + item.key));
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
            for (const TarnBoardGroup &tile : TarnShell::sectionBoard(item.key, access))
                QVERIFY2(!tile.open || TarnShell::canOpen(*tile.open, access), qPrintable(tile.key));
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

    QCOMPARE(TarnShell::home(access).has_value(), access.has(u"Home"_s));
    for (const TarnBoardGroup &tile : TarnShell::workBoard(access))
        QVERIFY(!tile.open || TarnShell::canOpen(*tile.open, access));
}

struct TrailRow {
    const char *name;
    TarnAccess access;
    TarnDestination destination;
    QStringList trail;
};

void TestTarnShell::trail_data()
{
    QTest::addColumn<TrailRow>("row");
    using S = TarnScreen;
    const TarnAccess all = everything();
    const QList<TrailRow> rows {
        { "documents default", all, at(S::documents), { u"Documents"_s, u"Worksheets"_s } },
        { "books section on the documents screen", all, at(S::documents, u"Invoices"_s),
            { u"Books"_s, u"Invoices"_s } },
        { "child named like its item", all, at(S::calls), { u"Calls"_s } },
        { "section the sidebar does not list", all, at(S::sales, u"Lost deals"_s), { u"Sales"_s, u"Lost deals"_s } },
        { "a screen with no entry for this person", withApps({ u"Home"_s }), at(S::payments), { u"Payments"_s } },
    };
    for (const TrailRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestTarnShell::trail()
{
    QFETCH(TrailRow, row);
    QCOMPARE(TarnShell::trail(TarnShell::navGroups(row.access), row.destination), row.trail);
}

struct LabelRow {
    const char *name;
    QString (*label)(const std::optional<QString> &);
    std::optional<QString> stored;
    QString shown;
};

void TestTarnShell::labels_data()
{
    QTest::addColumn<LabelRow>("row");
    const auto page = [](const std::optional<QString> &stored) { return TarnShell::pageLabel(stored); };
    const auto status
        = [](const std::optional<QString> &stored) { return TarnShell::agentStatusLabel(stored.value_or(QString())); };
    const QList<LabelRow> rows {
        { "page: absent", page, std::nullopt, u"Chat"_s },
        { "page: empty", page, u""_s, u"Chat"_s },
        { "page: Sales", page, u"Sales"_s, u"Work plan"_s },
        { "page: other labels pass", page, u"Everything"_s, u"Everything"_s },
        { "page: exact match only", page, u"sales"_s, u"sales"_s },
        { "page: no second mapping", page, u"Work plan"_s, u"Work plan"_s },
        { "status: queued", status, u"queued"_s, u"Waiting to start"_s },
        { "status: blocked reads as ongoing", status, u"blocked"_s, u"Still working"_s },
        { "status: failed", status, u"failed"_s, u"Couldn't finish"_s },
        { "status: unknown", status, u"cancelled"_s, u"Done"_s },
        { "status: exact match only", status, u"Queued"_s, u"Done"_s },
    };
    for (const LabelRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestTarnShell::labels()
{
    QFETCH(LabelRow, row);
    QCOMPARE(row.label(row.stored), row.shown);
}

void TestTarnShell::matchingPlaces_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QStringList>("expected");
    QTest::addRow("prefix before a later word") << u"scan"_s << QStringList { u"Scanner"_s, u"Market Scan"_s };
    QTest::addRow("prefixes keep their order, any case")
        << u"CALL"_s << QStringList { u"Calls"_s, u"Call notes"_s, u"Uncalled calls"_s, u"Recalled items"_s };
    QTest::addRow("word after a symbol") << u"access"_s << QStringList { u"Access log"_s, u"Team & access"_s };
    QTest::addRow("substring only, list order") << u"ink"_s << QStringList { u"Booking links"_s, u"Links"_s };
    QTest::addRow("spaces around the query") << u"  links "_s << QStringList { u"Links"_s, u"Booking links"_s };
    QTest::addRow("nothing matches") << u"zzz"_s << QStringList();
    QTest::addRow("blank query keeps every place")
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
        places.append(
            { .key = label, .label = label, .detail = {}, .symbol = {}, .destination = at(TarnScreen::chat) });
    QStringList found;
    for (const TarnShell::Place &place : TarnShell::matchingPlaces(places, query))
        found.append(place.label);
    QCOMPARE(found, expected);
}

QTEST_APPLESS_MAIN(TestTarnShell)
#include "tst_tarnshell.moc"
