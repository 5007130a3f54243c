import QtQuick
import PiloTarn.Calls
import PiloTarn.Design

// Every lead status as a button with its count, "All" first; the lit one is
// the status the leads are narrowed to. A positioner, not a layout, holds the
// repeated buttons.
Flow {
    required property NativeCallsView calls

    spacing: Theme.spacing.xs

    Repeater {
        model: parent.calls.leadStatuses

        delegate: ActionButton {
            required property var modelData
            readonly property NativeCallsView calls: parent ? (parent as LeadStatusButtons).calls : null

            objectName: "leadStatus_" + (modelData.key.length > 0 ? modelData.key : "all")
            text: qsTr("%1 %2").arg(modelData.label).arg(modelData.count)
            kind: calls && calls.leadStatus === modelData.key ? ActionButton.Primary : ActionButton.Secondary
            onClicked: calls.leadStatus = modelData.key
        }
    }
}
