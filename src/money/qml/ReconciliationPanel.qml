import QtQuick
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// Month-end for one bank account: the preview at a statement date, then the
// statement's ending balance typed and the statement closed, which the
// state refuses unless it balances.
ColumnLayout {
    id: panel

    required property NativeReconciliation reconciliation
    property string bankId
    property string today

    spacing: Theme.spacing.s

    RowLayout {
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        FormField {
            id: statementDate

            objectName: "statementDate"
            label: qsTr("Statement date (YYYY-MM-DD)")
            text: panel.today
            Layout.preferredWidth: 220
        }
        ActionButton {
            objectName: "previewReconciliation"
            text: qsTr("Preview reconciliation")
            enabled: panel.bankId.length > 0 && !panel.reconciliation.loading
            onClicked: panel.reconciliation.preview(panel.bankId, statementDate.text)
            Layout.alignment: Qt.AlignBottom
        }
    }

    GridLayout {
        objectName: "reconciliationFigures"
        visible: panel.reconciliation.hasPreview
        columns: 2
        columnSpacing: Theme.spacing.xl
        rowSpacing: Theme.spacing.xxs

        Repeater {
            model: [
                qsTr("Ledger balance"), panel.reconciliation.ledgerBalance,
                qsTr("Outstanding"), panel.reconciliation.outstandingTotal,
                qsTr("Adjusted balance"), panel.reconciliation.adjustedBalance,
                qsTr("Imported rows"), panel.reconciliation.importedCount,
                qsTr("Unmatched rows"), panel.reconciliation.unmatchedCount,
                qsTr("Future-dated matches"), panel.reconciliation.futureMatchCount,
                qsTr("Last closed"), panel.reconciliation.lastClosedDate.length > 0
                                     ? panel.reconciliation.lastClosedDate : qsTr("Never")
            ]
            delegate: Text {
                required property var modelData
                required property int index
                text: modelData
                font.pixelSize: Theme.type.callout
                font.weight: index % 2 ? Font.DemiBold : Font.Normal
                color: index % 2 ? Theme.colours.text : Theme.colours.secondaryText
            }
        }
    }

    RowLayout {
        visible: panel.reconciliation.hasPreview
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        FormField {
            id: balance

            objectName: "statementBalance"
            label: qsTr("Statement ending balance in USD")
            Layout.preferredWidth: 260
        }
        ActionButton {
            objectName: "closeStatement"
            kind: ActionButton.Primary
            text: qsTr("Close balanced statement")
            enabled: !panel.reconciliation.loading
            onClicked: closeSheet.open()
            Layout.alignment: Qt.AlignBottom
        }
    }
    Text {
        visible: panel.reconciliation.closedID.length > 0
        text: qsTr("Statement closed.")
        font.pixelSize: Theme.type.callout
        color: Theme.colours.success
    }
    ErrorBanner {
        objectName: "reconciliationError"
        visible: text.length > 0
        text: panel.reconciliation.error
        Layout.fillWidth: true
    }

    ConfirmSheet {
        id: closeSheet

        objectName: "closeSheet"
        title: qsTr("Close balanced statement")
        text: qsTr("Closing locks imported rows through this date. Review every match and compare with the bank statement first.")
        confirmText: qsTr("Close statement")
        destructive: true
        onConfirmed: panel.reconciliation.close(balance.text)
    }
}
