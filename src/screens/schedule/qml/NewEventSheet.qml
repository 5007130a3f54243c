import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Schedule

// "New event" for the Google calendar: a title, the day, its start and end
// and a place. The state checks it before sending; a refusal shows here and
// what was typed stays.
Popup {
    id: sheet

    required property NativeScheduleView view

    modal: true
    focus: true
    anchors.centerIn: Overlay.overlay
    width: Math.min(440, (parent ? parent.width : 480) - 2 * Theme.spacing.xl)
    padding: Theme.spacing.xl
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
    onOpened: {
        title.text = ""
        day.text = view.suggestedDay()
        start.text = "09:00"
        end.text = "10:00"
        place.text = ""
        title.input.forceActiveFocus()
    }

    Overlay.modal: Rectangle { color: Theme.colours.scrim }

    background: Rectangle {
        radius: Theme.radii.large
        color: Theme.colours.raised
        border.width: 1
        border.color: Theme.colours.separator
    }

    function send() {
        view.createEvent(title.text, day.text, start.text, end.text, place.text)
    }

    Connections {
        target: sheet.view
        function onEventCreated() { sheet.close() }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.spacing.m

        Text {
            text: qsTr("New event")
            font.pixelSize: Theme.type.title3
            font.weight: Font.DemiBold
            color: Theme.colours.text
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        FormField {
            id: title
            objectName: "eventTitle"
            label: qsTr("Title")
            Layout.fillWidth: true
            onAccepted: sheet.send()
        }
        FormField {
            id: day
            objectName: "eventDay"
            label: qsTr("Day")
            placeholderText: "2026-11-30"
            Layout.fillWidth: true
            onAccepted: sheet.send()
        }
        RowLayout {
            spacing: Theme.spacing.s
            Layout.fillWidth: true

            FormField {
                id: start
                objectName: "eventStart"
                label: qsTr("Start")
                Layout.fillWidth: true
                onAccepted: sheet.send()
            }
            FormField {
                id: end
                objectName: "eventEnd"
                label: qsTr("End")
                Layout.fillWidth: true
                onAccepted: sheet.send()
            }
        }
        FormField {
            id: place
            objectName: "eventLocation"
            label: qsTr("Location")
            placeholderText: qsTr("Optional")
            Layout.fillWidth: true
            onAccepted: sheet.send()
        }
        Text {
            objectName: "eventError"
            visible: text.length > 0
            text: sheet.view.errorText
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.danger
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: Theme.spacing.s
            Layout.fillWidth: true

            Item { Layout.fillWidth: true }
            ActionButton {
                text: qsTr("Cancel")
                onClicked: sheet.close()
            }
            ActionButton {
                objectName: "eventCreate"
                kind: ActionButton.Primary
                text: qsTr("Add to Google Calendar")
                enabled: !sheet.view.busy
                onClicked: sheet.send()
            }
        }
    }
}
