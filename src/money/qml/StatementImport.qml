import QtQuick
import QtQuick.Dialogs
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// A bank statement for one account, chosen or dropped here: its rows are
// checked and counted before anything is sent, or the reader's one message
// stands in place of the count.
Rectangle {
    id: panel

    required property NativeBankImport statement
    property string bankId
    property string bankName

    implicitHeight: content.implicitHeight + 2 * Theme.spacing.m
    radius: Theme.radii.medium
    color: drop.containsDrag ? Theme.colours.accentSoft : Theme.colours.surface
    border.width: 1
    border.color: drop.containsDrag ? Theme.colours.accent : Theme.colours.separator

    DropArea {
        id: drop

        objectName: "statementDrop"
        anchors.fill: parent
        keys: ["text/uri-list"]
        onDropped: drag => {
            if (drag.urls.length > 0)
                panel.statement.choose(drag.urls[0], panel.bankId, panel.bankName)
        }
    }

    FileDialog {
        id: chooser

        title: qsTr("Choose a bank statement")
        nameFilters: [qsTr("CSV files (*.csv)"), qsTr("All files (*)")]
        onAccepted: panel.statement.choose(selectedFile, panel.bankId, panel.bankName)
    }

    ColumnLayout {
        id: content

        anchors.fill: parent
        anchors.margins: Theme.spacing.m
        spacing: Theme.spacing.s

        RowLayout {
            spacing: Theme.spacing.m
            Layout.fillWidth: true

            Icon {
                symbol: "doc.text"
                size: 24
                color: Theme.colours.secondaryText
            }
            ColumnLayout {
                spacing: 2
                Layout.fillWidth: true
                Text {
                    text: panel.statement.fileName.length > 0 ? panel.statement.fileName
                                                              : qsTr("Import a bank statement")
                    elide: Text.ElideMiddle
                    font.pixelSize: Theme.type.callout
                    font.weight: Font.DemiBold
                    color: Theme.colours.text
                    Layout.fillWidth: true
                }
                Text {
                    text: panel.statement.hint
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.type.footnote
                    color: Theme.colours.secondaryText
                    Layout.fillWidth: true
                }
            }
            ActionButton {
                objectName: "chooseStatement"
                text: qsTr("Choose file…")
                enabled: panel.bankId.length > 0 && !panel.statement.importing
                onClicked: chooser.open()
            }
            ActionButton {
                objectName: "importStatement"
                kind: ActionButton.Primary
                text: panel.statement.importing ? qsTr("Importing…") : qsTr("Import")
                enabled: panel.statement.ready
                onClicked: panel.statement.send()
            }
        }
        Text {
            objectName: "statementStatus"
            visible: text.length > 0
            text: panel.statement.status
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.callout
            color: panel.statement.refused ? Theme.colours.danger : Theme.colours.text
            Layout.fillWidth: true
        }
        Text {
            objectName: "statementResult"
            visible: text.length > 0
            text: panel.statement.result
            font.pixelSize: Theme.type.callout
            color: Theme.colours.success
            Layout.fillWidth: true
        }
        Text {
            visible: panel.statement.fileName.length === 0
            text: qsTr("Or drop a CSV file here.")
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.tertiaryText
        }
    }
}
