import QtQuick
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// One payment of the terminal's list: who paid, when, its pill and amount,
// and the refund actions it allows.
Item {
    id: line

    required property string paymentId
    required property string client
    required property string amount
    required property string date
    required property int tone
    required property string pill
    required property bool refundable
    required property string leftToRefund
    required property string requestId
    required property string detail
    required property bool markable

    signal refundAsked()
    signal decisionAsked()
    signal markPaidAsked()

    implicitHeight: row.implicitHeight + 2 * Theme.spacing.s
    Layout.fillWidth: true

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.topMargin: Theme.spacing.s
        anchors.bottomMargin: Theme.spacing.s
        spacing: Theme.spacing.m

        ColumnLayout {
            spacing: 2
            Layout.fillWidth: true
            Text {
                text: line.client
                elide: Text.ElideRight
                font.pixelSize: Theme.type.callout
                color: Theme.colours.text
                Layout.fillWidth: true
            }
            Text {
                text: line.detail.length > 0 ? line.date + " · " + line.detail : line.date
                elide: Text.ElideRight
                Layout.fillWidth: true
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
            }
        }
        PaymentPill {
            objectName: "paymentPill"
            tone: line.tone
            text: line.pill
        }
        Text {
            text: line.amount
            horizontalAlignment: Text.AlignRight
            font.pixelSize: Theme.type.callout
            color: Theme.colours.text
            Layout.preferredWidth: Theme.spacing.xxl * 3
        }
        ActionButton {
            objectName: "markPaid"
            visible: line.markable
            text: qsTr("Mark paid")
            onClicked: line.markPaidAsked()
        }
        ActionButton {
            visible: line.refundable
            text: qsTr("Refund")
            onClicked: line.refundAsked()
        }
        ActionButton {
            visible: line.requestId.length > 0
            text: qsTr("Decide refund")
            onClicked: line.decisionAsked()
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.colours.separator
    }
}
