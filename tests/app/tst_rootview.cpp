#include "TarnWaitFor.h"
#include "app/NativeAppWindow.h"
#include "app/NativeLauncherBadge.h"
#include "app/NativeScreenshot.h"
#include "app/NativeWindowMemory.h"
#include "auth/NativeSessionStore.h"
#include "service/Config.h"
#include "shell/ShellTestAccess.h"
#include "shell/TarnShell.h"
#include "support/TestWorkspace.h"
#include "workspace/WorkspaceSeed.h"

#include <QAccessible>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;
using Phase = NativeRootState::Phase;
using ShellTestAccess::at;
using ShellTestAccess::keysOf;

namespace {

// `root` and every item under it.
QList<QQuickItem *> itemsUnder(QQuickItem *root)
{
    QList<QQuickItem *> items { root };
    for (qsizetype i = 0; i < items.size(); ++i)
        items += items.at(i)->childItems();
    return items;
}

// Visible items whose objectName starts with `prefix`, in reading order
// (top to bottom, then left to right), named by what follows the prefix.
QStringList visibleNamed(QQuickItem *root, const QString &prefix)
{
    QList<QQuickItem *> found = itemsUnder(root);
    found.removeIf([&](QQuickItem *item) { return !item->isVisible() || !item->objectName().startsWith(prefix); });
    std::ranges::sort(found, {}, [](QQuickItem *item) {
        const QPointF corner = item->mapToScene(QPointF());
        return std::pair(corner.y(), corner.x());
    });
    QStringList names;
    for (QQuickItem *item : found)
        names.append(item->objectName().mid(prefix.size()));
    return names;
}

QQuickItem *findItem(QQuickItem *root, const QString &name)
{
    const QList<QQuickItem *> items = itemsUnder(root);
    const auto found = std::ranges::find(items, name, &QObject::objectName);
    return found == items.cend() ? nullptr : *found;
}

// The settings window, once it is on screen.
QQuickWindow *settingsWindow()
{
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        if (window->objectName() == "settingsWindow"_L1 && QTest::qWaitForWindowExposed(window))
            return qobject_cast<QQuickWindow *>(window);
    }
    return nullptr;
}

// One stop of Tab: the item, its accessible name, and whether it lay
// inside `viewport` (when given) at the time.
struct TabStop {
    QQuickItem *item;
    QString name;
    bool inSight;
};

// The stops Tab visits, from the first after the one focused now until the
// chain comes round.
QList<TabStop> tabChain(QQuickWindow *window, QQuickItem *viewport = nullptr)
{
    QList<TabStop> chain;
    for (int i = 0; i < 300; ++i) {
        QTest::keyClick(window, Qt::Key_Tab);
        QQuickItem *focused = window->activeFocusItem();
        if (!focused || (!chain.isEmpty() && focused == chain.constFirst().item))
            break;
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(focused);
        const bool inSight = !viewport || !viewport->isAncestorOf(focused)
            || viewport->mapRectToScene(viewport->boundingRect())
                   .contains(focused->mapRectToScene(focused->boundingRect()));
        chain.append({ focused, accessible ? accessible->text(QAccessible::Name) : QString(), inSight });
    }
    return chain;
}

void click(QQuickItem *item)
{
    QVERIFY(item);
    QVERIFY(item->isVisible() && item->isEnabled());
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(item->window(), Qt::LeftButton, {}, centre.toPoint());
}

} // namespace

// Collects the launcher entry signals this process sends on the session bus
// (the app's screenshot runs send their own).
class BadgeListener : public QObject {
    Q_OBJECT

public:
    QList<QVariantList> updates;

public slots:
    void update(const QDBusMessage &message)
    {
        if (message.service() == QDBusConnection::sessionBus().baseService())
            updates.append(message.arguments());
    }
};

// The window as the app builds it, with preferences of its own, over the
// real workspace and keyring.
struct OpenWindow {
    OpenWindow(const Config &config, NativeSessionStore &store)
        : app(config, store, preferences)
    {
        if (app.window())
            app.window()->show();
        app.root().start();
    }

    [[nodiscard]] bool reach(Phase phase)
    {
        return QTest::qWaitFor([&] { return app.root().phase() == phase && !app.root().busy(); }, 20000);
    }
    [[nodiscard]] QQuickItem *content() const { return app.window()->contentItem(); }

    QTemporaryDir folder;
    QSettings preferences { folder.filePath(u"prefs.ini"_s), QSettings::IniFormat };
    NativeAppWindow app;
};

class TestRootView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void eachPersonSeesTheirPlaces_data();
    void eachPersonSeesTheirPlaces();
    void signOutFromSettings();
    void huddleFromTheRoomHeader();
    void appearanceChoices();
    void commandSearchFromTheKeyboard_data();
    void commandSearchFromTheKeyboard();
    void keyboardReachesEveryControl();
    void signInScreenFromTheKeyboard();
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
    std::unique_ptr<OpenWindow> m_open;
};

void TestRootView::initTestCase()
{
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
    m_open.reset();
}

QString TestRootView::openAs(const QString &email)
{
    QString token = m_workspace->signIn(email);
    if (token.isEmpty())
        return {};
    QString saved = token;
    tarnWaitFor(m_store.save(std::move(saved)));
    m_open = std::make_unique<OpenWindow>(*m_config, m_store);
    return m_open->app.window() ? token : QString();
}

void TestRootView::eachPersonSeesTheirPlaces_data()
{
    QTest::addColumn<QString>("email");
    for (const WorkspacePerson &person : WorkspaceSeed::people())
        QTest::addRow("%s", qPrintable(person.role)) << person.email;
}

void TestRootView::eachPersonSeesTheirPlaces()
{
    QFETCH(QString, email);
    QVERIFY(!openAs(email).isEmpty());
    QVERIFY(QTest::qWaitFor([&] { return !m_open->app.root().busy(); }, 20000));
    NativeAppWindow &app = m_open->app;
    QVERIFY(app.api().session());
    const TarnAccess access = TarnAccess::fromSession(*app.api().session());
    if (!access.has(u"Home"_s)) {
        QVERIFY(m_open->reach(Phase::SignedOut));
        QCOMPARE(app.root().message(), u"This account cannot open Tarn Home."_s);
        QVERIFY(!app.navigation().hasAccess());
        return;
    }
    QVERIFY(m_open->reach(Phase::SignedIn));

    // The window draws the navigation model of the access this session has,
    // home lit.
    QStringList sidebar;
    for (const TarnNavGroup &group : TarnShell::navGroups(access))
        sidebar += keysOf(group.items);
    QTRY_COMPARE(visibleNamed(m_open->content(), u"sidebarItem:"_s), sidebar);
    QCOMPARE(visibleNamed(m_open->content(), u"sidebarChild:"_s).constFirst(), u"pilo/newchat"_s);
    QCOMPARE(visibleNamed(m_open->content(), u"boardTile:"_s), keysOf(TarnShell::workBoard(access)));
    QCOMPARE(app.navigation().trail(), QStringList({ u"Pilo"_s, u"New chat"_s }));

    // Collapsing keeps every item, as marks only, and is remembered.
    click(findItem(m_open->content(), u"collapseSidebar"_s));
    QVERIFY(app.navigation().sidebarCollapsed());
    QTRY_COMPARE(visibleNamed(m_open->content(), u"sidebarItem:"_s), sidebar);
    QCOMPARE(visibleNamed(m_open->content(), u"sidebarChild:"_s), QStringList());
    QCOMPARE(m_open->preferences.value(TarnNavigation::sidebarCollapsedKey).toBool(), true);
}

void TestRootView::signOutFromSettings()
{
    const QString email = u"maren@halvard.example"_s;
    const QString token = openAs(email);
    QVERIFY(m_open->reach(Phase::SignedIn));
    NativeAppWindow &app = m_open->app;
    NativeSettingsState &state = app.settings();

    QTest::keyClick(app.window(), Qt::Key_Comma, Qt::ControlModifier);
    QVERIFY(app.navigation().appearanceOpen());
    QQuickWindow *settings = settingsWindow();
    QVERIFY(settings);

    // Other sessions first. Earlier tests left some of this person's behind:
    // end those before counting.
    QQuickItem *others = findItem(settings->contentItem(), u"signOutOthers"_s);
    click(others);
    QTRY_VERIFY(!state.endingSessions() && !state.message().isEmpty());
    const QStringList otherTokens { m_workspace->signIn(email), m_workspace->signIn(email) };
    click(others);
    QTRY_COMPARE(state.message(), u"Signed out of 2 other sessions."_s);
    QVERIFY(!state.messageIsError());
    for (const QString &other : otherTokens)
        QVERIFY(m_workspace->session(other).isEmpty());
    QVERIFY(!m_workspace->session(token).isEmpty());
    click(others);
    QTRY_COMPARE(state.message(), u"No other sessions were signed in."_s);

    click(findItem(settings->contentItem(), u"signOut"_s));
    QVERIFY(m_open->reach(Phase::SignedOut));
    QTRY_VERIFY(!settings->isVisible());
    QVERIFY(!app.navigation().hasAccess());
    QCOMPARE(app.navigation().openCount(), 0);
    QCOMPARE(tarnWaitFor(m_store.token()), std::nullopt);
    QVERIFY(m_workspace->session(token).isEmpty());
    QTRY_VERIFY(findItem(m_open->content(), u"signInView"_s)->isVisible());
    QCOMPARE(visibleNamed(m_open->content(), u"sidebarItem:"_s), QStringList());
}

void TestRootView::huddleFromTheRoomHeader()
{
    qputenv("PILO_TARN_HUDDLE_TEST_SOURCES", "1"); // No sound card needed.
    QVERIFY(!openAs(u"maren@halvard.example"_s).isEmpty());
    QVERIFY(m_open->reach(Phase::SignedIn));
    NativeAppWindow &app = m_open->app;
    app.navigation().open(TarnDestination { .screen = TarnScreen::chat, .section = std::nullopt });
    QTRY_VERIFY(!app.chat().selectedRoom().isEmpty());
    QQuickItem *button = findItem(m_open->content(), u"chatHuddle"_s);
    QTRY_VERIFY(button && button->isVisible());
    QCOMPARE(button->property("text").toString(), u"Start huddle"_s);
    QQuickItem *bar = findItem(m_open->content(), u"huddleBar"_s);
    QVERIFY(bar && !bar->isVisible());

    click(button);
    QTRY_VERIFY_WITH_TIMEOUT(
        bar->isVisible() && findItem(bar, u"huddleStatus"_s)->property("text") == u"Live"_s, 15000);
    QTRY_COMPARE(findItem(bar, u"huddleParticipants"_s)->property("count").toInt(), 1);
    QCOMPARE(app.huddle().participants()->rows().constFirst().name, u"Maren Holt"_s);
    // Sharing the screen asks first; one's own screen draws no tile.
    click(findItem(bar, u"huddleScreen"_s));
    QObject *sheet = bar->findChild<QObject *>(u"huddleShareSheet"_s);
    QTRY_VERIFY(sheet && sheet->property("opened").toBool());
    QVERIFY(!app.huddle().screenOn());
    click(findItem(sheet->property("contentItem").value<QQuickItem *>(), u"sheetConfirm"_s));
    QTRY_VERIFY(app.huddle().screenOn() && !app.huddle().screenChanging()
        && app.huddle().participants()->rows().constFirst().screen);
    QVERIFY(!findItem(bar, u"huddleTiles"_s)->isVisible());
    click(findItem(bar, u"huddleScreen"_s));
    QTRY_VERIFY(!app.huddle().screenOn() && !app.huddle().screenChanging());
    // One's own camera shows as a tile of its own.
    click(findItem(bar, u"huddleCamera"_s));
    QQuickItem *self = findItem(bar, u"huddleSelfView"_s);
    QTRY_VERIFY(self->isVisible() && findItem(self, u"huddleVideo"_s)->property("showing").toBool());
    QTRY_VERIFY(!app.huddle().cameraChanging());
    click(findItem(bar, u"huddleCamera"_s));
    QTRY_VERIFY(!self->isVisible());
    // The bar stays while another screen is shown.
    app.navigation().open(TarnDestination { .screen = TarnScreen::agent, .section = std::nullopt });
    QTRY_VERIFY(!findItem(m_open->content(), u"chatHuddle"_s));
    QVERIFY(bar->isVisible());

    click(findItem(bar, u"huddleLeave"_s));
    QTRY_VERIFY(!bar->isVisible());
}

void TestRootView::appearanceChoices()
{
    const QString token = openAs(u"priya@halvard.example"_s);
    QVERIFY(m_open->reach(Phase::SignedIn));
    NativeAppWindow &app = m_open->app;
    NativeSettingsState &state = app.settings();
    const int standardSize = app.window()->property("font").value<QFont>().pixelSize();
    app.navigation().setAppearanceOpen(true);
    QQuickWindow *settings = settingsWindow();
    QVERIFY(settings);

    // A choice the account refuses is reported and taken back.
    const QJsonValue accent = m_workspace->session(token).value(u"accent"_s);
    const QString shownAccent = state.accent();
    m_workspace->setFault({ { u"method"_s, u"PATCH"_s }, { u"path"_s, u"/api/team/me/accent"_s }, { u"status"_s, 422 },
        { u"body"_s, uR"({"error":"That choice is not available."})"_s } });
    click(findItem(settings->contentItem(), u"accent:pink"_s));
    QTRY_COMPARE(state.message(), u"That choice is not available."_s);
    QVERIFY(state.messageIsError());
    QCOMPARE(m_workspace->session(token).value(u"accent"_s), accent);
    QCOMPARE(state.accent(), shownAccent);

    click(findItem(settings->contentItem(), u"textSize:large"_s));
    QTRY_COMPARE(m_workspace->session(token).value(u"text_size"_s).toString(), u"large"_s);
    click(findItem(settings->contentItem(), u"background:mist"_s));
    QTRY_COMPARE(m_workspace->session(token).value(u"background"_s).toString(), u"mist"_s);
    QCOMPARE(state.message(), QString());
    QCOMPARE(m_open->preferences.value(NativeSettingsState::textSizeKey).toString(), u"large"_s);
    QCOMPARE(app.theme().type().body, 19.2);
    QVERIFY(app.window()->property("font").value<QFont>().pixelSize() > standardSize);
    QCOMPARE(app.navigation().background(), u"mist"_s);
    QCOMPARE(app.window()->color(), QColor(u"#ebf1f7"_s));

    // The colour scheme is this computer's: kept here, not sent to the account.
    click(findItem(settings->contentItem(), u"colorScheme:dark"_s));
    QVERIFY(app.theme().dark());
    QCOMPARE(m_open->preferences.value(NativeTheme::colorSchemeKey).toString(), u"dark"_s);
    QCOMPARE(app.window()->color(), QColor(u"#1f242b"_s));

    // The next start reads the choices back from the account.
    m_open = std::make_unique<OpenWindow>(*m_config, m_store);
    QVERIFY(m_open->reach(Phase::SignedIn));
    QCOMPARE(m_open->app.settings().textSize(), u"large"_s);
    QCOMPARE(m_open->app.settings().background(), u"mist"_s);
}

void TestRootView::commandSearchFromTheKeyboard_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("downs");
    QTest::addColumn<TarnDestination>("opened");
    QTest::addColumn<bool>("settingsOpen");

    QTest::addRow("arrow past the inbox") << u"in"_s << 1 << at(TarnScreen::documents, u"Invoices"_s) << false;
    QTest::addRow("a settings page opens the settings window") << u"appear"_s << 0 << at(TarnScreen::agent) << true;
}

void TestRootView::commandSearchFromTheKeyboard()
{
    QFETCH(QString, typed);
    QFETCH(int, downs);
    QFETCH(TarnDestination, opened);
    QFETCH(bool, settingsOpen);

    QVERIFY(!openAs(u"maren@halvard.example"_s).isEmpty());
    QVERIFY(m_open->reach(Phase::SignedIn));
    NativeAppWindow &app = m_open->app;
    QVERIFY(QTest::qWaitForWindowExposed(app.window()));

    QTest::keyClick(app.window(), Qt::Key_K, Qt::ControlModifier);
    QVERIFY(app.navigation().searchOpen());
    QQuickItem *field = findItem(m_open->content(), u"searchField"_s);
    QVERIFY(field);
    QTRY_VERIFY(field->hasActiveFocus());
    for (const char key : typed.toLatin1())
        QTest::keyClick(app.window(), key);
    QCOMPARE(app.search().query(), typed);
    QTRY_COMPARE(findItem(m_open->content(), u"searchResults"_s)->property("count").toInt(), app.search().rowCount());
    for (int i = 0; i < downs; ++i)
        QTest::keyClick(app.window(), Qt::Key_Down);
    QTest::keyClick(app.window(), Qt::Key_Return);

    QVERIFY(!app.navigation().searchOpen());
    QVERIFY(app.navigation().destination().samePlace(opened));
    QCOMPARE(app.navigation().appearanceOpen(), settingsOpen);
}

void TestRootView::keyboardReachesEveryControl()
{
    // The owner's sidebar is the longest: at the standard size it does not
    // fit, and the list scrolls to each line the keyboard reaches.
    QVERIFY(!openAs(u"maren@halvard.example"_s).isEmpty());
    QVERIFY(m_open->reach(Phase::SignedIn));
    QQuickWindow *window = m_open->app.window();
    window->resize(1120, 740);
    window->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QQuickItem *list = findItem(m_open->content(), u"sidebarList"_s);
    QVERIFY(list);
    QTRY_VERIFY(list->property("contentHeight").toReal() > list->height());
    QVERIFY(findItem(m_open->content(), u"sidebarScrollBar"_s)->isVisible());

    QStringList reached;
    QSet<QQuickItem *> stops;
    for (const TabStop &stop : tabChain(window, list)) {
        // Each control is one stop: none keeps Tab to itself.
        QVERIFY2(!stops.contains(stop.item), qPrintable(stop.item->objectName() + u" keeps the focus"_s));
        stops.insert(stop.item);
        const QString objectName = stop.item->objectName();
        QVERIFY2(!stop.name.isEmpty(), qPrintable(u"Tab reaches a control with no name: "_s + objectName));
        QVERIFY(stop.item->isVisible());
        QVERIFY2(stop.inSight, qPrintable(objectName + u" is out of sight"_s));
        reached.append(objectName);
    }
    // Every item of the sidebar, in its order, then the person's account.
    QStringList items = reached.filter(u"sidebarItem:"_s);
    QStringList expected;
    for (const TarnNavGroup &group : TarnShell::navGroups(*m_open->app.navigation().access()))
        expected += keysOf(group.items);
    for (QString &key : expected)
        key.prepend(u"sidebarItem:"_s);
    QCOMPARE(items, expected);
    for (const QString &name : { u"collapseSidebar"_s, u"openSearch"_s, u"accountButton"_s, u"agentDraft"_s })
        QVERIFY2(reached.contains(name), qPrintable(name));
    QVERIFY(reached.indexOf(u"openSearch"_s) < reached.indexOf(items.constFirst()));
    QVERIFY(reached.indexOf(items.constLast()) < reached.indexOf(u"accountButton"_s));

    // The account menu opens from the keyboard and leads to the settings.
    QQuickItem *account = findItem(m_open->content(), u"accountButton"_s);
    account->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window, Qt::Key_Return);
    QTRY_VERIFY(findItem(m_open->content(), u"openSettings"_s)->isVisible());
    click(findItem(m_open->content(), u"openSettings"_s));
    QVERIFY(m_open->app.navigation().appearanceOpen());
}

void TestRootView::signInScreenFromTheKeyboard()
{
    m_open = std::make_unique<OpenWindow>(*m_config, m_store);
    QVERIFY(m_open->reach(Phase::SignedOut));
    QQuickWindow *window = m_open->app.window();
    window->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QTRY_VERIFY(findItem(m_open->content(), u"signIn"_s)->isVisible());
    QQuickItem *signIn = findItem(m_open->content(), u"signIn"_s);
    QTRY_VERIFY(signIn->hasActiveFocus());
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(signIn);
    QVERIFY(accessible);
    QCOMPARE(accessible->text(QAccessible::Name), u"Sign in with Google"_s);
    // The screen's other controls are hidden until the browser is out, so
    // Tab stays on the one way in.
    const QList<TabStop> chain = tabChain(window);
    QVERIFY(!chain.isEmpty());
    for (const TabStop &stop : chain)
        QVERIFY2(!stop.name.isEmpty() && stop.item->isVisible(), qPrintable(stop.item->objectName()));

    // Return signs in; while the browser is out (one that never comes back),
    // Tab goes address, copy, paste field, cancel, and Escape gives up.
    qputenv("BROWSER", "true");
    signIn->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window, Qt::Key_Return);
    QTRY_COMPARE(m_open->app.root().phase(), Phase::SigningIn);
    QStringList names;
    for (const TabStop &stop : tabChain(window)) {
        QVERIFY2(!stop.name.isEmpty() && stop.item->isVisible(), qPrintable(stop.item->objectName()));
        names.append(stop.name);
    }
    names.sort();
    QCOMPARE(names,
        QStringList({ u"Cancel"_s, u"Copy the address"_s, u"If no browser opened, copy this address into one"_s,
            u"If the browser shows a pilo-tarn:// address instead, paste it here"_s }));
    QTest::keyClick(window, Qt::Key_Escape);
    QTRY_VERIFY(m_open->app.root().phase() != Phase::SigningIn);
    qunsetenv("BROWSER");
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
        app.start(QStringLiteral(PILO_TARN_APP),
            { u"--workspace"_s, m_workspace->url().toString(), u"--workspace-ca"_s, m_workspace->certificatePath(),
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
    // A scheme suffix forces the scheme; the gallery needs no session.
    tarnWaitFor(m_store.clear());
    const QImage light = shoot(u"gallery:light"_s);
    const QImage dark = shoot(u"gallery:dark"_s);
    QVERIFY(!light.isNull() && !dark.isNull());
    const auto lightness = [](const QImage &image) { return QColor(image.pixel(image.width() / 2, 4)).lightnessF(); };
    QVERIFY(lightness(light) > 0.8);
    QVERIFY(lightness(dark) < 0.2);

    QCOMPARE(NativeScreenshot::destination(u"books"_s)->resolvedSection(), u"Dashboard"_s);
    QCOMPARE(NativeScreenshot::destination(u"books-banking"_s)->resolvedSection(), u"Bank feed"_s);
    QCOMPARE(NativeScreenshot::destination(u" Mail "_s)->screen, TarnScreen::mail);
    QCOMPARE(NativeScreenshot::destination(u"nowhere"_s), std::nullopt);
    const NativeScreenshot::Profile chatDark = NativeScreenshot::profile(u"Chat:Dark"_s);
    QCOMPARE(chatDark.place, u"chat"_s);
    QCOMPARE(chatDark.dark, true);
    QVERIFY(!chatDark.gallery);
    QCOMPARE(NativeScreenshot::profile(u"gallery"_s).dark, std::nullopt);
    QVERIFY(NativeScreenshot::profile(u"gallery:light"_s).gallery);
}

void TestRootView::launcherBadge()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    QVERIFY(bus.isConnected());
    BadgeListener listener;
    QVERIFY(bus.connect(QString(), QString::fromLatin1(NativeLauncherBadge::objectPath),
        QString::fromLatin1(NativeLauncherBadge::interface), u"Update"_s, &listener, SLOT(update(QDBusMessage))));
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
    QTest::addRow("mostly off the right edge") << QRect(screen.topRight() + QPoint(-150, 20), QSize(760, 500)) << true;
    QTest::addRow("on a screen that is gone") << QRect(screen.topRight() + QPoint(400, 0), QSize(760, 500)) << false;
    QTest::addRow("title bar above the screen") << QRect(screen.topLeft() - QPoint(0, 100), QSize(760, 500)) << false;
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
