import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import PiloTarn.Customers
import PiloTarn.Design

// The open customer: name and stage, the details (edited in place and
// saved against the version they were read at), drafts to send, tasks,
// contacts, files, reminders and the follow-up day, and beside them a note
// box over the timeline. Archiving asks first.
Pane {
    id: panel

    required property NativeCustomerProfile profile
    required property var stages
    property bool editing: false

    padding: 0
    background: null

    Connections {
        target: panel.profile
        function onClientIdChanged() { panel.editing = false }
        function onConfirmingArchiveChanged() {
            if (panel.profile.confirmingArchive)
                archiveSheet.open()
        }
    }

    ConfirmSheet {
        id: archiveSheet
        title: qsTr("Archive %1?").arg(panel.profile.name)
        text: qsTr("They leave the customer list and the pipeline. Their history stays.")
        confirmText: qsTr("Archive")
        destructive: true
        onConfirmed: panel.profile.confirmArchive()
        onClosed: panel.profile.cancelArchive()
    }

    ConfirmSheet {
        id: contactSheet
        title: qsTr("New contact")
        confirmText: qsTr("Add")
        onOpened: { contactName.text = ""; contactRole.text = ""; contactEmail.text = "" }
        onConfirmed: panel.profile.addContact(contactName.text, contactRole.text, contactEmail.text, "")

        FormField { id: contactName; label: qsTr("Name"); Layout.fillWidth: true }
        FormField { id: contactRole; label: qsTr("Role"); Layout.fillWidth: true }
        FormField { id: contactEmail; label: qsTr("Email"); Layout.fillWidth: true }
    }

    ConfirmSheet {
        id: reminderSheet
        title: qsTr("Remind me")
        confirmText: qsTr("Add reminder")
        onOpened: { reminderText.text = ""; reminderDays.value = 1 }
        onConfirmed: {
            const at = new Date()
            at.setDate(at.getDate() + reminderDays.value)
            at.setHours(9, 0, 0, 0)
            panel.profile.addReminder(reminderText.text, at)
        }

        FormField { id: reminderText; label: qsTr("About"); Layout.fillWidth: true }
        SpinBox {
            id: reminderDays
            from: 0
            to: 365
            textFromValue: value => value === 0 ? qsTr("Today, 9:00") : value === 1 ? qsTr("Tomorrow, 9:00")
                                                                                   : qsTr("In %1 days, 9:00").arg(value)
            Accessible.name: qsTr("When")
            Layout.fillWidth: true
        }
    }

    ConfirmSheet {
        id: followUpSheet
        title: qsTr("Follow up on")
        text: qsTr("A day as YYYY-MM-DD; empty clears it.")
        confirmText: qsTr("Set")
        onOpened: followUpDay.text = panel.profile.followUpOn
        onConfirmed: panel.profile.setFollowUp(followUpDay.text.trim())

        FormField { id: followUpDay; label: qsTr("Day"); placeholderText: "2026-01-31"; Layout.fillWidth: true }
    }

    FileDialog {
        id: uploadPicker
        title: qsTr("Add a file")
        onAccepted: panel.profile.uploadFile(selectedFile)
    }

    FileDialog {
        id: savePicker
        property string fileId
        title: qsTr("Save the file")
        fileMode: FileDialog.SaveFile
        onAccepted: panel.profile.downloadFile(fileId, selectedFile)
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.spacing.l
        spacing: Theme.spacing.m

        RowLayout {
            spacing: Theme.spacing.s
            Layout.fillWidth: true

            Avatar { name: panel.profile.name }
            ColumnLayout {
                spacing: 0
                Layout.fillWidth: true
                Text {
                    objectName: "customerName"
                    text: panel.profile.name
                    elide: Text.ElideRight
                    font.pixelSize: Theme.type.title3
                    font.weight: Font.DemiBold
                    color: Theme.colours.text
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                    Layout.fillWidth: true
                }
                Text {
                    text: panel.profile.archived ? qsTr("Archived") : panel.profile.followUpLabel.length > 0
                                                   ? qsTr("Follow up on %1").arg(panel.profile.followUpLabel) : ""
                    visible: text.length > 0
                    font.pixelSize: Theme.type.footnote
                    color: Theme.colours.secondaryText
                }
            }
            ComboBox {
                objectName: "profileStage"
                textRole: "label"
                valueRole: "id"
                model: panel.stages
                currentIndex: indexOfValue(panel.profile.stage)
                Accessible.name: qsTr("Stage")
                onActivated: panel.profile.changeStage(currentValue)
            }
            IconButton { symbol: "calendar"; text: qsTr("Follow up"); onClicked: followUpSheet.open() }
            IconButton { symbol: "bell"; text: qsTr("Remind me"); onClicked: reminderSheet.open() }
            IconButton {
                symbol: "tray"
                text: qsTr("Archive")
                enabled: !panel.profile.archived
                onClicked: panel.profile.askArchive()
            }
            IconButton { symbol: "xmark"; text: qsTr("Close (Escape)"); onClicked: panel.profile.close() }
        }

        ErrorBanner {
            text: panel.profile.errorText
            closable: true
            onClosed: panel.profile.dismissError()
            Layout.fillWidth: true
        }

        RowLayout {
            spacing: Theme.spacing.l
            Layout.fillWidth: true
            Layout.fillHeight: true

            ScrollView {
                contentWidth: availableWidth
                Layout.preferredWidth: 300
                Layout.fillHeight: true

                ColumnLayout {
                    width: parent.width
                    spacing: Theme.spacing.s

                    SectionHeader {
                        text: qsTr("Details")
                        Layout.fillWidth: true
                        IconButton {
                            symbol: panel.editing ? "xmark" : "pencil"
                            text: panel.editing ? qsTr("Cancel") : qsTr("Edit details")
                            onClicked: panel.editing = !panel.editing
                        }
                    }
                    FormField { id: nameField; label: qsTr("Name"); text: panel.profile.name; readOnly: !panel.editing; Layout.fillWidth: true }
                    FormField { id: emailField; label: qsTr("Email"); text: panel.profile.email; readOnly: !panel.editing; Layout.fillWidth: true }
                    FormField { id: phoneField; label: qsTr("Phone"); text: panel.profile.phone; readOnly: !panel.editing; Layout.fillWidth: true }
                    FormField { id: companyField; label: qsTr("Company"); text: panel.profile.company; readOnly: !panel.editing; Layout.fillWidth: true }
                    FormField { id: addressField; label: qsTr("Address"); text: panel.profile.address; readOnly: !panel.editing; Layout.fillWidth: true }
                    ActionButton {
                        visible: panel.editing
                        kind: ActionButton.Primary
                        text: qsTr("Save")
                        enabled: !panel.profile.busy
                        onClicked: {
                            panel.profile.saveDetails(nameField.text, emailField.text, phoneField.text, companyField.text,
                                                      addressField.text)
                            panel.editing = false
                        }
                    }

                    SectionHeader { visible: drafts.count > 0; text: qsTr("Drafts to send"); Layout.fillWidth: true }
                    CustomerDrafts { id: drafts; profile: panel.profile; Layout.fillWidth: true }

                    SectionHeader { text: qsTr("Tasks"); Layout.fillWidth: true }
                    CustomerTasks { profile: panel.profile; Layout.fillWidth: true }

                    SectionHeader {
                        text: qsTr("Contacts")
                        Layout.fillWidth: true
                        IconButton { symbol: "plus"; text: qsTr("New contact"); onClicked: contactSheet.open() }
                    }
                    CustomerContacts { profile: panel.profile; Layout.fillWidth: true }

                    SectionHeader {
                        text: qsTr("Files")
                        Layout.fillWidth: true
                        IconButton { symbol: "plus"; text: qsTr("Add a file"); onClicked: uploadPicker.open() }
                    }
                    CustomerFiles {
                        profile: panel.profile
                        Layout.fillWidth: true
                        onSaveRequested: id => {
                            savePicker.fileId = id
                            savePicker.open()
                        }
                    }

                    SectionHeader { visible: reminders.count > 0; text: qsTr("Reminders"); Layout.fillWidth: true }
                    CustomerReminders { id: reminders; profile: panel.profile; Layout.fillWidth: true }
                }
            }

            ColumnLayout {
                spacing: Theme.spacing.s
                Layout.fillWidth: true
                Layout.fillHeight: true

                RowLayout {
                    spacing: Theme.spacing.xs
                    Layout.fillWidth: true
                    TextField {
                        id: note
                        objectName: "customerNote"
                        placeholderText: qsTr("Add a note")
                        Accessible.name: placeholderText
                        onAccepted: {
                            panel.profile.addNote(text)
                            clear()
                        }
                        Layout.fillWidth: true
                    }
                    ActionButton {
                        text: qsTr("Add note")
                        enabled: note.text.trim().length > 0 && !panel.profile.busy
                        onClicked: note.accepted()
                    }
                }

                CustomerTimeline {
                    profile: panel.profile
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
            }
        }
    }
}
