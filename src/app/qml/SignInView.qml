import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn

// The sign-in screen: restore messages, "Sign in with Google", and while
// the browser is out, the address to copy and a field for pasting the
// pilo-tarn:// address back if the desktop could not hand it over.
Pane {
    id: view

    required property NativeRootState root
    readonly property bool waiting: root.phase === NativeRootState.SigningIn

    padding: 0

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(parent.width - 64, 440)
        spacing: 16

        Label {
            text: qsTr("Pilo Tarn")
            font.pixelSize: 30
            font.weight: Font.DemiBold
            Layout.alignment: Qt.AlignHCenter
        }

        Label {
            text: qsTr("Your company's workspace: chat, inbox, mail, books and more.")
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            opacity: 0.7
            Layout.fillWidth: true
        }

        Label {
            objectName: "message"
            visible: text.length > 0
            text: view.root.message
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: view.root.phase === NativeRootState.SignedOut || view.root.phase === NativeRootState.Unreachable
                   ? "#b3261e" : palette.windowText
            Layout.fillWidth: true
        }

        Label {
            objectName: "detail"
            visible: text.length > 0
            text: view.root.detail
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            opacity: 0.7
            font.pointSize: view.font.pointSize * 0.9
            Layout.fillWidth: true
        }

        BusyIndicator {
            running: view.root.phase === NativeRootState.Starting
            visible: running
            Layout.alignment: Qt.AlignHCenter
        }

        Button {
            visible: view.root.phase === NativeRootState.Unreachable
            text: qsTr("Retry")
            Layout.alignment: Qt.AlignHCenter
            onClicked: view.root.start()
        }

        Button {
            id: signInButton
            visible: !view.waiting && view.root.phase !== NativeRootState.Starting
            text: qsTr("Sign in with Google")
            highlighted: true
            focus: true
            Layout.alignment: Qt.AlignHCenter
            Layout.preferredWidth: 240
            onClicked: view.root.signIn()
            Keys.onReturnPressed: view.root.signIn()
            Keys.onEnterPressed: view.root.signIn()
        }

        ColumnLayout {
            visible: view.waiting
            spacing: 10
            Layout.fillWidth: true

            Label {
                text: qsTr("Finish signing in in your browser.")
                font.weight: Font.DemiBold
                Layout.alignment: Qt.AlignHCenter
            }

            Label {
                text: qsTr("If no browser opened, copy this address into one:")
                wrapMode: Text.Wrap
                opacity: 0.7
                Layout.fillWidth: true
            }

            RowLayout {
                Layout.fillWidth: true
                TextField {
                    id: address
                    text: view.root.signInAddress
                    readOnly: true
                    selectByMouse: true
                    Layout.fillWidth: true
                }
                Button {
                    text: qsTr("Copy")
                    onClicked: { address.selectAll(); address.copy(); address.deselect() }
                }
            }

            Label {
                text: qsTr("If the browser shows a pilo-tarn:// address instead of returning here, paste it:")
                wrapMode: Text.Wrap
                opacity: 0.7
                Layout.fillWidth: true
            }

            RowLayout {
                Layout.fillWidth: true
                TextField {
                    id: pasted
                    placeholderText: "pilo-tarn://auth?code=…"
                    selectByMouse: true
                    Layout.fillWidth: true
                    onAccepted: view.root.submitCallbackAddress(text)
                }
                Button {
                    text: qsTr("Continue")
                    enabled: pasted.text.length > 0
                    onClicked: view.root.submitCallbackAddress(pasted.text)
                }
            }

            Button {
                text: qsTr("Cancel")
                Layout.alignment: Qt.AlignHCenter
                onClicked: view.root.cancelSignIn()
            }
        }
    }

    Shortcut {
        sequence: "Escape"
        enabled: view.waiting
        onActivated: view.root.cancelSignIn()
    }
}
