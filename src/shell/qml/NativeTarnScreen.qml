import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Shell

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
            Layout.margins: 24
            Layout.bottomMargin: 12
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

                    Label {
                        visible: crumb.index > 0
                        text: "\u203a"
                        opacity: 0.5
                        font.pixelSize: 20
                    }
                    Label {
                        text: crumb.modelData
                        font.pixelSize: 20
                        font.weight: crumb.last ? Font.DemiBold : Font.Normal
                        opacity: crumb.last ? 1 : 0.6
                    }
                }
            }

            Label {
                visible: text.length > 0
                text: screen.navigation.subtitle
                opacity: 0.7
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
            title: screen.navigation.trail.length > 0 ? screen.navigation.trail[screen.navigation.trail.length - 1] : ""
            place: screen.navigation.placeName
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
