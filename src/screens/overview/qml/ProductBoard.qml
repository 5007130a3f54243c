import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Overview

// A product board: the product chosen above, its stages side by side with
// the work in each; a card moves a stage on or back with its buttons.
ColumnLayout {
    id: board

    required property NativeOverviewView view

    spacing: Theme.spacing.s

    ComboBox {
        objectName: "boardPicker"
        textRole: "name"
        valueRole: "id"
        model: board.view.boards
        onActivated: board.view.boardId = currentValue
        onModelChanged: currentIndex = indexOfValue(board.view.boardId)
        Layout.preferredWidth: 260
    }

    Flickable {
        contentWidth: columns.width
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        flickableDirection: Flickable.HorizontalFlick
        ScrollBar.horizontal: ScrollBar {}
        Layout.fillWidth: true
        Layout.fillHeight: true

        BoardStageColumns {
            id: columns
            height: parent.height
            view: board.view
        }
    }
}
