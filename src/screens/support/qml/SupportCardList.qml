import QtQuick
import PiloTarn.Support
import PiloTarn.Design

// A short list of tasks: a task's subtasks, ticked off in place, or a
// customer's tasks, each opening on a click.
ListView {
    id: list

    property bool checkable: false

    signal toggled(string taskId, bool done)
    signal opened(string taskId)

    implicitHeight: contentHeight
    interactive: false
    spacing: 2

    delegate: ListRow {
        required property string taskId
        required property string title
        required property string status
        required property string due
        required property bool overdue
        readonly property SupportCardList cards: ListView.view as SupportCardList
        readonly property bool finished: status === "done"

        width: ListView.view.width
        text: title
        symbol: cards && cards.checkable ? (finished ? "checkmark" : "plus") : "doc.text"
        subtitle: cards && cards.checkable ? "" : (due.length > 0 ? due : "")
        detail: cards && cards.checkable ? "" : finished ? qsTr("Done") : ""
        font.strikeout: finished && cards !== null && cards.checkable
        onClicked: {
            if (!cards)
                return
            if (cards.checkable)
                cards.toggled(taskId, !finished)
            else
                cards.opened(taskId)
        }
    }
}
