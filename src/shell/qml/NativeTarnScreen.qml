import QtQuick
import QtQuick.Controls
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

// The current place: its breadcrumb trail and what it shows. The home page
// shows the work board, the books' pages and the payments terminal their
// screens; the screens of the other sections are not part of this version
// yet and say so under their title.
Pane {
    id: screen

    required property TarnNavigation navigation
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
    readonly property bool onAgent: navigation.destination.screenName === "agent"
    readonly property bool onBoard: onAgent && navigation.destination.resolvedSection === "New chat"
    readonly property bool onHistory: onAgent && navigation.destination.resolvedSection === "History"
    readonly property bool onReview: onAgent && navigation.destination.resolvedSection === "Blocked work"
    readonly property bool showsChat: navigation.destination.screenName === "chat"

    function showChat() {
        if (showsChat)
            chatLoader.setSource("qrc:/qt-project.org/imports/PiloTarn/Chat/qml/ChatScreen.qml", { chat: chat, huddle: huddle })
        else
            chatLoader.source = ""
    }
    onShowsChatChanged: showChat()
    onBooksPageChanged: booksLoader.showPage()
    Component.onCompleted: showChat()

    // The books area is the documents screen's money sections, one page
    // each. Not named "onBooks" or "onPayments": beside the `books` and
    // `payments` properties QML takes those names for handlers, and they
    // never update.
    readonly property var booksPages: ({
        "Dashboard": "BooksDashboard", "Transactions": "BooksTransactions", "Invoices": "BooksInvoices",
        "Expenses": "BooksExpenses", "Reports": "BooksReports", "Bank feed": "BooksBanking"
    })
    readonly property string booksPage: navigation.destination.screenName === "documents"
                                        ? booksPages[navigation.destination.resolvedSection] ?? "" : ""
    readonly property bool showsBooks: booksPage.length > 0
    readonly property bool showsPayments: navigation.destination.screenName === "payments"
    readonly property bool showsInbox: navigation.destination.screenName === "calls"
                                       && navigation.destination.resolvedSection === "Inbox"
    readonly property bool showsMail: navigation.destination.screenName === "mail"
    readonly property bool showsCustomers: navigation.destination.screenName === "sales"
                                           && (navigation.destination.resolvedSection === "Customers"
                                               || navigation.destination.resolvedSection === "Pipeline")
    readonly property string callsSection: navigation.destination.screenName === "calls"
                                           && navigation.destination.resolvedSection !== "Inbox"
                                           ? navigation.destination.resolvedSection : ""
    readonly property bool showsCalls: callsSection.length > 0
    readonly property bool showsLeads: navigation.destination.screenName === "sales"
                                       && navigation.destination.resolvedSection === "Lead Generation"
    readonly property bool showsSupport: navigation.destination.screenName === "support"
    readonly property bool showsPortals: navigation.destination.screenName === "portals"
    readonly property string documentsSection: navigation.destination.screenName === "documents" && !showsBooks
                                               ? navigation.destination.resolvedSection : ""
    readonly property bool showsDocuments: documentsSection.length > 0
    readonly property bool showsCompany: {
        const section = navigation.destination.resolvedSection
        return navigation.destination.screenName === "company"
               && (section === "My account" || section === "Team & access" || section === "SOPs"
                   || section === "Thought board" || section === "Connections")
    }
    readonly property bool showsOwner: navigation.destination.screenName === "owner"
    readonly property bool showsSchedule: navigation.destination.screenName === "schedule"
    readonly property bool showsMarketScan: navigation.destination.screenName === "marketscan"
    readonly property bool showsWebsites: navigation.destination.screenName === "websites"
    readonly property bool showsOverview: navigation.destination.screenName === "overview"
    readonly property bool showsKiln: navigation.destination.screenName === "kiln"
    readonly property bool showsWorkPlan: navigation.destination.screenName === "workplan"
    readonly property bool showsPeople: navigation.destination.screenName === "people"

    padding: 0
    background: null

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ColumnLayout {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl + Theme.spacing.xs
            Layout.rightMargin: Theme.spacing.xl
            Layout.topMargin: Theme.spacing.l + Theme.spacing.xs
            Layout.bottomMargin: Theme.spacing.m
            spacing: 4

            ListView {
                objectName: "trail"
                model: screen.navigation.trail
                orientation: ListView.Horizontal
                interactive: false
                spacing: 6
                implicitHeight: contentItem.childrenRect.height
                Layout.fillWidth: true

                delegate: RowLayout {
                    id: crumb

                    required property string modelData
                    required property int index
                    readonly property bool last: index === ListView.view.count - 1
                    spacing: 6

                    Icon {
                        visible: crumb.index > 0
                        symbol: "chevron.right"
                        size: 20
                        color: Theme.colours.tertiaryText
                    }
                    Text {
                        text: crumb.modelData
                        font.pixelSize: Theme.type.title2
                        font.weight: crumb.last ? Font.DemiBold : Font.Normal
                        color: crumb.last ? Theme.colours.text : Theme.colours.secondaryText
                    }
                }
            }

            Text {
                visible: text.length > 0
                text: screen.navigation.subtitle
                font.pixelSize: Theme.type.callout
                color: Theme.colours.secondaryText
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }

        WorkBoard {
            visible: screen.onBoard
            navigation: screen.navigation
            pilo: screen.pilo
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        PiloConversationView {
            objectName: "piloHistory"
            visible: screen.onHistory
            conversation: screen.pilo
            page: screen.navigation.piloPage
            draft: screen.navigation.pendingAgentDraft
            personName: screen.personName
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.l
            onDraftEdited: text => screen.navigation.pendingAgentDraft = text
            onShowHistoryRequested: screen.navigation.piloShowHistory = true
        }

        BlockedWorkList {
            visible: screen.onReview
            review: screen.piloReview
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.l
        }

        // Made only while shown, so the chat loads when it opens and stops
        // refreshing when it closes; its state is handed over as it is made.
        Loader {
            id: chatLoader
            objectName: "chatLoader"
            visible: status === Loader.Ready
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        // Loaded only while shown, so a screen's state loads when it opens.
        // Given by source with its state as an initial property, which a
        // component declared here could not reach without an outer id.
        Loader {
            id: booksLoader

            objectName: "booksPage"
            visible: status === Loader.Ready
            // Reads the page name itself: `showsBooks` may not have followed
            // it yet when this runs on its change.
            function showPage() {
                if (screen.booksPage.length > 0)
                    setSource("qrc:/qt-project.org/imports/PiloTarn/Money/qml/" + screen.booksPage + ".qml",
                              { view: screen.books })
                else
                    source = ""
            }
            Component.onCompleted: showPage()
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.l
        }

        Loader {
            objectName: "paymentsTerminal"
            active: screen.showsPayments
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Money/qml/PaymentsScreen.qml",
                                             { view: screen.payments })
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.l
        }

        Loader {
            objectName: "inboxScreen"
            active: screen.showsInbox
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Inbox/qml/InboxScreen.qml",
                                             { inbox: screen.inbox })
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            objectName: "mailScreen"
            active: screen.showsMail
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Mail/qml/MailScreen.qml",
                                             { mail: screen.mail })
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            id: customersLoader
            objectName: "customersScreen"
            active: screen.showsCustomers
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Customers/qml/CustomersScreen.qml",
                                             { view: screen.customers })
            Binding {
                target: customersLoader.item
                property: "pipeline"
                value: screen.navigation.destination.resolvedSection === "Pipeline"
                when: customersLoader.status === Loader.Ready
            }
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            id: callsLoader
            objectName: "callsScreen"
            active: screen.showsCalls
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Calls/qml/CallsScreen.qml",
                                             { calls: screen.calls, section: screen.callsSection })
            Binding {
                target: callsLoader.item
                property: "section"
                value: screen.callsSection
                when: callsLoader.status === Loader.Ready && screen.showsCalls
            }
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            objectName: "leadsScreen"
            active: screen.showsLeads
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Calls/qml/LeadsScreen.qml",
                                             { calls: screen.calls })
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            objectName: "supportScreen"
            active: screen.showsSupport
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Support/qml/SupportScreen.qml",
                                             { support: screen.support,
                                               section: Qt.binding(() => screen.navigation.destination.resolvedSection) })
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            objectName: "portalsScreen"
            active: screen.showsPortals
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Portals/qml/PortalsScreen.qml",
                                             { portals: screen.portals })
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            id: documentsLoader
            objectName: "documentsScreen"
            active: screen.showsDocuments
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Documents/qml/DocumentsScreen.qml",
                                             { view: screen.documents, section: screen.documentsSection })
            Binding {
                target: documentsLoader.item
                property: "section"
                value: screen.documentsSection
                when: documentsLoader.status === Loader.Ready && screen.showsDocuments
            }
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            id: ownerLoader

            objectName: "ownerScreen"
            active: screen.showsOwner
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Owner/qml/OwnerScreen.qml",
                                             { view: screen.owner })
            Connections {
                target: ownerLoader.item
                ignoreUnknownSignals: true

                function onOpenPlace(screenName: string, section: string) {
                    screen.navigation.openScreen(screenName, section)
                }
            }
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            objectName: "companyScreen"
            active: screen.showsCompany
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Company/qml/CompanyScreen.qml",
                                             { company: screen.company,
                                               section: Qt.binding(() => screen.navigation.destination.resolvedSection) })
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            id: scheduleLoader
            objectName: "scheduleScreen"
            active: screen.showsSchedule
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Schedule/qml/ScheduleScreen.qml",
                                             { view: screen.schedule,
                                               section: screen.navigation.destination.resolvedSection })
            Binding {
                target: scheduleLoader.item
                property: "section"
                value: screen.navigation.destination.resolvedSection
                when: scheduleLoader.status === Loader.Ready && screen.showsSchedule
            }
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            id: peopleLoader

            objectName: "peopleScreen"
            active: screen.showsPeople
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/People/qml/PeopleScreen.qml",
                                             { people: screen.people,
                                               section: Qt.binding(() => screen.navigation.destination.resolvedSection) })
            Connections {
                target: peopleLoader.item
                ignoreUnknownSignals: true

                function onOpenSection(section: string) {
                    screen.navigation.openScreen("people", section)
                }
            }
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            objectName: "marketScanScreen"
            active: screen.showsMarketScan
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/MarketScan/qml/MarketScanScreen.qml",
                                             { view: screen.marketScan })
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            objectName: "websitesScreen"
            active: screen.showsWebsites
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Websites/qml/WebsitesScreen.qml",
                                             { view: screen.websites })
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            id: overviewLoader
            objectName: "overviewScreen"
            active: screen.showsOverview
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Overview/qml/OverviewScreen.qml",
                                             { view: screen.overview,
                                               section: screen.navigation.destination.resolvedSection })
            Binding {
                target: overviewLoader.item
                property: "section"
                value: screen.navigation.destination.resolvedSection
                when: overviewLoader.status === Loader.Ready && screen.showsOverview
            }
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            objectName: "workPlanScreen"
            active: screen.showsWorkPlan
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/WorkPlan/qml/WorkPlanScreen.qml",
                                             { view: screen.workPlan })
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        Loader {
            objectName: "kilnScreen"
            active: screen.showsKiln
            visible: active
            Component.onCompleted: setSource("qrc:/qt-project.org/imports/PiloTarn/Kiln/qml/KilnScreen.qml",
                                             { view: screen.kiln })
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        EmptyScreen {
            visible: !screen.onBoard && !screen.onHistory && !screen.onReview && !screen.showsChat
                     && !screen.showsBooks && !screen.showsPayments && !screen.showsInbox && !screen.showsMail
                     && !screen.showsCustomers
                     && !screen.showsCalls
                     && !screen.showsLeads
                     && !screen.showsSupport
                     && !screen.showsPortals
                     && !screen.showsDocuments
                     && !screen.showsCompany
                     && !screen.showsOwner
                     && !screen.showsSchedule
                     && !screen.showsMarketScan
                     && !screen.showsWebsites
                     && !screen.showsOverview
                     && !screen.showsKiln
                     && !screen.showsWorkPlan
                     && !screen.showsPeople
            place: screen.navigation.placeName
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }

    IconButton {
        objectName: "piloToggle"
        anchors.top: parent.top
        anchors.right: parent.right
        anchors.margins: Theme.spacing.l
        symbol: "sparkles"
        lit: screen.navigation.piloPanelOpen
        text: screen.navigation.piloPanelOpen ? qsTr("Close Pilo (Ctrl+J)") : qsTr("Ask Pilo (Ctrl+J)")
        onClicked: screen.navigation.piloPanelOpen = !screen.navigation.piloPanelOpen
    }
}
