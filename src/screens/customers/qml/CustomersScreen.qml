import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Customers
import PiloTarn.Design

// The customer register: the search and the customers (a list by stage, or
// the pipeline's columns), and the open customer's profile beside them. It
// loads when it is made; "/" or Ctrl+F searches, Escape closes the profile.
Pane {
    id: screen

    required property NativeCustomersView view
    // The "Pipeline" section: the customers as columns by stage.
    property bool pipeline: false

    padding: 0
    background: null

    Component.onCompleted: view.appear()
    Component.onDestruction: view.disappear()

    Shortcut {
        sequences: ["/", "Ctrl+F"]
        onActivated: search.forceActiveFocus(Qt.ShortcutFocusReason)
    }
    Shortcut {
        sequence: "Escape"
        enabled: screen.view.profile.isOpen && !search.activeFocus
        onActivated: screen.view.profile.close()
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        ColumnLayout {
            spacing: Theme.spacing.s
            // A narrow window gives the open profile the whole width.
            visible: !screen.view.profile.isOpen || screen.width >= (screen.pipeline ? 1400 : 1100)
            Layout.preferredWidth: screen.pipeline ? -1 : 340
            Layout.fillWidth: screen.pipeline
            Layout.fillHeight: true
            Layout.leftMargin: Theme.spacing.l
            Layout.bottomMargin: Theme.spacing.l

            RowLayout {
                spacing: Theme.spacing.xs
                Layout.fillWidth: true
                Layout.rightMargin: Theme.spacing.s

                SearchField {
                    id: search
                    objectName: "customerSearch"
                    placeholderText: qsTr("Search customers")
                    text: screen.view.searchText
                    onTextEdited: screen.view.searchText = text
                    Keys.onDownPressed: list.forceActiveFocus(Qt.TabFocusReason)
                    Layout.fillWidth: true
                }
                ComboBox {
                    objectName: "customerStage"
                    visible: !screen.pipeline
                    textRole: "label"
                    valueRole: "id"
                    model: screen.view.stageFilters
                    Accessible.name: qsTr("Stage")
                    Component.onCompleted: currentIndex = indexOfValue(screen.view.stageFilter)
                    onActivated: screen.view.stageFilter = currentValue
                }
            }

            ErrorBanner {
                text: screen.view.errorText
                retryable: true
                onRetry: screen.view.refresh()
                Layout.fillWidth: true
                Layout.rightMargin: Theme.spacing.s
            }

            LoadingPlaceholder {
                visible: !screen.view.loaded && screen.view.loading
                rows: 6
                Layout.fillWidth: true
            }

            EmptyState {
                visible: screen.view.loaded && screen.view.count === 0
                symbol: "person.2"
                title: screen.view.searchText.length > 0 ? qsTr("No customer matches") : qsTr("No customers yet")
                text: screen.view.searchText.length > 0 ? qsTr("Try a name, an email address or a phone number.")
                                                        : qsTr("Customers made from the inbox appear here.")
                Layout.fillWidth: true
                Layout.fillHeight: true
            }

            CustomerList {
                id: list
                visible: !screen.pipeline && screen.view.count > 0
                view: screen.view
                Layout.fillWidth: true
                Layout.fillHeight: true
            }

            CustomerPipeline {
                visible: screen.pipeline && screen.view.loaded
                view: screen.view
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
        }

        Rectangle {
            visible: screen.view.profile.isOpen
            implicitWidth: 1
            color: Theme.colours.separator
            Layout.fillHeight: true
        }

        CustomerProfile {
            visible: screen.view.profile.isOpen
            profile: screen.view.profile
            stages: screen.view.stages
            Layout.fillWidth: true
            Layout.preferredWidth: screen.pipeline ? 760 : -1
            Layout.fillHeight: true
        }

        EmptyState {
            visible: !screen.pipeline && !screen.view.profile.isOpen && screen.view.count > 0
            symbol: "person.crop.circle"
            title: qsTr("Choose a customer")
            text: qsTr("Their details, history, tasks and files open here.")
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
