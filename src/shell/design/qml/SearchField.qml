import QtQuick
import QtQuick.Controls
import PiloTarn.Design

// A search box: the magnifying glass, the typed words, and a button that
// clears them. `placeholderText` says what is searched.
TextField {
    id: field

    leftPadding: Theme.spacing.s + 24
    rightPadding: clearButton.visible ? 32 : Theme.spacing.m
    topPadding: Theme.spacing.s
    bottomPadding: Theme.spacing.s
    font.pixelSize: Theme.type.callout
    color: Theme.colours.text
    placeholderTextColor: Theme.colours.tertiaryText
    selectionColor: Theme.colours.accent
    selectedTextColor: Theme.colours.accentText
    selectByMouse: true
    Accessible.name: placeholderText
    Keys.onEscapePressed: event => {
        event.accepted = text.length > 0
        field.clear()
    }

    background: Rectangle {
        implicitWidth: 220
        implicitHeight: 36
        radius: Theme.radii.medium
        color: Theme.colours.hover
        border.width: field.activeFocus ? 1 : 0
        border.color: Theme.colours.accent
        FocusRing { shown: field.activeFocus }

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            anchors.left: parent.left
            anchors.leftMargin: Theme.spacing.s
            symbol: "magnifyingglass"
            size: 18
            color: Theme.colours.tertiaryText
        }
    }

    IconButton {
        id: clearButton

        anchors.verticalCenter: parent.verticalCenter
        anchors.right: parent.right
        anchors.rightMargin: 4
        visible: field.text.length > 0
        symbol: "xmark"
        iconSize: 16
        text: qsTr("Clear the search")
        focusPolicy: Qt.NoFocus
        onClicked: field.clear()
    }
}
