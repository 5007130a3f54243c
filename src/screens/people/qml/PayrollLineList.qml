import QtQuick
import QtQuick.Controls
import PiloTarn.People

// A pay period's lines, which its rows reach payroll through; a row asks
// for a new adjustment to its person's pay with `adjust`.
ListView {
    required property NativePayrollView view

    signal adjust(string personId, string name)

    clip: true
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}
}
