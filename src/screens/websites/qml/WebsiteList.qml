import QtQuick
import QtQuick.Controls
import PiloTarn.Design
import PiloTarn.Websites

// The clients' sites: status, uptime, this month's visits and form entries,
// and the last check's score; a site's button checks it again.
ListView {
    required property NativeWebsitesView view

    model: view.sites
    clip: true
    spacing: 2
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    delegate: ListRow {
        id: site

        required property string siteId
        required property string domain
        required property string client
        required property string status
        required property string statusLabel
        required property string uptime
        required property string visits
        required property int formEntries
        required property string score
        readonly property WebsiteList list: ListView.view as WebsiteList

        objectName: "websiteRow"
        width: ListView.view.width
        rightPadding: Theme.spacing.s + checkSite.width
        text: domain
        symbol: "globe"
        dot: status === "live"
        subtitle: status === "live"
                  ? qsTr("%1 · %2 · up %3 · %4 visits · %5 form entries").arg(client).arg(statusLabel).arg(uptime)
                        .arg(visits).arg(formEntries)
                  : qsTr("%1 · %2").arg(client).arg(statusLabel)
        detail: score.length > 0 ? qsTr("Score %1").arg(score) : ""

        IconButton {
            id: checkSite
            objectName: "websiteCheck"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "doc.text.magnifyingglass"
            text: qsTr("Check %1").arg(site.domain)
            enabled: site.list !== null && !site.list.view.checking
            onClicked: site.list.view.checkSite(site.siteId)
        }
    }
}
