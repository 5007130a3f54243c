import QtQuick
import QtQuick.Layouts
import PiloTarn.Design

// A period from one day to another, typed as YYYY-MM-DD; "Show" hands it
// on. The state that loads it checks the days.
RowLayout {
    id: picker

    property alias start: startField.text
    property alias end: endField.text

    signal chosen(string start, string end)

    spacing: Theme.spacing.s

    FormField {
        id: startField

        objectName: "periodStart"
        label: qsTr("From")
        onAccepted: picker.chosen(picker.start, picker.end)
        Layout.preferredWidth: 150
    }
    FormField {
        id: endField

        objectName: "periodEnd"
        label: qsTr("To")
        onAccepted: picker.chosen(picker.start, picker.end)
        Layout.preferredWidth: 150
    }
    ActionButton {
        objectName: "periodShow"
        text: qsTr("Show")
        onClicked: picker.chosen(picker.start, picker.end)
        Layout.alignment: Qt.AlignBottom
    }
}
