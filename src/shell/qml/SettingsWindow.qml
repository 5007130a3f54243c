import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtQuick.Window
import PiloTarn.Shell

// Ctrl+,: the account, the appearance choices saved to it, the person's
// other sessions, and signing out. Shown while the navigation's
// `appearanceOpen` is set, so signing out (which resets it) closes it too.
Window {
    id: settingsWindow

    required property TarnNavigation navigation
    required property NativeSettingsState settings
    property bool signingOut: false

    signal signOutRequested()

    objectName: "settingsWindow"
    title: qsTr("Settings")
    width: 520
    height: 600
    minimumWidth: 420
    minimumHeight: 420
    flags: Qt.Dialog
    color: palette.window

    function sync() {
        if (visible !== navigation.appearanceOpen)
            visible = navigation.appearanceOpen
    }

    Component.onCompleted: sync()
    onVisibleChanged: if (!visible && navigation.appearanceOpen) navigation.appearanceOpen = false

    Connections {
        target: settingsWindow.navigation
        function onAppearanceOpenChanged() { settingsWindow.sync() }
    }

    Shortcut {
        sequence: StandardKey.Cancel
        onActivated: settingsWindow.navigation.appearanceOpen = false
    }

    component Heading: Label {
        font.weight: Font.DemiBold
        topPadding: 8
        Layout.fillWidth: true
    }

    component Swatch: AbstractButton {
        id: swatch

        required property var choice
        required property bool chosen
        required property color fill

        implicitWidth: 32
        implicitHeight: 32
        checkable: false
        Accessible.name: choice.label
        ToolTip.visible: hovered
        ToolTip.text: choice.label
        background: Rectangle {
            radius: width / 2
            color: swatch.fill
            border.width: swatch.chosen ? 3 : 1
            border.color: swatch.chosen ? palette.highlight : palette.mid
        }
    }

    ScrollView {
        anchors.fill: parent
        contentWidth: availableWidth

        ColumnLayout {
            width: parent.width
            spacing: 10

            ColumnLayout {
                Layout.margins: 24
                Layout.fillWidth: true
                spacing: 10

                Heading { text: qsTr("Account"); topPadding: 0 }
                Label {
                    text: settingsWindow.settings.personName
                    font.pixelSize: 18
                    Layout.fillWidth: true
                    elide: Text.ElideRight
                }
                Label {
                    text: settingsWindow.settings.personEmail
                    opacity: 0.7
                    Layout.fillWidth: true
                    elide: Text.ElideRight
                }
                Label {
                    visible: text.length > 0
                    text: settingsWindow.settings.role.length > 0
                          ? qsTr("Role: %1").arg(settingsWindow.settings.role) : ""
                    opacity: 0.7
                }

                Heading { text: qsTr("Text size") }
                RowLayout {
                    objectName: "textSizes"
                    Repeater {
                        model: settingsWindow.settings.textSizes
                        RadioButton {
                            required property var modelData
                            objectName: "textSize:" + modelData.value
                            text: modelData.label
                            checked: settingsWindow.settings.textSize === modelData.value
                            onClicked: settingsWindow.settings.chooseTextSize(modelData.value)
                        }
                    }
                }

                Heading { text: qsTr("Accent") }
                Flow {
                    spacing: 8
                    Layout.fillWidth: true
                    Repeater {
                        model: settingsWindow.settings.accents
                        Swatch {
                            required property var modelData
                            objectName: "accent:" + modelData.value
                            choice: modelData
                            chosen: settingsWindow.settings.accent === modelData.value
                            fill: modelData.colour
                            onClicked: settingsWindow.settings.chooseAccent(modelData.value)
                        }
                    }
                }

                Heading { text: qsTr("Background") }
                Flow {
                    spacing: 8
                    Layout.fillWidth: true
                    Repeater {
                        model: settingsWindow.settings.backgrounds
                        Swatch {
                            required property var modelData
                            objectName: "background:" + modelData.value
                            choice: modelData
                            chosen: settingsWindow.settings.background === modelData.value
                            fill: modelData.colour.length > 0 ? modelData.colour : palette.base
                            onClicked: settingsWindow.settings.chooseBackground(modelData.value)
                        }
                    }
                }

                Heading { text: qsTr("Sessions") }
                Label {
                    text: qsTr("Sign out everywhere else you are signed in to Tarn, such as another computer or a phone.")
                    wrapMode: Text.Wrap
                    opacity: 0.7
                    Layout.fillWidth: true
                }
                RowLayout {
                    Button {
                        objectName: "signOutOthers"
                        text: qsTr("Sign out of other sessions")
                        enabled: !settingsWindow.settings.endingSessions && !settingsWindow.signingOut
                        onClicked: settingsWindow.settings.signOutOtherSessions()
                    }
                    BusyIndicator {
                        running: settingsWindow.settings.endingSessions
                        visible: running
                        implicitWidth: 24
                        implicitHeight: 24
                    }
                }

                Label {
                    objectName: "settingsMessage"
                    visible: text.length > 0
                    text: settingsWindow.settings.message
                    color: settingsWindow.settings.messageIsError ? "#b3261e" : palette.windowText
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }

                MenuSeparator { Layout.fillWidth: true }

                Button {
                    objectName: "signOut"
                    text: qsTr("Sign out")
                    enabled: !settingsWindow.signingOut
                    onClicked: settingsWindow.signOutRequested()
                }
            }
        }
    }
}
