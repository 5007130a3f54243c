import QtQuick

// The sidebar's list of lines, knowing the controls that Tab reaches past
// either end of it, so a line can hand the focus on in the sidebar's order.
ListView {
    property Item before
    property Item after
}
