import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.Overview

// Orders on their way, the late first: what and for whom, how they ship and
// when they are due; each moves on with its button.
ListView {
    id: list

    required property NativeOverviewView view

    model: view.orders
    clip: true
    spacing: 2
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: ListRow {
        id: order

        required property string orderId
        required property string client
        required property string summary
        required property string statusLabel
        required property string shipping
        required property string eta
        required property bool late
        required property string advance
        readonly property OrderList orders: ListView.view as OrderList

        objectName: "orderRow"
        width: ListView.view.width
        rightPadding: Theme.spacing.s + move.width
        text: qsTr("%1 · %2").arg(client).arg(statusLabel)
        symbol: "shippingbox"
        dot: late
        subtitle: shipping.length > 0 ? qsTr("%1 · %2").arg(summary).arg(shipping) : summary
        detail: eta

        ActionButton {
            id: move
            objectName: "orderAdvance"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: order.advance.length > 0
            text: order.advance
            enabled: order.orders !== null && !order.orders.view.busy
            onClicked: order.orders.view.advanceOrder(order.orderId)
        }
    }

    EmptyState {
        visible: list.count === 0
        anchors.fill: parent
        symbol: "shippingbox"
        title: qsTr("Nothing on its way")
        text: qsTr("Orders show here from packing to delivery.")
    }
}
