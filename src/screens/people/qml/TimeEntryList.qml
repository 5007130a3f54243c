import QtQuick
import QtQuick.Controls
import PiloTarn.People

// The shown week's entries, which its rows reach the time clock through; a
// row asks for its correction with `correct`.
ListView {
    required property NativeTimeClockView view

    signal correct(string entryId, string clockIn, string clockOut)

    clip: true
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}
}
