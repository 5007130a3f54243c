#include "app/NativeAppWindow.h"

#include "auth/NativeAuthError.h"
#include "auth/NativeBrowser.h"
#include "mail/NativeMailImageProvider.h"
#include "service/Config.h"

#include <QQuickStyle>
#include <QQuickWindow>
#include <QSettings>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(PiloTarnPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_ShellPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_DesignPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_AssistantPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_ChatPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_InboxPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_MailPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_MoneyPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_CustomersPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_CallsPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_SupportPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_PortalsPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_DocumentsPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_CompanyPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_SchedulePlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_MarketScanPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_WebsitesPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_OverviewPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_KilnPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_OwnerPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_WorkPlanPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_PeoplePlugin)

using namespace Qt::StringLiterals;

namespace {

// Connecting the mailbox's Google account (from the mail screen or the
// company's connections) goes through the browser as sign-in does; `finish`
// hears how it ended while `owner` lives.
QCoro::Task<> connectMailbox(
    NativeAuth &auth, QPointer<QObject> owner, QUrl start, std::function<void(const QString &)> finish)
{
    QString error;
    try {
        QString service = u"gmail"_s;
        QCoro::Task<> connecting = auth.connectGoogle(std::move(start), std::move(service));
        co_await std::move(connecting);
    } catch (const NativeAuthError &failure) {
        error = failure.text();
    }
    if (owner)
        finish(error);
}

// The desktop's microphone and speaker; PILO_TARN_HUDDLE_TEST_SOURCES=1 gives
// a generated tone and unplayed audio instead, for runs without a sound card.
NativeHuddleMedia huddleMedia()
{
    if (qEnvironmentVariableIntValue("PILO_TARN_HUDDLE_TEST_SOURCES") == 1)
        return { .testSources = true, .playAudio = false };
    return {};
}

} // namespace

NativeAppWindow::NativeAppWindow(const Config &config, TarnSessionStore &store, QSettings &preferences, Content content)
    : m_api(config, store, &preferences)
    , m_auth(config, store, &NativeBrowser::open)
    , m_navigation(&preferences)
    , m_settings(m_api, m_navigation, preferences)
    , m_search(m_navigation)
    , m_root(m_api, m_auth, m_navigation)
    , m_theme(preferences)
    , m_pilo(m_api)
    , m_piloReview(m_api)
    , m_chat(m_api, m_navigation, preferences)
    , m_huddle(m_api, huddleMedia())
    , m_inbox(m_api)
    , m_watch(m_api, m_unread)
    , m_notifier(u"pilo-tarn"_s)
    , m_mail(m_api)
    , m_books(m_api)
    , m_payments(m_api)
    , m_customers(m_api)
    , m_customerSearch(m_api, m_search)
    , m_calls(m_api, preferences)
    , m_support(m_api, preferences)
    , m_portals(m_api)
    , m_documents(m_api)
    , m_company(m_api)
    , m_schedule(m_api, preferences)
    , m_marketScan(m_api)
    , m_websites(m_api)
    , m_overview(m_api)
    , m_kiln(m_api)
    , m_owner(m_api)
    , m_workPlan(m_api)
    , m_people(m_api)
{
    const auto followAppearance
        = [this] { m_theme.setAppearance(m_settings.accent(), m_settings.background(), m_settings.textScale()); };
    followAppearance();
    QObject::connect(&m_settings, &NativeSettingsState::appearanceChanged, &m_theme, followAppearance);
    // Nothing one person saw (conversation, review, chat, inbox, books, payments, customers) shows to the next.
    QObject::connect(&m_root, &NativeRootState::changed, &m_pilo, [this] {
        if (m_root.phase() == NativeRootState::Phase::SignedIn)
            m_watch.start();
        else
            m_watch.stop();
        if (m_root.phase() != NativeRootState::Phase::SignedIn) {
            m_pilo.clear();
            m_piloReview.clear();
            m_chat.clear();
            m_huddle.clear();
            m_inbox.clear();
            m_mail.clear();
            m_books.clear();
            m_payments.clear();
            m_customers.clear();
            m_calls.clear();
            m_support.clear();
            m_portals.clear();
            m_documents.clear();
            m_company.clear();
            m_schedule.clear();
            m_marketScan.clear();
            m_websites.clear();
            m_overview.clear();
            m_kiln.clear();
            m_owner.clear();
            m_workPlan.clear();
            m_people.clear();
        }
    });
    m_watch.setNotifications(&m_notifier, [this] { return m_settings.desktopNotifications(); });
    // The watch raises nothing for the thread or room in front of the person, and counts it seen.
    const auto followFront = [this] {
        const TarnDestination shown = m_navigation.destination();
        QString front;
        if (m_window && m_window->isActive()) {
            if (shown.screen == TarnScreen::calls && shown.resolvedSection() == "Inbox"_L1
                && !m_inbox.selectedThread().isEmpty())
                front = u"inbox:"_s + m_inbox.selectedThread();
            else if (shown.screen == TarnScreen::chat && !m_chat.selectedRoom().isEmpty())
                front = u"chat:"_s + m_chat.selectedRoom();
        }
        m_watch.setInFront(front);
    };
    QObject::connect(&m_navigation, &TarnNavigation::destinationChanged, &m_watch, followFront);
    QObject::connect(&m_inbox, &NativeInboxView::threadChanged, &m_watch, followFront);
    QObject::connect(&m_chat, &NativeChatView::selectedRoomChanged, &m_watch, followFront);
    QObject::connect(&m_notifier, &NativeDesktopNotifier::activated, &m_inbox, [this](const QString &target) {
        if (target.startsWith("inbox:"_L1)) {
            m_navigation.open(TarnDestination { .screen = TarnScreen::calls, .section = u"Inbox"_s });
            m_inbox.selectThread(target.mid(6));
        } else if (target.startsWith("chat:"_L1)) {
            m_navigation.open(TarnDestination { .screen = TarnScreen::chat, .section = std::nullopt });
            m_chat.selectRoom(target.mid(5));
        }
        if (m_window) {
            m_window->show();
            m_window->raise();
            m_window->requestActivate();
        }
    });
    // A customer chosen in the command search opens in the register, which
    // has just been opened.
    QObject::connect(&m_navigation, &TarnNavigation::openRecordChanged, &m_customers, [this] {
        const std::optional<TarnOpenRecord> record = m_navigation.openRecord();
        if (!record || m_navigation.destination().screen != TarnScreen::sales)
            return;
        m_customers.open(record->id);
        m_navigation.setOpenRecord(std::nullopt);
    });
    // The open inbox counts sooner than the watch.
    QObject::connect(&m_inbox, &NativeInboxView::unrepliedCountChanged, &m_unread,
        [this] { m_unread.setInboxWaiting(m_inbox.unrepliedCount()); });
    NativeTheme::loadFonts();
    m_theme.attach(m_engine);

    // The style is the process's, fixed before its first window loads.
    if (QQuickStyle::name().isEmpty())
        QQuickStyle::setStyle(u"Fusion"_s);
    m_engine.setInitialProperties({
        { u"root"_s, QVariant::fromValue(&m_root) },
        { u"navigation"_s, QVariant::fromValue(&m_navigation) },
        { u"settings"_s, QVariant::fromValue(&m_settings) },
        { u"search"_s, QVariant::fromValue(&m_search) },
        { u"pilo"_s, QVariant::fromValue(&m_pilo) },
        { u"piloReview"_s, QVariant::fromValue(&m_piloReview) },
        { u"chat"_s, QVariant::fromValue(&m_chat) },
        { u"huddle"_s, QVariant::fromValue(&m_huddle) },
        { u"inbox"_s, QVariant::fromValue(&m_inbox) },
        { u"mail"_s, QVariant::fromValue(&m_mail) },
        { u"books"_s, QVariant::fromValue(&m_books) },
        { u"payments"_s, QVariant::fromValue(&m_payments) },
        { u"customers"_s, QVariant::fromValue(&m_customers) },
        { u"calls"_s, QVariant::fromValue(&m_calls) },
        { u"support"_s, QVariant::fromValue(&m_support) },
        { u"portals"_s, QVariant::fromValue(&m_portals) },
        { u"documents"_s, QVariant::fromValue(&m_documents) },
        { u"company"_s, QVariant::fromValue(&m_company) },
        { u"schedule"_s, QVariant::fromValue(&m_schedule) },
        { u"marketScan"_s, QVariant::fromValue(&m_marketScan) },
        { u"websites"_s, QVariant::fromValue(&m_websites) },
        { u"overview"_s, QVariant::fromValue(&m_overview) },
        { u"kiln"_s, QVariant::fromValue(&m_kiln) },
        { u"owner"_s, QVariant::fromValue(&m_owner) },
        { u"workPlan"_s, QVariant::fromValue(&m_workPlan) },
        { u"people"_s, QVariant::fromValue(&m_people) },
        { u"gallery"_s, content == Content::Gallery },
    });
    // Mail images come only from the open thread: the proxy or its attachments.
    m_engine.addImageProvider(u"mail"_s, new NativeMailImageProvider(m_mail.images()));
    QObject::connect(&m_mail, &NativeMailView::connectStarted, &m_mail, [this](const QUrl &start) {
        connectMailbox(m_auth, &m_mail, start, [this](const QString &error) { m_mail.finishConnecting(error); });
    });
    NativeConnectionsView *connections = m_company.connections();
    QObject::connect(
        connections, &NativeConnectionsView::googleConnectStarted, connections, [this, connections](const QUrl &start) {
            connectMailbox(
                m_auth, connections, start, [connections](const QString &error) { connections->finishGoogle(error); });
        });
    m_engine.load(QUrl(u"qrc:/PiloTarn/qml/Main.qml"_s));
    if (!m_engine.rootObjects().isEmpty())
        m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().constFirst());
    if (m_window)
        QObject::connect(m_window, &QWindow::activeChanged, &m_watch, followFront);
}

NativeAppWindow::~NativeAppWindow() = default;
