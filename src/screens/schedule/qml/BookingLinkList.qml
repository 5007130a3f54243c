import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.Schedule

// The booking links, newest first: each opens its bookings, and its button
// copies the address clients book through.
ListView {
    id: list

    required property NativeScheduleView view

    model: view.links
    clip: true
    spacing: 2
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: ListRow {
        id: link

        required property string linkId
        required property string title
        required property string url
        required property string duration
        required property int bookings
        required property string next
        readonly property BookingLinkList list: ListView.view as BookingLinkList

        objectName: "linkRow"
        width: ListView.view.width
        rightPadding: Theme.spacing.s + copy.width
        text: title
        symbol: "link"
        subtitle: next.length === 0 ? qsTr("%1 · nothing booked").arg(duration)
                  : bookings === 1 ? qsTr("%1 · 1 coming · %2").arg(duration).arg(next)
                  : qsTr("%1 · %2 coming · next %3").arg(duration).arg(bookings).arg(next)
        lit: list !== null && list.view.openLinkId === linkId
        onClicked: list.view.openLink(linkId)

        IconButton {
            id: copy
            objectName: "linkCopy"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "doc.on.doc"
            text: qsTr("Copy %1").arg(link.url)
            onClicked: link.list.view.copyLink(link.linkId)
        }
    }

    EmptyState {
        visible: list.count === 0
        anchors.fill: parent
        symbol: "link"
        title: qsTr("No booking links")
        text: qsTr("Make one above and send it to clients, who pick a time that suits you both.")
    }
}
