import QtQuick
import QtQuick.Controls
import PiloTarn.Support
import PiloTarn.Design

// The Recurring section: each rule with its schedule, customer, assignee
// and the day its open task is due; choosing a running rule offers to stop
// it, which asks first. Completing a rule's task makes its next one.
ListView {
    id: list

    required property NativeSupportView support

    signal add()

    function askStop(ruleId, title) {
        stopSheet.ruleId = ruleId
        stopSheet.ruleTitle = title
        stopSheet.open()
    }

    objectName: "supportRecurring"
    model: support.recurring
    clip: true
    spacing: 2
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    ConfirmSheet {
        id: stopSheet
        property string ruleId
        property string ruleTitle
        title: qsTr("Stop “%1”?").arg(ruleTitle)
        text: qsTr("Its open task stays; no next one is made.")
        confirmText: qsTr("Stop")
        destructive: true
        onConfirmed: list.support.stopRecurring(ruleId)
    }

    header: SectionHeader {
        id: heading
        readonly property SupportRecurringList rules: ListView.view as SupportRecurringList
        width: ListView.view.width
        text: qsTr("Recurring work")
        ActionButton {
            kind: ActionButton.Primary
            symbol: "plus"
            text: qsTr("New recurring work")
            onClicked: heading.rules?.add()
        }
    }

    delegate: ListRow {
        required property string ruleId
        required property string title
        required property string summary
        required property string nextDue
        required property bool active
        readonly property SupportRecurringList rules: ListView.view as SupportRecurringList

        width: ListView.view.width
        symbol: "repeat"
        text: title
        subtitle: summary
        detail: !active ? qsTr("Stopped") : nextDue.length > 0 ? qsTr("Next due %1").arg(nextDue) : ""
        enabled: active
        onClicked: rules?.askStop(ruleId, title)
    }
}
