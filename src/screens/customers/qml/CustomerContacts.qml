import QtQuick
import PiloTarn.Customers
import PiloTarn.Design

// The people at the customer's, each with their role and address.
ListView {
    required property NativeCustomerProfile profile

    model: profile.contacts
    interactive: false
    implicitHeight: contentHeight

    delegate: ListRow {
        id: contact

        required property string contactId
        required property string name
        required property string role
        required property string email
        readonly property CustomerContacts owner: ListView.view as CustomerContacts

        width: ListView.view.width
        avatarName: name
        text: name
        subtitle: role.length > 0 && email.length > 0 ? role + " · " + email : role + email

        IconButton {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "trash"
            text: qsTr("Remove contact")
            onClicked: if (contact.owner) contact.owner.profile.deleteContact(contact.contactId)
        }
    }
}
