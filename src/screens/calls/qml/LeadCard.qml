import QtQuick
import QtQuick.Layouts
import PiloTarn.Calls
import PiloTarn.Design

// The open lead: what sales knows of it and its calls, newest first.
// Escape or the close button puts it away.
Rectangle {
    id: card

    required property NativeCallsView calls
    readonly property var lead: calls.openLead

    objectName: "leadCard"
    implicitHeight: column.implicitHeight + 2 * Theme.spacing.m
    radius: Theme.radii.medium
    color: Theme.colours.raised
    border.width: 1
    border.color: Theme.colours.border
    Keys.onEscapePressed: calls.closeLead()

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: Theme.spacing.m
        spacing: Theme.spacing.xs

        RowLayout {
            Layout.fillWidth: true
            Text {
                text: card.lead.name ?? ""
                font.pixelSize: Theme.type.body
                font.weight: Font.DemiBold
                color: Theme.colours.text
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            IconButton {
                symbol: "xmark"
                text: qsTr("Close the lead")
                onClicked: card.calls.closeLead()
            }
        }
        Text {
            text: qsTr("%1 · from %2 · about %3").arg(card.lead.status ?? "").arg(card.lead.source ?? "")
                      .arg(card.lead.estimate ?? "")
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        Text {
            text: (card.lead.interest ?? "") + ((card.lead.owner ?? "").length > 0
                                                ? qsTr(" · with %1").arg(card.lead.owner) : "")
            font.pixelSize: Theme.type.callout
            color: Theme.colours.text
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        Repeater {
            model: card.calls.leadCalls

            Text {
                required property string started
                required property string duration
                required property string outcome
                required property string personName
                text: qsTr("%1 · %2 · %3 · %4").arg(started).arg(personName).arg(outcome).arg(duration)
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
        }
    }
}
