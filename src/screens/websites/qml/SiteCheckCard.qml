import QtQuick
import PiloTarn.Design
import PiloTarn.Websites

// The last site check: its overall score, a bar per side of the site and
// what was found, worst first.
Rectangle {
    id: card

    required property NativeWebsitesView view

    objectName: "siteCheck"
    implicitHeight: column.implicitHeight + 2 * Theme.spacing.m
    radius: Theme.radii.medium
    color: Theme.colours.raised
    border.width: 1
    border.color: Theme.colours.border

    Column {
        id: column
        x: Theme.spacing.m
        y: Theme.spacing.m
        width: card.width - 2 * Theme.spacing.m
        spacing: Theme.spacing.xs

        Text {
            text: card.view.checkedUrl
            width: column.width
            elide: Text.ElideMiddle
            font.pixelSize: Theme.type.callout
            color: Theme.colours.secondaryText
        }
        Text {
            objectName: "siteCheckOverall"
            text: qsTr("%1 / 100").arg(card.view.overall)
            font.pixelSize: Theme.type.title2
            font.weight: Font.DemiBold
            color: card.view.overall >= 75 ? Theme.colours.success
                                           : card.view.overall >= 50 ? Theme.colours.warning : Theme.colours.danger
        }
        SiteScoreBars {
            width: column.width
            scores: card.view.scores
        }
        SiteFindings {
            width: column.width
            findings: card.view.findings
        }
    }
}
