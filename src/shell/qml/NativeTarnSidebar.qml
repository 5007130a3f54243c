import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Shell

// The sections the person may open, grouped, with the lit item's sections
// beneath it. Collapsed, it keeps only the marks.
Pane {
    id: sidebar

    required property TarnNavigation navigation
    readonly property bool collapsed: navigation.sidebarCollapsed
    readonly property var active: navigation.active

    signal searchRequested()
    signal settingsRequested()

    implicitWidth: collapsed ? 60 : 240
    padding: 8
    background: Rectangle { color: Qt.darker(palette.window, 1.04) }

    Behavior on implicitWidth { NumberAnimation { duration: 120; easing.type: Easing.OutCubic } }

    // Scrolls the list so that `item` is in sight, once the layout has
    // settled (a lit item's sections appear under it first).
    function reveal(item) {
        Qt.callLater(() => {
            const flick = list.contentItem
            const top = item.mapToItem(flick.contentItem, 0, 0).y
            if (top < flick.contentY)
                flick.contentY = top
            else if (top + item.height > flick.contentY + flick.height)
                flick.contentY = Math.min(top, top + item.height - flick.height)
        })
    }

    component Row: ItemDelegate {
        id: row

        topPadding: 4
        bottomPadding: 4
        leftPadding: 8
        rightPadding: 8
        contentItem: Label {
            text: row.text
            font: row.font
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
            color: row.highlighted ? palette.highlight : palette.windowText
        }
        background: Rectangle {
            radius: 6
            color: row.highlighted ? Qt.rgba(palette.highlight.r, palette.highlight.g, palette.highlight.b, 0.16)
                 : row.hovered ? Qt.rgba(palette.windowText.r, palette.windowText.g, palette.windowText.b, 0.06)
                 : "transparent"
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

        ScrollView {
            id: list

            Layout.fillWidth: true
            Layout.fillHeight: true
            contentWidth: availableWidth
            clip: true

            Column {
                width: parent.width
                spacing: 2

                Repeater {
                    model: sidebar.navigation.navGroups

                    Column {
                        id: groupColumn

                        required property var modelData
                        width: parent.width
                        spacing: 2

                        Label {
                            visible: !sidebar.collapsed && groupColumn.modelData.label.length > 0
                            text: groupColumn.modelData.label
                            font.pixelSize: 11
                            font.weight: Font.DemiBold
                            opacity: 0.6
                            leftPadding: 10
                            topPadding: 10
                            bottomPadding: 2
                        }

                        Repeater {
                            model: groupColumn.modelData.items

                            Column {
                                id: entry

                                required property var modelData
                                readonly property bool lit: sidebar.active !== undefined
                                                            && sidebar.active.item.key === modelData.key
                                width: parent.width
                                spacing: 1

                                onLitChanged: if (lit) sidebar.reveal(entry)
                                onYChanged: if (lit) sidebar.reveal(entry)
                                onHeightChanged: if (lit) sidebar.reveal(entry)

                                Row {
                                    objectName: "sidebarItem:" + entry.modelData.key
                                    width: parent.width
                                    highlighted: entry.lit
                                    Accessible.name: entry.modelData.label
                                    ToolTip.visible: sidebar.collapsed && hovered
                                    ToolTip.text: entry.modelData.label
                                    onClicked: sidebar.navigation.open(entry.modelData.destination)

                                    contentItem: RowLayout {
                                        spacing: 10
                                        SymbolBadge {
                                            label: entry.modelData.label
                                            symbol: entry.modelData.symbol
                                        }
                                        Label {
                                            visible: !sidebar.collapsed
                                            text: entry.modelData.label
                                            elide: Text.ElideRight
                                            font.weight: entry.lit ? Font.DemiBold : Font.Normal
                                            Layout.fillWidth: true
                                        }
                                    }
                                }

                                Repeater {
                                    model: entry.lit && !sidebar.collapsed ? entry.modelData.childGroups : []

                                    Column {
                                        id: childGroup

                                        required property var modelData
                                        width: parent.width

                                        Label {
                                            visible: childGroup.modelData.label.length > 0
                                            text: childGroup.modelData.label
                                            font.pixelSize: 11
                                            opacity: 0.6
                                            leftPadding: 44
                                            topPadding: 4
                                        }

                                        Repeater {
                                            model: childGroup.modelData.items

                                            Row {
                                                id: childEntry

                                                required property var modelData
                                                readonly property bool lit: sidebar.active !== undefined
                                                    && sidebar.active.child !== undefined
                                                    && sidebar.active.child.key === modelData.key
                                                objectName: "sidebarChild:" + modelData.key
                                                width: parent.width
                                                leftPadding: 42
                                                topPadding: 4
                                                bottomPadding: 4
                                                text: modelData.label
                                                font.weight: lit ? Font.DemiBold : Font.Normal
                                                highlighted: lit
                                                onClicked: sidebar.navigation.open(modelData.destination)
                                            }
                                        }
                                    }
                                }
                            }
                        }
                    }
                }
            }
        }

        Row {
            objectName: "openSettings"
            Layout.fillWidth: true
            Accessible.name: qsTr("Settings")
            ToolTip.visible: sidebar.collapsed && hovered
            ToolTip.text: qsTr("Settings") + "  (Ctrl+,)"
            onClicked: sidebar.settingsRequested()
            contentItem: RowLayout {
                spacing: 10
                SymbolBadge { label: qsTr("Settings"); symbol: "gearshape" }
                Label {
                    visible: !sidebar.collapsed
                    text: qsTr("Settings")
                    Layout.fillWidth: true
                }
            }
        }
    }
}
