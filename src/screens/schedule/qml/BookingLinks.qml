import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Schedule

// "Booking links": the links clients book time through, a new one made from
// a title and a length, each copied with its button; the open link's
// bookings beside the list.
RowLayout {
    id: links

    required property NativeScheduleView view

    spacing: 0

    ColumnLayout {
        spacing: Theme.spacing.s
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.leftMargin: Theme.spacing.xl
        Layout.rightMargin: Theme.spacing.l
        Layout.bottomMargin: Theme.spacing.l

        RowLayout {
            spacing: Theme.spacing.s
            Layout.fillWidth: true

            FormField {
                id: title
                objectName: "linkTitle"
                placeholderText: qsTr("New link, e.g. Intro call")
                Layout.fillWidth: true
                onAccepted: create.clicked()
            }
            ComboBox {
                id: length
                objectName: "linkLength"
                model: [15, 30, 45, 60, 90]
                currentIndex: 1
                displayText: qsTr("%1 min").arg(currentValue)
                Layout.preferredWidth: 110
            }
            ActionButton {
                id: create
                objectName: "linkCreate"
                kind: ActionButton.Primary
                symbol: "plus"
                text: qsTr("Create link")
                enabled: !links.view.busy && title.text.trim().length > 0
                onClicked: links.view.createLink(title.text, length.currentValue)
            }
        }

        Connections {
            target: links.view
            function onLinkCreated() { title.text = "" }
        }

        BookingLinkList {
            objectName: "linkList"
            view: links.view
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }

    Rectangle {
        implicitWidth: 1
        color: Theme.colours.separator
        Layout.fillHeight: true
    }

    ColumnLayout {
        spacing: Theme.spacing.s
        Layout.preferredWidth: 340
        Layout.maximumWidth: 340
        Layout.fillHeight: true
        Layout.leftMargin: Theme.spacing.l
        Layout.rightMargin: Theme.spacing.l
        Layout.bottomMargin: Theme.spacing.l

        SectionHeader {
            text: links.view.openLinkId.length > 0 ? links.view.openLinkTitle : qsTr("Bookings")
            Layout.fillWidth: true
        }
        Text {
            visible: links.view.openLinkId.length === 0
            text: qsTr("Choose a link to see who booked through it.")
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.callout
            color: Theme.colours.secondaryText
            Layout.fillWidth: true
        }
        ListView {
            id: bookings
            objectName: "bookingList"
            visible: links.view.openLinkId.length > 0
            model: links.view.bookings
            clip: true
            spacing: 2
            boundsBehavior: Flickable.StopAtBounds
            Layout.fillWidth: true
            Layout.fillHeight: true

            delegate: ListRow {
                required property string name
                required property string email
                required property string when
                required property string note

                objectName: "bookingRow"
                width: ListView.view.width
                text: name
                avatarName: name
                subtitle: note.length > 0 ? qsTr("%1 · %2 · “%3”").arg(when).arg(email).arg(note)
                                          : qsTr("%1 · %2").arg(when).arg(email)
            }

            Text {
                visible: bookings.count === 0
                text: qsTr("Nothing booked through this link yet.")
                font.pixelSize: Theme.type.callout
                color: Theme.colours.secondaryText
            }
        }
    }
}
