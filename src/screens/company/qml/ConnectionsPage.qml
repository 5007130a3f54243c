import QtQuick
import QtQuick.Controls
import PiloTarn.Company
import PiloTarn.Design

// "Connections": the Google account behind mail and the calendar, and the
// books' bank feed: each connected account with the bank's balance beside
// the books', its baseline and a reconciliation, then the newest rows fed in.
// Positioners rather than layouts around the repeated rows: Qt 6.4's layouts
// can touch a half-destroyed delegate while they are torn down.
ScrollView {
    id: page

    required property NativeConnectionsView connections

    contentWidth: availableWidth
    clip: true

    Column {
        width: page.availableWidth
        spacing: Theme.spacing.s

        ErrorBanner {
            objectName: "connectionsError"
            text: page.connections.errorText
            width: parent.width
        }

        SectionHeader {
            text: qsTr("Google")
            width: parent.width
        }
        ListRow {
            objectName: "googleRow"
            symbol: "envelope"
            text: page.connections.googleConnected ? qsTr("Connected as %1").arg(page.connections.googleEmail)
                                                   : qsTr("Not connected")
            subtitle: qsTr("Mail and the calendar read your Google account")
            width: parent.width
        }
        ActionButton {
            objectName: "googleConnect"
            visible: page.connections.loaded && !page.connections.googleConnected
            text: qsTr("Connect")
            symbol: "link"
            kind: ActionButton.Primary
            onClicked: page.connections.connectGoogle()
        }

        SectionHeader {
            text: qsTr("Bank feed")
            width: parent.width

            ActionButton {
                objectName: "bankConnect"
                text: page.connections.accountCount > 0 ? qsTr("Connect another account") : qsTr("Connect")
                symbol: "plus"
                visible: page.connections.available > 0
                enabled: !page.connections.busy
                onClicked: page.connections.connectBank()
            }
        }
        EmptyState {
            visible: page.connections.loaded && page.connections.accountCount === 0
            symbol: "building.columns"
            title: qsTr("No bank account connected")
            text: qsTr("Connect an account and its transactions come into the books on their own.")
            width: parent.width
        }
        Repeater {
            model: page.connections.accounts
            onItemAdded: (index, item) => {
                item.width = Qt.binding(() => page.availableWidth)
                item.busy = Qt.binding(() => page.connections.busy)
                item.today = page.connections.today
                item.baselineTyped.connect((day, amount) => page.connections.setBaseline(item.accountId, day, amount))
                item.reconcileAsked.connect(day => page.connections.reconcile(item.accountId, day))
            }

            FeedAccountRow {}
        }
        Label {
            objectName: "reconciliation"
            visible: text.length > 0
            text: page.connections.reconciliation
            wrapMode: Text.Wrap
            color: Theme.colours.secondaryText
            font.pixelSize: Theme.type.footnote
            width: parent.width
        }

        SectionHeader {
            visible: page.connections.feedRowCount > 0
            text: page.connections.uncategorized > 0
                  ? qsTr("Latest rows · %n to categorize in the books", "", page.connections.uncategorized)
                  : qsTr("Latest rows · all categorized")
            width: parent.width
        }
        Repeater {
            model: page.connections.rows

            ListRow {
                required property string description
                required property string date
                required property string amount
                required property bool categorized

                symbol: "arrow.left.arrow.right"
                text: description
                subtitle: categorized ? qsTr("%1 · in the books").arg(date) : qsTr("%1 · to categorize").arg(date)
                detail: amount
                width: parent ? parent.width : 0
            }
        }
    }
}
