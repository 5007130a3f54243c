import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// What can be done with a message: react, reply in its thread, save, and
// for one's own, edit and delete.
RowLayout {
    id: actions

    property bool inThread: false
    property bool saved: false
    property bool mine: false

    signal reactRequested(Item anchor)
    signal threadRequested()
    signal savedToggled()
    signal editRequested()
    signal deleteRequested()

    spacing: 0
    IconButton {
        id: react
        objectName: "reactToMessage"
        symbol: "face.smiling"
        iconSize: 16
        text: qsTr("Add a reaction")
        onClicked: actions.reactRequested(react)
    }
    IconButton {
        visible: !actions.inThread
        symbol: "arrow.uturn.backward"
        iconSize: 16
        text: qsTr("Reply in thread")
        onClicked: actions.threadRequested()
    }
    IconButton {
        symbol: "bookmark"
        iconSize: 16
        lit: actions.saved
        text: actions.saved ? qsTr("Remove from saved") : qsTr("Save")
        onClicked: actions.savedToggled()
    }
    IconButton {
        objectName: "editMessage"
        visible: actions.mine
        symbol: "pencil"
        iconSize: 16
        text: qsTr("Edit")
        onClicked: actions.editRequested()
    }
    IconButton {
        objectName: "deleteMessage"
        visible: actions.mine
        symbol: "trash"
        iconSize: 16
        text: qsTr("Delete message")
        onClicked: actions.deleteRequested()
    }
}
