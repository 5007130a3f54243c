import QtQuick
import QtQuick.Controls
import PiloTarn.Company

// A list of the company screen, which its rows reach the state through.
// `shownTitle` and `shownBody` hold the row chosen for reading beside it.
ListView {
    required property NativeCompanyView company
    property string shownTitle
    property string shownBody

    clip: true
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}
}
