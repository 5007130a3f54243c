#include "shell/DemoPeople.h"

#include "shell/TarnNavigation.h"
#include "shell/TarnShell.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

TarnDestination at(TarnScreen screen, std::optional<QString> section = std::nullopt)
{
    return { .screen = screen, .section = std::move(section) };
}

} // namespace

class TestTarnNavigation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void open_data();
    void open();
    void openCountsRepeatedOpens();
    void openScreenByRawValue();
    void chatCreateRequestsAreDistinct();
    void signedOutResetsEverything();
    void sidebarPreference_data();
    void sidebarPreference();

private:
    [[nodiscard]] std::unique_ptr<QSettings> settings() const
    {
        return std::make_unique<QSettings>(m_dir->filePath(u"prefs.ini"_s), QSettings::IniFormat);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestTarnNavigation::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

struct OpenRow {
    const char *name;
    QString person;
    TarnDestination destination;
    bool opens;
};

void TestTarnNavigation::open_data()
{
    QTest::addColumn<OpenRow>("row");
    using S = TarnScreen;
    const QList<OpenRow> rows {
        { "home for a member", u"p-priya"_s, at(S::agent), true },
        { "nothing for no one", u""_s, at(S::company), false },
        { "a gated screen the person lacks", u"p-priya"_s, at(S::payments), false },
        { "books for a books owner", u"p-tomas"_s, at(S::documents, u"Invoices"_s), true },
        { "owner dashboard for the owner", u"p-maren"_s, at(S::owner), true },
        { "chat without Home", u"p-ada"_s, at(S::chat), false },
    };
    for (const OpenRow &row : rows)
        QTest::newRow(row.name) << row;
}

void TestTarnNavigation::open()
{
    QFETCH(OpenRow, row);
    const auto prefs = settings();
    TarnNavigation navigation(prefs.get());
    if (!row.person.isEmpty())
        navigation.setAccess(DemoPeople::person(row.person));
    QSignalSpy moved(&navigation, &TarnNavigation::destinationChanged);
    QSignalSpy counted(&navigation, &TarnNavigation::openCountChanged);
    const TarnDestination before = navigation.destination();

    QCOMPARE(navigation.open(row.destination), row.opens);
    QCOMPARE(navigation.destination(), row.opens ? row.destination : before);
    QCOMPARE(navigation.openCount(), row.opens ? 1 : 0);
    QCOMPARE(moved.count(), row.opens ? 1 : 0);
    QCOMPARE(counted.count(), row.opens ? 1 : 0);
}

void TestTarnNavigation::openCountsRepeatedOpens()
{
    const auto prefs = settings();
    TarnNavigation navigation(prefs.get());
    navigation.setAccess(DemoPeople::person(u"p-jonah"_s));
    QSignalSpy moved(&navigation, &TarnNavigation::destinationChanged);
    QSignalSpy counted(&navigation, &TarnNavigation::openCountChanged);

    QVERIFY(navigation.open(at(TarnScreen::support)));
    QVERIFY(navigation.open(at(TarnScreen::support)));
    QCOMPARE(navigation.openCount(), 2);
    QCOMPARE(counted.count(), 2);
    QCOMPARE(moved.count(), 1);

    // A refused open between them leaves both where they were.
    QVERIFY(!navigation.open(at(TarnScreen::sales)));
    QCOMPARE(navigation.openCount(), 2);
    QCOMPARE(navigation.destination(), at(TarnScreen::support));
}

void TestTarnNavigation::openScreenByRawValue()
{
    const auto prefs = settings();
    TarnNavigation navigation(prefs.get());
    navigation.setAccess(DemoPeople::person(u"p-priya"_s));
    // QML names screens by raw value; the C++ enumerator's spelling is not one.
    QVERIFY(!navigation.openScreen(u"workPlan"_s));
    QVERIFY(navigation.openScreen(u"workplan"_s));
    QCOMPARE(navigation.destination(), at(TarnScreen::workPlan));
    QVERIFY(navigation.openScreen(u"documents"_s, u"Agreements"_s));
    QCOMPARE(navigation.destination(), at(TarnScreen::documents, u"Agreements"_s));
}

void TestTarnNavigation::chatCreateRequestsAreDistinct()
{
    const auto prefs = settings();
    TarnNavigation navigation(prefs.get());
    navigation.setAccess(DemoPeople::person(u"p-priya"_s));
    QSignalSpy created(&navigation, &TarnNavigation::chatCreateChanged);

    QVERIFY(navigation.requestChatCreate(u"channel"_s));
    const TarnChatCreateRequest first = navigation.chatCreate().value();
    QVERIFY(navigation.requestChatCreate(u"channel"_s));
    const TarnChatCreateRequest second = navigation.chatCreate().value();
    QCOMPARE(second.mode, u"channel"_s);
    QVERIFY(first.id != second.id);
    QCOMPARE(created.count(), 2);
    QCOMPARE(navigation.destination().screen, TarnScreen::chat);

    navigation.setAccess(DemoPeople::person(u"p-ada"_s));
    navigation.clearChatCreate();
    QVERIFY(!navigation.requestChatCreate(u"dm"_s));
    QVERIFY(!navigation.chatCreate().has_value());
}

void TestTarnNavigation::signedOutResetsEverything()
{
    const auto prefs = settings();
    TarnNavigation navigation(prefs.get());
    navigation.setAccess(DemoPeople::person(u"p-maren"_s));
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

    // Every NOTIFY signal except the sidebar's must fire, or a bound view keeps stale state.
    const QMetaObject *meta = navigation.metaObject();
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    QStringList names;
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (QLatin1StringView(property.name()) == "sidebarCollapsed"_L1)
            continue;
        spies.push_back(std::make_unique<QSignalSpy>(&navigation, property.notifySignal()));
        names.append(QString::fromLatin1(property.name()));
    }

    navigation.signedOut();

    for (std::size_t i = 0; i < spies.size(); ++i)
        QVERIFY2(spies[i]->count() >= 1, qPrintable(names.at(static_cast<qsizetype>(i))));
    // Back to exactly what a fresh start shows, the stored sidebar state included.
    const TarnNavigation fresh(prefs.get());
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const char *name = meta->property(i).name();
        QVERIFY2(navigation.property(name) == fresh.property(name), name);
    }
    QVERIFY(navigation.sidebarCollapsed());
    // The next person starts with nothing open to them until their access arrives.
    QVERIFY(!navigation.open(at(TarnScreen::mail)));
}

void TestTarnNavigation::sidebarPreference_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("collapsed");
    QTest::newRow("never set") << QVariant() << false;
    QTest::newRow("stored collapsed") << QVariant(true) << true;
    QTest::newRow("stored expanded") << QVariant(false) << false;
}

void TestTarnNavigation::sidebarPreference()
{
    QFETCH(QVariant, stored);
    QFETCH(bool, collapsed);
    {
        const auto prefs = settings();
        if (stored.isValid())
            prefs->setValue(TarnNavigation::sidebarCollapsedKey, stored);
    }

    {
        const auto prefs = settings();
        TarnNavigation navigation(prefs.get());
        QCOMPARE(navigation.sidebarCollapsed(), collapsed);
        QSignalSpy changed(&navigation, &TarnNavigation::sidebarCollapsedChanged);
        navigation.setSidebarCollapsed(collapsed);
        QCOMPARE(changed.count(), 0);
        navigation.setSidebarCollapsed(!collapsed);
        QCOMPARE(changed.count(), 1);
    }

    // A later start, with its own settings object, reads what was written.
    const auto prefs = settings();
    TarnNavigation later(prefs.get());
    QCOMPARE(later.sidebarCollapsed(), !collapsed);
}

QTEST_GUILESS_MAIN(TestTarnNavigation)
#include "tst_tarnnavigation.moc"
