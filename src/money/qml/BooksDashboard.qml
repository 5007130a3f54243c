import QtQuick
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// The books' Dashboard: the twelve months' money in and out as bars, their
// totals, what is owed on bills and how the bank accounts stand. The books
// load when the page opens.
ColumnLayout {
    id: page

    required property NativeBooksView view
    readonly property NativeBooksDashboard dashboard: view.dashboard
    readonly property bool loaded: !view.loading && !dashboard.loading
    // Kept once the first load asked for here is in, so a reload does not
    // blank the chart.
    property bool shown: false
    property bool asked: false

    spacing: Theme.spacing.l

    Component.onCompleted: {
        asked = true
        view.reload()
    }
    onLoadedChanged: if (asked && loaded && error.text.length === 0) shown = true

    RowLayout {
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        Text {
            objectName: "company"
            text: page.view.company
            elide: Text.ElideRight
            font.pixelSize: Theme.type.title3
            font.weight: Font.DemiBold
            color: Theme.colours.text
            Layout.fillWidth: true
        }
        ActionButton {
            visible: page.shown
            kind: ActionButton.Plain
            text: qsTr("Rename…")
            onClicked: companySheet.ask()
        }
    }

    ErrorBanner {
        id: error

        visible: text.length > 0
        text: page.view.error.length > 0 ? page.view.error : page.dashboard.error
        retryable: true
        onRetry: page.view.reload()
        Layout.fillWidth: true
    }

    RowLayout {
        spacing: Theme.spacing.m
        Layout.fillWidth: true

        FigureCard {
            title: qsTr("Money in")
            value: page.dashboard.moneyIn
            note: qsTr("Last 12 months")
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredWidth: 1
        }
        FigureCard {
            title: qsTr("Money out")
            value: page.dashboard.moneyOut
            note: qsTr("Last 12 months")
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredWidth: 1
        }
        FigureCard {
            title: qsTr("Unpaid bills")
            value: page.dashboard.unpaidBills
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredWidth: 1
        }
        FigureCard {
            title: qsTr("Bank accounts")
            value: page.dashboard.bankNote
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredWidth: 1
        }
    }

    SectionHeader {
        text: qsTr("Money in and out by month")
        Layout.fillWidth: true
    }

    LoadingPlaceholder {
        visible: !page.shown && page.view.error.length === 0
        rows: 3
        Layout.fillWidth: true
    }

    MonthChart {
        objectName: "dashboardChart"
        visible: page.shown
        dashboard: page.dashboard
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.minimumHeight: 200
    }

    SourceLink {
        visible: page.shown
        view: page.view
        Layout.fillWidth: true
    }

    ConfirmSheet {
        id: companySheet

        objectName: "companySheet"

        function ask() {
            companyName.text = page.view.company
            open()
        }

        title: qsTr("The company's legal name")
        text: qsTr("The name these books are kept for.")
        confirmText: qsTr("Save")
        onConfirmed: page.view.setCompany(companyName.text)

        FormField {
            id: companyName

            objectName: "companyName"
            label: qsTr("Company")
            Layout.fillWidth: true
        }
    }
}
