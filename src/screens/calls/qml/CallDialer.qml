import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Calls
import PiloTarn.Design

// The dialer: the number (checked as it is typed), how the call is placed
// (remembered for next time) and the placed call's progress.
ColumnLayout {
    id: dialer

    required property NativeCallsView calls

    // The place of the remembered mode among those offered.
    function modeIndex(): int {
        const offered = calls.modes
        for (let i = 0; i < offered.length; ++i) {
            if (offered[i].key === calls.mode)
                return i
        }
        return -1
    }

    function focusNumber() {
        number.input.forceActiveFocus()
    }

    spacing: Theme.spacing.s

    SectionHeader {
        text: qsTr("Dialer")
        Layout.fillWidth: true
    }

    FormField {
        id: number
        objectName: "dialNumber"
        label: dialer.calls.dialName.length > 0 ? qsTr("Number of %1").arg(dialer.calls.dialName) : qsTr("Number")
        placeholderText: qsTr("+1 555 0100")
        text: dialer.calls.dialText
        error: dialer.calls.numberHint
        onTextChanged: dialer.calls.dialText = text
        onAccepted: dialer.calls.dial()
        Layout.fillWidth: true
    }

    ComboBox {
        id: mode
        objectName: "dialMode"
        textRole: "label"
        valueRole: "key"
        model: dialer.calls.modes
        currentIndex: dialer.modeIndex()
        Accessible.name: qsTr("How to place the call")
        onActivated: dialer.calls.mode = currentValue
        Layout.fillWidth: true
    }
    Text {
        text: mode.currentIndex >= 0 ? dialer.calls.modes[mode.currentIndex].detail : ""
        font.pixelSize: Theme.type.footnote
        color: Theme.colours.secondaryText
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }

    ActionButton {
        objectName: "dialCall"
        kind: ActionButton.Primary
        symbol: "phone"
        text: qsTr("Call")
        enabled: dialer.calls.canDial
        onClicked: dialer.calls.dial()
        Layout.fillWidth: true
    }

    Rectangle {
        objectName: "placedCall"
        visible: dialer.calls.placedStatus.length > 0
        implicitHeight: placed.implicitHeight + 2 * Theme.spacing.s
        radius: Theme.radii.medium
        color: dialer.calls.placedStatus === "ended" ? Theme.colours.hover : Theme.colours.accentSoft
        Layout.fillWidth: true

        RowLayout {
            id: placed
            anchors.fill: parent
            anchors.margins: Theme.spacing.s
            spacing: Theme.spacing.s

            Icon {
                readonly property bool talking: dialer.calls.placedStatus === "in-call"
                symbol: talking ? "phone.connection" : "phone"
                size: 18
                color: dialer.calls.placedStatus === "ended" ? Theme.colours.secondaryText : Theme.colours.accent
            }
            Text {
                text: dialer.calls.placedLabel
                font.pixelSize: Theme.type.callout
                color: Theme.colours.text
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StatusBar
                Accessible.name: text
                Layout.fillWidth: true
            }
        }
    }
}
