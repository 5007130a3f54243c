import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Inbox
import PiloTarn.Design

// Snoozing the open thread: the presets of the moment ("Later today" only
// before 21:00), or a day and time of one's own.
Popup {
    id: sheet

    required property NativeInboxView inbox
    readonly property date custom: Date.fromLocaleString(Qt.locale(), when.text.trim(), "yyyy-MM-dd HH:mm")
    readonly property bool customValid: !isNaN(custom.getTime()) && custom > new Date()
    // The presets as the sheet opens. Bound to the view they would be rebuilt
    // on each refresh of the thread, under the person's pointer.
    property var choices: []

    modal: true
    focus: true
    anchors.centerIn: Overlay.overlay
    width: Math.min(400, (parent ? parent.width : 440) - 2 * Theme.spacing.xl)
    padding: Theme.spacing.xl
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
    onAboutToShow: choices = inbox.snoozeChoices
    onOpened: when.text = ""

    Overlay.modal: Rectangle { color: Theme.colours.scrim }

    background: Rectangle {
        radius: Theme.radii.large
        color: Theme.colours.raised
        border.width: 1
        border.color: Theme.colours.separator
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.spacing.m

        Text {
            text: qsTr("Snooze until")
            font.pixelSize: Theme.type.title3
            font.weight: Font.DemiBold
            color: Theme.colours.text
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Column {
            spacing: 2
            Layout.fillWidth: true
            Repeater {
                model: sheet.choices
                onItemAdded: (index, item) => item.clicked.connect(() => {
                    sheet.inbox.snooze(index)
                    sheet.close()
                })
                delegate: ListRow {
                    required property var modelData
                    objectName: "snoozeChoice"
                    text: modelData.label
                    detail: modelData.time
                    symbol: "clock"
                    width: parent ? parent.width : 0
                }
            }
        }

        FormField {
            id: when
            objectName: "snoozeCustom"
            label: qsTr("Another time")
            placeholderText: qsTr("YYYY-MM-DD HH:MM")
            error: text.trim().length > 0 && !sheet.customValid ? qsTr("A day and time still to come") : ""
            Layout.fillWidth: true
            onAccepted: if (sheet.customValid) {
                sheet.inbox.snoozeUntil(sheet.custom)
                sheet.close()
            }
        }

        RowLayout {
            spacing: Theme.spacing.s
            Item { Layout.fillWidth: true }
            ActionButton {
                text: qsTr("Cancel")
                onClicked: sheet.close()
            }
            ActionButton {
                enabled: sheet.customValid
                kind: ActionButton.Primary
                text: qsTr("Snooze")
                onClicked: {
                    sheet.inbox.snoozeUntil(sheet.custom)
                    sheet.close()
                }
            }
        }
    }
}
