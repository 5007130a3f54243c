import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Inbox
import PiloTarn.Design

// The shared inbox: the filters and the threads at the side, the open
// thread beside them. It loads when it is made and stops refreshing when it
// goes away.
Pane {
    id: screen

    required property NativeInboxView inbox

    padding: 0
    background: null

    Component.onCompleted: inbox.appear()
    Component.onDestruction: inbox.disappear()

    ConfirmSheet {
        id: newConversation
        title: qsTr("New conversation")
        text: qsTr("Text a customer's number, or write to their address.")
        confirmText: qsTr("Start")
        onOpened: address.text = ""
        onConfirmed: screen.inbox.newConversation(address.text, "", email.checked ? "email" : "text")

        FormField {
            id: address
            objectName: "newConversationAddress"
            label: qsTr("Number or address")
            placeholderText: qsTr("+1 555 0100")
            Layout.fillWidth: true
        }
        CheckBox {
            id: email
            text: qsTr("Email")
        }
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        ColumnLayout {
            spacing: Theme.spacing.s
            Layout.preferredWidth: 320
            Layout.fillHeight: true
            Layout.leftMargin: Theme.spacing.l
            Layout.bottomMargin: Theme.spacing.l

            RowLayout {
                spacing: Theme.spacing.xs
                Layout.fillWidth: true

                ComboBox {
                    objectName: "inboxScope"
                    textRole: "label"
                    valueRole: "value"
                    model: [{ label: qsTr("All"), value: "all" }, { label: qsTr("Mine"), value: "mine" },
                        { label: qsTr("Unassigned"), value: "unassigned" }]
                    Accessible.name: qsTr("Whose conversations")
                    Component.onCompleted: currentIndex = indexOfValue(screen.inbox.scope)
                    onActivated: screen.inbox.scope = currentValue
                    Layout.fillWidth: true
                }
                ComboBox {
                    objectName: "inboxView"
                    textRole: "label"
                    valueRole: "value"
                    model: [{ label: qsTr("Open"), value: "open" }, { label: qsTr("Snoozed"), value: "snoozed" },
                        { label: qsTr("Done"), value: "done" }]
                    Accessible.name: qsTr("Which conversations")
                    Component.onCompleted: currentIndex = indexOfValue(screen.inbox.view)
                    onActivated: screen.inbox.view = currentValue
                    Layout.fillWidth: true
                }
                ComboBox {
                    objectName: "inboxKind"
                    textRole: "label"
                    valueRole: "value"
                    model: [{ label: qsTr("Every channel"), value: "all" }, { label: qsTr("Texts"), value: "text" },
                        { label: qsTr("Email"), value: "email" }, { label: qsTr("Web forms"), value: "web" }]
                    Accessible.name: qsTr("Channel")
                    Component.onCompleted: currentIndex = indexOfValue(screen.inbox.kind)
                    onActivated: screen.inbox.kind = currentValue
                    Layout.fillWidth: true
                }
            }

            SectionHeader {
                text: screen.inbox.unrepliedCount === 1 ? qsTr("1 waiting for a reply")
                                                        : qsTr("%1 waiting for a reply").arg(screen.inbox.unrepliedCount)
                Layout.fillWidth: true

                IconButton {
                    objectName: "newConversation"
                    symbol: "square.and.pencil"
                    text: qsTr("New conversation")
                    onClicked: newConversation.open()
                }
            }

            InboxList {
                inbox: screen.inbox
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
        }

        Rectangle {
            implicitWidth: 1
            color: Theme.colours.separator
            Layout.fillHeight: true
        }

        InboxThread {
            visible: screen.inbox.selectedThread.length > 0
            inbox: screen.inbox
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        EmptyState {
            visible: screen.inbox.selectedThread.length === 0
            symbol: "tray"
            title: qsTr("No conversation open")
            text: qsTr("Choose a conversation to read it and reply.")
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
