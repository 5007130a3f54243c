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
using ShellTestAccess::keysOf;
using ShellTestAccess::withApps;

namespace {

// Everything a person could be given: every screen's app and the money
// sections' own, both flags, the reviewer.
TarnAccess everything()
{
    TarnAccess access = withApps({ u"Books"_s, u"Payroll"_s }, true, true);
    for (const TarnShellTables::Screen &row : TarnShellTables::screens())
        access.apps->append(row.app);
    access.role = u"admin"_s;
    access.email = TarnAccess::defaultOwnerAddress;
    return access;
}

// Each screen's own page and every place the full sidebar and settings list.
QList<TarnDestination> everyDestination()
{
    QList<TarnDestination> all;
    for (const TarnShellTables::Screen &row : TarnShellTables::screens())
        all.append(at(row.screen));
    for (const TarnShell::Place &place : TarnShell::places(TarnShell::navGroups(everything()), everything()))
        all.append(place.destination);
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
    void gates_data();
    void gates();
    void sidebarShowsExactlyWhatOpens_data();
    void sidebarShowsExactlyWhatOpens();
    void texts_data();
    void texts();
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
        { "names are exact", QStringList { u"Home"_s }, false, false, u"home"_s, false },
        { "books: absent list without the flag", every, true, false, u"Books"_s, false },
        { "books: the flag with an absent list", every, false, true, u"Books"_s, true },
        { "books: the flag but not listed", QStringList { u"Home"_s }, false, true, u"Books"_s, false },
        { "payroll: owner with an absent list", every, true, false, u"Payroll"_s, true },
        { "payroll: listed without the owner flag", QStringList { u"Payroll"_s }, false, true, u"Payroll"_s, false },
        { "payments: listed without the owner flag", QStringList { u"Payments"_s }, false, true, u"Payments"_s, false },
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
        { "people time clock", at(S::people, u"Time clock"_s), u""_s, false, false, true, true },
    };
    for (const GateRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestTarnShell::gates()
{
    QFETCH(GateRow, row);
    QVERIFY(TarnShell::canOpen(row.destination, everything()));
    TarnAccess noApp = everything(), noOwner = everything(), noBooks = everything();
    noApp.apps->removeAll(row.app);
    noOwner.owner = false;
    noBooks.booksOwner = false;
    QVERIFY2(row.app.isEmpty() || !TarnShell::canOpen(row.destination, noApp), "opens without its app");
    QVERIFY2(!row.owner || !TarnShell::canOpen(row.destination, noOwner), "opens without the owner flag");
    QVERIFY2(!row.booksOwner || !TarnShell::canOpen(row.destination, noBooks), "opens without the books flag");

    TarnAccess only = withApps(row.app.isEmpty() ? QStringList() : QStringList { row.app }, row.owner, row.booksOwner);
    QVERIFY2(TarnShell::canOpen(row.destination, only), "needs more than its gate");
    QCOMPARE(TarnShell::canOpen(row.destination, TarnAccess()), row.withAbsentList);
    QCOMPARE(TarnShell::canOpen(row.destination, withApps({})), row.withEmptyList);
}

void TestTarnShell::sidebarShowsExactlyWhatOpens_data()
{
    QTest::addColumn<TarnAccess>("access");
    QTest::addRow("everything") << everything();
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

    for (const TarnBoardGroup &tile : TarnShell::workBoard(access))
        QVERIFY(!tile.open || TarnShell::canOpen(*tile.open, access));
}

// A rule's text for one case, worked out as the row is built, and what it
// should read.
struct TextRow {
    const char *name;
    QString shown;
    QString expected;
};

void TestTarnShell::texts_data()
{
    QTest::addColumn<TextRow>("row");
    using S = TarnScreen;
    using TarnShell::agentStatusLabel;
    using TarnShell::pageLabel;
    const auto trail = [](const TarnDestination &destination, const TarnAccess &access = everything()) {
        return TarnShell::trail(TarnShell::navGroups(access), destination).join(u" / "_s);
    };
    const QList<TextRow> rows {
        { "section: documents without one", at(S::documents).resolvedSection(), u"Worksheets"_s },
        { "section: documents, empty", at(S::documents, u""_s).resolvedSection(), u"Worksheets"_s },
        { "section: documents alias Templates", at(S::documents, u"Templates"_s).resolvedSection(), u"Worksheets"_s },
        { "section: documents alias All documents", at(S::documents, u"All documents"_s).resolvedSection(),
            u"Agreements"_s },
        { "section: aliases belong to documents only", at(S::sales, u"Templates"_s).resolvedSection(), u"Templates"_s },
        { "section: people, empty", at(S::people, u""_s).resolvedSection(), u"HR"_s },
        { "section: chat has no default", at(S::chat).resolvedSection(), u""_s },
        { "trail: documents default", trail(at(S::documents)), u"Documents / Worksheets"_s },
        { "trail: books section on the documents screen", trail(at(S::documents, u"Invoices"_s)),
            u"Books / Invoices"_s },
        { "trail: child named like its item", trail(at(S::calls)), u"Calls"_s },
        { "trail: section the sidebar does not list", trail(at(S::sales, u"Lost deals"_s)), u"Sales / Lost deals"_s },
        { "trail: a screen with no entry for this person", trail(at(S::payments), withApps({ u"Home"_s })),
            u"Payments"_s },
        { "page: absent", pageLabel(std::nullopt), u"Chat"_s },
        { "page: empty", pageLabel(u""_s), u"Chat"_s },
        { "page: Sales", pageLabel(u"Sales"_s), u"Work plan"_s },
        { "page: others pass, exact match only", pageLabel(u"sales"_s), u"sales"_s },
        { "status: queued", agentStatusLabel(u"queued"_s), u"Waiting to start"_s },
        { "status: blocked reads as ongoing", agentStatusLabel(u"blocked"_s), u"Still working"_s },
        { "status: failed", agentStatusLabel(u"failed"_s), u"Couldn't finish"_s },
        { "status: others are done, exact match only", agentStatusLabel(u"Queued"_s), u"Done"_s },
    };
    for (const TextRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestTarnShell::texts()
{
    QFETCH(TextRow, row);
    QCOMPARE(row.shown, row.expected);
}

// Places keyed by their labels, in list order; a query ranks prefixes first, then later words, then
// any other match, each rank in list order.
const QStringList placeLabels { u"Recalled items"_s, u"Calls"_s, u"Uncalled calls"_s, u"Call notes"_s,
    u"Booking links"_s, u"Links"_s };

void TestTarnShell::matchingPlaces_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QStringList>("expected");
    QTest::addRow("ranks, then list order, any case")
        << u"CALL"_s << QStringList { u"Calls"_s, u"Call notes"_s, u"Uncalled calls"_s, u"Recalled items"_s };
    QTest::addRow("substring only") << u"ink"_s << QStringList { u"Booking links"_s, u"Links"_s };
    QTest::addRow("spaces around the query") << u"  links "_s << QStringList { u"Links"_s, u"Booking links"_s };
    QTest::addRow("blank query keeps every place") << u"  "_s << placeLabels;
}

void TestTarnShell::matchingPlaces()
{
    QFETCH(QString, query);
    QFETCH(QStringList, expected);
    QList<TarnShell::Place> places;
    for (const QString &label : placeLabels)
        places.append(
            { .key = label, .label = label, .detail = {}, .symbol = {}, .destination = at(TarnScreen::chat) });
    QCOMPARE(keysOf(TarnShell::matchingPlaces(places, query)), expected);
}

QTEST_APPLESS_MAIN(TestTarnShell)
#include "tst_tarnshell.moc"
