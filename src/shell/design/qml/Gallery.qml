import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design

// Every component of this module in its common states, on one page: the
// place to look at a change of the theme in light and dark before it
// reaches the screens. The app shows it for the screenshot profile
// "gallery" (and "gallery:dark").
Rectangle {
    id: gallery

    color: Theme.colours.window

    component Part: ColumnLayout {
        property alias title: header.text

        spacing: Theme.spacing.s
        Layout.fillWidth: true
        SectionHeader { id: header; Layout.fillWidth: true }
    }

    component Swatch: Rectangle {
        property string name

        implicitWidth: 30
        implicitHeight: 24
        radius: Theme.radii.small
        border.width: 1
        border.color: Theme.colours.separator
        ToolTip.text: name
    }

    NativeUndoToast {
        id: undo
    }
    Component.onCompleted: undo.offer(qsTr("Conversation archived"), "gallery")

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Toolbar {
            title: qsTr("Design gallery")
            subtitle: qsTr("Every component of Pilo Tarn, in the %1 scheme").arg(Theme.dark ? qsTr("dark") : qsTr("light"))
            Layout.fillWidth: true

            SearchField {
                placeholderText: qsTr("Search components")
                Layout.preferredWidth: 240
            }
            IconButton {
                symbol: Theme.dark ? "sun.max" : "moon"
                text: Theme.dark ? qsTr("Use the light scheme") : qsTr("Use the dark scheme")
                onClicked: Theme.colorScheme = Theme.dark ? "light" : "dark"
            }
        }

        RowLayout {
            spacing: Theme.spacing.xl
            Layout.margins: Theme.spacing.xl
            Layout.topMargin: Theme.spacing.l
            Layout.fillWidth: true

            ColumnLayout {
                spacing: Theme.spacing.l
                Layout.preferredWidth: 1
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignTop

                Part {
                    title: qsTr("Type")
                    Repeater {
                        model: [
                            { size: Theme.type.title1, weight: Font.Bold, name: qsTr("Title 28") },
                            { size: Theme.type.title3, weight: Font.DemiBold, name: qsTr("Headline 18") },
                            { size: Theme.type.body, weight: Font.Normal, name: qsTr("Body text 16") },
                            { size: Theme.type.callout, weight: Font.Normal, name: qsTr("Controls and rows 14") },
                            { size: Theme.type.caption, weight: Font.Normal, name: qsTr("Caption 12") },
                        ]
                        Text {
                            required property var modelData
                            text: modelData.name
                            font.pixelSize: modelData.size
                            font.weight: modelData.weight
                            color: Theme.colours.text
                        }
                    }
                }

                Part {
                    title: qsTr("Colours")
                    RowLayout {
                        spacing: Theme.spacing.xs
                        Swatch { name: "accent"; color: Theme.colours.accent }
                        Swatch { name: "accentSoft"; color: Theme.colours.accentSoft }
                        Swatch { name: "sidebar"; color: Theme.colours.sidebar }
                        Swatch { name: "surface"; color: Theme.colours.surface }
                        Swatch { name: "text"; color: Theme.colours.text }
                        Swatch { name: "secondaryText"; color: Theme.colours.secondaryText }
                        Swatch { name: "danger"; color: Theme.colours.danger }
                        Swatch { name: "success"; color: Theme.colours.success }
                        Swatch { name: "warning"; color: Theme.colours.warning }
                    }
                }

                Part {
                    title: qsTr("Icons")
                    GridLayout {
                        columns: 12
                        columnSpacing: Theme.spacing.s - 2
                        rowSpacing: Theme.spacing.m
                        Repeater {
                            model: ["message", "phone", "envelope", "calendar", "square.and.pencil", "gearshape",
                                "sparkles", "briefcase", "checklist", "lifepreserver", "doc.text", "globe", "flame",
                                "book.closed", "creditcard", "person.crop.rectangle.stack", "building.2", "tray",
                                "magnifyingglass", "person.2", "chart.pie", "building.columns", "signature", "clock"]
                            Icon {
                                required property string modelData
                                symbol: modelData
                                size: 22
                                color: Theme.colours.text
                            }
                        }
                    }
                }

                Part {
                    title: qsTr("Avatars and counts")
                    RowLayout {
                        spacing: Theme.spacing.m
                        Avatar { name: "Maren Halvard"; size: 40 }
                        Avatar { name: "Priya Natarajan"; size: 40 }
                        Avatar { name: "Olu"; size: 40 }
                        Avatar { name: "Pilo"; photo: "qrc:/PiloTarn/icons/pilo-tarn.svg"; size: 40 }
                        CountBadge { count: 3 }
                        CountBadge { count: 128 }
                        CountBadge { dot: true }
                    }
                }
            }

            ColumnLayout {
                spacing: Theme.spacing.l
                Layout.preferredWidth: 1
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignTop

                Part {
                    title: qsTr("Buttons")
                    RowLayout {
                        spacing: Theme.spacing.s
                        ActionButton { text: qsTr("Send"); kind: ActionButton.Primary; symbol: "paperplane" }
                        ActionButton { text: qsTr("Cancel") }
                        ActionButton { text: qsTr("Delete"); kind: ActionButton.Destructive; symbol: "trash" }
                    }
                    RowLayout {
                        spacing: Theme.spacing.s
                        ActionButton { text: qsTr("Open"); kind: ActionButton.Plain }
                        ActionButton { text: qsTr("Saving…"); kind: ActionButton.Primary; enabled: false }
                        IconButton { symbol: "plus"; text: qsTr("New") }
                        IconButton { symbol: "ellipsis"; text: qsTr("More") }
                        IconButton { symbol: "sidebar.left"; text: qsTr("Sidebar"); lit: true }
                    }
                }

                Part {
                    title: qsTr("Fields")
                    FormField {
                        label: qsTr("Company name")
                        text: "Halvard & Co."
                        Layout.fillWidth: true
                    }
                    FormField {
                        label: qsTr("Amount")
                        text: "12,3,4"
                        error: qsTr("Enter an amount such as 12.50.")
                        Layout.fillWidth: true
                    }
                }

                Part {
                    title: qsTr("List rows")
                    ListRow { text: qsTr("Messages"); symbol: "message"; lit: true; count: 4; Layout.fillWidth: true }
                    ListRow { text: qsTr("Email"); symbol: "envelope"; detail: "12:40"; Layout.fillWidth: true }
                    ListRow {
                        text: "Priya Natarajan"
                        subtitle: qsTr("The proposal is ready for review")
                        avatarName: "Priya Natarajan"
                        detail: qsTr("Yesterday")
                        Layout.fillWidth: true
                    }
                }

                Part {
                    title: qsTr("Error banner")
                    ErrorBanner {
                        text: qsTr("The workspace could not be reached.")
                        retryable: true
                        closable: true
                        Layout.fillWidth: true
                    }
                }
            }

            ColumnLayout {
                spacing: Theme.spacing.l
                Layout.preferredWidth: 1
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignTop

                Part {
                    title: qsTr("Empty state")
                    EmptyState {
                        symbol: "tray"
                        title: qsTr("Inbox zero")
                        text: qsTr("New customer texts will appear here.")
                        Layout.fillWidth: true

                        ActionButton { text: qsTr("Compose"); kind: ActionButton.Primary }
                    }
                }

                Part {
                    title: qsTr("Loading")
                    LoadingPlaceholder { rows: 2; Layout.fillWidth: true }
                }

                Part {
                    title: qsTr("Sheet")
                    Item {
                        id: sheetSlot

                        implicitHeight: 190
                        Layout.fillWidth: true
                    }
                }
            }
        }

        Item { Layout.fillHeight: true }
    }

    ConfirmSheet {
        parent: sheetSlot
        anchors.centerIn: sheetSlot
        width: sheetSlot.width
        modal: false
        visible: true
        closePolicy: Popup.NoAutoClose
        padding: Theme.spacing.l
        title: qsTr("Delete this draft?")
        text: qsTr("The draft and its attachments are removed for everyone.")
        confirmText: qsTr("Delete")
        destructive: true
    }

    UndoToast {
        objectName: "galleryToast"
        toast: undo
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.spacing.l
    }
}
