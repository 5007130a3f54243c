import QtQuick
import QtQuick.Controls
import PiloTarn.Calls
import PiloTarn.Design

// The sales leads to call, by name: what they are interested in, their
// status and when they were last called; the phone button calls one.
ListView {
    required property NativeCallsView calls

    model: calls.leads
    clip: true
    spacing: 2
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: ListRow {
        id: lead

        objectName: "leadRow"

        required property string leadId
        required property string name
        required property string phone
        required property string statusLabel
        required property string interest
        required property string lastCall
        readonly property LeadList list: ListView.view as LeadList

        width: ListView.view.width
        rightPadding: Theme.spacing.s + call.width
        text: name
        symbol: "person.crop.circle"
        subtitle: lastCall.length > 0 ? qsTr("%1 · %2 · called %3").arg(statusLabel).arg(interest).arg(lastCall)
                                      : qsTr("%1 · %2").arg(statusLabel).arg(interest)
        lit: list !== null && list.calls.openLeadId === leadId
        onClicked: list.calls.openLeadDetail(leadId)

        IconButton {
            id: call
            objectName: "leadCall"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: lead.phone.length > 0 && lead.list !== null && lead.list.calls.mayCall
            symbol: "phone"
            text: qsTr("Call %1").arg(lead.name)
            enabled: lead.list !== null && lead.list.calls.placedStatus !== "placing"
                     && lead.list.calls.placedStatus !== "ringing" && lead.list.calls.placedStatus !== "in-call"
            onClicked: lead.list.calls.dialLead(lead.leadId)
        }
    }
}
