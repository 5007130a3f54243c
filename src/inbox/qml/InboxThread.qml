import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Inbox
import PiloTarn.Design

// The open thread: who it is with and its state in the toolbar, with the
// actions (assign, snooze, done or reopen, make the sender a customer), the
// entries oldest first, and the composer where the thread can be answered.
ColumnLayout {
    id: thread

    required property NativeInboxView inbox

    spacing: Theme.spacing.s

    NativeSnoozeSheet {
        id: snoozeSheet
        inbox: thread.inbox
    }

    ConfirmSheet {
        id: customerSheet
        title: qsTr("Make a customer")
        text: qsTr("Adds %1 to the Customers board and links this conversation.").arg(thread.inbox.threadAddress)
        confirmText: qsTr("Create customer")
        onOpened: customerName.text = ""
        onConfirmed: thread.inbox.createCustomer(customerName.text)

        FormField {
            id: customerName
            objectName: "customerName"
            label: qsTr("Name")
            Layout.fillWidth: true
        }
    }

    Menu {
        id: assignMenu

        Instantiator {
            model: thread.inbox.assignees
            onObjectAdded: (index, item) => {
                assignMenu.insertItem(index, item)
                item.triggered.connect(() => thread.inbox.assign(thread.inbox.assignees[index].id))
            }
            onObjectRemoved: (index, item) => assignMenu.removeItem(item)
            delegate: MenuItem {
                required property var modelData
                text: modelData.name
            }
        }
        MenuSeparator {}
        MenuItem {
            text: qsTr("Unassigned")
            enabled: thread.inbox.ownerId.length > 0
            onTriggered: thread.inbox.clearAssignee()
        }
    }

    Toolbar {
        title: thread.inbox.threadTitle
        subtitle: {
            const parts = [thread.inbox.threadAddress]
            const owner = thread.inbox.assignees.find(person => person.id === thread.inbox.ownerId)
            parts.push(owner ? qsTr("Assigned to %1").arg(owner.name) : qsTr("Unassigned"))
            if (thread.inbox.snoozedUntil.length > 0)
                parts.push(qsTr("Snoozed until %1").arg(thread.inbox.snoozedUntil))
            return parts.join(" · ")
        }
        Layout.fillWidth: true
        Layout.topMargin: Theme.spacing.s
        Layout.rightMargin: Theme.spacing.l

        IconButton {
            objectName: "inboxMakeCustomer"
            visible: !thread.inbox.hasCustomer
            symbol: "person.badge.plus"
            text: qsTr("Make a customer")
            onClicked: customerSheet.open()
        }
        IconButton {
            objectName: "inboxAssign"
            enabled: thread.inbox.canEdit
            symbol: "person.crop.circle"
            text: qsTr("Assign")
            onClicked: assignMenu.popup()
        }
        IconButton {
            objectName: "inboxSnooze"
            enabled: thread.inbox.canEdit
            symbol: "clock"
            text: qsTr("Snooze")
            onClicked: snoozeSheet.open()
        }
        IconButton {
            objectName: "inboxDone"
            readonly property bool reopens: thread.inbox.view === "done"
            enabled: thread.inbox.canEdit
            symbol: reopens ? "arrow.uturn.backward" : "checkmark"
            text: reopens ? qsTr("Reopen") : qsTr("Done")
            onClicked: reopens ? thread.inbox.reopen() : thread.inbox.markDone()
        }
        IconButton {
            symbol: "xmark"
            text: qsTr("Close")
            onClicked: thread.inbox.closeThread()
        }
    }

    ErrorBanner {
        visible: thread.inbox.errorText.length > 0
        text: thread.inbox.errorText
        Layout.fillWidth: true
        Layout.leftMargin: Theme.spacing.l
        Layout.rightMargin: Theme.spacing.l
    }

    InboxEntries {
        inbox: thread.inbox
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.leftMargin: Theme.spacing.l
        Layout.rightMargin: Theme.spacing.l
    }

    InboxComposer {
        visible: thread.inbox.canSend
        inbox: thread.inbox
        Layout.fillWidth: true
        Layout.leftMargin: Theme.spacing.l
        Layout.rightMargin: Theme.spacing.l
        Layout.bottomMargin: Theme.spacing.l
    }

    Text {
        visible: !thread.inbox.canSend && thread.inbox.threadTitle.length > 0
        text: qsTr("This conversation cannot be answered from here.")
        font.pixelSize: Theme.type.footnote
        color: Theme.colours.secondaryText
        Layout.leftMargin: Theme.spacing.l
        Layout.bottomMargin: Theme.spacing.l
    }
}
