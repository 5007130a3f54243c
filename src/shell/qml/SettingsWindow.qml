import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtQuick.Window
import PiloTarn.Shell
import PiloTarn.Design

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
    width: 540
    height: 780
    minimumWidth: 420
    minimumHeight: 420
    flags: Qt.Dialog
    color: Theme.colours.window
    palette.window: Theme.colours.window
    palette.windowText: Theme.colours.text
    palette.base: Theme.colours.surface
    palette.text: Theme.colours.text
    palette.button: Theme.colours.surface
    palette.buttonText: Theme.colours.text
    palette.highlight: Theme.colours.accent
    palette.highlightedText: Theme.colours.accentText
    palette.mid: Theme.colours.border

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

    component Heading: Text {
        font.pixelSize: Theme.type.footnote
        font.weight: Font.DemiBold
        color: Theme.colours.secondaryText
        topPadding: Theme.spacing.m
        Accessible.role: Accessible.Heading
        Accessible.name: text
        Layout.fillWidth: true
    }

    component Note: Text {
        font.pixelSize: Theme.type.callout
        color: Theme.colours.secondaryText
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }

    // One of a few exclusive choices drawn as a segment of a row.
    component Segment: AbstractButton {
        id: segment

        property bool chosen: false

        checkable: false
        hoverEnabled: true
        implicitHeight: 34
        leftPadding: Theme.spacing.m
        rightPadding: Theme.spacing.m
        Accessible.role: Accessible.RadioButton
        Accessible.name: text
        Accessible.checkable: true
        Accessible.checked: chosen
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        Keys.onSpacePressed: clicked()
        contentItem: Text {
            text: segment.text
            font.pixelSize: Theme.type.callout
            font.weight: segment.chosen ? Font.DemiBold : Font.Normal
            color: segment.chosen ? Theme.colours.accent : Theme.colours.text
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            radius: Theme.radii.medium
            color: segment.chosen ? Theme.colours.accentSoft : segment.hovered ? Theme.colours.hover : "transparent"
            border.width: 1
            border.color: segment.chosen ? Theme.colours.accent : Theme.colours.border
            FocusRing { shown: segment.visualFocus }
        }
    }

    // A choice of a setting's model; its objectName is the view's and the value.
    component Swatch: AbstractButton {
        id: swatch

        required property int index
        required property string value
        required property string label
        required property string colour
        required property string darkColour
        required property bool chosen
        readonly property string shown: Theme.dark && darkColour.length > 0 ? darkColour : colour

        objectName: GridView.view.objectName + ":" + value
        implicitWidth: 32
        implicitHeight: 32
        Accessible.name: label
        Accessible.role: Accessible.RadioButton
        Accessible.checkable: true
        Accessible.checked: chosen
        Keys.onReturnPressed: clicked()
        Keys.onSpacePressed: clicked()
        ToolTip.visible: hovered
        ToolTip.text: label
        onClicked: (GridView.view.model as NativeChoiceModel).choose(index)
        background: Rectangle {
            radius: width / 2
            color: swatch.shown.length > 0 ? swatch.shown : Theme.dark ? "#1b1c20" : "#ffffff"
            border.width: swatch.chosen ? 3 : 1
            border.color: swatch.chosen ? Theme.colours.text : Theme.colours.border
            FocusRing { shown: swatch.visualFocus; radius: width / 2 }
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
                RowLayout {
                    spacing: Theme.spacing.m
                    Layout.fillWidth: true
                    Avatar {
                        name: settingsWindow.settings.personName
                        key: settingsWindow.settings.personEmail
                        size: 48
                    }
                    ColumnLayout {
                        spacing: 2
                        Layout.fillWidth: true
                        Text {
                            text: settingsWindow.settings.personName
                            font.pixelSize: Theme.type.title3
                            font.weight: Font.DemiBold
                            color: Theme.colours.text
                            elide: Text.ElideRight
                            Layout.fillWidth: true
                        }
                        Note {
                            text: settingsWindow.settings.personEmail
                                  + (settingsWindow.settings.role.length > 0
                                     ? "  ·  " + qsTr("Role: %1").arg(settingsWindow.settings.role) : "")
                            elide: Text.ElideRight
                            wrapMode: Text.NoWrap
                        }
                    }
                }

                Heading { text: qsTr("Appearance") }
                RowLayout {
                    objectName: "colorScheme"
                    spacing: Theme.spacing.s
                    Layout.fillWidth: true
                    Repeater {
                        model: [
                            { value: "system", label: qsTr("Match the desktop") },
                            { value: "light", label: qsTr("Light") },
                            { value: "dark", label: qsTr("Dark") },
                        ]
                        Segment {
                            required property var modelData
                            objectName: "colorScheme:" + modelData.value
                            text: modelData.label
                            chosen: Theme.colorScheme === modelData.value
                            Layout.fillWidth: true
                            onClicked: Theme.colorScheme = modelData.value
                        }
                    }
                }

                Heading { text: qsTr("Notifications") }
                Switch {
                    objectName: "desktopNotifications"
                    leftPadding: 0
                    text: qsTr("Show new customer messages on the desktop")
                    checked: settingsWindow.settings.desktopNotifications
                    onToggled: settingsWindow.settings.desktopNotifications = checked
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
                    // The setting decides what is chosen, so a refused choice goes back.
                    delegate: Segment {
                        required property int index
                        required property string value
                        required property string label
                        required chosen

                        objectName: "textSize:" + value
                        text: label
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
                Note {
                    text: qsTr("Sign out everywhere else you are signed in to Tarn, such as another computer or a phone.")
                }
                RowLayout {
                    ActionButton {
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

                ErrorBanner {
                    objectName: "settingsError"
                    visible: settingsWindow.settings.messageIsError && text.length > 0
                    text: settingsWindow.settings.message
                    Layout.fillWidth: true
                }
                Note {
                    objectName: "settingsMessage"
                    visible: !settingsWindow.settings.messageIsError && text.length > 0
                    text: settingsWindow.settings.message
                    color: Theme.colours.success
                }

                Rectangle {
                    implicitHeight: 1
                    color: Theme.colours.separator
                    Layout.fillWidth: true
                    Layout.topMargin: Theme.spacing.s
                }

                ActionButton {
                    objectName: "signOut"
                    kind: ActionButton.Destructive
                    symbol: "rectangle.portrait.and.arrow.right"
                    text: qsTr("Sign out")
                    enabled: !settingsWindow.signingOut
                    onClicked: settingsWindow.signOutRequested()
                }
            }
        }
    }
}
