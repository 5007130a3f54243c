import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// One open invoice: its number, client, due day and what is still owed, with
// the two ways to be paid.
RowLayout {
    id: line

    required property string invoiceId
    required property string client
    required property string number
    required property string dueOn
    required property string remaining
    property bool busy: false

    signal chargeAsked()
    signal recordAsked()

    spacing: Theme.spacing.m
    Layout.fillWidth: true

    ColumnLayout {
        spacing: 2
        Layout.fillWidth: true
        Layout.topMargin: Theme.spacing.xs
        Layout.bottomMargin: Theme.spacing.xs
        Text {
            text: qsTr("%1 · %2").arg(line.number).arg(line.client)
            elide: Text.ElideRight
            font.pixelSize: Theme.type.callout
            color: Theme.colours.text
            Layout.fillWidth: true
        }
        Text {
            text: qsTr("Due %1").arg(line.dueOn)
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
        }
    }
    Text {
        text: line.remaining
        font.pixelSize: Theme.type.callout
        color: Theme.colours.text
    }
    ActionButton {
        text: qsTr("Charge card")
        enabled: !line.busy
        onClicked: line.chargeAsked()
    }
    ActionButton {
        kind: ActionButton.Plain
        text: qsTr("Record payment")
        enabled: !line.busy
        onClicked: line.recordAsked()
    }
}
