import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Mail
import PiloTarn.Design

// The mail screen: the views and the list of conversations at the side, the
// open conversation beside them, and the composer over it. It loads when it
// is made. Keys: j and k move, e archives, # trashes, r, a and f answer,
// c composes, / searches.
Pane {
    id: screen

    required property NativeMailView mail

    padding: 0
    background: null

    Component.onCompleted: mail.appear()
    Component.onDestruction: mail.disappear()

    Connections {
        target: screen.mail
        function onOpenExternally(url) {
            Qt.openUrlExternally(url)
        }
    }

    Shortcut { sequences: ["J", "Down"]; enabled: !composer.visible; onActivated: screen.mail.moveSelection(1) }
    Shortcut { sequences: ["K", "Up"]; enabled: !composer.visible; onActivated: screen.mail.moveSelection(-1) }
    Shortcut { sequence: "E"; enabled: !composer.visible; onActivated: screen.mail.act("done") }
    Shortcut { sequence: "#"; enabled: !composer.visible; onActivated: screen.mail.act("trash") }
    Shortcut { sequence: "R"; enabled: !composer.visible; onActivated: screen.mail.reply(false) }
    Shortcut { sequence: "A"; enabled: !composer.visible; onActivated: screen.mail.reply(true) }
    Shortcut { sequence: "F"; enabled: !composer.visible; onActivated: screen.mail.forward() }
    Shortcut { sequence: "C"; enabled: !composer.visible; onActivated: screen.mail.composer.compose() }
    Shortcut { sequence: "/"; enabled: !composer.visible; onActivated: list.focusSearch() }

    ColumnLayout {
        anchors.fill: parent
        visible: screen.mail.statusKnown && !screen.mail.connected
        spacing: Theme.spacing.m

        Item { Layout.fillHeight: true }
        EmptyState {
            symbol: "envelope"
            title: qsTr("Connect your Google mailbox")
            text: qsTr("Connect your own Google Workspace account to read and send mail here.")
            Layout.alignment: Qt.AlignHCenter
        }
        ActionButton {
            objectName: "connectMail"
            kind: ActionButton.Primary
            text: qsTr("Connect Google Mail")
            onClicked: screen.mail.connectMailbox()
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            visible: screen.mail.errorText.length > 0
            text: screen.mail.errorText
            color: Theme.colours.danger
            Layout.alignment: Qt.AlignHCenter
        }
        Item { Layout.fillHeight: true }
    }

    RowLayout {
        anchors.fill: parent
        visible: screen.mail.connected
        spacing: 0

        MailThreadList {
            id: list
            mail: screen.mail
            Layout.preferredWidth: 340
            Layout.fillHeight: true
        }

        Rectangle {
            implicitWidth: 1
            color: Theme.colours.separator
            Layout.fillHeight: true
        }

        MailThreadView {
            mail: screen.mail
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }

    MailComposer {
        id: composer
        composer: screen.mail.composer
        visible: screen.mail.composer.open
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: Theme.spacing.l
        width: Math.min(560, parent.width - 2 * Theme.spacing.l)
    }

    // Undo of a send, and what came of it.
    Rectangle {
        objectName: "sendStatus"
        visible: screen.mail.composer.undoAvailable || screen.mail.composer.statusText.length > 0
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.spacing.l
        implicitWidth: statusRow.implicitWidth + 2 * Theme.spacing.m
        implicitHeight: statusRow.implicitHeight + 2 * Theme.spacing.s
        radius: Theme.radii.large
        color: Theme.colours.raised
        border.color: Theme.colours.border

        RowLayout {
            id: statusRow
            anchors.centerIn: parent
            spacing: Theme.spacing.m
            Label {
                text: screen.mail.composer.statusText
                color: Theme.colours.text
            }
            ActionButton {
                visible: screen.mail.composer.undoAvailable
                text: qsTr("Undo")
                onClicked: screen.mail.composer.undo()
            }
        }
    }
}
