import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.People

// "HR": the team by name, and beside it the chosen person's record: their
// role, employment and start, and for an owner their contact details, an
// emergency contact and the form that changes them.
ColumnLayout {
    id: page

    required property NativeHRView view
    readonly property var person: view.selected

    // An owner asks for this person's week on the time clock.
    signal openTimeClock(string personId)

    function showPerson() {
        jobTitle.text = person.jobTitle ?? ""
        employment.currentIndex = Math.max(0, view.employments.indexOf(person.employment ?? ""))
        startedOn.text = person.startedOn ?? ""
        phone.text = person.phone ?? ""
        emergency.text = person.emergencyContact ?? ""
    }

    spacing: Theme.spacing.m
    Component.onCompleted: view.refresh()

    Connections {
        target: page.view

        function onSelectionChanged() { page.showPerson() }
    }

    Toolbar {
        title: qsTr("HR")
        subtitle: page.view.loaded ? qsTr("%n people", "", team.count) : ""
        Layout.fillWidth: true
    }

    ErrorBanner {
        objectName: "hrError"
        text: page.view.errorText
        retryable: true
        onRetry: page.view.refresh()
        Layout.fillWidth: true
    }

    LoadingPlaceholder {
        visible: !page.view.loaded
        rows: 6
        Layout.fillWidth: true
    }

    EmptyState {
        visible: page.view.loaded && team.count === 0
        symbol: "person.text.rectangle"
        title: qsTr("No one on the team yet")
        text: qsTr("People added under Team & access appear here with their records.")
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: Theme.spacing.xl
    }

    RowLayout {
        visible: page.view.loaded && team.count > 0
        spacing: Theme.spacing.xl
        Layout.fillWidth: true
        Layout.fillHeight: true

        HRList {
            id: team

            objectName: "hrList"
            view: page.view
            model: page.view.records
            spacing: Theme.spacing.xxs
            Layout.preferredWidth: 300
            Layout.fillHeight: true

            delegate: ListRow {
                id: member

                required property string personId
                required property string name
                required property string jobTitle
                required property string employmentLabel
                required property bool clockedIn
                readonly property HRList list: ListView.view as HRList

                objectName: "hr_" + personId
                width: ListView.view.width
                avatarName: name
                text: name
                subtitle: qsTr("%1 · %2").arg(jobTitle).arg(employmentLabel)
                detail: clockedIn ? qsTr("Clocked in") : ""
                lit: list.view.selectedId === personId
                onClicked: list.view.selectedId = personId
            }
        }

        ScrollView {
            id: record

            objectName: "hrRecord"
            contentWidth: availableWidth
            // Its content's width follows it, never the other way round.
            Layout.preferredWidth: 1
            Layout.minimumWidth: 0
            Layout.fillWidth: true
            Layout.fillHeight: true

            ColumnLayout {
                width: record.availableWidth
                spacing: Theme.spacing.m

                RowLayout {
                    spacing: Theme.spacing.m
                    Layout.fillWidth: true

                    Avatar {
                        name: page.person.name ?? ""
                        size: 48
                    }
                    ColumnLayout {
                        spacing: 2
                        Layout.fillWidth: true

                        Text {
                            text: page.person.name ?? ""
                            elide: Text.ElideRight
                            Layout.fillWidth: true
                            font.pixelSize: Theme.type.title3
                            font.weight: Font.DemiBold
                            color: Theme.colours.text
                            Accessible.role: Accessible.Heading
                            Accessible.name: text
                        }
                        Text {
                            text: [page.person.email ?? "", page.person.since ?? ""].filter(t => t.length > 0).join(" · ")
                            elide: Text.ElideRight
                            Layout.fillWidth: true
                            font.pixelSize: Theme.type.footnote
                            color: Theme.colours.secondaryText
                        }
                    }
                    ActionButton {
                        objectName: "hrTimeClock"
                        visible: page.view.canEdit
                        text: qsTr("Time clock")
                        symbol: "clock"
                        onClicked: page.openTimeClock(page.view.selectedId)
                    }
                }

                FormField {
                    id: jobTitle
                    objectName: "hrJobTitle"
                    label: qsTr("Job title")
                    readOnly: !page.view.canEdit
                    Layout.maximumWidth: 480
                    Layout.fillWidth: true
                }
                Text {
                    text: qsTr("Employment")
                    font.pixelSize: Theme.type.footnote
                    font.weight: Font.Medium
                    color: Theme.colours.secondaryText
                }
                ComboBox {
                    id: employment
                    objectName: "hrEmployment"
                    model: page.view.employments
                    enabled: page.view.canEdit
                    font.pixelSize: Theme.type.callout
                    Layout.preferredWidth: 220
                }
                FormField {
                    id: startedOn
                    objectName: "hrStartedOn"
                    label: qsTr("Started on (YYYY-MM-DD)")
                    readOnly: !page.view.canEdit
                    Layout.maximumWidth: 480
                    Layout.fillWidth: true
                }
                FormField {
                    id: phone
                    objectName: "hrPhone"
                    visible: page.view.canEdit
                    label: qsTr("Phone")
                    Layout.maximumWidth: 480
                    Layout.fillWidth: true
                }
                FormField {
                    id: emergency
                    objectName: "hrEmergency"
                    visible: page.view.canEdit
                    label: qsTr("Emergency contact")
                    placeholderText: qsTr("Name (relation), phone")
                    Layout.maximumWidth: 480
                    Layout.fillWidth: true
                }
                Text {
                    visible: !page.view.canEdit
                    text: qsTr("Contact details and changes to a record are for the company's owners.")
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.type.footnote
                    color: Theme.colours.tertiaryText
                    Layout.fillWidth: true
                }
                ActionButton {
                    objectName: "hrSave"
                    visible: page.view.canEdit
                    enabled: !page.view.busy
                    kind: ActionButton.Primary
                    text: qsTr("Save record")
                    onClicked: page.view.save(page.view.selectedId, jobTitle.text, employment.currentText,
                                              startedOn.text, phone.text, emergency.text)
                }
            }
        }
    }
}
