import QtQuick
import PiloTarn.Support
import PiloTarn.Design

// Logged time, newest first: the task, who, the note, the day and how long.
// A click opens the task.
ListView {
    signal opened(string taskId)

    implicitHeight: contentHeight
    clip: true
    spacing: 2
    boundsBehavior: Flickable.StopAtBounds

    delegate: ListRow {
        required property string taskId
        required property string task
        required property string person
        required property string duration
        required property string day
        required property string note
        readonly property SupportTimeEntries entries: ListView.view as SupportTimeEntries

        width: ListView.view.width
        avatarName: person
        text: task
        subtitle: note.length > 0 ? person + " · " + note : person
        detail: day + " · " + duration
        onClicked: entries?.opened(taskId)
    }
}
