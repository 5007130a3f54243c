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
    readonly property real baseFontSize: Application.font.pointSize
    readonly property bool signedIn: root.phase === NativeRootState.SignedIn

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

    SignInView {
        objectName: "signInView"
        visible: !window.signedIn
        anchors.fill: parent
        root: window.root
    }

    // Kept while signed out: it shows the navigation, which sign-out resets.
    NativeTarnRoot {
        visible: window.signedIn
        anchors.fill: parent
        navigation: window.navigation
        settings: window.settings
        search: window.search
        signingOut: window.root.busy
        onSignOutRequested: window.root.signOut()
    }
}
