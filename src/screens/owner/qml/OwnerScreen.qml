import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Owner

// The owner's dashboard: the company's figures, each opening the screen
// behind it, money in and out of last month and this, and the team's week.
// The state loads while the screen is shown and stops when it closes.
ScrollView {
    id: page

    required property NativeOwnerView view
    readonly property bool shown: view.loaded && figureTiles.count > 0

    // A figure asks for its screen and section; the window opens it.
    signal openPlace(string screen, string section)

    contentWidth: availableWidth
    bottomPadding: Theme.spacing.xl
    Component.onCompleted: view.appear()
    Component.onDestruction: view.disappear()

    ColumnLayout {
        x: Theme.spacing.xl
        width: page.availableWidth - 2 * Theme.spacing.xl
        spacing: Theme.spacing.l

        ErrorBanner {
            objectName: "ownerError"
            visible: text.length > 0
            text: page.view.errorText
            retryable: true
            onRetry: page.view.refresh()
            Layout.fillWidth: true
        }

        LoadingPlaceholder {
            visible: !page.view.loaded
            rows: 4
            Layout.fillWidth: true
        }

        GridLayout {
            objectName: "ownerFigures"
            visible: page.shown
            columns: Math.max(1, Math.min(4, Math.floor(page.availableWidth / (Theme.spacing.xxl * 7))))
            columnSpacing: Theme.spacing.m
            rowSpacing: Theme.spacing.m
            Layout.fillWidth: true

            Repeater {
                id: figureTiles

                model: page.view.figures
                onItemAdded: (index, item) => {
                    const tile = item as OwnerFigureTile
                    tile.clicked.connect(() => page.openPlace(tile.screen, tile.section))
                }

                OwnerFigureTile {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                }
            }
        }

        SectionHeader {
            visible: page.shown
            text: qsTr("Money in and out")
            Layout.fillWidth: true
        }

        OwnerMoneyChart {
            objectName: "ownerChart"
            visible: page.shown
            view: page.view
            Layout.fillWidth: true
            Layout.preferredHeight: 220
        }

        SectionHeader {
            visible: page.shown
            text: page.view.weekLabel
            Layout.fillWidth: true
        }

        RowLayout {
            visible: page.shown && teamRows.count > 0
            spacing: Theme.spacing.m
            Layout.fillWidth: true

            Item {
                Layout.fillWidth: true
            }
            Repeater {
                model: [qsTr("Calls"), qsTr("Open tasks"), qsTr("Closed"), qsTr("Logged")]

                Text {
                    required property string modelData

                    text: modelData
                    horizontalAlignment: Text.AlignRight
                    font.pixelSize: Theme.type.caption
                    color: Theme.colours.tertiaryText
                    // As wide as the figures under it in OwnerTeamRow.
                    Layout.preferredWidth: Theme.spacing.xxl * 3
                }
            }
        }

        Repeater {
            id: teamRows

            model: page.view.team

            OwnerTeamRow {
                Layout.fillWidth: true
            }
        }

        EmptyState {
            visible: page.view.loaded && teamRows.count === 0 && page.view.errorText.length === 0
            symbol: "person.3"
            title: qsTr("No one on the team yet")
            text: qsTr("People added to the company show here with their week.")
            Layout.fillWidth: true
        }
    }
}
