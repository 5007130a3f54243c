import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Mail
import PiloTarn.Design

// A data table: every column as wide as its widest cell, header rows bold.
GridLayout {
    id: grid

    required property NativeMailView mailView
    required property var cells
    required property int columns
    required property int depth

    columnSpacing: Theme.spacing.m
    rowSpacing: Theme.spacing.xs
    x: depth * Theme.spacing.l

    Repeater {
        model: grid.cells
        delegate: Label {
            required property var modelData
            objectName: "mailTableCell"
            text: modelData.text
            textFormat: Text.StyledText
            font.weight: modelData.header ? Font.DemiBold : Font.Normal
            color: Theme.colours.text
            linkColor: Theme.colours.accent
            onLinkActivated: link => (parent as MailTableBlock).mailView.openLink(link)
        }
    }
}
