import QtQuick
import QtQuick.Layouts
import PiloTarn.Shell
import PiloTarn.Design
import PiloTarn.Assistant
import PiloTarn.Chat
import PiloTarn.Inbox
import PiloTarn.Customers
import PiloTarn.Calls
import PiloTarn.Mail
import PiloTarn.Money
import PiloTarn.Support
import PiloTarn.Portals
import PiloTarn.Documents
import PiloTarn.Company
import PiloTarn.Schedule
import PiloTarn.MarketScan
import PiloTarn.Websites
import PiloTarn.Overview
import PiloTarn.Kiln
import PiloTarn.Owner
import PiloTarn.WorkPlan
import PiloTarn.People

// The signed-in window: the sidebar, the current screen, the command search
// and the settings window, with their keyboard shortcuts.
Item {
    id: shell

    required property TarnNavigation navigation
    required property NativeSettingsState settings
    required property NativeCommandSearch search
    required property TarnPiloConversation pilo
    required property NativePiloReview piloReview
    required property NativeChatView chat
    required property NativeHuddleView huddle
    required property NativeInboxView inbox
    required property NativeCustomersView customers
    required property NativeCallsView calls
    required property NativeMailView mail
    required property NativeBooksView books
    required property NativePaymentsView payments
    required property NativeSupportView support
    required property NativePortalsView portals
    required property NativeDocumentsView documents
    required property NativeCompanyView company
    required property NativeScheduleView schedule
    required property NativeMarketScanView marketScan
    required property NativeWebsitesView websites
    required property NativeOverviewView overview
    required property NativeKilnView kiln
    required property NativeOwnerView owner
    required property NativeWorkPlanView workPlan
    required property NativePeopleView people
    property string personName
    property string personEmail
    // Set while signing out, so the way out is not offered twice.
    property bool signingOut: false

    signal signOutRequested()

    readonly property bool onPiloHistory: navigation.destination.screenName === "agent"
                                          && navigation.destination.resolvedSection === "History"

    // The conversation is loaded and polled only while someone looks at it;
    // the agent screen's History shows every request.
    Binding {
        target: shell.pilo
        property: "active"
        value: shell.visible && (shell.navigation.piloPanelOpen || shell.onPiloHistory)
    }
    Binding {
        target: shell.pilo
        property: "showHistory"
        value: shell.navigation.piloShowHistory || shell.onPiloHistory
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        NativeTarnSidebar {
            objectName: "sidebar"
            navigation: shell.navigation
            personName: shell.personName
            personEmail: shell.personEmail
            Layout.fillHeight: true
            onSearchRequested: shell.search.toggle()
            onSettingsRequested: shell.navigation.appearanceOpen = true
            onSignOutRequested: if (!shell.signingOut) shell.signOutRequested()
        }

        Rectangle {
            implicitWidth: 1
            color: Theme.colours.separator
            Layout.fillHeight: true
        }

        NativeTarnScreen {
            objectName: "screen"
            navigation: shell.navigation
            pilo: shell.pilo
            piloReview: shell.piloReview
            chat: shell.chat
            huddle: shell.huddle
            inbox: shell.inbox
            customers: shell.customers
            calls: shell.calls
            mail: shell.mail
            books: shell.books
            payments: shell.payments
            support: shell.support
            portals: shell.portals
            documents: shell.documents
            company: shell.company
            schedule: shell.schedule
            marketScan: shell.marketScan
            websites: shell.websites
            overview: shell.overview
            kiln: shell.kiln
            owner: shell.owner
            workPlan: shell.workPlan
            people: shell.people
            personName: shell.personName
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Rectangle {
            visible: shell.navigation.piloPanelOpen
            implicitWidth: 1
            color: Theme.colours.separator
            Layout.fillHeight: true
        }

        PiloPanel {
            objectName: "piloPanel"
            visible: shell.navigation.piloPanelOpen
            conversation: shell.pilo
            page: shell.navigation.piloPage
            draft: shell.navigation.pendingAgentDraft
            personName: shell.personName
            Layout.preferredWidth: 380
            Layout.fillHeight: true
            onDraftEdited: text => shell.navigation.pendingAgentDraft = text
            onShowHistoryRequested: shell.navigation.piloShowHistory = true
            onCloseRequested: shell.navigation.piloPanelOpen = false
        }
    }

    CommandSearchPopup {
        navigation: shell.navigation
        search: shell.search
    }

    SettingsWindow {
        navigation: shell.navigation
        settings: shell.settings
        signingOut: shell.signingOut
        onSignOutRequested: shell.signOutRequested()
    }

    Shortcut {
        sequence: "Ctrl+K"
        enabled: shell.visible
        onActivated: shell.search.toggle()
    }
    Shortcut {
        sequence: "Ctrl+,"
        enabled: shell.visible
        onActivated: shell.navigation.appearanceOpen = true
    }
    Shortcut {
        sequence: "Ctrl+J"
        enabled: shell.visible
        onActivated: shell.navigation.piloPanelOpen = !shell.navigation.piloPanelOpen
    }
    Shortcut {
        sequence: "Ctrl+\\"
        enabled: shell.visible
        onActivated: shell.navigation.sidebarCollapsed = !shell.navigation.sidebarCollapsed
    }
}
