import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Websites

// The websites the company runs for its clients, searched in place, beside
// a check of any site: the one typed, or a listed site's by its button.
Pane {
    id: screen

    required property NativeWebsitesView view

    padding: 0
    background: null

    Component.onCompleted: view.appear()
    Component.onDestruction: view.disappear()

    Shortcut {
        sequences: ["/", "Ctrl+F"]
        onActivated: search.forceActiveFocus()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Toolbar {
            title: qsTr("Websites")
            subtitle: screen.view.loaded ? qsTr("%1 live of %2").arg(screen.view.liveCount).arg(screen.view.totalCount)
                                         : ""
            Layout.fillWidth: true
        }

        ErrorBanner {
            objectName: "websitesError"
            text: screen.view.errorText
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.s
        }

        RowLayout {
            spacing: 0
            Layout.fillWidth: true
            Layout.fillHeight: true

            ColumnLayout {
                spacing: Theme.spacing.s
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.leftMargin: Theme.spacing.xl
                Layout.rightMargin: Theme.spacing.l
                Layout.bottomMargin: Theme.spacing.l

                SearchField {
                    id: search
                    objectName: "websitesSearch"
                    placeholderText: qsTr("Search sites and clients")
                    text: screen.view.search
                    onTextChanged: screen.view.search = text
                    Layout.fillWidth: true
                }

                Item {
                    Layout.fillWidth: true
                    Layout.fillHeight: true

                    WebsiteList {
                        id: sites
                        objectName: "websiteList"
                        anchors.fill: parent
                        view: screen.view
                    }
                    LoadingPlaceholder {
                        visible: !screen.view.loaded
                        anchors.left: parent.left
                        anchors.right: parent.right
                        rows: 8
                    }
                    EmptyState {
                        visible: screen.view.loaded && sites.count === 0
                        anchors.fill: parent
                        symbol: "globe"
                        title: screen.view.totalCount === 0 ? qsTr("No websites yet") : qsTr("No sites match")
                        text: screen.view.totalCount === 0 ? qsTr("Clients' sites show here once they are built.")
                                                           : qsTr("Try another search.")
                    }
                }
            }

            Rectangle {
                implicitWidth: 1
                color: Theme.colours.separator
                Layout.fillHeight: true
            }

            ColumnLayout {
                spacing: Theme.spacing.s
                Layout.preferredWidth: 360
                Layout.maximumWidth: 360
                Layout.fillHeight: true
                Layout.leftMargin: Theme.spacing.l
                Layout.rightMargin: Theme.spacing.l
                Layout.bottomMargin: Theme.spacing.l

                SectionHeader {
                    text: qsTr("Site check")
                    Layout.fillWidth: true
                }
                RowLayout {
                    spacing: Theme.spacing.s
                    Layout.fillWidth: true

                    FormField {
                        objectName: "checkAddress"
                        placeholderText: qsTr("A site's address")
                        text: screen.view.checkText
                        onTextChanged: screen.view.checkText = text
                        onAccepted: screen.view.check()
                        Layout.fillWidth: true
                    }
                    ActionButton {
                        objectName: "checkRun"
                        kind: ActionButton.Primary
                        text: screen.view.checking ? qsTr("Checking…") : qsTr("Check")
                        enabled: !screen.view.checking && screen.view.checkText.trim().length > 0
                        onClicked: screen.view.check()
                    }
                }
                SiteCheckCard {
                    visible: screen.view.checkedUrl.length > 0
                    view: screen.view
                    Layout.fillWidth: true
                }
                Text {
                    visible: screen.view.checkedUrl.length === 0
                    text: qsTr("Check a prospect's site before a proposal, or one of the clients' sites above.")
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.type.callout
                    color: Theme.colours.secondaryText
                    Layout.fillWidth: true
                }
                Item {
                    Layout.fillHeight: true
                }
            }
        }
    }
}
