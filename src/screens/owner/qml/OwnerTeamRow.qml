import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// One person's week: calls, support tasks held and closed, time logged.
RowLayout {
    id: row

    required property string name
    required property string role
    required property var calls
    required property var supportOpen
    required property var supportDone
    required property string supportTime

    spacing: Theme.spacing.m
    Accessible.role: Accessible.Row
    Accessible.name: name

    Avatar {
        name: row.name
    }
    ColumnLayout {
        spacing: 0
        Layout.fillWidth: true

        Text {
            text: row.name
            elide: Text.ElideRight
            font.pixelSize: Theme.type.callout
            color: Theme.colours.text
            Layout.fillWidth: true
        }
        Text {
            text: row.role
            font.pixelSize: Theme.type.caption
            color: Theme.colours.tertiaryText
        }
    }
    Repeater {
        model: [String(row.calls), String(row.supportOpen), String(row.supportDone), row.supportTime || "—"]

        Text {
            required property string modelData

            text: modelData
            horizontalAlignment: Text.AlignRight
            font.pixelSize: Theme.type.callout
            color: Theme.colours.secondaryText
            Layout.preferredWidth: Theme.spacing.xxl * 3
        }
    }
}
