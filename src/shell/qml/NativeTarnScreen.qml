import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Shell
import PiloTarn.Design

// The current place: its breadcrumb trail and what it shows. The home page
// shows the work board; the screens of the other sections are not part of
// this version yet and say so under their title.
Pane {
    id: screen

    required property TarnNavigation navigation
    readonly property bool onBoard: navigation.destination.screenName === "agent"
                                    && navigation.destination.resolvedSection === "New chat"

    padding: 0
    background: null

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ColumnLayout {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl + Theme.spacing.xs
            Layout.rightMargin: Theme.spacing.xl
            Layout.topMargin: Theme.spacing.l + Theme.spacing.xs
            Layout.bottomMargin: Theme.spacing.m
            spacing: 4

            ListView {
                objectName: "trail"
                model: screen.navigation.trail
                orientation: ListView.Horizontal
                interactive: false
                spacing: 6
                implicitHeight: contentItem.childrenRect.height
                Layout.fillWidth: true

                delegate: RowLayout {
                    id: crumb

                    required property string modelData
                    required property int index
                    readonly property bool last: index === ListView.view.count - 1
                    spacing: 6

                    Icon {
                        visible: crumb.index > 0
                        symbol: "chevron.right"
                        size: 20
                        color: Theme.colours.tertiaryText
                    }
                    Text {
                        text: crumb.modelData
                        font.pixelSize: Theme.type.title2
                        font.weight: crumb.last ? Font.DemiBold : Font.Normal
                        color: crumb.last ? Theme.colours.text : Theme.colours.secondaryText
                    }
                }
            }

            Text {
                visible: text.length > 0
                text: screen.navigation.subtitle
                font.pixelSize: Theme.type.callout
                color: Theme.colours.secondaryText
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }

        WorkBoard {
            visible: screen.onBoard
            navigation: screen.navigation
            Layout.fillWidth: true
            Layout.fillHeight: true
        }

        EmptyScreen {
            visible: !screen.onBoard
            place: screen.navigation.placeName
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
