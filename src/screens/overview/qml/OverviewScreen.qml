import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Design
import PiloTarn.Overview

// The overview screen, one page per section: "Team", who is doing what now;
// "Product boards", the work on each product by stage; "Fulfilment", orders
// on their way to customers. It loads when it is made and stops refreshing
// when it goes away.
Pane {
    id: screen

    required property NativeOverviewView view
    property string section: "Team"
    // The screen opened without a section shows its first.
    readonly property string page: section.length > 0 ? section : "Team"

    padding: 0
    background: null

    Component.onCompleted: view.appear()
    Component.onDestruction: view.disappear()

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Toolbar {
            title: screen.page
            subtitle: !screen.view.loaded ? ""
                      : screen.page === "Team" ? qsTr("%1 of %2 clocked in").arg(screen.view.clockedIn)
                                                                                .arg(screen.view.teamSize)
                      : screen.page === "Fulfilment" && screen.view.lateOrders > 0
                        ? qsTr("%1 late").arg(screen.view.lateOrders) : ""
            Layout.fillWidth: true
        }

        ErrorBanner {
            objectName: "overviewError"
            text: screen.view.errorText
            retryable: true
            onRetry: screen.view.refresh()
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.s
        }

        LoadingPlaceholder {
            visible: !screen.view.loaded
            rows: 6
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
        }

        StackLayout {
            visible: screen.view.loaded
            currentIndex: screen.page === "Product boards" ? 1 : screen.page === "Fulfilment" ? 2 : 0
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: Theme.spacing.xl
            Layout.rightMargin: Theme.spacing.xl
            Layout.bottomMargin: Theme.spacing.l

            TeamNowList {
                objectName: "teamNow"
                view: screen.view
            }
            ProductBoard {
                objectName: "productBoard"
                view: screen.view
            }
            OrderList {
                objectName: "orders"
                view: screen.view
            }
        }
    }
}
