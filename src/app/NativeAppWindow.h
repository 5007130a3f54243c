#pragma once

#include "app/NativeActivityWatch.h"
#include "app/NativeDesktopNotifier.h"
#include "app/NativeRootState.h"
#include "app/NativeUnreadCount.h"
#include "assistant/NativePiloReview.h"
#include "assistant/TarnPiloConversation.h"
#include "auth/NativeAuth.h"
#include "chat/NativeChatView.h"
#include "chat/huddle/NativeHuddleView.h"
#include "inbox/NativeInboxView.h"
#include "mail/NativeMailView.h"
#include "money/NativeBooksView.h"
#include "money/NativePaymentsView.h"
#include "screens/calls/NativeCallsView.h"
#include "screens/company/NativeCompanyView.h"
#include "screens/customers/NativeCustomerSearchFeed.h"
#include "screens/customers/NativeCustomersView.h"
#include "screens/documents/NativeDocumentsView.h"
#include "screens/kiln/NativeKilnView.h"
#include "screens/marketscan/NativeMarketScanView.h"
#include "screens/overview/NativeOverviewView.h"
#include "screens/owner/NativeOwnerView.h"
#include "screens/people/NativePeopleView.h"
#include "screens/portals/NativePortalsView.h"
#include "screens/schedule/NativeScheduleView.h"
#include "screens/support/NativeSupportView.h"
#include "screens/websites/NativeWebsitesView.h"
#include "screens/workplan/NativeWorkPlanView.h"
#include "service/TarnAPI.h"
#include "shell/NativeCommandSearch.h"
#include "shell/NativeSettingsState.h"
#include "shell/TarnNavigation.h"
#include "shell/design/NativeTheme.h"

#include <QQmlApplicationEngine>

class Config;
class QQuickWindow;
class QSettings;
class TarnSessionStore;

// The window and the state objects behind it, built as the app runs them:
// the service client and sign-in over `store`, the navigation, settings,
// command search, root state and theme, and the QML window drawing them. The
// window is loaded but not shown, and nothing starts until root().start().
class NativeAppWindow {
public:
    // What the window shows: the app, or the design gallery alone, which
    // needs no sign-in.
    enum class Content { App, Gallery };

    // `store` and `preferences` must outlive the window.
    NativeAppWindow(
        const Config &config, TarnSessionStore &store, QSettings &preferences, Content content = Content::App);
    ~NativeAppWindow();
    NativeAppWindow(const NativeAppWindow &) = delete;
    NativeAppWindow &operator=(const NativeAppWindow &) = delete;

    // Null when the window's QML did not load.
    [[nodiscard]] QQuickWindow *window() const { return m_window; }
    [[nodiscard]] TarnAPI &api() { return m_api; }
    [[nodiscard]] TarnNavigation &navigation() { return m_navigation; }
    [[nodiscard]] NativeSettingsState &settings() { return m_settings; }
    [[nodiscard]] NativeCommandSearch &search() { return m_search; }
    [[nodiscard]] NativeRootState &root() { return m_root; }
    [[nodiscard]] NativeTheme &theme() { return m_theme; }
    [[nodiscard]] TarnPiloConversation &pilo() { return m_pilo; }
    [[nodiscard]] NativeChatView &chat() { return m_chat; }
    // The one huddle, whichever screen is shown.
    [[nodiscard]] NativeHuddleView &huddle() { return m_huddle; }
    [[nodiscard]] NativeInboxView &inbox() { return m_inbox; }
    // What waits for the person, for the launcher badge.
    [[nodiscard]] NativeUnreadCount &unread() { return m_unread; }
    [[nodiscard]] NativeMailView &mail() { return m_mail; }
    [[nodiscard]] NativeBooksView &books() { return m_books; }
    [[nodiscard]] NativePaymentsView &payments() { return m_payments; }
    [[nodiscard]] NativeCustomersView &customers() { return m_customers; }
    [[nodiscard]] NativeCallsView &calls() { return m_calls; }
    [[nodiscard]] NativeSupportView &support() { return m_support; }
    [[nodiscard]] NativePortalsView &portals() { return m_portals; }
    [[nodiscard]] NativeDocumentsView &documents() { return m_documents; }
    [[nodiscard]] NativeCompanyView &company() { return m_company; }
    [[nodiscard]] NativeScheduleView &schedule() { return m_schedule; }
    [[nodiscard]] NativeMarketScanView &marketScan() { return m_marketScan; }
    [[nodiscard]] NativeWebsitesView &websites() { return m_websites; }
    [[nodiscard]] NativeOverviewView &overview() { return m_overview; }
    [[nodiscard]] NativeKilnView &kiln() { return m_kiln; }
    [[nodiscard]] NativeOwnerView &owner() { return m_owner; }
    [[nodiscard]] NativeWorkPlanView &workPlan() { return m_workPlan; }
    [[nodiscard]] NativePeopleView &people() { return m_people; }

private:
    TarnAPI m_api;
    NativeAuth m_auth;
    TarnNavigation m_navigation;
    NativeSettingsState m_settings;
    NativeCommandSearch m_search;
    NativeRootState m_root;
    NativeTheme m_theme;
    TarnPiloConversation m_pilo;
    NativePiloReview m_piloReview;
    NativeChatView m_chat;
    NativeHuddleView m_huddle;
    NativeInboxView m_inbox;
    NativeUnreadCount m_unread;
    NativeActivityWatch m_watch;
    NativeDesktopNotifier m_notifier;
    NativeMailView m_mail;
    NativeBooksView m_books;
    NativePaymentsView m_payments;
    NativeCustomersView m_customers;
    NativeCustomerSearchFeed m_customerSearch;
    NativeCallsView m_calls;
    NativeSupportView m_support;
    NativePortalsView m_portals;
    NativeDocumentsView m_documents;
    NativeCompanyView m_company;
    NativeScheduleView m_schedule;
    NativeMarketScanView m_marketScan;
    NativeWebsitesView m_websites;
    NativeOverviewView m_overview;
    NativeKilnView m_kiln;
    NativeOwnerView m_owner;
    NativeWorkPlanView m_workPlan;
    NativePeopleView m_people;
    QQmlApplicationEngine m_engine;
    QQuickWindow *m_window = nullptr;
};
