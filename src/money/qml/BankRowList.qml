import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// The bank rows still to review, each matched to a ledger entry of the same
// amount or categorized to an account, and those already matched, which can
// be unmatched.
ColumnLayout {
    id: list

    required property NativeBankRows rows
    // [{ "id", "name" }]: where a row may be categorized.
    property var accounts: []

    spacing: Theme.spacing.s

    ErrorBanner {
        visible: text.length > 0
        text: list.rows.error
        Layout.fillWidth: true
    }

    SectionHeader {
        text: qsTr("To review")
        Layout.fillWidth: true
    }
    Text {
        objectName: "unmatchedEmpty"
        visible: unmatched.count === 0
        text: list.rows.unmatchedEmpty
        font.pixelSize: Theme.type.callout
        color: Theme.colours.secondaryText
    }
    Repeater {
        id: unmatched

        objectName: "unmatchedRows"
        model: list.rows.unmatched
        onItemAdded: (index, item) => {
            item.busy = Qt.binding(() => list.rows.busy)
            item.matchAsked.connect(() => rowSheet.ask(item.rowId, item.description, true))
            item.categorizeAsked.connect(() => rowSheet.ask(item.rowId, item.description, false))
        }

        BooksLine {
            id: row

            required property string rowId
            required property string date
            required property string description
            required property string detail
            required property string amount
            property bool busy: false

            signal matchAsked()
            signal categorizeAsked()

            title: description
            subtitle: date + " · " + detail
            figure: amount
            Layout.fillWidth: true

            ActionButton {
                kind: ActionButton.Plain
                text: qsTr("Match…")
                enabled: !row.busy
                onClicked: row.matchAsked()
            }
            ActionButton {
                kind: ActionButton.Plain
                text: qsTr("Categorize…")
                enabled: !row.busy
                onClicked: row.categorizeAsked()
            }
        }
    }

    SectionHeader {
        text: qsTr("Matched")
        Layout.fillWidth: true
    }
    Text {
        objectName: "matchedEmpty"
        visible: matched.count === 0
        text: list.rows.matchedEmpty
        font.pixelSize: Theme.type.callout
        color: Theme.colours.secondaryText
    }
    Repeater {
        id: matched

        objectName: "matchedRows"
        model: list.rows.matched
        onItemAdded: (index, item) => {
            item.busy = Qt.binding(() => list.rows.busy)
            item.unmatchAsked.connect(() => list.rows.unmatch(item.rowId))
        }

        BooksLine {
            id: done

            required property string rowId
            required property string date
            required property string description
            required property string detail
            required property string amount
            property bool busy: false

            signal unmatchAsked()

            title: description
            subtitle: date
            note: detail
            noteColour: Theme.colours.success
            figure: amount
            Layout.fillWidth: true

            ActionButton {
                kind: ActionButton.Plain
                text: qsTr("Unmatch")
                enabled: !done.busy
                onClicked: done.unmatchAsked()
            }
        }
    }

    ConfirmSheet {
        id: rowSheet

        objectName: "rowSheet"

        property string rowId
        property bool matching: true

        function ask(id: string, description: string, match: bool) {
            rowId = id
            matching = match
            title = match ? qsTr("Match “%1”").arg(description) : qsTr("Categorize “%1”").arg(description)
            text = match ? qsTr("Ledger entries of the same amount in this account.")
                         : qsTr("An entry is posted from the bank account to the account chosen.")
            choice.model = match ? list.rows.candidates(id) : list.accounts
            open()
        }

        confirmText: matching ? qsTr("Match") : qsTr("Categorize")
        onConfirmed: {
            if (choice.currentValue === undefined)
                return
            if (matching)
                list.rows.match(rowId, choice.currentValue)
            else
                list.rows.categorize(rowId, choice.currentValue)
        }

        ComboBox {
            id: choice

            objectName: "rowChoice"
            textRole: rowSheet.matching ? "label" : "name"
            valueRole: "id"
            Accessible.name: rowSheet.matching ? qsTr("Ledger entry") : qsTr("Account")
            Layout.fillWidth: true
        }
        Text {
            visible: choice.count === 0
            text: qsTr("No ledger entry of this amount is waiting to be matched.")
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
            Layout.fillWidth: true
        }
    }
}
