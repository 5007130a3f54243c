import QtQuick
import PiloTarn.Portals
import PiloTarn.Design

// The open portal's reports, newest month first: published or taken back,
// or deleted.
ListView {
    required property NativePortalsView portals

    model: portals.reports
    interactive: false
    implicitHeight: contentHeight
    spacing: 2

    delegate: ListRow {
        id: report

        required property string reportId
        required property string title
        required property string month
        required property string body
        required property bool published
        readonly property PortalReportList list: ListView.view as PortalReportList

        width: ListView.view.width
        text: qsTr("%1 · %2").arg(title).arg(month)
        subtitle: published ? qsTr("Published · %1").arg(body) : qsTr("Draft · %1").arg(body)
        symbol: "doc.text"
        rightPadding: Theme.spacing.s + actions.width

        Row {
            id: actions
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            IconButton {
                symbol: report.published ? "arrow.uturn.backward" : "paperplane"
                text: report.published ? qsTr("Unpublish") : qsTr("Publish")
                onClicked: report.list.portals.setReportPublished(report.reportId, !report.published)
            }
            IconButton {
                symbol: "trash"
                text: qsTr("Delete report")
                onClicked: report.list.portals.deleteReport(report.reportId)
            }
        }
    }
}
