import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Customers
import PiloTarn.Design

// Everything that happened with the customer, newest first, a day's header
// above its first event; older pages load as the end comes into sight.
ListView {
    id: timeline

    required property NativeCustomerProfile profile

    model: profile.timeline
    clip: true
    spacing: Theme.spacing.xs
    reuseItems: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}
    onAtYEndChanged: if (atYEnd && profile.hasMoreTimeline) profile.loadMoreTimeline()

    delegate: ColumnLayout {
        id: row

        required property string kind
        required property string kindLabel
        required property string title
        required property string body
        required property string author
        required property string time
        required property string day
        required property bool firstOfDay
        readonly property var symbols: ({ note: "square.and.pencil", call: "phone", inbox: "message", mail: "envelope",
                                           task: "checklist", stage: "arrow.right",
                                           support: "wrench.and.screwdriver" })

        width: ListView.view.width
        spacing: Theme.spacing.xxs

        Text {
            visible: row.firstOfDay
            text: row.day
            font.pixelSize: Theme.type.footnote
            font.weight: Font.DemiBold
            color: Theme.colours.secondaryText
            topPadding: Theme.spacing.s
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        RowLayout {
            spacing: Theme.spacing.s
            Layout.fillWidth: true

            Icon {
                symbol: row.symbols[row.kind] ?? "info.circle"
                size: 18
                color: Theme.colours.accent
                Layout.alignment: Qt.AlignTop
            }
            ColumnLayout {
                spacing: 2
                Layout.fillWidth: true
                Text {
                    text: row.author.length > 0 ? row.title + " · " + row.author : row.title
                    elide: Text.ElideRight
                    font.pixelSize: Theme.type.callout
                    font.weight: Font.DemiBold
                    color: Theme.colours.text
                    Layout.fillWidth: true
                }
                Text {
                    visible: text.length > 0
                    text: row.body
                    wrapMode: Text.Wrap
                    maximumLineCount: 4
                    elide: Text.ElideRight
                    font.pixelSize: Theme.type.callout
                    color: Theme.colours.secondaryText
                    Layout.fillWidth: true
                }
            }
            Text {
                text: row.time
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.tertiaryText
                Layout.alignment: Qt.AlignTop
            }
        }
    }
}
