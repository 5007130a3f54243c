import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Shell

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
    padding: 8
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside

    onOpened: field.forceActiveFocus()
    onClosed: search.close()

    ColumnLayout {
        anchors.fill: parent
        spacing: 6

        TextField {
            id: field

            objectName: "searchField"
            text: popup.search.query
            placeholderText: qsTr("Go to…")
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

            delegate: ItemDelegate {
                id: row

                required property int index
                required property string label
                required property string detail
                required property string symbol
                width: ListView.view.width
                highlighted: ListView.isCurrentItem
                onClicked: (ListView.view.model as NativeCommandSearch).activate(index)

                contentItem: RowLayout {
                    spacing: 10
                    SymbolBadge { label: row.label; symbol: row.symbol; lit: row.highlighted }
                    Label {
                        text: row.label
                        elide: Text.ElideRight
                        Layout.fillWidth: true
                    }
                    Label {
                        text: row.detail
                        opacity: 0.6
                    }
                }
            }

            Label {
                anchors.centerIn: parent
                visible: list.count === 0
                text: qsTr("No place matches “%1”.").arg(popup.search.query)
                opacity: 0.7
            }
        }
    }
}
