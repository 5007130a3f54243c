import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Calls
import PiloTarn.Design

// The call book as a table: direction, who was on the other end and who
// took or made the call, when and how long, the outcome and the notes (both
// edited in place: the outcome from its list, the notes on a click, Enter
// saving and Escape leaving them as they were) and the recording's play
// button. Arrows move between rows.
ListView {
    id: table

    required property NativeCallsView calls
    readonly property var outcomes: [{ label: qsTr("Answered"), value: "answered" },
        { label: qsTr("Missed"), value: "missed" }, { label: qsTr("Voicemail"), value: "voicemail" },
        { label: qsTr("No answer"), value: "no-answer" }, { label: qsTr("Busy"), value: "busy" }]

    clip: true
    focus: true
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}
    headerPositioning: ListView.OverlayHeader

    // The fixed columns are 24, 116, 124 and 36 wide in the header and the
    // rows alike; the customer and the notes share what is left.
    header: Rectangle {
        width: ListView.view.width
        implicitHeight: heading.implicitHeight + 2 * Theme.spacing.xs
        color: Theme.colours.window
        z: 2

        RowLayout {
            id: heading
            anchors.fill: parent
            anchors.leftMargin: Theme.spacing.s
            anchors.rightMargin: Theme.spacing.s
            spacing: Theme.spacing.s

            Item { Layout.preferredWidth: 24 }
            Text {
                text: qsTr("Customer")
                font.pixelSize: Theme.type.footnote
                font.weight: Font.Medium
                color: Theme.colours.secondaryText
                Layout.preferredWidth: 200
                Layout.minimumWidth: 120
                Layout.fillWidth: true
            }
            Text {
                text: qsTr("When")
                font.pixelSize: Theme.type.footnote
                font.weight: Font.Medium
                color: Theme.colours.secondaryText
                Layout.preferredWidth: 116
                Layout.minimumWidth: 116
            }
            Text {
                text: qsTr("Outcome")
                font.pixelSize: Theme.type.footnote
                font.weight: Font.Medium
                color: Theme.colours.secondaryText
                Layout.preferredWidth: 124
                Layout.minimumWidth: 124
            }
            Text {
                text: qsTr("Notes")
                font.pixelSize: Theme.type.footnote
                font.weight: Font.Medium
                color: Theme.colours.secondaryText
                Layout.preferredWidth: 200
                Layout.minimumWidth: 60
                Layout.fillWidth: true
            }
            Item { Layout.preferredWidth: 36 }
        }
    }

    // One call. The outcome and the notes are edited in place and saved
    // against the version the row shows; a placed call still on shows its
    // state instead of an outcome.
    delegate: Item {
        id: row

        required property int index
        required property string callId
        required property string direction
        required property string party
        required property string personName
        required property string started
        required property string duration
        required property string outcome
        required property string notes
        required property string status
        required property bool hasRecording
        readonly property CallBookTable table: ListView.view as CallBookTable
        readonly property bool missed: direction === "in" && (outcome === "missed" || outcome === "voicemail")
        readonly property bool live: status !== "ended"
        readonly property bool outgoing: direction === "out"
        property bool editingNotes: false

        objectName: "callRow"
        width: ListView.view.width
        implicitHeight: cells.implicitHeight + 2 * Theme.spacing.xs
        Accessible.role: Accessible.Row
        Accessible.name: qsTr("%1, %2, %3").arg(party).arg(started).arg(duration)

        function saveNotes() {
            if (table !== null)
                table.calls.saveCell(callId, "notes", notesField.text)
            editingNotes = false
        }

        Rectangle {
            anchors.fill: parent
            radius: Theme.radii.small
            color: row.ListView.isCurrentItem ? Theme.colours.accentSoft : hover.hovered ? Theme.colours.hover
                                                                                         : "transparent"
        }
        HoverHandler {
            id: hover
        }
        TapHandler {
            onTapped: row.ListView.view.currentIndex = row.index
        }

        RowLayout {
            id: cells
            anchors.fill: parent
            anchors.leftMargin: Theme.spacing.s
            anchors.rightMargin: Theme.spacing.s
            spacing: Theme.spacing.s

            Icon {
                symbol: row.missed ? "phone.down" : row.outgoing ? "phone.arrow.up.right" : "phone.arrow.down.left"
                size: 18
                color: row.missed ? Theme.colours.danger : Theme.colours.secondaryText
                Layout.preferredWidth: 24
                Accessible.name: row.missed ? qsTr("Missed") : row.direction === "in" ? qsTr("Incoming") : qsTr("Outgoing")
            }
            ColumnLayout {
                spacing: 0
                Layout.preferredWidth: 200
                Layout.minimumWidth: 120
                Layout.fillWidth: true
                Text {
                    text: row.party
                    font.pixelSize: Theme.type.callout
                    font.weight: Font.Medium
                    color: Theme.colours.text
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Text {
                    text: row.direction === "in" ? qsTr("Taken by %1").arg(row.personName)
                                                 : qsTr("Made by %1").arg(row.personName)
                    font.pixelSize: Theme.type.footnote
                    color: Theme.colours.secondaryText
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
            }
            ColumnLayout {
                spacing: 0
                Layout.preferredWidth: 116
                Layout.minimumWidth: 116
                Text {
                    text: row.started
                    font.pixelSize: Theme.type.callout
                    color: Theme.colours.text
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Text {
                    text: row.duration
                    font.pixelSize: Theme.type.footnote
                    color: Theme.colours.secondaryText
                    Layout.fillWidth: true
                }
            }
            Item {
                implicitHeight: outcomeBox.implicitHeight
                Layout.preferredWidth: 124
                Layout.minimumWidth: 124

                ComboBox {
                    id: outcomeBox
                    objectName: "callOutcome"
                    visible: !row.live
                    anchors.fill: parent
                    flat: true
                    font.pixelSize: Theme.type.callout
                    textRole: "label"
                    valueRole: "value"
                    model: row.table !== null ? row.table.outcomes : []
                    currentIndex: row.table !== null ? row.table.outcomes.findIndex(o => o.value === row.outcome) : -1
                    Accessible.name: qsTr("Outcome")
                    onActivated: row.table.calls.saveCell(row.callId, "outcome", currentValue)
                }
                Text {
                    visible: row.live
                    anchors.verticalCenter: parent.verticalCenter
                    text: row.status === "ringing" ? qsTr("Ringing…") : qsTr("In call")
                    font.pixelSize: Theme.type.callout
                    font.weight: Font.Medium
                    color: Theme.colours.accent
                }
            }
            Item {
                implicitHeight: Math.max(notesText.implicitHeight, notesField.implicitHeight)
                Layout.preferredWidth: 200
                Layout.minimumWidth: 60
                Layout.fillWidth: true

                Text {
                    id: notesText
                    visible: !row.editingNotes
                    anchors.fill: parent
                    verticalAlignment: Text.AlignVCenter
                    text: row.notes.length > 0 ? row.notes : qsTr("Add a note")
                    font.pixelSize: Theme.type.callout
                    color: row.notes.length > 0 ? Theme.colours.text : Theme.colours.tertiaryText
                    elide: Text.ElideRight

                    MouseArea {
                        anchors.fill: parent
                        cursorShape: Qt.IBeamCursor
                        onClicked: {
                            notesField.text = row.notes
                            row.editingNotes = true
                            notesField.forceActiveFocus()
                        }
                    }
                }
                TextField {
                    id: notesField
                    objectName: "callNotes"
                    visible: row.editingNotes
                    anchors.fill: parent
                    font.pixelSize: Theme.type.callout
                    color: Theme.colours.text
                    selectByMouse: true
                    Accessible.name: qsTr("Notes")
                    onAccepted: row.saveNotes()
                    Keys.onEscapePressed: row.editingNotes = false
                }
            }
            Item {
                implicitHeight: play.implicitHeight
                Layout.preferredWidth: 36

                IconButton {
                    id: play
                    objectName: "callPlay"
                    visible: row.hasRecording
                    readonly property bool current: row.table !== null && row.table.calls.player.callId === row.callId
                    symbol: current && row.table.calls.player.playing ? "pause.fill" : "play.fill"
                    lit: current
                    text: current && row.table.calls.player.playing ? qsTr("Pause the recording")
                                                                    : qsTr("Play the recording")
                    onClicked: row.table.calls.playRecording(row.callId)
                }
            }
        }
    }
}
