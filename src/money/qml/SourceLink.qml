import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// Whether the workspace's own invoices and payments belong to these books:
// linked on request, then each eligible record posted one by one, an
// invoice to the income account chosen beside it.
Rectangle {
    id: panel

    required property NativeBooksView view

    implicitHeight: content.implicitHeight + 2 * Theme.spacing.m
    radius: Theme.radii.medium
    color: Theme.colours.surface
    border.width: 1
    border.color: Theme.colours.separator

    ColumnLayout {
        id: content

        anchors.fill: parent
        anchors.margins: Theme.spacing.m
        spacing: Theme.spacing.xs

        RowLayout {
            spacing: Theme.spacing.m
            Layout.fillWidth: true

            ColumnLayout {
                spacing: 2
                Layout.fillWidth: true
                Text {
                    objectName: "sourceTitle"
                    text: panel.view.sourceTitle
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.type.callout
                    font.weight: Font.DemiBold
                    color: Theme.colours.text
                    Layout.fillWidth: true
                }
                Text {
                    visible: text.length > 0
                    text: panel.view.sourceDetail
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.type.footnote
                    color: Theme.colours.secondaryText
                    Layout.fillWidth: true
                }
            }
            ActionButton {
                objectName: "linkSource"
                text: panel.view.sourceLinked ? qsTr("Unlink") : qsTr("Link Tarn activity")
                kind: panel.view.sourceLinked ? ActionButton.Plain : ActionButton.Secondary
                enabled: !panel.view.busy && !panel.view.loading
                onClicked: panel.view.setSourceLinked(!panel.view.sourceLinked)
            }
        }
        Repeater {
            objectName: "sourceRecords"
            model: panel.view.sourceRecords
            onItemAdded: (index, item) => {
                item.busy = Qt.binding(() => panel.view.busy)
                item.incomeChoices = Qt.binding(() => panel.view.incomeChoices)
                item.postAsked.connect(income => panel.view.postSource(item.kind, item.recordId, income))
            }

            BooksLine {
                id: record

                required property string kind
                required property string recordId
                required title
                required property string date
                required property string amount
                property bool busy: false
                property var incomeChoices: []

                signal postAsked(string incomeAccountId)

                subtitle: (kind === "invoice" ? qsTr("Invoice") : qsTr("Payment")) + (date.length > 0 ? " · " + date : "")
                figure: amount
                Layout.fillWidth: true

                ComboBox {
                    id: income

                    objectName: "incomeAccount"
                    visible: record.kind === "invoice"
                    model: record.incomeChoices
                    textRole: "name"
                    valueRole: "id"
                    Accessible.name: qsTr("Income account")
                }
                ActionButton {
                    objectName: "postSource"
                    kind: ActionButton.Plain
                    text: qsTr("Post")
                    enabled: !record.busy
                    onClicked: record.postAsked(record.kind === "invoice" ? income.currentValue ?? "" : "")
                }
            }
        }
        Text {
            visible: panel.view.formError.length > 0
            text: panel.view.formError
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.danger
            Layout.fillWidth: true
        }
    }
}
