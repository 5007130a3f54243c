import QtQuick
import QtQuick.Layouts
import PiloTarn.WorkPlan
import PiloTarn.Design

// The coaching notes on the chosen person's week, and for owners and
// managers a box to add one.
ColumnLayout {
    id: coaching

    required property NativeWorkPlanView view

    objectName: "coachNotes"
    spacing: Theme.spacing.xs

    SectionHeader {
        text: qsTr("Coaching notes")
        Layout.fillWidth: true
    }

    ListView {
        id: notes

        model: coaching.view.coachNotes
        clip: true
        spacing: Theme.spacing.xs
        implicitHeight: contentHeight
        boundsBehavior: Flickable.StopAtBounds
        Layout.fillWidth: true
        Layout.fillHeight: true

        delegate: Column {
            id: note

            required property string author
            required property string body
            required property string created

            width: ListView.view.width

            Text {
                text: note.body
                wrapMode: Text.Wrap
                font.pixelSize: Theme.type.callout
                color: Theme.colours.text
                width: parent.width
            }
            Text {
                text: qsTr("%1 · %2").arg(note.author).arg(note.created)
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
            }
        }
    }

    Text {
        visible: notes.count === 0
        text: qsTr("No notes on this week yet.")
        font.pixelSize: Theme.type.footnote
        color: Theme.colours.secondaryText
    }

    RowLayout {
        visible: coaching.view.mayCoach
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        FormField {
            id: draft
            objectName: "coachDraft"
            placeholderText: qsTr("A note on %1's week").arg(coaching.view.personName)
            onAccepted: add.clicked()
            Layout.fillWidth: true
        }
        ActionButton {
            id: add
            objectName: "coachAdd"
            text: qsTr("Add note")
            enabled: !coaching.view.busy && draft.text.trim().length > 0
            onClicked: {
                coaching.view.addCoachNote(draft.text)
                draft.text = ""
            }
        }
    }
}
