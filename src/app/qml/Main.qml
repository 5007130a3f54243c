import QtQuick
import QtQuick.Controls
import PiloTarn
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

ApplicationWindow {
    id: window

    required property NativeRootState root
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
    // The design gallery alone, in place of the app.
    property bool gallery: false
    readonly property bool signedIn: root.phase === NativeRootState.SignedIn

    width: 1120
    height: 740
    minimumWidth: 720
    minimumHeight: 480
    title: qsTr("Pilo Tarn")
    color: Theme.colours.window
    font.pixelSize: Theme.type.callout
    // The stock controls that remain follow the theme through the palette.
    palette.window: Theme.colours.window
    palette.windowText: Theme.colours.text
    palette.base: Theme.colours.surface
    palette.alternateBase: Theme.colours.sidebar
    palette.text: Theme.colours.text
    palette.button: Theme.colours.surface
    palette.buttonText: Theme.colours.text
    palette.highlight: Theme.colours.accent
    palette.highlightedText: Theme.colours.accentText
    palette.placeholderText: Theme.colours.tertiaryText
    palette.mid: Theme.colours.border
    palette.toolTipBase: Theme.colours.toast
    palette.toolTipText: Theme.colours.toastText

    Loader {
        anchors.fill: parent
        active: window.gallery
        sourceComponent: Gallery {}
    }

    SignInView {
        objectName: "signInView"
        visible: !window.gallery && !window.signedIn
        anchors.fill: parent
        root: window.root
    }

    // Kept while signed out: it shows the navigation, which sign-out resets.
    NativeTarnRoot {
        visible: !window.gallery && window.signedIn
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: huddleBar.visible ? huddleBar.top : parent.bottom
        navigation: window.navigation
        settings: window.settings
        search: window.search
        pilo: window.pilo
        piloReview: window.piloReview
        chat: window.chat
        huddle: window.huddle
        inbox: window.inbox
        customers: window.customers
        calls: window.calls
        mail: window.mail
        books: window.books
        payments: window.payments
        support: window.support
        portals: window.portals
        documents: window.documents
        company: window.company
        schedule: window.schedule
        marketScan: window.marketScan
        websites: window.websites
        overview: window.overview
        kiln: window.kiln
        owner: window.owner
        workPlan: window.workPlan
        people: window.people
        personName: window.root.personName
        personEmail: window.root.personEmail
        signingOut: window.root.busy
        onSignOutRequested: window.root.signOut()
    }

    HuddleBar {
        id: huddleBar
        objectName: "huddleBar"
        visible: !window.gallery && window.signedIn && huddle.running
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        huddle: window.huddle
    }
}
