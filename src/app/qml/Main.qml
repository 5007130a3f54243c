import QtQuick
import QtQuick.Controls
import PiloTarn

ApplicationWindow {
    id: window

    required property NativeRootState root

    width: 1120
    height: 740
    minimumWidth: 720
    minimumHeight: 480
    visible: true
    title: qsTr("Pilo Tarn")

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
        SignedInView { root: window.root }
    }
}
