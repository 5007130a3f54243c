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
        sequence: "Escape"
        onActivated: settingsWindow.navigation.appearanceOpen = false
    }

    component Heading: Label {
        font.weight: Font.DemiBold
        topPadding: 8
        Layout.fillWidth: true
    }

    // A choice of a setting's model; its objectName is the view's and the value.
    component Swatch: AbstractButton {
        id: swatch

        required property int index
        required property string value
        required property string label
        required property string colour
        required property bool chosen

        objectName: GridView.view.objectName + ":" + value
        implicitWidth: 32
        implicitHeight: 32
        Accessible.name: label
        ToolTip.visible: hovered
        ToolTip.text: label
        onClicked: (GridView.view.model as NativeChoiceModel).choose(index)
        background: Rectangle {
            radius: width / 2
            color: swatch.colour.length > 0 ? swatch.colour : swatch.palette.base
            border.width: swatch.chosen ? 3 : 1
            border.color: swatch.chosen ? swatch.palette.highlight : swatch.palette.mid
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
                ListView {
                    objectName: "textSizes"
                    model: settingsWindow.settings.textSizes
                    orientation: ListView.Horizontal
                    interactive: false
                    spacing: 8
                    implicitHeight: 40
                    Layout.fillWidth: true
                    delegate: RadioButton {
                        required property int index
                        required property string value
                        required property string label
                        required property bool chosen

                        objectName: "textSize:" + value
                        text: label
                        // The setting decides what is checked, so a refused
                        // choice goes back.
                        checkable: false
                        checked: chosen
                        onClicked: (ListView.view.model as NativeChoiceModel).choose(index)
                    }
                }

                Heading { text: qsTr("Accent") }
                GridView {
                    objectName: "accent"
                    model: settingsWindow.settings.accents
                    cellWidth: 40
                    cellHeight: 40
                    interactive: false
                    implicitHeight: contentHeight
                    Layout.fillWidth: true
                    delegate: Swatch {}
                }

                Heading { text: qsTr("Background") }
                GridView {
                    objectName: "background"
                    model: settingsWindow.settings.backgrounds
                    cellWidth: 40
                    cellHeight: 40
                    interactive: false
                    implicitHeight: contentHeight
                    Layout.fillWidth: true
                    delegate: Swatch {}
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
