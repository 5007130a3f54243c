import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Company
import PiloTarn.Design

// "SOPs": the handbook's pages by category; the chosen one reads beside.
RowLayout {
    id: handbook

    required property NativeCompanyView company

    spacing: Theme.spacing.l

    CompanyList {
        id: pages
        objectName: "sopList"
        company: handbook.company
        model: handbook.company.sops
        currentIndex: -1
        section.property: "category"
        section.delegate: SectionHeader {
            required property string section
            text: section
            width: ListView.view.width
        }
        Layout.preferredWidth: 300
        Layout.fillHeight: true

        delegate: ListRow {
            objectName: "sopRow"

            required property int index
            required property string title
            required property string author
            required property string updated
            required property string body
            readonly property CompanyList list: ListView.view as CompanyList

            width: ListView.view.width
            text: title
            symbol: "book"
            subtitle: qsTr("%1 · %2").arg(author).arg(updated)
            lit: ListView.isCurrentItem
            onClicked: {
                list.currentIndex = index
                list.shownTitle = title
                list.shownBody = body
            }
        }
    }

    ColumnLayout {
        visible: pages.count > 0
        spacing: Theme.spacing.s
        Layout.fillWidth: true
        Layout.fillHeight: true

        Label {
            text: pages.shownTitle.length > 0 ? pages.shownTitle : qsTr("Choose a page to read it")
            font.pixelSize: Theme.type.title3
            font.weight: Font.DemiBold
            color: Theme.colours.text
        }
        Label {
            objectName: "sopBody"
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.body
            color: Theme.colours.text
            text: pages.shownBody
            Layout.fillWidth: true
        }
        Item {
            Layout.fillHeight: true
        }
    }

    EmptyState {
        visible: pages.count === 0
        symbol: "book"
        title: qsTr("No SOPs")
        text: qsTr("How the company does things is written here.")
        Layout.fillWidth: true
        Layout.fillHeight: true
    }
}
