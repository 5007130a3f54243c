import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// The Banking page: for the chosen bank account, a statement imported, its
// rows reviewed and the month reconciled.
ColumnLayout {
    id: page

    required property NativeBooksView view
    readonly property string bankId: bank.currentValue ?? ""
    readonly property string bankName: bank.currentText

    spacing: Theme.spacing.m

    Component.onCompleted: view.reload()

    RowLayout {
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        Text {
            text: qsTr("Bank account")
            font.pixelSize: Theme.type.callout
            color: Theme.colours.secondaryText
        }
        ComboBox {
            id: bank

            objectName: "bankAccount"
            model: page.view.bankAccounts
            textRole: "name"
            valueRole: "id"
            Accessible.name: qsTr("Bank account")
            Layout.preferredWidth: 280
        }
    }

    ErrorBanner {
        visible: text.length > 0
        text: page.view.error
        retryable: true
        onRetry: page.view.reload()
        Layout.fillWidth: true
    }
    EmptyState {
        visible: !page.view.loading && page.view.error.length === 0 && bank.count === 0
        symbol: "building.columns"
        title: qsTr("No bank account")
        text: qsTr("A bank account in the chart of accounts holds the rows imported from statements.")
        Layout.fillWidth: true
        Layout.fillHeight: true
    }

    ScrollView {
        visible: bank.count > 0
        contentWidth: availableWidth
        clip: true
        Layout.fillWidth: true
        Layout.fillHeight: true

        ColumnLayout {
            width: parent.width
            spacing: Theme.spacing.l

            StatementImport {
                statement: page.view.statementImport
                bankId: page.bankId
                bankName: page.bankName
                Layout.fillWidth: true
            }
            BankRowList {
                rows: page.view.bankRows
                accounts: page.view.accountChoices
                Layout.fillWidth: true
            }
            SectionHeader {
                text: qsTr("Reconciliation")
                Layout.fillWidth: true
            }
            ReconciliationPanel {
                reconciliation: page.view.reconciliation
                bankId: page.bankId
                today: page.view.periodEnd
                Layout.fillWidth: true
            }
        }
    }

    DoneNotice {
        id: notice

        Layout.fillWidth: true
    }
    Connections {
        target: page.view
        function onDone(message: string) {
            notice.show(message)
        }
    }
}
