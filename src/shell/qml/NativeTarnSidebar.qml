import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Shell

// The sections the person may open, grouped, with the lit item's sections
// beneath it. Collapsed, it keeps only the items' marks.
Pane {
    id: sidebar

    required property TarnNavigation navigation
    readonly property bool collapsed: navigation.sidebarCollapsed

    signal searchRequested()
    signal settingsRequested()

    implicitWidth: collapsed ? 60 : 240
    padding: 8
    background: Rectangle { color: Qt.darker(sidebar.palette.window, 1.04) }

    Behavior on implicitWidth { NumberAnimation { duration: 120; easing.type: Easing.OutCubic } }

    component Line: ItemDelegate {
        id: line

        // Too narrow for words: the sidebar is collapsed or collapsing.
        readonly property bool narrow: width < 120

        topPadding: 4
        bottomPadding: 4
        leftPadding: 8
        rightPadding: 8
        ToolTip.visible: narrow && hovered
        ToolTip.text: text
        Accessible.name: text
        background: Rectangle {
            radius: 6
            color: line.highlighted ? Qt.rgba(line.palette.highlight.r, line.palette.highlight.g,
                                              line.palette.highlight.b, 0.16)
                 : line.hovered ? Qt.rgba(line.palette.windowText.r, line.palette.windowText.g,
                                          line.palette.windowText.b, 0.06)
                 : "transparent"
        }
    }

    // One line of the sidebar model: a group heading, an item with its mark,
    // or under the lit item a section or its heading.
    component SidebarLine: Line {
        id: entry

        required property int index
        required property string kind
        required property string key
        required property string label
        required property string symbol
        required property bool lit
        readonly property bool heading: kind === "groupHeading" || kind === "sectionHeading"

        objectName: (kind === "item" ? "sidebarItem:" : kind === "section" ? "sidebarChild:" : "sidebarHeading:") + key
        width: ListView.view.width
        text: label
        highlighted: lit
        hoverEnabled: !heading
        focusPolicy: heading ? Qt.NoFocus : Qt.StrongFocus
        leftPadding: kind === "section" ? 42 : kind === "sectionHeading" ? 44 : heading ? 10 : 8
        topPadding: kind === "groupHeading" ? 10 : 4
        bottomPadding: heading ? 2 : 4
        onClicked: (ListView.view.model as NativeSidebarModel).open(index)

        contentItem: RowLayout {
            spacing: 10
            SymbolBadge {
                visible: entry.kind === "item"
                label: entry.label
                symbol: entry.symbol
            }
            Label {
                visible: entry.kind !== "item" || !entry.narrow
                text: entry.label
                elide: Text.ElideRight
                font.pixelSize: entry.heading ? 11 : entry.font.pixelSize
                font.weight: entry.kind === "groupHeading" || entry.lit ? Font.DemiBold : Font.Normal
                opacity: entry.heading ? 0.6 : 1
                color: entry.lit && entry.kind === "section" ? entry.palette.highlight : entry.palette.windowText
                verticalAlignment: Text.AlignVCenter
                Layout.fillWidth: true
            }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 6

        RowLayout {
            Layout.fillWidth: true
            spacing: 4

            ToolButton {
                objectName: "collapseSidebar"
                text: sidebar.collapsed ? "\u00bb" : "\u00ab"
                Accessible.name: sidebar.collapsed ? qsTr("Show the sidebar") : qsTr("Collapse the sidebar")
                ToolTip.visible: hovered
                ToolTip.text: Accessible.name + "  (Ctrl+\\)"
                onClicked: sidebar.navigation.sidebarCollapsed = !sidebar.collapsed
            }

            Button {
                visible: !sidebar.collapsed
                text: qsTr("Search") + "   Ctrl+K"
                flat: true
                Layout.fillWidth: true
                onClicked: sidebar.searchRequested()
            }
        }

        ListView {
            objectName: "sidebarList"
            model: sidebar.navigation.sidebar
            // Following the end of the lit item's lines keeps them in sight.
            currentIndex: sidebar.navigation.sidebar.litEnd
            highlightMoveDuration: 0
            spacing: 2
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            Layout.fillWidth: true
            Layout.fillHeight: true
            ScrollBar.vertical: ScrollBar {}
            delegate: SidebarLine {}
        }

        Line {
            id: settingsLine

            objectName: "openSettings"
            text: qsTr("Settings")
            ToolTip.text: text + "  (Ctrl+,)"
            Layout.fillWidth: true
            onClicked: sidebar.settingsRequested()
            contentItem: RowLayout {
                spacing: 10
                SymbolBadge { label: settingsLine.text; symbol: "gearshape" }
                Label {
                    visible: !settingsLine.narrow
                    text: settingsLine.text
                    Layout.fillWidth: true
                }
            }
        }
    }
}
