import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// The Expenses page: a period's expense lines beside what each account
// took of them, and below them the bills with the payments made on each.
ColumnLayout {
    id: page

    required property NativeBooksView view
    readonly property NativeBooksExpenses state: view.expenses

    spacing: Theme.spacing.m

    Component.onCompleted: {
        view.reload()
        state.load(picker.start, picker.end)
    }

    PeriodPicker {
        id: picker

        start: page.view.periodStart
        end: page.view.periodEnd
        onChosen: (start, end) => page.state.load(start, end)
    }

    ErrorBanner {
        visible: text.length > 0
        text: page.state.error
        retryable: true
        onRetry: page.state.load(picker.start, picker.end)
        Layout.fillWidth: true
    }
    LoadingPlaceholder {
        visible: page.state.loading && rows.count === 0
        rows: 5
        Layout.fillWidth: true
    }
    EmptyState {
        visible: !page.state.loading && rows.count === 0 && page.state.error.length === 0
        symbol: "cart"
        title: qsTr("No expenses")
        text: qsTr("No expense was posted in this period.")
        Layout.fillWidth: true
        Layout.fillHeight: true
    }

    RowLayout {
        visible: rows.count > 0
        spacing: Theme.spacing.xl
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.preferredHeight: 360

        ListView {
            id: rows

            objectName: "expenseRows"
            clip: true
            model: page.state.rows
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: ScrollBar {}
            Layout.fillWidth: true
            Layout.fillHeight: true

            delegate: BooksLine {
                required title
                required property string date
                required property string account
                required property string amount

                width: ListView.view.width
                subtitle: date + " · " + account
                figure: amount
            }
        }

        ColumnLayout {
            spacing: 0
            Layout.fillWidth: false
            Layout.preferredWidth: 300
            Layout.fillHeight: true
            Layout.alignment: Qt.AlignTop

            SectionHeader {
                text: qsTr("By account")
                Layout.fillWidth: true
            }
            ListView {
                objectName: "expenseGroups"
                clip: true
                model: page.state.byAccount
                boundsBehavior: Flickable.StopAtBounds
                Layout.fillWidth: true
                Layout.fillHeight: true

                delegate: BooksLine {
                    required property string label
                    required property int count
                    required property string amount

                    width: ListView.view.width
                    title: label
                    subtitle: count === 1 ? qsTr("1 expense") : qsTr("%1 expenses").arg(count)
                    figure: amount
                }
            }
        }
    }

    SectionHeader {
        visible: bills.count > 0
        text: qsTr("Bills and payments")
        Layout.fillWidth: true
    }
    DocumentList {
        id: bills

        objectName: "bills"
        visible: count > 0
        model: page.view.bills
        onVoidAsked: (kind, recordId, title) => voidSheet.ask(kind, recordId, title)
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.preferredHeight: 240
    }

    VoidSheet {
        id: voidSheet

        objectName: "voidSheet"
        view: page.view
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
