import QtQuick
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.People

// "Time clock": one person's week by day with its entries and total,
// clocking in and out on one's own clock, and an owner's correction of an
// entry with the reason it needs.
ColumnLayout {
    id: page

    required property NativeTimeClockView view

    spacing: Theme.spacing.m
    Component.onCompleted: view.appear()
    Component.onDestruction: view.disappear()

    Toolbar {
        title: page.view.ownClock ? qsTr("My time clock") : page.view.personName
        subtitle: qsTr("%1 · %2 this week").arg(page.view.weekLabel).arg(page.view.totalText)
        Layout.fillWidth: true

        ActionButton {
            objectName: "ownClock"
            visible: !page.view.ownClock
            text: qsTr("My clock")
            kind: ActionButton.Plain
            onClicked: page.view.personId = ""
        }
        IconButton {
            objectName: "weekBack"
            symbol: "chevron.left"
            text: qsTr("Week before")
            onClicked: page.view.moveWeek(-1)
        }
        ActionButton {
            objectName: "weekNow"
            text: qsTr("This week")
            kind: ActionButton.Plain
            onClicked: page.view.moveWeek(0)
        }
        IconButton {
            objectName: "weekNext"
            symbol: "chevron.right"
            text: qsTr("Week after")
            onClicked: page.view.moveWeek(1)
        }
        ActionButton {
            objectName: "clockButton"
            visible: page.view.ownClock
            enabled: page.view.loaded && !page.view.busy
            kind: ActionButton.Primary
            symbol: "clock"
            text: page.view.clockedIn ? qsTr("Clock out") : qsTr("Clock in")
            onClicked: page.view.clockInOrOut()
        }
    }

    ErrorBanner {
        objectName: "timeClockError"
        text: page.view.errorText
        retryable: true
        onRetry: page.view.refresh()
        Layout.fillWidth: true
    }

    LoadingPlaceholder {
        visible: !page.view.loaded
        rows: 5
        Layout.fillWidth: true
    }

    Row {
        id: week

        objectName: "timeClockDays"
        visible: page.view.loaded
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        Repeater {
            model: page.view.days

            Rectangle {
                id: day

                required property string day
                required property string hours
                required property bool worked
                required property bool today

                width: (parent.width - 6 * Theme.spacing.s) / 7
                height: dayColumn.implicitHeight + 2 * Theme.spacing.s
                radius: Theme.radii.medium
                color: day.today ? Theme.colours.accentSoft : Theme.colours.surface
                border.width: 1
                border.color: Theme.colours.separator
                Accessible.name: day.day + ", " + day.hours

                Column {
                    id: dayColumn

                    anchors.centerIn: parent
                    spacing: Theme.spacing.xxs

                    Text {
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: day.day
                        font.pixelSize: Theme.type.caption
                        color: Theme.colours.secondaryText
                    }
                    Text {
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: day.worked ? day.hours : "—"
                        font.pixelSize: Theme.type.body
                        font.weight: Font.DemiBold
                        color: day.worked ? Theme.colours.text : Theme.colours.tertiaryText
                    }
                }
            }
        }
    }

    SectionHeader {
        visible: page.view.loaded
        text: qsTr("Entries")
        Layout.fillWidth: true
    }

    EmptyState {
        objectName: "timeClockEmpty"
        visible: page.view.loaded && page.view.entryCount === 0
        symbol: "clock"
        title: qsTr("Nothing on the clock this week")
        text: page.view.ownClock ? qsTr("Clock in when you start, and the hours add up here.")
                                 : qsTr("%1 did not clock in this week.").arg(page.view.personName)
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: Theme.spacing.xl
    }

    TimeEntryList {
        objectName: "timeEntries"
        visible: page.view.loaded && page.view.entryCount > 0
        view: page.view
        model: page.view.entries
        spacing: Theme.spacing.xs
        onCorrect: (entryId, clockIn, clockOut) => correctionSheet.edit(entryId, clockIn, clockOut)
        Layout.fillWidth: true
        Layout.fillHeight: true

        // Positioners rather than layouts: Qt 6.4's layouts can touch a
        // half-destroyed delegate while the list is torn down.
        delegate: Item {
            id: entry

            required property string entryId
            required property string clockIn
            required property string clockOut
            required property string clockInText
            required property string clockOutText
            required property bool open
            required property string hours
            required property string correction
            readonly property TimeEntryList list: ListView.view as TimeEntryList

            width: ListView.view.width
            height: row.implicitHeight

            ListRow {
                id: row

                width: parent.width - (correct.visible ? correct.width + Theme.spacing.s : 0)
                symbol: entry.open ? "timer" : "clock"
                text: entry.open ? qsTr("%1 – still clocked in").arg(entry.clockIn)
                                 : qsTr("%1 – %2").arg(entry.clockIn).arg(entry.clockOut)
                subtitle: entry.correction
                detail: entry.hours
            }
            IconButton {
                id: correct

                objectName: "correct_" + entry.entryId
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: entry.list.view.canCorrect
                symbol: "pencil"
                text: qsTr("Correct this entry")
                onClicked: entry.list.correct(entry.entryId, entry.clockInText, entry.clockOutText)
            }
        }
    }

    ConfirmSheet {
        id: correctionSheet

        property string entryId

        function edit(id, clockIn, clockOut) {
            entryId = id
            inField.text = clockIn
            outField.text = clockOut
            reasonField.text = ""
            open()
        }

        objectName: "correctionSheet"
        title: qsTr("Correct the entry")
        text: qsTr("Times as YYYY-MM-DD HH:MM. The reason is kept with the entry.")
        confirmText: qsTr("Save correction")
        onConfirmed: page.view.correctEntry(entryId, inField.text, outField.text, reasonField.text)

        FormField {
            id: inField
            label: qsTr("Clocked in")
            Layout.fillWidth: true
        }
        FormField {
            id: outField
            label: qsTr("Clocked out")
            placeholderText: qsTr("Empty while still clocked in")
            Layout.fillWidth: true
        }
        FormField {
            id: reasonField
            objectName: "correctionReason"
            label: qsTr("Reason")
            Layout.fillWidth: true
        }
    }
}
