import QtQuick
import QtQuick.Controls
import PiloTarn.Design

// A message being edited in place: Enter saves, Shift+Enter breaks the
// line, Escape leaves the message as it was.
TextArea {
    id: editor

    signal saved()
    signal cancelled()

    function key(event) {
        if (event.modifiers & Qt.ShiftModifier)
            event.accepted = false
        else
            saved()
    }

    objectName: "chatEditor"
    color: Theme.colours.text
    font.pixelSize: Theme.type.body
    wrapMode: TextEdit.Wrap
    padding: Theme.spacing.s
    Accessible.name: qsTr("Edit message")
    background: Rectangle {
        radius: Theme.radii.medium
        color: Theme.colours.surface
        border.color: Theme.colours.accent
    }
    Keys.onReturnPressed: event => key(event)
    Keys.onEnterPressed: event => key(event)
    Keys.onEscapePressed: cancelled()
}
