import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.People

// "Payroll": a pay period's lines with their adjustments, the actions its
// status allows, its notes, and the period exported to a CSV file the
// person chooses. A period without lines says so.
ColumnLayout {
    id: page

    required property NativePayrollView view

    spacing: Theme.spacing.m
    Component.onCompleted: view.refresh()

    Toolbar {
        title: qsTr("Payroll")
        subtitle: page.view.loaded && page.view.status.length > 0
                  ? qsTr("%1 · %2 in total").arg(page.view.status.charAt(0).toUpperCase() + page.view.status.slice(1))
                                            .arg(page.view.totalText) : ""
        Layout.fillWidth: true

        ComboBox {
            objectName: "payrollPeriod"
            model: page.view.periods
            textRole: "label"
            valueRole: "start"
            enabled: !page.view.busy
            currentIndex: indexOfValue(page.view.periodStart)
            font.pixelSize: Theme.type.callout
            implicitWidth: 240
            onActivated: page.view.choosePeriod(currentValue)
        }
        Repeater {
            model: page.view.allowedActions
            onItemAdded: (index, item) => {
                const button = item as ActionButton
                button.enabled = Qt.binding(() => !page.view.busy)
                button.clicked.connect(() => page.view.act(button.objectName.slice("payroll_".length)))
            }

            ActionButton {
                required property string modelData

                objectName: "payroll_" + modelData
                text: ({ "approve": qsTr("Approve"), "reopen": qsTr("Reopen"), "mark-paid": qsTr("Mark paid") })[modelData]
                kind: modelData === "reopen" ? ActionButton.Secondary : ActionButton.Primary
            }
        }
        ActionButton {
            objectName: "payrollExport"
            text: qsTr("Export")
            symbol: "doc.text"
            enabled: page.view.loaded && !page.view.busy && page.view.lineCount > 0
            onClicked: {
                exportDialog.currentFile = "file:///payroll-" + page.view.periodStart + ".csv"
                exportDialog.open()
            }
        }
    }

    ErrorBanner {
        objectName: "payrollError"
        text: page.view.errorText
        retryable: true
        onRetry: page.view.refresh()
        Layout.fillWidth: true
    }

    RowLayout {
        visible: page.view.exportedTo.length > 0
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        Text {
            objectName: "payrollExported"
            text: qsTr("Exported to %1").arg(page.view.exportedTo)
            elide: Text.ElideMiddle
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.success
            Layout.fillWidth: true
        }
        // The desktop opens a CSV file in its spreadsheet.
        ActionButton {
            text: qsTr("Open")
            kind: ActionButton.Plain
            onClicked: Qt.openUrlExternally("file://" + page.view.exportedTo)
        }
    }

    LoadingPlaceholder {
        visible: !page.view.loaded
        rows: 5
        Layout.fillWidth: true
    }

    EmptyState {
        objectName: "payrollEmpty"
        visible: page.view.loaded && page.view.periodStart.length > 0 && page.view.lineCount === 0
        symbol: "dollarsign.circle"
        title: qsTr("Nothing to pay in this period")
        text: qsTr("No one has hours or adjustments in this period.")
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: Theme.spacing.xl
    }

    PayrollLineList {
        objectName: "payrollLines"
        visible: page.view.loaded && page.view.lineCount > 0
        view: page.view
        model: page.view.lines
        spacing: Theme.spacing.s
        onAdjust: (personId, name) => adjustment.add(personId, name)
        Layout.fillWidth: true
        Layout.fillHeight: true

        // Positioners rather than layouts: Qt 6.4's layouts can touch a
        // half-destroyed delegate while the list is torn down.
        delegate: Column {
            id: line

            required property string personId
            required property string name
            required property string hours
            required property string rate
            required property string regularPay
            required property var adjustments
            required property string total
            readonly property PayrollLineList list: ListView.view as PayrollLineList

            width: ListView.view.width
            spacing: Theme.spacing.xxs

            Item {
                width: parent.width
                height: lineRow.implicitHeight

                ListRow {
                    id: lineRow

                    width: parent.width - (adjust.visible ? adjust.width + Theme.spacing.s : 0)
                    avatarName: line.name
                    text: line.name
                    subtitle: qsTr("%1 at %2 · %3").arg(line.hours).arg(line.rate).arg(line.regularPay)
                    detail: line.total
                }
                IconButton {
                    id: adjust

                    objectName: "adjust_" + line.personId
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    visible: line.list.view.canAdjust
                    enabled: !line.list.view.busy
                    symbol: "plus"
                    text: qsTr("Add an adjustment for %1").arg(line.name)
                    onClicked: line.list.adjust(line.personId, line.name)
                }
            }
            Repeater {
                model: line.adjustments
                onItemAdded: (index, item) => {
                    item.view = line.list.view
                }

                Item {
                    id: adjustmentRow

                    required property var modelData
                    property NativePayrollView view

                    x: Theme.spacing.xxl
                    width: parent ? parent.width - x : 0
                    height: Math.max(adjustmentText.implicitHeight, remove.implicitHeight)

                    Text {
                        id: adjustmentText

                        anchors.left: parent.left
                        anchors.right: remove.left
                        anchors.verticalCenter: parent.verticalCenter
                        text: qsTr("%1 %2 · added by %3").arg(adjustmentRow.modelData.label)
                                                          .arg(adjustmentRow.modelData.amount)
                                                          .arg(adjustmentRow.modelData.by)
                        elide: Text.ElideRight
                        font.pixelSize: Theme.type.footnote
                        color: Theme.colours.secondaryText
                    }
                    IconButton {
                        id: remove

                        objectName: "removeAdjustment_" + adjustmentRow.modelData.id
                        anchors.right: parent.right
                        anchors.verticalCenter: parent.verticalCenter
                        visible: adjustmentRow.view !== null && adjustmentRow.view.canAdjust
                        enabled: adjustmentRow.view !== null && !adjustmentRow.view.busy
                        symbol: "trash"
                        iconSize: 16
                        text: qsTr("Remove this adjustment")
                        onClicked: adjustmentRow.view.removeAdjustment(adjustmentRow.modelData.id)
                    }
                }
            }
        }
    }

    SectionHeader {
        visible: page.view.loaded && page.view.periodStart.length > 0
        text: qsTr("Notes")
        Layout.fillWidth: true

        ActionButton {
            objectName: "payrollSaveNotes"
            text: qsTr("Save notes")
            kind: ActionButton.Plain
            enabled: !page.view.busy && notes.text !== page.view.notes
            onClicked: page.view.saveNotes(notes.text)
        }
    }

    TextArea {
        id: notes

        objectName: "payrollNotes"
        visible: page.view.loaded && page.view.periodStart.length > 0
        text: page.view.notes
        placeholderText: qsTr("Anything the next pay run should know")
        wrapMode: TextEdit.Wrap
        font.pixelSize: Theme.type.callout
        color: Theme.colours.text
        placeholderTextColor: Theme.colours.tertiaryText
        background: Rectangle {
            radius: Theme.radii.medium
            color: Theme.colours.surface
            border.width: 1
            border.color: notes.activeFocus ? Theme.colours.accent : Theme.colours.border
        }
        Layout.fillWidth: true
        Layout.preferredHeight: Math.max(72, implicitHeight)
    }

    ConfirmSheet {
        id: adjustment

        property string personId

        function add(id, name) {
            personId = id
            title = qsTr("An adjustment for %1").arg(name)
            labelField.text = ""
            amountField.text = ""
            open()
        }

        objectName: "adjustmentSheet"
        text: qsTr("A bonus or reimbursement as 12.50, a deduction as -12.50.")
        confirmText: qsTr("Add adjustment")
        onConfirmed: page.view.addAdjustment(personId, labelField.text, amountField.text)

        FormField {
            id: labelField
            objectName: "adjustmentLabel"
            label: qsTr("What it is for")
            Layout.fillWidth: true
        }
        FormField {
            id: amountField
            objectName: "adjustmentAmount"
            label: qsTr("Amount")
            Layout.fillWidth: true
        }
    }

    FileDialog {
        id: exportDialog

        fileMode: FileDialog.SaveFile
        nameFilters: [qsTr("CSV files (*.csv)")]
        onAccepted: page.view.exportTo(selectedFile)
    }
}
