import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design

// One line of a list: an icon or avatar at the lead, the title with an
// optional second line, and at the end a detail text or a count. `lit`
// marks the row of the place that is open.
ItemDelegate {
    id: row

    property string symbol
    property string subtitle
    property string detail
    property int count: 0
    // A plain dot where there is no count: something waits here.
    property bool dot: false
    property bool lit: false
    // A person's row shows their avatar instead of an icon.
    property string avatarName
    property real iconSize: 18
    property real textSize: Theme.type.callout

    leftPadding: Theme.spacing.s
    rightPadding: Theme.spacing.s
    topPadding: Theme.spacing.xs + 2
    bottomPadding: Theme.spacing.xs + 2
    spacing: Theme.spacing.s + 2
    highlighted: lit
    Accessible.name: subtitle.length > 0 ? text + ", " + subtitle : text
    font.pixelSize: textSize

    background: Rectangle {
        radius: Theme.radii.medium
        color: row.lit ? Theme.colours.accentSoft
             : row.down ? Theme.colours.pressed
             : row.hovered ? Theme.colours.hover : "transparent"
        FocusRing { shown: row.visualFocus; anchors.margins: -2 }
    }

    contentItem: RowLayout {
        spacing: row.spacing

        Icon {
            visible: row.symbol.length > 0 && row.avatarName.length === 0
            symbol: row.symbol
            size: row.iconSize
            color: row.lit ? Theme.colours.accent : Theme.colours.secondaryText
        }
        Avatar {
            visible: row.avatarName.length > 0
            name: row.avatarName
            size: Math.round(row.textSize * 2)
        }
        ColumnLayout {
            spacing: 0
            Layout.fillWidth: true
            Text {
                text: row.text
                elide: Text.ElideRight
                font: row.font
                color: Theme.colours.text
                Layout.fillWidth: true
            }
            Text {
                visible: row.subtitle.length > 0
                text: row.subtitle
                elide: Text.ElideRight
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
                Layout.fillWidth: true
            }
        }
        Text {
            visible: row.detail.length > 0
            text: row.detail
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.tertiaryText
        }
        CountBadge {
            count: row.count
            dot: row.dot
        }
    }
}
