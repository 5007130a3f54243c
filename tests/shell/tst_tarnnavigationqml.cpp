#include "shell/DemoPeople.h"

#include "shell/TarnNavigation.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

// The window's QML reads the navigation state through its properties alone;
// these bindings are the ones it relies on.
static const QByteArray view = R"(
import QtQml
QtObject {
    required property QtObject navigation
    readonly property var itemKeys: {
        const keys = []
        for (const group of navigation.navGroups)
            for (const item of group.items)
                keys.push(item.key)
        return keys
    }
    readonly property var tileKeys: navigation.workBoard.map(tile => tile.key)
    readonly property string trailText: navigation.trail.join(" / ")
    readonly property string litItem: navigation.active ? navigation.active.item.key : ""
    readonly property string screenName: navigation.destination.screenName
    function search(query) { return navigation.matchingPlaces(query).map(place => place.label) }
    function firstSubtitle(key) {
        for (const group of navigation.navGroups)
            for (const item of group.items)
                if (item.key === key)
                    return navigation.subtitle(item.childGroups[0].items[0])
        return ""
    }
}
)";

class TestTarnNavigationQml : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void sidebarFollowsTheAccess_data();
    void sidebarFollowsTheAccess();
    void bindingsFollowOpenAndSignOut();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<TarnNavigation> m_navigation;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QObject> m_view;
};

void TestTarnNavigationQml::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_dir->filePath(u"prefs.ini"_s), QSettings::IniFormat);
    m_navigation = std::make_unique<TarnNavigation>(m_settings.get());
    m_engine = std::make_unique<QQmlEngine>();
    QQmlComponent component(m_engine.get());
    component.setData(view, QUrl(u"qrc:/view.qml"_s));
    m_view.reset(component.createWithInitialProperties(
        { { u"navigation"_s, QVariant::fromValue(static_cast<QObject *>(m_navigation.get())) } }));
    QVERIFY2(m_view, qPrintable(component.errorString()));
}

void TestTarnNavigationQml::cleanup()
{
    m_view.reset();
    m_engine.reset();
    m_navigation.reset();
}

void TestTarnNavigationQml::sidebarFollowsTheAccess_data()
{
    QTest::addColumn<QString>("person");
    for (const DemoPeople::Person &person : DemoPeople::all())
        QTest::addRow("%s", qPrintable(person.id)) << person.id;
}

void TestTarnNavigationQml::sidebarFollowsTheAccess()
{
    QFETCH(QString, person);
    const TarnAccess access = DemoPeople::person(person);
    QVERIFY(m_view->property("itemKeys").toStringList().isEmpty());

    m_navigation->setAccess(access);
    QStringList keys;
    for (const TarnNavGroup &group : TarnShell::navGroups(access)) {
        for (const TarnNavItem &item : group.items)
            keys.append(item.key);
    }
    QCOMPARE(m_view->property("itemKeys").toStringList(), keys);
    // Still on the signed-out destination (chat), whose entry lights up once access arrives.
    QCOMPARE(m_view->property("litItem").toString(), access.has(u"Home"_s) ? u"home"_s : QString());
    QCOMPARE(m_view->property("tileKeys").toStringList().size(), TarnShell::workBoard(access).size());
    QCOMPARE(m_navigation->openHome(), access.has(u"Home"_s));
}

void TestTarnNavigationQml::bindingsFollowOpenAndSignOut()
{
    m_navigation->setAccess(DemoPeople::person(u"p-tomas"_s));
    QVERIFY(m_navigation->openScreen(u"documents"_s, u"Invoices"_s));
    QCOMPARE(m_view->property("trailText").toString(), u"Books / Invoices"_s);
    QCOMPARE(m_view->property("litItem").toString(), u"finance"_s);
    QCOMPARE(m_view->property("screenName").toString(), u"documents"_s);
    QCOMPARE(m_navigation->piloPage(), u"Books"_s);

    QVariant found;
    QVERIFY(QMetaObject::invokeMethod(m_view.get(), "search", Q_RETURN_ARG(QVariant, found), Q_ARG(QVariant, u"in"_s)));
    const QStringList labels = found.toStringList();
    QVERIFY(labels.size() >= 2);
    QCOMPARE(labels.constFirst(), u"Inbox"_s);
    QVERIFY(labels.contains(u"Invoices"_s));
    QVERIFY(!labels.contains(u"Payroll"_s));

    // A child handed back from QML reaches the C++ side intact.
    QVariant subtitle;
    QVERIFY(QMetaObject::invokeMethod(
        m_view.get(), "firstSubtitle", Q_RETURN_ARG(QVariant, subtitle), Q_ARG(QVariant, u"company"_s)));
    QCOMPARE(subtitle.toString(), u"tomas@halvard.example"_s);

    m_navigation->signedOut();
    QVERIFY(m_view->property("itemKeys").toStringList().isEmpty());
    QCOMPARE(m_view->property("litItem").toString(), QString());
    QCOMPARE(m_view->property("screenName").toString(), u"chat"_s);
}

QTEST_GUILESS_MAIN(TestTarnNavigationQml)
#include "tst_tarnnavigationqml.moc"
