import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Company
import PiloTarn.Design

// "My account": the name the team sees, and the address the person signs
// in with.
ColumnLayout {
    id: account

    required property NativeCompanyView company

    spacing: Theme.spacing.m

    FormField {
        id: name
        objectName: "accountName"
        label: qsTr("Name")
        text: account.company.myName
        onAccepted: account.company.renameMe(text)
        Layout.maximumWidth: 420
        Layout.fillWidth: true
    }
    Label {
        text: qsTr("Signs in as %1").arg(account.company.myEmail)
        font.pixelSize: Theme.type.footnote
        color: Theme.colours.secondaryText
    }
    ActionButton {
        objectName: "accountSave"
        text: qsTr("Save name")
        kind: ActionButton.Primary
        enabled: !account.company.busy && name.text.trim() !== account.company.myName
        onClicked: account.company.renameMe(name.text)
    }
    Item {
        Layout.fillHeight: true
    }
}
