import QtQuick
import QtQuick.Controls
import PiloTarn
import PiloTarn.Shell

ApplicationWindow {
    id: window

    required property NativeRootState root
    required property TarnNavigation navigation
    required property NativeSettingsState settings
    required property NativeCommandSearch search
    readonly property real baseFontSize: Qt.application.font.pointSize

    width: 1120
    height: 740
    minimumWidth: 720
    minimumHeight: 480
    title: qsTr("Pilo Tarn")
    font.pointSize: baseFontSize * settings.textScale
    palette.highlight: settings.accentColour
    palette.window: settings.backgroundColour.length > 0 ? settings.backgroundColour : system.window

    SystemPalette {
        id: system
    }

    Loader {
        anchors.fill: parent
        sourceComponent: window.root.phase === NativeRootState.SignedIn ? signedIn : signIn
    }

    Component {
        id: signIn
        SignInView { root: window.root }
    }

    Component {
        id: signedIn
        NativeTarnRoot {
            navigation: window.navigation
            settings: window.settings
            search: window.search
            signingOut: window.root.busy
            onSignOutRequested: window.root.signOut()
        }
    }
}
