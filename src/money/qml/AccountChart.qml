import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.Money

// The chart of accounts under its group titles (Assets, Liabilities, ...),
// each account with what it holds.
ListView {
    id: chart

    required property NativeBooksView view

    clip: true
    model: view.accounts
    boundsBehavior: Flickable.StopAtBounds
    section.property: "group"
    section.delegate: SectionHeader {
        required property string section
        width: ListView.view.width
        text: section
    }
    ScrollBar.vertical: ScrollBar {}

    delegate: BooksLine {
        required property string code
        required property string name
        required property string balance

        width: ListView.view.width
        title: code + "  " + name
        figure: balance
    }
}
