import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn

// Signed in: who is here, and the way out.
Pane {
    id: view

    required property NativeRootState root

    ColumnLayout {
        anchors.centerIn: parent
        spacing: 12

        Label {
            text: qsTr("Signed in as %1").arg(view.root.personName)
            font.pixelSize: 22
            font.weight: Font.DemiBold
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            text: view.root.personEmail
            opacity: 0.7
            Layout.alignment: Qt.AlignHCenter
        }
        Button {
            text: qsTr("Sign out")
            enabled: !view.root.busy
            Layout.alignment: Qt.AlignHCenter
            onClicked: view.root.signOut()
        }
    }
}
