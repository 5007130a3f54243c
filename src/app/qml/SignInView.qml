import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn
import PiloTarn.Design

// The front door: the app's mark and name, what it is for, and "Sign in
// with Google". A restore or sign-in problem is said in place above the
// button. While the browser is out, the address to copy and a field for
// pasting the pilo-tarn:// address back if the desktop could not hand it over.
Rectangle {
    id: view

    required property NativeRootState root
    readonly property bool waiting: root.phase === NativeRootState.SigningIn
    readonly property bool failed: root.phase === NativeRootState.SignedOut
                                   || root.phase === NativeRootState.Unreachable

    gradient: Gradient {
        GradientStop { position: 0; color: Qt.tint(Theme.colours.window, Theme.colours.accentSoft) }
        GradientStop { position: 0.55; color: Theme.colours.window }
    }

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Theme.spacing.xxl, 480)
        spacing: Theme.spacing.l

        Image {
            source: "qrc:/PiloTarn/icons/pilo-tarn.svg"
            sourceSize.width: 88
            sourceSize.height: 88
            Accessible.ignored: true
            Layout.alignment: Qt.AlignHCenter
        }

        ColumnLayout {
            spacing: Theme.spacing.xs
            Layout.fillWidth: true

            Text {
                text: qsTr("Pilo Tarn")
                font.pixelSize: Theme.type.title1
                font.weight: Font.Bold
                color: Theme.colours.text
                Accessible.role: Accessible.Heading
                Accessible.name: text
                Layout.alignment: Qt.AlignHCenter
            }
            Text {
                text: qsTr("Your company's workspace: chat, inbox, mail, books and more.")
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                font.pixelSize: Theme.type.body
                color: Theme.colours.secondaryText
                Layout.fillWidth: true
            }
        }

        ErrorBanner {
            objectName: "message"
            visible: view.failed && text.length > 0
            text: view.root.message
            retryable: view.root.phase === NativeRootState.Unreachable
            onRetry: view.root.start()
            Layout.fillWidth: true
        }

        Text {
            objectName: "notice"
            visible: !view.failed && text.length > 0
            text: view.root.message
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: Theme.type.callout
            color: Theme.colours.text
            Layout.fillWidth: true
        }

        Text {
            objectName: "detail"
            visible: text.length > 0
            text: view.root.detail
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.secondaryText
            Layout.fillWidth: true
        }

        BusyIndicator {
            running: view.root.phase === NativeRootState.Starting
            visible: running
            Accessible.name: qsTr("Opening your workspace")
            Layout.alignment: Qt.AlignHCenter
        }

        ActionButton {
            id: signInButton

            objectName: "signIn"
            visible: !view.waiting && view.root.phase !== NativeRootState.Starting
            kind: ActionButton.Primary
            text: qsTr("Sign in with Google")
            focus: true
            Layout.fillWidth: true
            Layout.preferredHeight: 44
            onClicked: view.root.signIn()
        }

        Text {
            visible: signInButton.visible
            text: qsTr("Your browser opens to sign in, then brings you back here.")
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: Theme.type.footnote
            color: Theme.colours.tertiaryText
            Layout.fillWidth: true
        }

        ColumnLayout {
            visible: view.waiting
            spacing: Theme.spacing.m
            Layout.fillWidth: true

            Text {
                text: qsTr("Finish signing in in your browser.")
                font.pixelSize: Theme.type.body
                font.weight: Font.DemiBold
                color: Theme.colours.text
                Layout.alignment: Qt.AlignHCenter
            }

            RowLayout {
                spacing: Theme.spacing.xs
                Layout.fillWidth: true
                FormField {
                    id: address

                    label: qsTr("If no browser opened, copy this address into one")
                    text: view.root.signInAddress
                    readOnly: true
                    Layout.fillWidth: true
                }
                IconButton {
                    objectName: "copyAddress"
                    symbol: "doc.on.doc"
                    text: qsTr("Copy the address")
                    Layout.alignment: Qt.AlignBottom
                    onClicked: {
                        address.input.selectAll()
                        address.input.copy()
                        address.input.deselect()
                    }
                }
            }

            RowLayout {
                spacing: Theme.spacing.xs
                Layout.fillWidth: true
                FormField {
                    id: pasted

                    objectName: "pastedAddress"
                    label: qsTr("If the browser shows a pilo-tarn:// address instead, paste it here")
                    placeholderText: "pilo-tarn://auth?code=…"
                    Layout.fillWidth: true
                    onAccepted: view.root.submitCallbackAddress(text)
                }
                IconButton {
                    objectName: "continueSignIn"
                    symbol: "arrow.right"
                    text: qsTr("Continue")
                    enabled: pasted.text.length > 0
                    Layout.alignment: Qt.AlignBottom
                    onClicked: view.root.submitCallbackAddress(pasted.text)
                }
            }

            ActionButton {
                objectName: "cancelSignIn"
                kind: ActionButton.Plain
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
