import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// One line of a books list: what it is, a second line of when and where
// from, a note beside the amount (a status, what remains), and room at the
// end for a row's actions.
Item {
    id: line

    property string title
    property string subtitle
    property string note
    property string figure
    property color noteColour: Theme.colours.secondaryText
    default property alias actions: actionRow.data

    implicitHeight: row.implicitHeight + 2 * Theme.spacing.s
    Accessible.role: Accessible.ListItem
    Accessible.name: title + (subtitle.length > 0 ? ", " + subtitle : "") + (note.length > 0 ? ", " + note : "")
                     + ", " + figure

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.topMargin: Theme.spacing.s
        anchors.bottomMargin: Theme.spacing.s
        spacing: Theme.spacing.m

        ColumnLayout {
            spacing: 2
            Layout.fillWidth: true
            Text {
                text: line.title
                elide: Text.ElideRight
                font.pixelSize: Theme.type.callout
                color: Theme.colours.text
                Layout.fillWidth: true
            }
            Text {
                visible: text.length > 0
                text: line.subtitle
                elide: Text.ElideRight
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
                Layout.fillWidth: true
            }
        }
        Text {
            visible: text.length > 0
            text: line.note
            font.pixelSize: Theme.type.footnote
            color: line.noteColour
        }
        Text {
            text: line.figure
            horizontalAlignment: Text.AlignRight
            font.pixelSize: Theme.type.callout
            color: Theme.colours.text
            Layout.minimumWidth: 96
        }
        RowLayout {
            id: actionRow

            visible: children.length > 0
            spacing: Theme.spacing.xs
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.colours.separator
    }
}
