import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.Money

// A period's register, newest first: each entry's accounts and amount; an
// entry that is not itself a reversal offers to be reversed.
ListView {
    id: register

    required property NativeBooksReport report

    signal reverseAsked(string entryId, string memo)

    clip: true
    model: report.entries
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: BooksLine {
        id: entry

        required property string entryId
        required property string date
        required property string memo
        required property string accounts
        required property string amount
        required property bool reversal

        width: ListView.view.width
        title: memo
        subtitle: date + " · " + accounts
        note: reversal ? qsTr("Reversal") : ""
        figure: amount

        ActionButton {
            visible: !entry.reversal
            kind: ActionButton.Plain
            text: qsTr("Reverse")
            onClicked: (entry.ListView.view as RegisterList).reverseAsked(entry.entryId, entry.memo)
        }
    }
}
