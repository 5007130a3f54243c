import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design

// Comments on a task or notes on a customer, oldest first: who, when, what.
ListView {
    implicitHeight: contentHeight
    interactive: false
    spacing: Theme.spacing.s

    delegate: ColumnLayout {
        id: note

        required property string author
        required property string time
        required property string body

        width: ListView.view.width
        spacing: 2

        RowLayout {
            spacing: Theme.spacing.s
            Avatar {
                name: note.author
                size: 20
            }
            Label {
                text: note.author
                color: Theme.colours.text
                font.pixelSize: Theme.type.footnote
                font.weight: Font.DemiBold
            }
            Label {
                text: note.time
                color: Theme.colours.tertiaryText
                font.pixelSize: Theme.type.caption
            }
        }
        Label {
            text: note.body
            color: Theme.colours.text
            font.pixelSize: Theme.type.callout
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }
}
