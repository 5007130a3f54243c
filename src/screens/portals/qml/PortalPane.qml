import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Portals
import PiloTarn.Design

// One client's portal: its state and welcome, keys (a new key is shown here
// once, then only its last characters), people, reports, work and figures.
ScrollView {
    id: pane

    required property NativePortalsView portals
    readonly property var account: portals.account

    contentWidth: availableWidth
    clip: true

    ColumnLayout {
        width: pane.availableWidth - 2 * Theme.spacing.xl
        x: Theme.spacing.xl
        spacing: Theme.spacing.m

        RowLayout {
            spacing: Theme.spacing.s
            Layout.fillWidth: true
            Layout.topMargin: Theme.spacing.l

            Label {
                text: pane.account.name ?? ""
                elide: Text.ElideRight
                font.pixelSize: Theme.type.title2
                color: Theme.colours.text
                Layout.fillWidth: true
            }
            ActionButton {
                objectName: "portalLive"
                text: qsTr("Live")
                kind: pane.account.status === "live" ? ActionButton.Primary : ActionButton.Secondary
                onClicked: pane.portals.saveAccount("live", pane.account.welcome)
            }
            ActionButton {
                objectName: "portalPaused"
                text: qsTr("Paused")
                kind: pane.account.status === "paused" ? ActionButton.Primary : ActionButton.Secondary
                onClicked: pane.portals.saveAccount("paused", pane.account.welcome)
            }
            ActionButton {
                text: qsTr("Refresh portal")
                kind: ActionButton.Secondary
                onClicked: pane.portals.refreshPortal()
            }
        }

        FormField {
            id: welcome
            label: qsTr("Welcome")
            text: pane.account.welcome ?? ""
            Layout.fillWidth: true
            input.onEditingFinished: pane.portals.saveAccount(pane.account.status, welcome.text)
        }

        SectionHeader {
            text: qsTr("Keys")
            Layout.fillWidth: true
        }
        Rectangle {
            objectName: "issuedKey"
            visible: pane.portals.issuedKey.length > 0 || pane.portals.personLink.length > 0
            radius: 6
            color: Theme.colours.accentSoft
            implicitHeight: issued.implicitHeight + 2 * Theme.spacing.m
            Layout.fillWidth: true

            RowLayout {
                id: issued
                anchors.fill: parent
                anchors.margins: Theme.spacing.m
                spacing: Theme.spacing.s

                TextEdit {
                    readOnly: true
                    selectByMouse: true
                    wrapMode: TextEdit.WrapAnywhere
                    color: Theme.colours.text
                    text: pane.portals.issuedKey.length > 0
                          ? qsTr("Copy this key now; it will not be shown again:\n%1").arg(pane.portals.issuedKey)
                          : qsTr("Sign-in link, valid for a day:\n%1").arg(pane.portals.personLink)
                    Layout.fillWidth: true
                }
                ActionButton {
                    text: qsTr("Done")
                    onClicked: pane.portals.dismissIssued()
                }
            }
        }
        RowLayout {
            spacing: Theme.spacing.s
            Label {
                text: pane.account.leadKeyTail ? qsTr("Lead key ••••%1").arg(pane.account.leadKeyTail) : qsTr("No lead key")
                color: Theme.colours.text
                Layout.fillWidth: true
            }
            ActionButton {
                text: qsTr("Issue lead key")
                kind: ActionButton.Secondary
                onClicked: pane.portals.issueLeadKey()
            }
        }
        RowLayout {
            spacing: Theme.spacing.s
            Label {
                text: pane.account.piloKeyTail ? qsTr("Pilo key ••••%1").arg(pane.account.piloKeyTail) : qsTr("No Pilo key")
                color: Theme.colours.text
                Layout.fillWidth: true
            }
            ActionButton {
                objectName: "issuePiloKey"
                text: qsTr("Issue Pilo key")
                kind: ActionButton.Secondary
                onClicked: pane.portals.issuePiloKey()
            }
            ActionButton {
                visible: (pane.account.piloKeyTail ?? "").length > 0
                text: qsTr("Revoke")
                kind: ActionButton.Secondary
                onClicked: pane.portals.revokePiloKey()
            }
        }

        SectionHeader {
            text: qsTr("People")
            Layout.fillWidth: true
        }
        PortalPeopleList {
            portals: pane.portals
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: Theme.spacing.s
            Layout.fillWidth: true
            FormField {
                id: inviteName
                placeholderText: qsTr("Name")
                Layout.fillWidth: true
            }
            FormField {
                id: inviteEmail
                placeholderText: qsTr("Email")
                Layout.fillWidth: true
            }
            ActionButton {
                text: qsTr("Invite")
                onClicked: {
                    pane.portals.invitePerson(inviteName.text, inviteEmail.text)
                    inviteName.text = ""
                    inviteEmail.text = ""
                }
            }
        }

        SectionHeader {
            text: qsTr("Reports")
            Layout.fillWidth: true
        }
        PortalReportList {
            portals: pane.portals
            Layout.fillWidth: true
        }
        ActionButton {
            text: qsTr("Write last month's report")
            kind: ActionButton.Secondary
            onClicked: {
                const last = new Date()
                last.setDate(1)
                last.setMonth(last.getMonth() - 1)
                pane.portals.createReport(qsTr("Monthly report"), Qt.formatDate(last, "yyyy-MM"))
            }
        }

        SectionHeader {
            text: qsTr("Work")
            Layout.fillWidth: true
        }
        PortalWorkList {
            portals: pane.portals
            Layout.fillWidth: true
        }

        SectionHeader {
            text: qsTr("Figures")
            Layout.fillWidth: true
        }
        Repeater {
            model: pane.portals.months
            delegate: Label {
                required property var modelData
                text: qsTr("%1: %2 visits · %3 leads · %4 calls · $%5").arg(modelData.month).arg(modelData.visits)
                      .arg(modelData.leads).arg(modelData.calls).arg(Math.round(modelData.revenue / 100))
                color: Theme.colours.secondaryText
            }
        }
        ActionButton {
            text: qsTr("Sync this month's figures")
            kind: ActionButton.Secondary
            Layout.bottomMargin: Theme.spacing.xl
            onClicked: pane.portals.syncPerformance()
        }
    }
}
