#include "app/NativeAppWindow.h"
#include "app/NativeDesktopEntry.h"
#include "app/NativeLauncherBadge.h"
#include "app/NativeRootState.h"
#include "app/NativeScreenshot.h"
#include "app/NativeWindowMemory.h"
#include "auth/NativeSessionStore.h"
#include "auth/NativeSingleInstance.h"
#include "service/Config.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QQuickWindow>
#include <QSettings>

#include <QtWebEngineQuick/qtwebenginequickglobal.h>

#include <memory>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// The shot of a screen whose state reports `loading` waits until a load has
// started and ended, so it never catches the screen before its first answer.
template <typename State, typename Signal>
void waitForFirstLoad(NativeScreenshot &capture, State &state, Signal changed)
{
    auto started = std::make_shared<bool>(false);
    capture.setReady([&state, started] { return *started && !state.loading(); });
    QObject::connect(&state, changed, &capture, [&capture, &state, started] {
        *started = *started || state.loading();
        capture.recheck();
    });
}

} // namespace

int main(int argc, char **argv)
{
    // The web workspace's engine shares the window's graphics context, set
    // up before the application. Its sandbox refuses to start as root (as on
    // the build machines), so there, and only there, it runs without one.
    if (::geteuid() == 0 && !qEnvironmentVariableIsSet("QTWEBENGINE_CHROMIUM_FLAGS"))
        qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--no-sandbox");
    QtWebEngineQuick::initialize();
    // A widgets application: the books' charts draw through the Graphics
    // View framework, which needs one.
    QApplication application(argc, argv);
    QGuiApplication::setApplicationName(u"pilo-tarn"_s);
    QGuiApplication::setOrganizationName(u"Halvard"_s);
    QGuiApplication::setOrganizationDomain(u"halvard.co"_s);
    QGuiApplication::setApplicationDisplayName(u"Pilo Tarn"_s);
    QGuiApplication::setDesktopFileName(u"pilo-tarn"_s);

    QCommandLineParser parser;
    parser.setApplicationDescription(u"Pilo Tarn, the desktop client of your Tarn workspace."_s);
    parser.addHelpOption();
    const QCommandLineOption workspaceURL(u"workspace"_s, u"The workspace service's https address."_s, u"URL"_s);
    const QCommandLineOption workspaceCA(
        u"workspace-ca"_s, u"One extra certificate to trust for it (PEM)."_s, u"FILE"_s);
    const QCommandLineOption screenshot(u"screenshot"_s,
        u"Save the window as a PNG once it has loaded, then quit. PILO_TARN_SCREENSHOT_PROFILE names the place to show."_s,
        u"FILE.png"_s);
    parser.addOption(workspaceURL);
    parser.addOption(workspaceCA);
    const QCommandLineOption registerEntry(u"register-desktop-entry"_s,
        u"Make this executable the handler of pilo-tarn:// addresses, unless Pilo Tarn is installed, then quit."_s);
    parser.addOption(registerEntry);
    parser.addOption(screenshot);
    parser.addPositionalArgument(u"address"_s, u"A pilo-tarn:// address handed over by the desktop."_s);
    parser.process(application);
    const QUrl address(parser.positionalArguments().value(0), QUrl::StrictMode);
    if (parser.isSet(registerEntry))
        return NativeDesktopEntry::registerBuildTree(QGuiApplication::applicationFilePath())
                == NativeDesktopEntry::Outcome::failed
            ? 1
            : 0;

    // A screenshot run stays out of the way of the running app.
    const bool capturing = parser.isSet(screenshot);
    NativeSingleInstance instance(u"pilo-tarn"_s);
    if (!capturing && !instance.claim())
        return instance.forward(address) ? 0 : 1;

    QString error;
    const std::optional<Config> config
        = Config::fromOptions(parser.value(workspaceURL), parser.value(workspaceCA), &error);
    if (!config) {
        qCritical("%s", qPrintable(error));
        return 2;
    }

    QSettings preferences;
    NativeSessionStore store;
    const NativeScreenshot::Profile profile
        = NativeScreenshot::profile(qEnvironmentVariable(NativeScreenshot::profileVariable));
    NativeAppWindow app(*config, store, preferences,
        profile.gallery ? NativeAppWindow::Content::Gallery : NativeAppWindow::Content::App);
    app.theme().forceDark(profile.dark);
    NativeRootState &root = app.root();
    root.setStartDestination(NativeScreenshot::destination(profile.place));

    // The count on the launcher belongs to the person signed in.
    NativeLauncherBadge badge(QGuiApplication::desktopFileName() + u".desktop"_s);
    badge.clear();
    QObject::connect(&root, &NativeRootState::signedOut, &root, [&badge] { badge.clear(); });
    QObject::connect(
        &app.unread(), &NativeUnreadCount::totalChanged, &root, [&badge](qint64 total) { badge.setCount(total); });

    QQuickWindow *window = app.window();
    if (!window)
        return 1;

    NativeWindowMemory memory(preferences);
    if (!capturing) {
        memory.restore(*window);
        QObject::connect(
            &application, &QGuiApplication::aboutToQuit, window, [&memory, window] { memory.save(*window); });
    }
    window->show();
    std::unique_ptr<NativeScreenshot> capture;
    if (capturing) {
        capture = std::make_unique<NativeScreenshot>(
            *window, profile.gallery ? nullptr : &root, app.navigation(), profile, parser.value(screenshot));
        if (profile.pilo) {
            TarnPiloConversation &pilo = app.pilo();
            capture->setReady([&pilo] { return pilo.loaded(); });
            QObject::connect(
                &pilo, &TarnPiloConversation::conversationChanged, capture.get(), [&capture] { capture->recheck(); });
        }
        const std::optional<TarnDestination> shown = NativeScreenshot::destination(profile.place);
        if (shown && shown->screen == TarnScreen::chat) {
            NativeChatView &chat = app.chat();
            chat.setComposerText(qEnvironmentVariable(NativeScreenshot::composerVariable));
            auto loaded = std::make_shared<bool>(false);
            capture->setReady([loaded] { return *loaded; });
            if (profile.place == "huddle"_L1) {
                // Shown once the huddle started in the room that opened is live,
                // with the person's camera on (its first frame drawn) where one is.
                NativeHuddleView &huddle = app.huddle();
                auto cameraTried = std::make_shared<bool>(false);
                capture->setReady([&huddle, cameraTried] {
                    return huddle.status() == "Live"_L1 && *cameraTried && !huddle.cameraChanging()
                        && (!huddle.cameraOn() || huddle.selfView()->frames() > 0);
                });
                QObject::connect(&huddle, &NativeHuddleView::changed, capture.get(), [&capture, &huddle, cameraTried] {
                    if (huddle.status() == "Live"_L1 && !*cameraTried) {
                        *cameraTried = true;
                        huddle.toggleCamera();
                    }
                    capture->recheck();
                });
                QObject::connect(huddle.selfView(), &NativeHuddleTrack::frameChanged, capture.get(),
                    [&capture] { capture->recheck(); });
                QObject::connect(&chat, &NativeChatView::refreshed, capture.get(), [&chat, &huddle] {
                    if (!huddle.running() && !chat.selectedRoom().isEmpty())
                        huddle.join(chat.selectedRoom());
                });
            } else {
                QObject::connect(&chat, &NativeChatView::refreshed, capture.get(), [&capture, loaded] {
                    *loaded = true;
                    capture->recheck();
                });
            }
        } else if (shown && shown->screen == TarnScreen::calls && shown->section == "Inbox"_L1) {
            // The inbox is shown with its newest thread open.
            NativeInboxView &inbox = app.inbox();
            capture->setReady([&inbox] { return !inbox.threadTitle().isEmpty(); });
            QObject::connect(&inbox, &NativeInboxView::refreshed, capture.get(), [&capture, &inbox] {
                if (inbox.selectedThread().isEmpty() && inbox.threads()->rowCount() > 0)
                    inbox.selectThread(inbox.threads()->rows().constFirst().id);
                capture->recheck();
            });
        } else if (shown && shown->screen == TarnScreen::calls) {
            // The call book once its first load is in; the recordings with
            // the newest one loaded into the player.
            NativeCallsView &calls = app.calls();
            const bool recordings = shown->section == "Recordings"_L1;
            capture->setReady(
                [&calls, recordings] { return calls.loaded() && (!recordings || calls.player()->ready()); });
            QObject::connect(&calls, &NativeCallsView::busyChanged, capture.get(), [&capture, &calls, recordings] {
                if (recordings && calls.loaded() && calls.player()->callId().isEmpty()
                    && calls.recordings()->rowCount() > 0) {
                    calls.playRecording(calls.recordings()->rows().constFirst().id);
                }
                capture->recheck();
            });
            QObject::connect(
                calls.player(), &NativeCallPlayer::stateChanged, capture.get(), [&capture] { capture->recheck(); });
        } else if (shown && shown->screen == TarnScreen::mail) {
            // The shot shows the first conversation open, its messages drawn.
            NativeMailView &mail = app.mail();
            auto drawn = std::make_shared<bool>(false);
            capture->setReady([drawn] { return *drawn; });
            const QString composing = qEnvironmentVariable(NativeScreenshot::composerVariable);
            const auto settle = [&capture, &mail, drawn, composing] {
                if (!composing.isEmpty() && !mail.composer()->isOpen()) {
                    mail.composer()->compose();
                    mail.composer()->setText(composing);
                }
                *drawn = true;
                capture->recheck();
            };
            QObject::connect(&mail, &NativeMailView::listLoaded, capture.get(), [&mail, settle] {
                if (mail.connected() && mail.selectedThread().isEmpty() && mail.threads()->rowCount() > 0)
                    mail.select(mail.threads()->ids().constFirst());
                else if (mail.selectedThread().isEmpty())
                    settle();
            });
            QObject::connect(&mail, &NativeMailView::threadParsed, capture.get(), settle);
        } else if (shown && shown->screen == TarnScreen::sales && !shown->section) {
            // Lead Generation once the leads are in, with the first one open.
            NativeCallsView &calls = app.calls();
            capture->setReady([&calls] { return calls.loaded() && !calls.openLeadId().isEmpty(); });
            QObject::connect(&calls, &NativeCallsView::refreshed, capture.get(), [&capture, &calls] {
                if (calls.openLeadId().isEmpty() && calls.leads()->rowCount() > 0)
                    calls.openLeadDetail(calls.leads()->rows().constFirst().id);
                capture->recheck();
            });
            QObject::connect(&calls, &NativeCallsView::leadChanged, capture.get(), [&capture] { capture->recheck(); });
        } else if (shown && shown->screen == TarnScreen::sales) {
            // The register is shown once loaded, the list with its first
            // customer's profile open and its timeline in.
            NativeCustomersView &customers = app.customers();
            const bool withProfile = shown->section == "Customers"_L1;
            capture->setReady([&customers, withProfile] {
                const NativeCustomerProfile &open = *customers.profile();
                return customers.loaded() && (!withProfile || (open.isOpen() && !open.loading()));
            });
            QObject::connect(
                &customers, &NativeCustomersView::refreshed, capture.get(), [&capture, &customers, withProfile] {
                    if (withProfile && !customers.profile()->isOpen() && customers.count() > 0)
                        customers.open(customers.customerAt(0));
                    capture->recheck();
                });
            QObject::connect(
                customers.profile(), &NativeCustomerProfile::loaded, capture.get(), [&capture] { capture->recheck(); });
        } else if (shown && shown->screen == TarnScreen::payments)
            waitForFirstLoad(*capture, app.payments(), &NativePaymentsView::stateChanged);
        else if (shown && shown->screen == TarnScreen::support)
            waitForFirstLoad(*capture, app.support(), &NativeSupportView::loadingChanged);
        // The dashboard once loaded, with the first client's portal open.
        else if (shown && shown->screen == TarnScreen::portals) {
            NativePortalsView &portals = app.portals();
            capture->setReady([&portals] { return portals.loaded() && !portals.openClientId().isEmpty(); });
            QObject::connect(&portals, &NativePortalsView::refreshed, capture.get(), [&capture, &portals] {
                if (portals.loaded() && portals.openClientId().isEmpty() && portals.accounts()->rowCount() > 0)
                    portals.openPortal(portals.accountRows().rows().constFirst().client_id);
                capture->recheck();
            });
        }
        // The worksheets with the first longer one's pages previewed.
        else if (profile.place == "document-preview"_L1) {
            NativeDocumentsView &documents = app.documents();
            NativePdfPreview *preview = documents.preview();
            capture->setReady([preview] { return preview->pageCount() > 0; });
            QObject::connect(&documents, &NativeDocumentsView::refreshed, capture.get(), [&documents, preview] {
                const QList<TarnDocument> &rows = documents.documents()->rows();
                const auto longer
                    = std::find_if(rows.begin(), rows.end(), [](const TarnDocument &d) { return d.pages > 1; });
                if (!preview->isOpen() && longer != rows.end())
                    preview->show(longer->id, longer->title);
            });
            QObject::connect(preview, &NativePdfPreview::loaded, capture.get(), [&capture] { capture->recheck(); });
        }
        // The documents sections once their documents are in; "envelopes"
        // with the first envelope that is out for signature open.
        else if (shown && shown->screen == TarnScreen::documents
            && (!shown->section || shown->section == "Envelopes"_L1)) {
            NativeDocumentsView &documents = app.documents();
            const bool envelope = shown->section.has_value();
            capture->setReady([&documents, envelope] {
                return documents.loaded() && (!envelope || documents.envelope().has_value());
            });
            QObject::connect(
                &documents, &NativeDocumentsView::refreshed, capture.get(), [&capture, &documents, envelope] {
                    const QList<TarnDocument> &shownRows = documents.documents()->rows();
                    const auto out = std::find_if(shownRows.begin(), shownRows.end(),
                        [](const TarnDocument &d) { return d.envelope_status == u"sent"_s; });
                    if (envelope && !documents.envelope() && out != shownRows.end())
                        documents.openDocument(out->id);
                    capture->recheck();
                });
            QObject::connect(
                &documents, &NativeDocumentsView::envelopeChanged, capture.get(), [&capture] { capture->recheck(); });
        } else if (shown && shown->screen == TarnScreen::company && shown->section == "Connections"_L1) {
            // The section draws once the screen and its connections are in.
            NativeCompanyView &company = app.company();
            capture->setReady([&company] {
                return company.loaded() && company.connections()->loaded() && !company.connections()->loading();
            });
            const auto recheck = [&capture] { capture->recheck(); };
            QObject::connect(&company, &NativeCompanyView::busyChanged, capture.get(), recheck);
            QObject::connect(company.connections(), &NativeConnectionsView::busyChanged, capture.get(), recheck);
        } else if (shown && shown->screen == TarnScreen::company)
            waitForFirstLoad(*capture, app.company(), &NativeCompanyView::busyChanged);
        else if (shown && shown->screen == TarnScreen::owner)
            waitForFirstLoad(*capture, app.owner(), &NativeOwnerView::busyChanged);
        else if (shown && shown->screen == TarnScreen::websites) {
            // The sites once loaded, with the first live one checked.
            NativeWebsitesView &websites = app.websites();
            capture->setReady([&websites] { return websites.loaded() && !websites.checkedUrl().isEmpty(); });
            QObject::connect(&websites, &NativeWebsitesView::refreshed, capture.get(), [&capture, &websites] {
                if (websites.checkedUrl().isEmpty() && !websites.checking() && websites.sites()->rowCount() > 0)
                    websites.checkSite(websites.sites()->rows().constFirst().id);
                capture->recheck();
            });
        } else if (shown && shown->screen == TarnScreen::kiln)
            waitForFirstLoad(*capture, app.kiln(), &NativeKilnView::busyChanged);
        else if (shown && shown->screen == TarnScreen::overview)
            waitForFirstLoad(*capture, app.overview(), &NativeOverviewView::busyChanged);
        else if (shown && shown->screen == TarnScreen::marketScan)
            waitForFirstLoad(*capture, app.marketScan(), &NativeMarketScanView::busyChanged);
        else if (shown && shown->screen == TarnScreen::schedule && shown->section != u"Booking links"_s) {
            // The calendar as a week, or as a month for its own profile.
            app.schedule().setMode(
                profile.place == "schedule-month"_L1 ? NativeScheduleView::monthMode : NativeScheduleView::weekMode);
            waitForFirstLoad(*capture, app.schedule(), &NativeScheduleView::busyChanged);
        } else if (shown && shown->screen == TarnScreen::schedule) {
            // The booking links with the first booked one open.
            NativeScheduleView &schedule = app.schedule();
            capture->setReady([&schedule] { return schedule.bookings()->rowCount() > 0; });
            QObject::connect(&schedule, &NativeScheduleView::refreshed, capture.get(), [&schedule] {
                const QList<TarnBookingLink> &links = schedule.links()->rows();
                const auto booked = std::find_if(
                    links.begin(), links.end(), [](const TarnBookingLink &link) { return link.bookings > 0; });
                if (schedule.openLinkId().isEmpty() && booked != links.end())
                    schedule.openLink(booked->id);
            });
            QObject::connect(schedule.bookings(), &QAbstractItemModel::rowsInserted, capture.get(),
                [&capture] { capture->recheck(); });
        } else if (shown && shown->screen == TarnScreen::workPlan)
            waitForFirstLoad(*capture, app.workPlan(), &NativeWorkPlanView::busyChanged);
        // A people section once its page's first answer (or refusal) is in.
        else if (shown && shown->screen == TarnScreen::people) {
            const QString name = shown->resolvedSection();
            NativePeopleSection *section = name == "Payroll"_L1
                ? static_cast<NativePeopleSection *>(app.people().payroll())
                : name == "Time clock"_L1 ? static_cast<NativePeopleSection *>(app.people().timeClock())
                                          : app.people().hr();
            capture->setReady([section] { return section->loaded(); });
            QObject::connect(
                section, &NativePeopleSection::refreshed, capture.get(), [&capture] { capture->recheck(); });
        }
        // A books page (the only documents places a profile names) is shown
        // once the Dashboard's months are in, which follow the overview
        // every page loads, and the period its page asked for is.
        else if (shown && shown->screen == TarnScreen::documents && shown->section) {
            NativeBooksView &books = app.books();
            auto started = std::make_shared<bool>(false);
            capture->setReady([&books, started] {
                return *started && !books.dashboard()->loading() && !books.expenses()->loading()
                    && !books.report()->loading();
            });
            const auto recheck = [&capture, &books, started] {
                *started = *started || books.dashboard()->loading();
                capture->recheck();
            };
            QObject::connect(books.dashboard(), &NativeBooksDashboard::changed, capture.get(), recheck);
            QObject::connect(books.expenses(), &NativeBooksExpenses::changed, capture.get(), recheck);
            QObject::connect(books.report(), &NativeBooksReport::changed, capture.get(), recheck);
        }
    }

    QObject::connect(&instance, &NativeSingleInstance::activated, &root, [&](const QUrl &url) {
        if (!url.isEmpty())
            root.openCallback(url);
        window->show();
        window->raise();
        window->requestActivate();
    });

    if (!profile.gallery)
        root.start();
    return QGuiApplication::exec();
}
