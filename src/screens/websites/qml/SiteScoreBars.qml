import QtQuick
import PiloTarn.Design

// A labelled bar per score, 0 to 100. A positioner, not a layout, holds the
// repeated rows.
Column {
    property var scores: []

    spacing: Theme.spacing.xs

    Repeater {
        model: parent.scores

        delegate: Item {
            id: row

            required property var modelData

            width: parent ? parent.width : 0
            height: 18

            Text {
                id: label
                width: 110
                text: row.modelData.label
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.text
            }
            Rectangle {
                x: label.width
                y: 5
                width: row.width - label.width - 36
                height: 8
                radius: 4
                color: Theme.colours.separator

                Rectangle {
                    width: parent.width * row.modelData.score / 100
                    height: parent.height
                    radius: 4
                    color: row.modelData.score >= 75 ? Theme.colours.success
                           : row.modelData.score >= 50 ? Theme.colours.warning : Theme.colours.danger
                }
            }
            Text {
                anchors.right: parent.right
                text: row.modelData.score
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
            }
        }
    }
}
