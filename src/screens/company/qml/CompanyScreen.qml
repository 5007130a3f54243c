import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Company
import PiloTarn.Design

// The company screen's "My account", "Team & access", "Connections", "SOPs"
// and "Thought board" sections, one page each. It loads when it is made;
// the connections are read while their section is shown.
Pane {
    id: screen

    required property NativeCompanyView company
    property string section: "My account"

    padding: 0
    background: null

    readonly property bool showsConnections: section === "Connections"

    Component.onCompleted: {
        company.appear()
        if (showsConnections)
            company.connections.appear()
    }
    Component.onDestruction: {
        company.disappear()
        company.connections.disappear()
    }
    onShowsConnectionsChanged: showsConnections ? company.connections.appear() : company.connections.disappear()

    Shortcut {
        sequences: ["/", "Ctrl+F"]
        enabled: screen.section === "Team & access"
        onActivated: team.focusSearch()
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.spacing.xl
        anchors.rightMargin: Theme.spacing.xl
        anchors.bottomMargin: Theme.spacing.l
        spacing: Theme.spacing.s

        Toolbar {
            title: screen.section
            subtitle: screen.section === "Thought board" && screen.company.unreadPosts > 0
                      ? qsTr("%n unread", "", screen.company.unreadPosts) : ""
            Layout.fillWidth: true
        }

        ErrorBanner {
            objectName: "companyError"
            text: screen.company.errorText
            Layout.fillWidth: true
        }

        LoadingPlaceholder {
            visible: !screen.company.loaded
            rows: 6
            Layout.fillWidth: true
        }

        StackLayout {
            visible: screen.company.loaded
            currentIndex: screen.section === "Team & access" ? 1 : screen.section === "SOPs" ? 2
                          : screen.section === "Thought board" ? 3 : screen.section === "Connections" ? 4 : 0
            Layout.fillWidth: true
            Layout.fillHeight: true

            CompanyAccount {
                company: screen.company
            }
            TeamList {
                id: team
                company: screen.company
            }
            SopList {
                company: screen.company
            }
            ThoughtList {
                company: screen.company
            }
            ConnectionsPage {
                connections: screen.company.connections
            }
        }
    }
}
