#include "app/NativeBrowser.h"
#include "app/NativeLauncherBadge.h"
#include "app/NativeRootState.h"
#include "app/NativeScreenshot.h"
#include "app/NativeWindowMemory.h"
#include "auth/NativeAuth.h"
#include "auth/NativeSessionStore.h"
#include "service/TarnAPI.h"
#include "TarnWaitFor.h"
#include "shell/NativeCommandSearch.h"
#include "shell/NativeSettingsState.h"
#include "shell/TarnNavigation.h"
#include "support/TestWorkspace.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScreen>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <memory>

Q_IMPORT_QML_PLUGIN(PiloTarnPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_ShellPlugin)

using namespace Qt::StringLiterals;
using Phase = NativeRootState::Phase;

namespace {

// Visible items whose objectName starts with `prefix`, in drawing order,
// named by what follows the prefix.
QStringList visibleNamed(QQuickItem *root, const QString &prefix)
{
    QStringList names;
    if (!root || !root->isVisible())
        return names;
    if (root->objectName().startsWith(prefix))
        names.append(root->objectName().mid(prefix.size()));
    for (QQuickItem *child : root->childItems())
        names += visibleNamed(child, prefix);
    return names;
}

QQuickItem *findItem(QQuickItem *root, const QString &name)
{
    if (!root)
        return nullptr;
    if (root->objectName() == name)
        return root;
    for (QQuickItem *child : root->childItems()) {
        if (QQuickItem *found = findItem(child, name))
            return found;
    }
    return nullptr;
}

QQuickWindow *settingsWindow()
{
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        if (window->objectName() == "settingsWindow"_L1)
            return qobject_cast<QQuickWindow *>(window);
    }
    return nullptr;
}

void click(QQuickItem *item)
{
    QVERIFY(item);
    QVERIFY(item->isVisible() && item->isEnabled());
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(item->window(), Qt::LeftButton, {}, centre.toPoint());
}

QStringList sidebarKeys(const TarnNavigation &navigation)
{
    QStringList keys;
    for (const TarnNavGroup &group : navigation.navGroups()) {
        for (const TarnNavItem &item : group.items)
            keys.append(item.key);
    }
    return keys;
}

QStringList tileKeys(const TarnNavigation &navigation)
{
    QStringList keys;
    for (const TarnBoardGroup &tile : navigation.workBoard())
        keys.append(tile.key);
    return keys;
}

} // namespace

// Collects the launcher entry signals this process sends on the session bus
// (the app's screenshot runs send their own).
class BadgeListener : public QObject {
    Q_OBJECT

public:
    QList<QVariantList> updates;

public Q_SLOTS:
    void update(const QDBusMessage &message)
    {
        if (message.service() == QDBusConnection::sessionBus().baseService())
            updates.append(message.arguments());
    }
};

// The whole window as main builds it, over the real workspace and keyring.
struct AppWindow {
    AppWindow(const Config &config, NativeSessionStore &store)
        : api(config, store, &preferences)
        , auth(config, store, &NativeBrowser::open)
        , settings(api, navigation, preferences)
        , search(navigation)
        , root(api, auth, navigation)
    {
        engine.setInitialProperties({
            { u"root"_s, QVariant::fromValue(&root) },
            { u"navigation"_s, QVariant::fromValue(&navigation) },
            { u"settings"_s, QVariant::fromValue(&settings) },
            { u"search"_s, QVariant::fromValue(&search) },
        });
        engine.load(QUrl(u"qrc:/PiloTarn/qml/Main.qml"_s));
        window = engine.rootObjects().isEmpty() ? nullptr
                                                : qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
        if (window)
            window->show();
    }

    [[nodiscard]] bool reach(Phase phase) const
    {
        return QTest::qWaitFor([&] { return root.phase() == phase && !root.busy(); }, 20000);
    }

    QTemporaryDir folder;
    QSettings preferences { folder.filePath(u"prefs.ini"_s), QSettings::IniFormat };
    TarnAPI api;
    NativeAuth auth;
    TarnNavigation navigation { &preferences };
    NativeSettingsState settings;
    NativeCommandSearch search;
    NativeRootState root;
    QQmlApplicationEngine engine;
    QQuickWindow *window = nullptr;
};

class TestRootView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void eachPersonSeesTheirPlaces_data();
    void eachPersonSeesTheirPlaces();
    void signOutFromSettings();
    void appearanceChoices_data();
    void appearanceChoices();
    void signOutOfOtherSessions();
    void commandSearchFromTheKeyboard_data();
    void commandSearchFromTheKeyboard();
    void screenshotOfAProfile();
    void launcherBadge();
    void windowPlaceIsRemembered_data();
    void windowPlaceIsRemembered();

private:
    // Stores a session of `email` as sign-in would, and opens the window.
    QString openAs(const QString &email);

    std::unique_ptr<TestWorkspace> m_workspace;
    std::optional<Config> m_config;
    NativeSessionStore m_store;
    std::unique_ptr<AppWindow> m_app;
};

void TestRootView::initTestCase()
{
    QQuickStyle::setStyle(u"Fusion"_s);
    m_workspace = std::make_unique<TestWorkspace>();
    QVERIFY2(m_workspace->isRunning(), qPrintable(m_workspace->error()));
    QString error;
    m_config = Config::fromOptions(m_workspace->url().toString(), m_workspace->certificatePath(), &error);
    QVERIFY2(m_config, qPrintable(error));
}

void TestRootView::init()
{
    m_workspace->clearFaults();
    tarnWaitFor(m_store.clear());
}

void TestRootView::cleanup()
{
    m_app.reset();
}

QString TestRootView::openAs(const QString &email)
{
    const QString token = m_workspace->signIn(email);
    if (token.isEmpty())
        return {};
    QString saved = token;
    tarnWaitFor(m_store.save(std::move(saved)));
    m_app = std::make_unique<AppWindow>(*m_config, m_store);
    if (!m_app->window)
        return {};
    m_app->root.start();
    return token;
}

void TestRootView::eachPersonSeesTheirPlaces_data()
{
    QTest::addColumn<QString>("email");
    QTest::addColumn<QStringList>("sidebar");
    QTest::addColumn<QStringList>("tiles");

    const QStringList everyTile { u"chat"_s, u"images"_s, u"prospects"_s, u"clients"_s, u"operations"_s,
        u"marketing"_s };
    QTest::addRow("owner: everything") << u"maren@halvard.example"_s
                                       << QStringList { u"pilo"_s, u"owner"_s, u"overview"_s, u"home"_s, u"calls"_s,
                                              u"mail"_s, u"schedule"_s, u"sales"_s, u"workplan"_s, u"support"_s,
                                              u"docs"_s, u"portals"_s, u"websites"_s, u"marketscan"_s, u"kiln"_s,
                                              u"finance"_s, u"payments"_s, u"people"_s, u"company"_s }
                                       << everyTile;
    QTest::addRow("books owner, not the owner: no dashboard, payments or people")
        << u"tomas@halvard.example"_s
        << QStringList { u"pilo"_s, u"overview"_s, u"home"_s, u"calls"_s, u"mail"_s, u"schedule"_s, u"sales"_s,
               u"workplan"_s, u"support"_s, u"docs"_s, u"portals"_s, u"finance"_s, u"company"_s }
        << QStringList { u"chat"_s, u"images"_s, u"prospects"_s, u"clients"_s, u"operations"_s };
    QTest::addRow("member without books")
        << u"priya@halvard.example"_s
        << QStringList { u"pilo"_s, u"home"_s, u"calls"_s, u"mail"_s, u"schedule"_s, u"sales"_s, u"workplan"_s,
               u"support"_s, u"docs"_s, u"company"_s }
        << QStringList { u"chat"_s, u"images"_s, u"prospects"_s, u"operations"_s };
    QTest::addRow("support: four apps")
        << u"jonah@halvard.example"_s
        << QStringList { u"pilo"_s, u"home"_s, u"calls"_s, u"mail"_s, u"support"_s, u"company"_s }
        << QStringList { u"chat"_s, u"images"_s, u"operations"_s };
    QTest::addRow("designer") << u"sam@halvard.example"_s
                              << QStringList { u"pilo"_s, u"home"_s, u"mail"_s, u"schedule"_s, u"docs"_s,
                                     u"websites"_s, u"marketscan"_s, u"kiln"_s, u"company"_s }
                              << QStringList { u"chat"_s, u"images"_s, u"marketing"_s };
    QTest::addRow("no Home: refused") << u"ada@halvard.example"_s << QStringList() << QStringList();
}

void TestRootView::eachPersonSeesTheirPlaces()
{
    QFETCH(QString, email);
    QFETCH(QStringList, sidebar);
    QFETCH(QStringList, tiles);

    QVERIFY(!openAs(email).isEmpty());
    if (sidebar.isEmpty()) {
        QVERIFY(m_app->reach(Phase::SignedOut));
        QCOMPARE(m_app->root.message(), u"This account cannot open Tarn Home."_s);
        QVERIFY(!m_app->navigation.hasAccess());
        return;
    }
    QVERIFY(m_app->reach(Phase::SignedIn));
    QCOMPARE(sidebarKeys(m_app->navigation), sidebar);
    QCOMPARE(tileKeys(m_app->navigation), tiles);

    // The window draws exactly what the models hold, home lit.
    QQuickItem *content = m_app->window->contentItem();
    QTRY_COMPARE(visibleNamed(content, u"sidebarItem:"_s), sidebar);
    QCOMPARE(visibleNamed(content, u"boardTile:"_s), tiles);
    QCOMPARE(m_app->navigation.trail(), QStringList({ u"Pilo"_s, u"New chat"_s }));

    // A section the person may not open is not offered and not opened.
    if (!sidebar.contains(u"payments"_s)) {
        const int opens = m_app->navigation.openCount();
        QVERIFY(!m_app->navigation.openScreen(u"payments"_s));
        QCOMPARE(m_app->navigation.openCount(), opens);
    }

    // Collapsing keeps every item, as marks only, and is remembered.
    click(findItem(content, u"collapseSidebar"_s));
    QVERIFY(m_app->navigation.sidebarCollapsed());
    QCOMPARE(visibleNamed(content, u"sidebarItem:"_s), sidebar);
    QCOMPARE(m_app->preferences.value(TarnNavigation::sidebarCollapsedKey).toBool(), true);
}

void TestRootView::signOutFromSettings()
{
    const QString token = openAs(u"maren@halvard.example"_s);
    QVERIFY(m_app->reach(Phase::SignedIn));

    QTest::keyClick(m_app->window, Qt::Key_Comma, Qt::ControlModifier);
    QVERIFY(m_app->navigation.appearanceOpen());
    QQuickWindow *settings = settingsWindow();
    QVERIFY(settings);
    QTRY_VERIFY(settings->isVisible());
    QVERIFY(QTest::qWaitForWindowExposed(settings));

    click(findItem(settings->contentItem(), u"signOut"_s));
    QVERIFY(m_app->reach(Phase::SignedOut));
    QTRY_VERIFY(!settings->isVisible());
    QVERIFY(!m_app->navigation.appearanceOpen());
    QVERIFY(!m_app->navigation.hasAccess());
    QCOMPARE(m_app->navigation.openCount(), 0);
    QCOMPARE(tarnWaitFor(m_store.token()), std::nullopt);
    QVERIFY(m_workspace->session(token).isEmpty());
    QTRY_VERIFY(findItem(m_app->window->contentItem(), u"message"_s));
}

void TestRootView::appearanceChoices_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("refused");

    QTest::addRow("text size") << u"textSize:large"_s << u"/api/team/me/text-size"_s << u"text_size"_s
                               << u"large"_s << false;
    QTest::addRow("accent") << u"accent:teal"_s << u"/api/team/me/accent"_s << u"accent"_s << u"teal"_s << false;
    QTest::addRow("background") << u"background:mist"_s << u"/api/team/me/appearance"_s << u"background"_s
                                << u"mist"_s << false;
    QTest::addRow("text size refused") << u"textSize:larger"_s << u"/api/team/me/text-size"_s << u"text_size"_s
                                       << u"larger"_s << true;
    QTest::addRow("accent refused") << u"accent:pink"_s << u"/api/team/me/accent"_s << u"accent"_s << u"pink"_s
                                    << true;
}

void TestRootView::appearanceChoices()
{
    QFETCH(QString, button);
    QFETCH(QString, path);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(bool, refused);

    const QString token = openAs(u"priya@halvard.example"_s);
    QVERIFY(m_app->reach(Phase::SignedIn));
    const QJsonValue before = m_workspace->session(token).value(key);
    const QStringList shownBefore { m_app->settings.textSize(), m_app->settings.accent() };
    const double standardSize = m_app->window->property("font").value<QFont>().pointSizeF();
    if (refused) {
        m_workspace->setFault({ { u"method"_s, u"PATCH"_s }, { u"path"_s, path }, { u"status"_s, 422 },
            { u"body"_s, uR"({"error":"That choice is not available."})"_s } });
    }

    m_app->navigation.setAppearanceOpen(true);
    QQuickWindow *settings = settingsWindow();
    QVERIFY(settings);
    QVERIFY(QTest::qWaitForWindowExposed(settings));
    click(findItem(settings->contentItem(), button));

    if (refused) {
        QTRY_COMPARE(m_app->settings.message(), u"That choice is not available."_s);
        QVERIFY(m_app->settings.messageIsError());
        QCOMPARE(m_workspace->session(token).value(key), before);
        QCOMPARE(QStringList({ m_app->settings.textSize(), m_app->settings.accent() }), shownBefore);
        QCOMPARE(m_app->window->property("font").value<QFont>().pointSizeF(), standardSize);
        return;
    }
    QTRY_COMPARE(m_workspace->session(token).value(key).toString(), value);
    QCOMPARE(m_app->settings.message(), QString());
    if (key == "text_size"_L1) {
        QCOMPARE(m_app->preferences.value(NativeSettingsState::textSizeKey).toString(), value);
        QCOMPARE(m_app->window->property("font").value<QFont>().pointSizeF(), standardSize * 1.2);
    }
    if (key == "background"_L1)
        QCOMPARE(m_app->navigation.background(), value);

    // The next start reads the choice back from the account.
    m_app = std::make_unique<AppWindow>(*m_config, m_store);
    m_app->root.start();
    QVERIFY(m_app->reach(Phase::SignedIn));
    const QString shown = key == "text_size"_L1 ? m_app->settings.textSize()
        : key == "accent"_L1                    ? m_app->settings.accent()
                                                : m_app->settings.background();
    QCOMPARE(shown, value);
}

void TestRootView::signOutOfOtherSessions()
{
    const QString email = u"tomas@halvard.example"_s;
    const QString ours = openAs(email);
    QVERIFY(m_app->reach(Phase::SignedIn));
    m_app->navigation.setAppearanceOpen(true);
    QQuickWindow *settings = settingsWindow();
    QVERIFY(settings);
    QVERIFY(QTest::qWaitForWindowExposed(settings));
    QQuickItem *button = findItem(settings->contentItem(), u"signOutOthers"_s);

    // Earlier tests left sessions of this person behind: end those first.
    click(button);
    QTRY_VERIFY(!m_app->settings.endingSessions() && !m_app->settings.message().isEmpty());
    const QStringList others { m_workspace->signIn(email), m_workspace->signIn(email) };
    click(button);
    QTRY_COMPARE(m_app->settings.message(), u"Signed out of 2 other sessions."_s);
    QVERIFY(!m_app->settings.messageIsError());
    for (const QString &other : others)
        QVERIFY(m_workspace->session(other).isEmpty());
    QVERIFY(!m_workspace->session(ours).isEmpty());

    click(button);
    QTRY_COMPARE(m_app->settings.message(), u"No other sessions were signed in."_s);
}

void TestRootView::commandSearchFromTheKeyboard_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("downs");
    QTest::addColumn<QString>("screen");
    QTest::addColumn<QString>("section");
    QTest::addColumn<bool>("settingsOpen");

    QTest::addRow("first match") << u"pay"_s << 0 << u"payments"_s << QString() << false;
    QTest::addRow("a section, by a later word") << u"feed"_s << 0 << u"documents"_s << u"Bank feed"_s << false;
    QTest::addRow("arrow past the inbox") << u"in"_s << 1 << u"documents"_s << u"Invoices"_s << false;
    QTest::addRow("a settings page opens the settings window")
        << u"appear"_s << 0 << u"agent"_s << u"New chat"_s << true;
}

void TestRootView::commandSearchFromTheKeyboard()
{
    QFETCH(QString, typed);
    QFETCH(int, downs);
    QFETCH(QString, screen);
    QFETCH(QString, section);
    QFETCH(bool, settingsOpen);

    QVERIFY(!openAs(u"maren@halvard.example"_s).isEmpty());
    QVERIFY(m_app->reach(Phase::SignedIn));
    QVERIFY(QTest::qWaitForWindowExposed(m_app->window));

    QTest::keyClick(m_app->window, Qt::Key_K, Qt::ControlModifier);
    QVERIFY(m_app->navigation.searchOpen());
    QQuickItem *field = findItem(m_app->window->contentItem(), u"searchField"_s);
    QVERIFY(field);
    QTRY_VERIFY(field->hasActiveFocus());
    for (const char key : typed.toLatin1())
        QTest::keyClick(m_app->window, key);
    QCOMPARE(m_app->search.query(), typed);
    for (int i = 0; i < downs; ++i)
        QTest::keyClick(m_app->window, Qt::Key_Down);
    QTest::keyClick(m_app->window, Qt::Key_Return);

    QVERIFY(!m_app->navigation.searchOpen());
    QCOMPARE(m_app->navigation.destination().screenName(), screen);
    if (!section.isEmpty())
        QCOMPARE(m_app->navigation.destination().resolvedSection(), section);
    QCOMPARE(m_app->navigation.appearanceOpen(), settingsOpen);
}

void TestRootView::screenshotOfAProfile()
{
    QString token = m_workspace->signIn(u"maren@halvard.example"_s);
    tarnWaitFor(m_store.save(std::move(token)));
    QTemporaryDir folder;
    const auto shoot = [&](const QString &profile) {
        const QString file = folder.filePath(profile + u".png"_s);
        QProcess app;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QString::fromLatin1(NativeScreenshot::profileVariable), profile);
        app.setProcessEnvironment(environment);
        app.start(QStringLiteral(PILO_TARN_APP), { u"--workspace"_s, m_workspace->url().toString(),
                                                     u"--workspace-ca"_s, m_workspace->certificatePath(),
                                                     u"--screenshot"_s, file });
        if (!app.waitForFinished(60000) || app.exitCode() != 0)
            qWarning() << app.readAllStandardError();
        return QImage(file);
    };
    const QImage books = shoot(u"books"_s);
    const QImage home = shoot(u"home"_s);
    QVERIFY(!books.isNull() && !home.isNull());
    QVERIFY(books.width() >= 720 && books.height() >= 480);
    QVERIFY(books != home);

    QCOMPARE(NativeScreenshot::destination(u"books"_s)->resolvedSection(), u"Dashboard"_s);
    QCOMPARE(NativeScreenshot::destination(u" Mail "_s)->screen, TarnScreen::mail);
    QCOMPARE(NativeScreenshot::destination(u"nowhere"_s), std::nullopt);
}

void TestRootView::launcherBadge()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    QVERIFY(bus.isConnected());
    BadgeListener listener;
    QVERIFY(bus.connect(QString(), QString::fromLatin1(NativeLauncherBadge::objectPath),
        QString::fromLatin1(NativeLauncherBadge::interface), u"Update"_s, &listener,
        SLOT(update(QDBusMessage))));
    const QList<QVariantList> &updates = listener.updates;

    NativeLauncherBadge badge(u"pilo-tarn.desktop"_s);
    badge.setCount(3);
    badge.setCount(3);
    badge.clear();
    QTRY_COMPARE(updates.size(), 2);
    QCOMPARE(updates.at(0).at(0).toString(), u"application://pilo-tarn.desktop"_s);
    const QVariantMap shown = qdbus_cast<QVariantMap>(updates.at(0).at(1));
    QCOMPARE(shown.value(u"count"_s).toLongLong(), 3);
    QCOMPARE(shown.value(u"count-visible"_s).toBool(), true);
    const QVariantMap cleared = qdbus_cast<QVariantMap>(updates.at(1).at(1));
    QCOMPARE(cleared.value(u"count"_s).toLongLong(), 0);
    QCOMPARE(cleared.value(u"count-visible"_s).toBool(), false);
}

void TestRootView::windowPlaceIsRemembered_data()
{
    QTest::addColumn<QRect>("saved");
    QTest::addColumn<bool>("restored");

    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QTest::addRow("on the screen") << QRect(screen.topLeft() + QPoint(40, 30), QSize(760, 500)) << true;
    QTest::addRow("mostly off the right edge") << QRect(screen.topRight() + QPoint(-150, 20), QSize(760, 500))
                                               << true;
    QTest::addRow("on a screen that is gone") << QRect(screen.topRight() + QPoint(400, 0), QSize(760, 500))
                                              << false;
    QTest::addRow("title bar above the screen") << QRect(screen.topLeft() - QPoint(0, 600), QSize(760, 500))
                                                << false;
}

void TestRootView::windowPlaceIsRemembered()
{
    QFETCH(QRect, saved);
    QFETCH(bool, restored);

    QTemporaryDir folder;
    QSettings preferences(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    QWindow before;
    before.setGeometry(saved);
    NativeWindowMemory(preferences).save(before);

    QWindow after;
    const QRect standard(10, 10, 720, 480);
    after.setGeometry(standard);
    NativeWindowMemory(preferences).restore(after);
    QCOMPARE(after.geometry(), restored ? saved : standard);
}

QTEST_MAIN(TestRootView)
#include "tst_rootview.moc"
