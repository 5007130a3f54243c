import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// The Reports page: a period's revenue, expenses and net income, and its
// register (every account, or one) a hundred entries at a time. An entry
// that is not itself a reversal can be reversed on a chosen day.
ColumnLayout {
    id: page

    required property NativeBooksView view
    readonly property NativeBooksReport report: view.report

    function show() {
        report.load(picker.start, picker.end, account.currentValue ?? "")
    }

    spacing: Theme.spacing.m

    Component.onCompleted: {
        view.reload()
        show()
    }

    RowLayout {
        spacing: Theme.spacing.m
        Layout.fillWidth: true

        PeriodPicker {
            id: picker

            start: page.view.periodStart
            end: page.view.periodEnd
            onChosen: page.show()
        }
        ComboBox {
            id: account

            objectName: "registerAccount"
            model: page.view.registerChoices
            textRole: "name"
            valueRole: "id"
            onActivated: page.show()
            Accessible.name: qsTr("Account")
            Layout.preferredWidth: 260
            Layout.alignment: Qt.AlignBottom
        }
    }

    ErrorBanner {
        visible: text.length > 0
        text: page.report.error.length > 0 ? page.report.error : page.view.formError
        Layout.fillWidth: true
    }

    RowLayout {
        spacing: Theme.spacing.m
        Layout.fillWidth: true

        FigureCard {
            title: qsTr("Revenue")
            value: page.report.loading ? "…" : page.report.revenue
            Layout.fillWidth: true
            Layout.preferredWidth: 1
        }
        FigureCard {
            title: qsTr("Expenses")
            value: page.report.loading ? "…" : page.report.expenses
            Layout.fillWidth: true
            Layout.preferredWidth: 1
        }
        FigureCard {
            title: qsTr("Net income")
            value: page.report.loading ? "…" : page.report.netIncome
            Layout.fillWidth: true
            Layout.preferredWidth: 1
        }
    }

    SectionHeader {
        text: page.report.registerTotal === 1 ? qsTr("Register · 1 entry")
                                              : qsTr("Register · %1 entries").arg(page.report.registerTotal)
        Layout.fillWidth: true
    }
    LoadingPlaceholder {
        visible: page.report.loading && register.count === 0
        rows: 4
        Layout.fillWidth: true
    }

    RowLayout {
        spacing: Theme.spacing.xl
        Layout.fillWidth: true
        Layout.fillHeight: true

        ColumnLayout {
            spacing: Theme.spacing.xs
            Layout.fillWidth: true
            Layout.fillHeight: true

            RegisterList {
                id: register

                objectName: "register"
                report: page.report
                onReverseAsked: (entryId, memo) => reverseSheet.ask(entryId, memo)
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
            ActionButton {
                objectName: "registerMore"
                visible: page.report.hasMore
                kind: ActionButton.Plain
                text: qsTr("Show the next 100 of %1").arg(page.report.registerTotal)
                enabled: !page.report.loading
                onClicked: page.report.more()
            }
        }

        AccountChart {
            objectName: "accountChart"
            view: page.view
            Layout.preferredWidth: 320
            Layout.fillHeight: true
        }
    }

    ConfirmSheet {
        id: reverseSheet

        objectName: "reverseSheet"

        property string entryId
        property bool refused: false

        function ask(id: string, memo: string) {
            entryId = id
            refused = false
            title = qsTr("Reverse “%1”").arg(memo)
            reverseDate.text = page.view.periodEnd
            open()
        }

        text: qsTr("A reversing entry with the opposite lines is posted on this day; the entry itself stays.")
        confirmText: qsTr("Reverse entry")
        onConfirmed: {
            refused = !page.view.reverseEntry(entryId, reverseDate.text)
            if (refused)
                open()
        }

        FormField {
            id: reverseDate

            label: qsTr("Day (YYYY-MM-DD)")
            error: reverseSheet.refused ? page.view.formError : ""
            input.onTextEdited: reverseSheet.refused = false
            Layout.fillWidth: true
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
