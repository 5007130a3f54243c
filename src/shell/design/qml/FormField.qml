import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design

// A labelled text field whose problem is said under it, in place: set
// `error` to the words that say what is wrong, and clear it when it is
// fixed. The field's accessible description carries the error too.
ColumnLayout {
    id: form

    property string label
    property string error
    property alias text: input.text
    property alias placeholderText: input.placeholderText
    property alias readOnly: input.readOnly
    property alias echoMode: input.echoMode
    property alias input: input

    signal accepted()

    spacing: Theme.spacing.xs

    Text {
        visible: form.label.length > 0
        text: form.label
        font.pixelSize: Theme.type.footnote
        font.weight: Font.Medium
        color: Theme.colours.secondaryText
        Layout.fillWidth: true
    }

    TextField {
        id: input

        selectByMouse: true
        font.pixelSize: Theme.type.callout
        color: Theme.colours.text
        placeholderTextColor: Theme.colours.tertiaryText
        selectionColor: Theme.colours.accent
        selectedTextColor: Theme.colours.accentText
        leftPadding: Theme.spacing.m
        rightPadding: Theme.spacing.m
        topPadding: Theme.spacing.s
        bottomPadding: Theme.spacing.s
        Accessible.name: form.label.length > 0 ? form.label : placeholderText
        Accessible.description: form.error
        Layout.fillWidth: true
        onAccepted: form.accepted()

        background: Rectangle {
            implicitHeight: 36
            radius: Theme.radii.medium
            color: input.readOnly ? Theme.colours.hover : Theme.colours.surface
            border.width: 1
            border.color: form.error.length > 0 ? Theme.colours.danger
                        : input.activeFocus ? Theme.colours.accent : Theme.colours.border
            FocusRing { shown: input.activeFocus && !input.readOnly }
        }
    }

    RowLayout {
        visible: form.error.length > 0
        spacing: Theme.spacing.xs
        Layout.fillWidth: true
        Icon {
            symbol: "exclamationmark.circle"
            size: 16
            color: Theme.colours.danger
            Layout.alignment: Qt.AlignTop
        }
        Text {
            objectName: "fieldError"
            text: form.error
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.danger
            Layout.fillWidth: true
        }
    }
}
