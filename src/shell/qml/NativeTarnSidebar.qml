import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Shell
import PiloTarn.Design

// The sections the person may open, grouped, with the lit item's sections
// beneath it, in a list that scrolls; the person signed in sits at its
// foot, with the account menu. Collapsed, it keeps only the items' marks.
Rectangle {
    id: sidebar

    required property TarnNavigation navigation
    property string personName
    property string personEmail
    readonly property bool collapsed: navigation.sidebarCollapsed
    // Too narrow for words: collapsed or collapsing.
    readonly property bool narrow: width < 140

    signal searchRequested()
    signal settingsRequested()
    signal signOutRequested()

    implicitWidth: collapsed ? 64 : 248
    color: Theme.colours.sidebar
    clip: true

    // Into the list from either end: its first or last line that takes focus.
    function focusLine(from: int, step: int): bool {
        for (let i = from; i >= 0 && i < list.count; i += step) {
            const line = list.itemAtIndex(i)
            if (line && line.activeFocusOnTab) {
                line.forceActiveFocus(step > 0 ? Qt.TabFocusReason : Qt.BacktabFocusReason)
                return true
            }
        }
        return false
    }

    Behavior on implicitWidth { NumberAnimation { duration: 120; easing.type: Easing.OutCubic } }

    // One line of the sidebar model: a group heading, an item with its icon,
    // or under the lit item a section or its heading.
    component SidebarLine: ItemDelegate {
        id: line

        required property int index
        required property string kind
        required property string key
        required property string label
        required property string symbol
        required property bool lit
        readonly property bool heading: kind === "groupHeading" || kind === "sectionHeading"
        readonly property bool section: kind === "section"
        readonly property bool narrow: ListView.view.width < 140

        objectName: (kind === "item" ? "sidebarItem:" : section ? "sidebarChild:" : "sidebarHeading:") + key
        width: ListView.view.width - ListView.view.leftMargin - ListView.view.rightMargin
        text: label
        enabled: !heading
        focusPolicy: heading ? Qt.NoFocus : Qt.StrongFocus
        hoverEnabled: !heading
        leftPadding: section ? 38 : kind === "sectionHeading" ? 40 : line.narrow ? 0 : Theme.spacing.s + 2
        rightPadding: line.narrow ? 0 : Theme.spacing.s
        topPadding: kind === "groupHeading" ? Theme.spacing.l : heading ? Theme.spacing.s : 6
        bottomPadding: heading ? Theme.spacing.xs : 6
        Accessible.name: label
        ToolTip.visible: line.narrow && hovered
        ToolTip.text: label
        ToolTip.delay: 300
        onClicked: (ListView.view.model as NativeSidebarModel).open(index)
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        // The list scrolls to whatever the keyboard reaches.
        onActiveFocusChanged: if (activeFocus) ListView.view.positionViewAtIndex(index, ListView.Contain)
        Keys.onTabPressed: step(1)
        Keys.onBacktabPressed: step(-1)

        // Tab follows the lines in their order, which the order the list
        // made them in (as they came into sight) is not; past either end it
        // goes on to what surrounds the list.
        function step(direction: int) {
            const reason = direction > 0 ? Qt.TabFocusReason : Qt.BacktabFocusReason
            const view = ListView.view
            for (let i = index + direction; i >= 0 && i < view.count; i += direction) {
                const other = view.itemAtIndex(i)
                if (other && other.activeFocusOnTab) {
                    other.forceActiveFocus(reason)
                    return
                }
            }
            const list = view as SidebarList
            const beyond = direction > 0 ? list.after : list.before
            beyond.forceActiveFocus(reason)
        }

        background: Rectangle {
            visible: !line.heading
            radius: Theme.radii.medium
            color: line.lit && !line.section ? Theme.colours.accentSoft
                 : line.down ? Theme.colours.pressed
                 : line.hovered ? Theme.colours.hover : "transparent"
            FocusRing { shown: line.visualFocus; anchors.margins: -1; radius: Theme.radii.medium + 1 }
        }

        contentItem: RowLayout {
            spacing: Theme.spacing.s + 2

            Item {
                visible: line.kind === "item"
                implicitWidth: 22
                implicitHeight: 22
                Layout.alignment: Qt.AlignHCenter
                Layout.fillWidth: line.narrow
                Icon {
                    anchors.centerIn: parent
                    symbol: line.symbol
                    size: 20
                    color: line.lit ? Theme.colours.accent : Theme.colours.secondaryText
                }
            }
            Rectangle {
                visible: line.kind === "groupHeading" && line.narrow
                implicitHeight: 1
                color: Theme.colours.separator
                Layout.fillWidth: true
                Layout.leftMargin: Theme.spacing.m
                Layout.rightMargin: Theme.spacing.m
            }
            Text {
                visible: !line.narrow
                text: line.kind === "groupHeading" ? line.label.toUpperCase() : line.label
                elide: Text.ElideRight
                font.pixelSize: line.heading ? Theme.type.caption : Theme.type.callout
                font.weight: line.kind === "groupHeading" ? Font.DemiBold
                           : line.lit ? Font.DemiBold : line.heading ? Font.Medium : Font.Normal
                font.letterSpacing: line.kind === "groupHeading" ? 0.6 : 0
                color: line.heading ? Theme.colours.tertiaryText
                     : line.lit ? (line.section ? Theme.colours.accent : Theme.colours.text)
                     : line.section ? Theme.colours.secondaryText : Theme.colours.text
                verticalAlignment: Text.AlignVCenter
                Layout.fillWidth: true
            }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            spacing: Theme.spacing.xs
            Layout.fillWidth: true
            Layout.margins: Theme.spacing.s
            Layout.bottomMargin: Theme.spacing.xs

            IconButton {
                id: collapse

                objectName: "collapseSidebar"
                symbol: "sidebar.left"
                text: sidebar.collapsed ? qsTr("Show the sidebar") : qsTr("Collapse the sidebar")
                ToolTip.text: text + "  (Ctrl+\\)"
                Layout.alignment: Qt.AlignHCenter
                Layout.fillWidth: sidebar.narrow
                onClicked: sidebar.navigation.sidebarCollapsed = !sidebar.collapsed
                Keys.onTabPressed: event => {
                    if (searchButton.visible)
                        searchButton.forceActiveFocus(Qt.TabFocusReason)
                    else
                        event.accepted = sidebar.focusLine(0, 1)
                }
            }

            // Looks like a search field and opens the command search, where
            // the typing happens.
            AbstractButton {
                id: searchButton

                objectName: "openSearch"
                visible: !sidebar.narrow
                text: qsTr("Search")
                hoverEnabled: true
                Accessible.name: qsTr("Search places (Ctrl+K)")
                Layout.fillWidth: true
                implicitHeight: 34
                onClicked: sidebar.searchRequested()
                Keys.onTabPressed: event => event.accepted = sidebar.focusLine(0, 1)
                Keys.onReturnPressed: clicked()
                Keys.onEnterPressed: clicked()

                background: Rectangle {
                    radius: Theme.radii.medium
                    color: searchButton.hovered ? Theme.colours.pressed : Theme.colours.hover
                    FocusRing { shown: searchButton.visualFocus }
                }
                contentItem: RowLayout {
                    spacing: Theme.spacing.s
                    Icon {
                        symbol: "magnifyingglass"
                        size: 18
                        color: Theme.colours.tertiaryText
                        Layout.leftMargin: Theme.spacing.s
                    }
                    Text {
                        text: searchButton.text
                        font.pixelSize: Theme.type.callout
                        color: Theme.colours.tertiaryText
                        Layout.fillWidth: true
                    }
                    Text {
                        text: "Ctrl K"
                        font.pixelSize: Theme.type.caption
                        color: Theme.colours.tertiaryText
                        Layout.rightMargin: Theme.spacing.s
                    }
                }
            }
        }

        SidebarList {
            id: list

            objectName: "sidebarList"
            before: searchButton.visible ? searchButton : collapse
            after: account
            model: sidebar.navigation.sidebar
            // Following the end of the lit item's lines keeps them in sight.
            currentIndex: sidebar.navigation.sidebar.litEnd
            highlightMoveDuration: 0
            spacing: 1
            clip: true
            // Every line exists, so Tab reaches lines scrolled out of sight.
            cacheBuffer: 4000
            boundsBehavior: Flickable.StopAtBounds
            leftMargin: Theme.spacing.s
            rightMargin: Theme.spacing.s
            bottomMargin: Theme.spacing.s
            Layout.fillWidth: true
            Layout.fillHeight: true
            delegate: SidebarLine {}

            ScrollBar.vertical: ScrollBar {
                objectName: "sidebarScrollBar"
                policy: list.contentHeight > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
                width: 6
                padding: 1
                contentItem: Rectangle {
                    radius: 2
                    color: Theme.colours.border
                }
            }
        }

        Rectangle {
            implicitHeight: 1
            color: Theme.colours.separator
            Layout.fillWidth: true
        }

        // The person signed in; choosing them opens the account menu.
        ItemDelegate {
            id: account

            objectName: "accountButton"
            text: sidebar.personName
            hoverEnabled: true
            padding: Theme.spacing.s
            Accessible.name: qsTr("Account: %1").arg(sidebar.personName)
            Accessible.role: Accessible.ButtonMenu
            ToolTip.visible: sidebar.narrow && hovered
            ToolTip.text: sidebar.personName
            Layout.fillWidth: true
            Layout.margins: Theme.spacing.s
            onClicked: menu.open()
            Keys.onBacktabPressed: event => event.accepted = sidebar.focusLine(list.count - 1, -1)
            // Qt Quick 6.4's own Tab from here wraps round to the sidebar's
            // top instead of going on to the screen: step along the chain.
            Keys.onTabPressed: account.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onReturnPressed: menu.open()
            Keys.onEnterPressed: menu.open()

            background: Rectangle {
                radius: Theme.radii.medium
                color: account.down || menu.visible ? Theme.colours.pressed
                     : account.hovered ? Theme.colours.hover : "transparent"
                FocusRing { shown: account.visualFocus }
            }
            contentItem: RowLayout {
                spacing: Theme.spacing.s + 2
                Avatar {
                    name: sidebar.personName
                    key: sidebar.personEmail
                    size: 32
                    Layout.alignment: Qt.AlignHCenter
                    Layout.fillWidth: sidebar.narrow
                }
                ColumnLayout {
                    visible: !sidebar.narrow
                    spacing: 0
                    Layout.fillWidth: true
                    Text {
                        text: sidebar.personName
                        elide: Text.ElideRight
                        font.pixelSize: Theme.type.callout
                        font.weight: Font.Medium
                        color: Theme.colours.text
                        Layout.fillWidth: true
                    }
                    Text {
                        text: sidebar.personEmail
                        elide: Text.ElideRight
                        font.pixelSize: Theme.type.caption
                        color: Theme.colours.secondaryText
                        Layout.fillWidth: true
                    }
                }
                Icon {
                    visible: !sidebar.narrow
                    symbol: "ellipsis"
                    size: 18
                    color: Theme.colours.tertiaryText
                }
            }

            Menu {
                id: menu

                objectName: "accountMenu"
                y: -height - Theme.spacing.xs
                width: 220

                MenuItem {
                    objectName: "openSettings"
                    text: qsTr("Settings…")
                    Accessible.name: qsTr("Settings")
                    onTriggered: sidebar.settingsRequested()
                }
                MenuSeparator {}
                MenuItem {
                    objectName: "accountSignOut"
                    text: qsTr("Sign out")
                    Accessible.name: text
                    onTriggered: sidebar.signOutRequested()
                }
            }
        }
    }
}
