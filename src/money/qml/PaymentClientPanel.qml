import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Money

// The chosen client's side of the terminal: their saved cards, a card added
// through the processor's page in the browser (waiting until it is saved,
// with Cancel), and their recurring charges. The panel's state does the
// work; this draws it and forwards the choices.
ColumnLayout {
    id: panelView

    required property NativePaymentClientPanel panel
    required property var clients

    spacing: Theme.spacing.s

    SectionHeader {
        text: qsTr("Client")
        Layout.fillWidth: true
    }
    ComboBox {
        id: clientChoice

        objectName: "clientChoice"
        model: panelView.clients
        textRole: "name"
        valueRole: "clientId"
        currentIndex: indexOfValue(panelView.panel.clientId)
        onActivated: panelView.panel.clientId = currentValue
        Accessible.name: qsTr("Client")
        Layout.fillWidth: true
    }
    ErrorBanner {
        objectName: "panelError"
        visible: text.length > 0
        text: panelView.panel.errorText
        retryable: true
        onRetry: panelView.panel.reload()
        Layout.fillWidth: true
    }

    SectionHeader {
        text: qsTr("Saved cards")
        Layout.fillWidth: true
    }
    Column {
        Layout.fillWidth: true
        Repeater {
            id: cards

            objectName: "clientCards"
            model: panelView.panel.cards

            ListRow {
                required property string label
                width: parent ? parent.width : implicitWidth
                symbol: "creditcard"
                text: label
                hoverEnabled: false
                focusPolicy: Qt.NoFocus
            }
        }
    }
    Text {
        visible: cards.count === 0 && !panelView.panel.loading
        text: qsTr("No saved card yet.")
        font.pixelSize: Theme.type.callout
        color: Theme.colours.secondaryText
        Layout.fillWidth: true
    }
    RowLayout {
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        ActionButton {
            objectName: "addCard"
            visible: !panelView.panel.following
            enabled: panelView.panel.clientId.length > 0
            text: qsTr("Add card")
            symbol: "plus"
            onClicked: panelView.panel.addCard()
        }
        BusyIndicator {
            visible: panelView.panel.following
            running: visible
            Layout.preferredWidth: Theme.spacing.xl
            Layout.preferredHeight: Theme.spacing.xl
        }
        Text {
            objectName: "cardSession"
            visible: text.length > 0
            text: panelView.panel.cardSessionText
            elide: Text.ElideRight
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
            Layout.fillWidth: true
        }
        ActionButton {
            objectName: "cancelCard"
            visible: panelView.panel.following
            text: qsTr("Cancel")
            kind: ActionButton.Plain
            onClicked: panelView.panel.cancelCard()
        }
    }

    SectionHeader {
        text: qsTr("Recurring charges")
        Layout.fillWidth: true

        ActionButton {
            objectName: "newSchedule"
            enabled: cards.count > 0 && !panelView.panel.busy
            text: qsTr("New")
            symbol: "plus"
            kind: ActionButton.Plain
            onClicked: scheduleSheet.ask()
        }
    }
    Column {
        Layout.fillWidth: true
        Repeater {
            id: schedules

            objectName: "clientSchedules"
            model: panelView.panel.schedules
            onItemAdded: (index, item) => {
                item.pauseAsked.connect(() => panelView.panel.pauseSchedule(item.scheduleId))
                item.resumeAsked.connect(() => panelView.panel.resumeSchedule(item.scheduleId))
                item.cancelAsked.connect(() => cancelSheet.ask(item.scheduleId, item.amount))
            }

            PaymentScheduleLine {}
        }
    }
    Text {
        visible: schedules.count === 0 && !panelView.panel.loading
        text: cards.count > 0 ? qsTr("No recurring charge. Charge a saved card every week or month with New.")
                              : qsTr("No recurring charge. Add a card first.")
        wrapMode: Text.Wrap
        font.pixelSize: Theme.type.callout
        color: Theme.colours.secondaryText
        Layout.fillWidth: true
    }
    Item { Layout.fillHeight: true }

    ConfirmSheet {
        id: cancelSheet

        objectName: "cancelScheduleSheet"

        property string scheduleId

        function ask(id: string, amount: string) {
            scheduleId = id;
            title = qsTr("Stop charging %1?").arg(amount);
            open();
        }

        text: qsTr("The card is not charged again on this schedule; a cancelled schedule cannot be resumed.")
        confirmText: qsTr("Cancel schedule")
        destructive: true
        onConfirmed: panelView.panel.cancelSchedule(scheduleId)
    }

    ConfirmSheet {
        id: scheduleSheet

        objectName: "scheduleSheet"

        property bool refused: false

        function ask() {
            refused = false;
            scheduleAmount.text = "";
            scheduleFirst.text = Qt.formatDate(new Date(), "yyyy-MM-dd");
            open();
        }

        title: qsTr("Charge a card on a schedule")
        text: qsTr("The card is charged on the first day, then every week or month until the schedule is paused or cancelled.")
        confirmText: qsTr("Start schedule")
        onConfirmed: {
            refused = !panelView.panel.createSchedule(scheduleCard.currentValue ?? "", scheduleAmount.text,
                                                      scheduleInterval.currentValue, scheduleFirst.text);
            if (refused)
                open();
        }

        ComboBox {
            id: scheduleCard

            model: panelView.panel.cards
            textRole: "label"
            valueRole: "profileId"
            Accessible.name: qsTr("Card")
            Layout.fillWidth: true
        }
        FormField {
            id: scheduleAmount

            label: qsTr("Amount in USD")
            input.onTextEdited: scheduleSheet.refused = false
            Layout.fillWidth: true
        }
        ComboBox {
            id: scheduleInterval

            model: [{ value: "monthly", text: qsTr("Every month") }, { value: "weekly", text: qsTr("Every week") }]
            textRole: "text"
            valueRole: "value"
            Accessible.name: qsTr("How often")
            Layout.fillWidth: true
        }
        FormField {
            id: scheduleFirst

            label: qsTr("First charge on")
            placeholderText: "YYYY-MM-DD"
            input.onTextEdited: scheduleSheet.refused = false
            Layout.fillWidth: true
        }
        Text {
            visible: scheduleSheet.refused
            text: panelView.panel.errorText
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.danger
            Layout.fillWidth: true
        }
    }
}
