import QtQuick
import QtQuick.Controls
import PiloTarn.People

// The team's records, which its rows reach the HR section through to be
// chosen.
ListView {
    required property NativeHRView view

    clip: true
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}
}
