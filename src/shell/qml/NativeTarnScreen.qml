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
    readonly property var destination: navigation.destination
    readonly property var active: navigation.active
    readonly property bool onBoard: destination.screenName === "agent" && destination.resolvedSection === "New chat"
    readonly property string subtitle: {
        if (active === undefined)
            return ""
        if (active.child !== undefined)
            return navigation.subtitle(active.child)
        return navigation.pageSubtitle(active.item.key)
    }

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

            RowLayout {
                objectName: "trail"
                spacing: 6

                Repeater {
                    model: screen.navigation.trail

                    RowLayout {
                        id: crumb

                        required property string modelData
                        required property int index
                        readonly property bool last: index === screen.navigation.trail.length - 1
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
            }

            Label {
                visible: text.length > 0
                text: screen.subtitle
                opacity: 0.7
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }

        Loader {
            Layout.fillWidth: true
            Layout.fillHeight: true
            sourceComponent: screen.onBoard ? board : empty
        }
    }

    Component {
        id: board
        WorkBoard { navigation: screen.navigation }
    }

    Component {
        id: empty
        EmptyScreen {
            title: screen.navigation.trail[screen.navigation.trail.length - 1] ?? ""
            place: screen.navigation.trail.join(" \u203a ")
        }
    }
}
