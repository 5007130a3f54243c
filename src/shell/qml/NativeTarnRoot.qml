import QtQuick
import QtQuick.Layouts
import PiloTarn.Shell
import PiloTarn.Design

// The signed-in window: the sidebar, the current screen, the command search
// and the settings window, with their keyboard shortcuts.
Item {
    id: shell

    required property TarnNavigation navigation
    required property NativeSettingsState settings
    required property NativeCommandSearch search
    property string personName
    property string personEmail
    // Set while signing out, so the way out is not offered twice.
    property bool signingOut: false

    signal signOutRequested()

    RowLayout {
        anchors.fill: parent
        spacing: 0

        NativeTarnSidebar {
            objectName: "sidebar"
            navigation: shell.navigation
            personName: shell.personName
            personEmail: shell.personEmail
            Layout.fillHeight: true
            onSearchRequested: shell.search.toggle()
            onSettingsRequested: shell.navigation.appearanceOpen = true
            onSignOutRequested: if (!shell.signingOut) shell.signOutRequested()
        }

        Rectangle {
            implicitWidth: 1
            color: Theme.colours.separator
            Layout.fillHeight: true
        }

        NativeTarnScreen {
            objectName: "screen"
            navigation: shell.navigation
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }

    CommandSearchPopup {
        navigation: shell.navigation
        search: shell.search
    }

    SettingsWindow {
        navigation: shell.navigation
        settings: shell.settings
        signingOut: shell.signingOut
        onSignOutRequested: shell.signOutRequested()
    }

    Shortcut {
        sequence: "Ctrl+K"
        enabled: shell.visible
        onActivated: shell.search.toggle()
    }
    Shortcut {
        sequence: "Ctrl+,"
        enabled: shell.visible
        onActivated: shell.navigation.appearanceOpen = true
    }
    Shortcut {
        sequence: "Ctrl+\\"
        enabled: shell.visible
        onActivated: shell.navigation.sidebarCollapsed = !shell.navigation.sidebarCollapsed
    }
}
