import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.People

// The people screen: its "HR", "Time clock" and "Payroll" sections, one
// page each, made while its section is shown so a page loads when it opens
// and stops refreshing when it closes.
Pane {
    id: screen

    required property NativePeopleView people
    property string section: "HR"

    // A page asks for another section of this screen; the window opens it.
    signal openSection(string section)

    function showPage() {
        if (section === "Payroll")
            page.setSource("PayrollPage.qml", { view: people.payroll })
        else if (section === "Time clock")
            page.setSource("TimeClockPage.qml", { view: people.timeClock })
        else
            page.setSource("HRPage.qml", { view: people.hr })
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

    Connections {
        target: page.item
        ignoreUnknownSignals: true

        function onOpenTimeClock(personId: string) {
            screen.people.timeClock.personId = personId
            screen.openSection("Time clock")
        }
    }
}
