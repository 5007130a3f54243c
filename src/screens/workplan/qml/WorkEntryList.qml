import QtQuick
import QtQuick.Controls
import PiloTarn.WorkPlan
import PiloTarn.Design

// The shown entries by day: tick one off (or back on); an admin task opens
// for editing.
ListView {
    id: list

    required property NativeWorkPlanView view

    signal editRequested(string entryId, string title, string day, string notes)

    objectName: "workEntries"
    model: view.entries
    clip: true
    spacing: Theme.spacing.xxs
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    section.property: "day"
    section.delegate: Text {
        required property string section

        width: ListView.view.width
        topPadding: Theme.spacing.m
        bottomPadding: Theme.spacing.xs
        text: section
        font.pixelSize: Theme.type.body
        font.weight: Font.DemiBold
        color: Theme.colours.text
    }

    // Positioners rather than layouts inside the delegate: Qt 6.4's layouts
    // can touch a half-destroyed delegate while the list is torn down.
    delegate: Row {
        id: entry

        required property string entryId
        required property string personId
        required property string personName
        required property string kind
        required property string title
        required property string isoDay
        required property string notes
        required property bool done
        required property string doneBy
        required property string summary
        readonly property WorkEntryList list: ListView.view as WorkEntryList
        // Owners and managers change anyone's work, everyone else their own.
        readonly property bool mine: list.view.mayCoach || personId === list.view.myId

        width: ListView.view.width
        spacing: Theme.spacing.xs

        CheckBox {
            objectName: "done_" + entry.entryId
            checked: entry.done
            enabled: entry.mine
            anchors.verticalCenter: parent.verticalCenter
            Accessible.name: entry.done ? qsTr("Done: %1").arg(entry.title) : qsTr("Not done: %1").arg(entry.title)
            onToggled: entry.list.view.complete(entry.entryId, checked)
        }
        ListRow {
            width: parent.width - x
            text: entry.title
            symbol: ({ customer: "briefcase", support: "lifepreserver", call: "phone", admin: "checklist", reminder: "bell" })[entry.kind] ?? "checklist"
            subtitle: entry.list.view.person.length === 0 ? entry.personName + " · " + entry.summary : entry.summary
            detail: entry.done && entry.doneBy.length > 0 ? qsTr("done by %1").arg(entry.doneBy) : ""
            opacity: entry.done ? 0.6 : 1
            onClicked: {
                if (entry.kind === "admin" && entry.mine)
                    entry.list.editRequested(entry.entryId, entry.title, entry.isoDay, entry.notes)
            }
        }
    }

    EmptyState {
        visible: list.count === 0
        anchors.fill: parent
        symbol: "checklist"
        title: qsTr("Nothing planned")
        text: list.view.person.length > 0 ? qsTr("Nothing is planned for %1 this week.").arg(list.view.personName)
                                          : qsTr("Nothing is planned for this week yet. Ctrl+N adds a task or a reminder.")
    }
}
