import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Shell
import PiloTarn.Design

// Ctrl+K: type to filter every place the person may open; arrows move the
// highlight, Enter opens it, Escape closes.
Popup {
    id: popup

    required property TarnNavigation navigation
    required property NativeCommandSearch search

    objectName: "commandSearch"
    visible: navigation.searchOpen
    modal: true
    focus: true
    x: Math.round((parent.width - width) / 2)
    y: Math.round(parent.height * 0.12)
    width: Math.min(parent.width - 48, 560)
    height: Math.min(parent.height * 0.7, 480)
    padding: Theme.spacing.s
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside

    onOpened: field.forceActiveFocus()

    Overlay.modal: Rectangle { color: Theme.colours.scrim }

    background: Rectangle {
        radius: Theme.radii.large
        color: Theme.colours.raised
        border.width: 1
        border.color: Theme.colours.separator
    }
    onClosed: search.close()

    ColumnLayout {
        anchors.fill: parent
        spacing: 6

        SearchField {
            id: field

            objectName: "searchField"
            text: popup.search.query
            placeholderText: qsTr("Go to…")
            font.pixelSize: Theme.type.body
            Layout.fillWidth: true
            onTextEdited: popup.search.query = text
            Keys.onDownPressed: popup.search.move(1)
            Keys.onUpPressed: popup.search.move(-1)
            Keys.onReturnPressed: popup.search.activate()
            Keys.onEnterPressed: popup.search.activate()
        }

        ListView {
            id: list

            objectName: "searchResults"
            model: popup.search
            currentIndex: popup.search.currentIndex
            clip: true
            Layout.fillWidth: true
            Layout.fillHeight: true
            highlightMoveDuration: 0
            boundsBehavior: Flickable.StopAtBounds

            delegate: ListRow {
                required property int index
                required property string label
                required symbol
                required detail

                width: ListView.view.width
                text: label
                lit: ListView.isCurrentItem
                focusPolicy: Qt.NoFocus
                onClicked: (ListView.view.model as NativeCommandSearch).activate(index)
            }

            EmptyState {
                anchors.centerIn: parent
                width: parent.width - 2 * Theme.spacing.xl
                visible: list.count === 0
                symbol: "magnifyingglass"
                text: qsTr("No place matches “%1”.").arg(popup.search.query)
            }
        }
    }
}
