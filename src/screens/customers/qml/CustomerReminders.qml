import QtQuick
import PiloTarn.Customers
import PiloTarn.Design

// Reminders about the customer, soonest first, with whom they are for.
ListView {
    required property NativeCustomerProfile profile

    model: profile.reminders
    interactive: false
    implicitHeight: contentHeight

    delegate: ListRow {
        required property string about
        required property string when
        required property string person

        width: ListView.view.width
        symbol: "bell"
        text: about
        subtitle: qsTr("%1 · %2").arg(when).arg(person)
    }
}
