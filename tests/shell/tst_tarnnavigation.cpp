#include "shell/NativeCommandSearch.h"
#include "shell/ShellTestAccess.h"
#include "shell/TarnNavigation.h"

#include <QAbstractItemModelTester>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

using ShellTestAccess::at;
using ShellTestAccess::keysOf;
using ShellTestAccess::withApps;

namespace {

struct Pair {
    QString key;
    QString value;

    friend bool operator==(const Pair &, const Pair &) = default;
};

// "a b2 c": keys a, b, c, with b's value 2.
QList<Pair> pairs(const QString &text)
{
    QList<Pair> rows;
    for (const QString &word : text.split(u' ', Qt::SkipEmptyParts))
        rows.append({ word.left(1), word.mid(1) });
    return rows;
}

// The names of the change signals a model emits while this lives, in order.
class Changes : public QObject {
public:
    explicit Changes(QAbstractItemModel *model)
    {
        const auto note = [&](auto signal, const QString &name) {
            connect(model, signal, this, [this, name] { seen.append(name); });
        };
        note(&QAbstractItemModel::rowsInserted, u"inserted"_s);
        note(&QAbstractItemModel::rowsRemoved, u"removed"_s);
        note(&QAbstractItemModel::rowsMoved, u"moved"_s);
        note(&QAbstractItemModel::dataChanged, u"changed"_s);
        note(&QAbstractItemModel::modelReset, u"reset"_s);
        note(&QAbstractItemModel::layoutChanged, u"layout"_s);
    }

    QStringList seen;
};

const TarnAccess member = withApps({ u"Home"_s, u"Sales"_s, u"Support"_s, u"Docs"_s, u"Calls"_s, u"Mail"_s });

} // namespace

// The navigation state, and the lists drawn from it as models.
class TestTarnNavigation : public QObject {
    Q_OBJECT

private slots:
    void init();
    void openMovesAndCounts();
    void chatCreateRequestsAreDistinct();
    void signedOutResetsEverything();
    void sidebarCollapsedIsRemembered();
    void keyedRows_data();
    void keyedRows();
    void sidebarFollowsPlaceAndAccess();
    void workBoardFollowsAccess();
    void searchFollowsQuery();
    void foundRecordsFollowTheirQuery();

private:
    [[nodiscard]] std::unique_ptr<QSettings> settings() const
    {
        return std::make_unique<QSettings>(m_dir->filePath(u"prefs.ini"_s), QSettings::IniFormat);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<QSettings> m_prefs;
    std::unique_ptr<TarnNavigation> m_navigation;
};

void TestTarnNavigation::init()
{
    m_navigation.reset();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_prefs = settings();
    m_navigation = std::make_unique<TarnNavigation>(m_prefs.get());
}

void TestTarnNavigation::openMovesAndCounts()
{
    TarnNavigation &navigation = *m_navigation;
    navigation.setAccess(member);
    QSignalSpy moved(&navigation, &TarnNavigation::destinationChanged);

    // QML names screens by raw value; the C++ enumerator's spelling is not one.
    QVERIFY(!navigation.openScreen(u"workPlan"_s));
    QVERIFY(navigation.openScreen(u"documents"_s, u"Agreements"_s));
    QCOMPARE(navigation.destination(), at(TarnScreen::documents, u"Agreements"_s));
    // Opening where the window already is still counts, so screens can react
    // to a repeated open, but moves nothing; a refused open changes nothing.
    QVERIFY(navigation.open(at(TarnScreen::documents, u"Agreements"_s)));
    QVERIFY(!navigation.open(at(TarnScreen::payments)));
    QCOMPARE(navigation.openCount(), 2);
    QCOMPARE(moved.count(), 1);
    QCOMPARE(navigation.destination(), at(TarnScreen::documents, u"Agreements"_s));
}

void TestTarnNavigation::chatCreateRequestsAreDistinct()
{
    TarnNavigation &navigation = *m_navigation;
    navigation.setAccess(member);
    QSignalSpy created(&navigation, &TarnNavigation::chatCreateChanged);

    QVERIFY(navigation.requestChatCreate(u"channel"_s));
    const TarnChatCreateRequest first = navigation.chatCreate().value();
    QVERIFY(navigation.requestChatCreate(u"channel"_s));
    // QML reads the request through typed properties.
    QVERIFY(navigation.property("hasChatCreate").toBool());
    const auto second = navigation.property("chatCreate").value<TarnChatCreateRequest>();
    QCOMPARE(second.mode, u"channel"_s);
    QVERIFY(first.id != second.id);
    QCOMPARE(created.count(), 2);
    QCOMPARE(navigation.destination().screen, TarnScreen::chat);

    navigation.setAccess(withApps({ u"Sales"_s }));
    navigation.clearChatCreate();
    QVERIFY(!navigation.requestChatCreate(u"dm"_s));
    QVERIFY(!navigation.property("hasChatCreate").toBool());
}

void TestTarnNavigation::signedOutResetsEverything()
{
    TarnNavigation &navigation = *m_navigation;
    navigation.setAccess(withApps({ u"Home"_s, u"Mail"_s }));
    QVERIFY(navigation.requestChatCreate(u"channel"_s));
    QVERIFY(navigation.open(at(TarnScreen::mail)));
    navigation.setPendingChatDraft(u"draft"_s);
    navigation.setPendingChatSearch(u"search"_s);
    navigation.setPendingAgentDraft(u"ask"_s);
    navigation.setPiloShowHistory(true);
    navigation.reloadChat();
    navigation.setSearchOpen(true);
    navigation.setAppearanceOpen(true);
    navigation.setBackground(u"dusk"_s);
    navigation.setOpenRecord(TarnOpenRecord { u"r1"_s, u"Record"_s, {} });
    navigation.setPiloPanelOpen(true);
    navigation.setSidebarCollapsed(true);

    // Every NOTIFY signal except the sidebar's must fire, or a bound view
    // keeps stale state. The lists are models that empty themselves.
    const QMetaObject *meta = navigation.metaObject();
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    QStringList names;
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (property.isConstant() || QLatin1StringView(property.name()) == "sidebarCollapsed"_L1)
            continue;
        spies.push_back(std::make_unique<QSignalSpy>(&navigation, property.notifySignal()));
        names.append(QString::fromLatin1(property.name()));
    }

    navigation.signedOut();

    for (std::size_t i = 0; i < spies.size(); ++i)
        QVERIFY2(spies[i]->count() >= 1, qPrintable(names.at(static_cast<qsizetype>(i))));
    // Back to exactly what a fresh start shows, the stored sidebar state included.
    const TarnNavigation fresh(m_prefs.get());
    for (const QString &name : std::as_const(names))
        QVERIFY2(navigation.property(qPrintable(name)) == fresh.property(qPrintable(name)), qPrintable(name));
    QVERIFY(navigation.sidebarCollapsed());
    QCOMPARE(navigation.sidebar()->rowCount(), 0);
    QCOMPARE(navigation.workBoardModel()->rowCount(), 0);
    // The next person starts with nothing open to them until their access arrives.
    QVERIFY(!navigation.open(at(TarnScreen::mail)));
}

void TestTarnNavigation::sidebarCollapsedIsRemembered()
{
    QVERIFY(!m_navigation->sidebarCollapsed());
    QSignalSpy changed(m_navigation.get(), &TarnNavigation::sidebarCollapsedChanged);
    m_navigation->setSidebarCollapsed(true);
    m_navigation->setSidebarCollapsed(true);
    QCOMPARE(changed.count(), 1);

    // A later start, with its own settings object, reads what was written,
    // either way.
    const auto prefs = settings();
    TarnNavigation later(prefs.get());
    QVERIFY(later.sidebarCollapsed());
    later.setSidebarCollapsed(false);
    QVERIFY(!TarnNavigation(settings().get()).sidebarCollapsed());
}

struct KeyedRow {
    const char *name;
    QString from;
    QString to;
    // Signals expected: inserted, removed, moved, changed; -1 for any.
    std::array<int, 4> signalCounts;
};

void TestTarnNavigation::keyedRows_data()
{
    QTest::addColumn<KeyedRow>("row");
    const QList<KeyedRow> rows {
        { "nothing changes", u"a b1 c"_s, u"a b1 c"_s, { 0, 0, 0, 0 } },
        { "a value changes", u"a b1 c"_s, u"a b2 c"_s, { 0, 0, 0, 1 } },
        { "rows come at both ends", u"b c"_s, u"a b c d e"_s, { 2, 0, 0, 0 } },
        { "a run of rows goes", u"a b c d"_s, u"a d"_s, { 0, 1, 0, 0 } },
        { "the last row moves to the front", u"a b c"_s, u"c a b"_s, { 0, 0, 1, 0 } },
        { "everything at once", u"a1 b c d e"_s, u"e f a2 c"_s, { -1, -1, -1, 1 } },
        { "to nothing", u"a b"_s, u""_s, { 0, 1, 0, 0 } },
    };
    for (const KeyedRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestTarnNavigation::keyedRows()
{
    QFETCH(KeyedRow, row);
    NativeKeyedListModel<Pair> model({ { "pair", [](const Pair &pair) -> QString { return pair.key + pair.value; } } });
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setRows(pairs(row.from));
    QList<QPersistentModelIndex> kept;
    for (int i = 0; i < model.rowCount(); ++i)
        kept.append(model.index(i));
    const Changes changes(&model);

    model.setRows(pairs(row.to));

    QCOMPARE(model.rows(), pairs(row.to));
    const std::array names { u"inserted"_s, u"removed"_s, u"moved"_s, u"changed"_s };
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (row.signalCounts.at(i) >= 0)
            QCOMPARE(changes.seen.count(names.at(i)), row.signalCounts.at(i));
    }
    QVERIFY(!changes.seen.contains(u"reset"_s) && !changes.seen.contains(u"layout"_s));
    // Views keep their place: an index on a kept row follows it, one on a
    // removed row is gone.
    const QStringList before = keysOf(pairs(row.from)), after = keysOf(model.rows());
    for (qsizetype i = 0; i < before.size(); ++i)
        QCOMPARE(kept.at(i).row(), int(after.indexOf(before.at(i))));
}

void TestTarnNavigation::sidebarFollowsPlaceAndAccess()
{
    NativeSidebarModel &sidebar = *m_navigation->sidebar();
    QAbstractItemModelTester tester(&sidebar, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto lit = [&] {
        QStringList keys;
        for (const TarnSidebarRow &line : sidebar.rows()) {
            if (line.lit)
                keys.append(line.key);
        }
        return keys;
    };
    m_navigation->setAccess(member);
    QVERIFY(m_navigation->openHome());
    QCOMPARE(lit(), QStringList({ u"pilo"_s, u"pilo/newchat"_s }));
    QCOMPARE(sidebar.rows().at(sidebar.litEnd()).key, u"pilo/history"_s);

    // Another item's section: its sections come in under it, the old ones go,
    // row by row.
    const Changes moved(&sidebar);
    QVERIFY(m_navigation->openScreen(u"documents"_s, u"Agreements"_s));
    QCOMPARE(lit(), QStringList({ u"docs"_s, u"docs/agreements"_s }));
    const QStringList keys = keysOf(sidebar.rows());
    QVERIFY(!keys.contains(u"pilo/newchat"_s));
    QCOMPARE(keys.mid(keys.indexOf(u"docs"_s), 6),
        QStringList({ u"docs"_s, u"docs/group/Documents"_s, u"docs/worksheets"_s, u"docs/agreements"_s,
            u"docs/proposals"_s, u"docs/group/Signing"_s }));
    QCOMPARE(sidebar.rows().at(keys.indexOf(u"docs/group/Signing"_s)).kind, TarnSidebarRow::Kind::sectionHeading);
    QVERIFY(moved.seen.contains(u"inserted"_s) && moved.seen.contains(u"removed"_s));

    // A new access that draws the same sidebar changes nothing.
    TarnAccess renamed = member;
    renamed.role = u"member"_s;
    const Changes quiet(&sidebar);
    m_navigation->setAccess(renamed);
    QCOMPARE(quiet.seen, QStringList());

    // Collapsed, only the items stay; a line opens its place, a heading nothing.
    m_navigation->setSidebarCollapsed(true);
    QVERIFY(std::ranges::all_of(
        sidebar.rows(), [](const TarnSidebarRow &line) { return line.kind == TarnSidebarRow::Kind::item; }));
    m_navigation->setSidebarCollapsed(false);
    QVERIFY(!sidebar.open(int(keysOf(sidebar.rows()).indexOf(u"group/Work"_s))));
    QVERIFY(sidebar.open(int(keysOf(sidebar.rows()).indexOf(u"sales"_s))));
    QCOMPARE(m_navigation->destination().screen, TarnScreen::sales);
}

void TestTarnNavigation::workBoardFollowsAccess()
{
    NativeBoardModel &board = *m_navigation->workBoardModel();
    QAbstractItemModelTester tester(&board, QAbstractItemModelTester::FailureReportingMode::Fatal);
    m_navigation->setAccess(member);
    QCOMPARE(keysOf(board.rows()), keysOf(TarnShell::workBoard(member)));

    // A tile in the middle comes in alone.
    const TarnAccess clients = withApps({ u"Home"_s, u"Sales"_s, u"Support"_s, u"Clients"_s });
    const Changes grown(&board);
    m_navigation->setAccess(clients);
    QCOMPARE(keysOf(board.rows()), keysOf(TarnShell::workBoard(clients)));
    QCOMPARE(grown.seen, QStringList({ u"inserted"_s }));

    const Changes quiet(&board);
    m_navigation->setAccess(withApps({ u"Home"_s, u"Sales"_s, u"Support"_s, u"Clients"_s, u"Mail"_s }));
    QCOMPARE(quiet.seen, QStringList());

    QVERIFY(!board.open(int(keysOf(board.rows()).indexOf(u"images"_s))));
    QVERIFY(board.open(int(keysOf(board.rows()).indexOf(u"prospects"_s))));
    QCOMPARE(m_navigation->destination().resolvedSection(), u"Lead Generation"_s);
}

void TestTarnNavigation::searchFollowsQuery()
{
    NativeCommandSearch search(*m_navigation);
    QAbstractItemModelTester tester(&search, QAbstractItemModelTester::FailureReportingMode::Fatal);
    m_navigation->setAccess(member);
    search.setQuery(u"in"_s);
    QCOMPARE(keysOf(search.rows()).constFirst(), u"calls/inbox"_s);
    QVERIFY(keysOf(search.rows()).contains(u"sales/pipeline"_s));
    search.move(1);
    QCOMPARE(search.currentIndex(), 1);

    // Narrowing only takes rows away, and starts again from the best match.
    const Changes narrowed(&search);
    search.setQuery(u"inb"_s);
    QCOMPARE(keysOf(search.rows()), QStringList({ u"calls/inbox"_s }));
    QCOMPARE(narrowed.seen.count(u"removed"_s), narrowed.seen.size());
    QCOMPARE(search.currentIndex(), 0);

    const Changes quiet(&search);
    QSignalSpy highlight(&search, &NativeCommandSearch::currentIndexChanged);
    search.setQuery(u" inb "_s);
    QCOMPARE(quiet.seen, QStringList());
    QCOMPARE(highlight.count(), 0);

    QVERIFY(search.activate());
    QCOMPARE(m_navigation->destination().resolvedSection(), u"Inbox"_s);
}

void TestTarnNavigation::foundRecordsFollowTheirQuery()
{
    NativeCommandSearch search(*m_navigation);
    m_navigation->setAccess(member);
    const TarnDestination customers { .screen = TarnScreen::sales, .section = u"Customers"_s };
    const NativeCommandSearch::Found lena { .place = { .key = u"customer:c-1"_s,
                                                .label = u"Lena Park"_s,
                                                .detail = u"Customers"_s,
                                                .symbol = u"person.crop.circle"_s,
                                                .destination = customers },
        .record = { .id = u"c-1"_s, .name = u"Lena Park"_s, .siblings = {} } };

    search.setQuery(u"le"_s);
    const QStringList places = keysOf(search.rows());
    // An answer for a query typed over is dropped.
    search.setFound(u"l"_s, { lena });
    QCOMPARE(keysOf(search.rows()), places);
    search.setFound(u"le"_s, { lena });
    QCOMPARE(keysOf(search.rows()), places + QStringList { u"customer:c-1"_s });

    QVERIFY(search.activate(int(places.size())));
    QCOMPARE(m_navigation->destination().resolvedSection(), u"Customers"_s);
    QCOMPARE(m_navigation->openRecord().value_or(TarnOpenRecord()).id, u"c-1"_s);

    // The next query starts from the places alone.
    search.setQuery(u"lea"_s);
    QVERIFY(!keysOf(search.rows()).contains(u"customer:c-1"_s));
}

QTEST_GUILESS_MAIN(TestTarnNavigation)
#include "tst_tarnnavigation.moc"
