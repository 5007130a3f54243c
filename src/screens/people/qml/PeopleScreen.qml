import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.People

// The people screen: its "Time clock" and "Payroll" sections, one page
// each, made while its section is shown so a page loads when it opens and
// stops refreshing when it closes.
Pane {
    id: screen

    required property NativePeopleView people
    property string section: "Time clock"

    function showPage() {
        if (section === "Payroll")
            page.setSource("PayrollPage.qml", { view: people.payroll })
        else
            page.setSource("TimeClockPage.qml", { view: people.timeClock })
    }

    padding: 0
    background: null
    onSectionChanged: showPage()
    Component.onCompleted: showPage()

    Loader {
        id: page

        objectName: "peoplePage"
        anchors.fill: parent
        anchors.leftMargin: Theme.spacing.xl
        anchors.rightMargin: Theme.spacing.xl
        anchors.bottomMargin: Theme.spacing.l
    }
}
