import QtQuick
import QtQuick.Controls
import PiloTarn.Design

// One bank account on the feed: the bank's balance and the books', the rows
// still to categorize, and the bank's balance on a day (the baseline) set
// and reconciled against the books. The page hands the typed baseline and
// the reconciliation on to the state.
Column {
    id: account

    property bool busy
    property string today
    required property string accountId
    required property string name
    required property string mask
    required property string balance
    required property string booksBalance
    required property int uncategorized
    required property string baselineDate
    required property string baselineBalance
    required property string reconciledOn
    required property string reconciledDifference

    signal baselineTyped(string day, string amount)
    signal reconcileAsked(string day)

    spacing: Theme.spacing.xs

    ListRow {
        symbol: "building.columns"
        text: qsTr("%1 ••%2").arg(account.name).arg(account.mask)
        subtitle: account.balance.length > 0
                  ? qsTr("Bank %1 · Books %2").arg(account.balance).arg(account.booksBalance)
                  : qsTr("Books %1 · set the bank's balance on a day to follow it").arg(account.booksBalance)
        detail: account.uncategorized > 0 ? qsTr("%n to categorize", "", account.uncategorized)
                                          : qsTr("All categorized")
        width: parent.width
    }
    Label {
        readonly property string baselinePart: account.baselineDate.length > 0
            ? qsTr("Baseline %1 on %2").arg(account.baselineBalance).arg(account.baselineDate) : ""
        readonly property string reconciledPart: account.reconciledOn.length > 0
            ? qsTr("Reconciled %1, %2 apart").arg(account.reconciledOn).arg(account.reconciledDifference) : ""

        visible: text.length > 0
        text: baselinePart.length > 0 && reconciledPart.length > 0 ? baselinePart + " · " + reconciledPart
                                                                    : baselinePart + reconciledPart
        color: Theme.colours.secondaryText
        font.pixelSize: Theme.type.footnote
        x: Theme.spacing.xl
    }
    Row {
        x: Theme.spacing.xl
        spacing: Theme.spacing.s

        FormField {
            id: day
            objectName: "baselineDay_" + account.accountId
            placeholderText: qsTr("YYYY-MM-DD")
            text: account.baselineDate.length > 0 ? account.baselineDate : account.today
            width: 140
        }
        FormField {
            id: amount
            objectName: "baselineAmount_" + account.accountId
            placeholderText: qsTr("Bank balance in USD")
            width: 180
            onAccepted: account.baselineTyped(day.text, amount.text)
        }
        ActionButton {
            objectName: "baselineSet_" + account.accountId
            text: qsTr("Set baseline")
            enabled: !account.busy && amount.text.trim().length > 0
            onClicked: account.baselineTyped(day.text, amount.text)
        }
    }
    // The bank's balance at the end of a chosen day against the books by then;
    // today unless another day is typed.
    Row {
        x: Theme.spacing.xl
        spacing: Theme.spacing.s
        visible: account.baselineDate.length > 0

        FormField {
            id: reconcileDay
            objectName: "reconcileDay_" + account.accountId
            placeholderText: qsTr("YYYY-MM-DD")
            text: account.today
            width: 140
            onAccepted: account.reconcileAsked(reconcileDay.text)
        }
        ActionButton {
            objectName: "reconcile_" + account.accountId
            text: reconcileDay.text.trim() === account.today ? qsTr("Reconcile today") : qsTr("Reconcile on this day")
            symbol: "checkmark"
            enabled: !account.busy
            onClicked: account.reconcileAsked(reconcileDay.text)
        }
    }
}
