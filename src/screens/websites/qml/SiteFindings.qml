import QtQuick
import PiloTarn.Design

// What a site check found, worst first, each marked by how much it matters.
Column {
    property var findings: []

    topPadding: Theme.spacing.s
    spacing: Theme.spacing.xs

    Repeater {
        model: parent.findings

        delegate: Row {
            id: finding

            required property var modelData

            width: parent ? parent.width : 0
            spacing: Theme.spacing.s

            Rectangle {
                y: 5
                width: 8
                height: 8
                radius: 4
                color: finding.modelData.severity === "high" ? Theme.colours.danger
                       : finding.modelData.severity === "medium" ? Theme.colours.warning : Theme.colours.tertiaryText
            }
            Text {
                objectName: "siteFinding"
                width: finding.width - 16
                text: finding.modelData.text
                wrapMode: Text.Wrap
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.text
            }
        }
    }
}
