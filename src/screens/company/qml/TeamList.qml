import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Company
import PiloTarn.Design

// "Team & access": everyone with the apps they may open, ticked on and off
// in place, and a new person added with their first apps.
ColumnLayout {
    id: team

    required property NativeCompanyView company

    function focusSearch() { search.forceActiveFocus() }

    spacing: Theme.spacing.s

    RowLayout {
        spacing: Theme.spacing.s
        Layout.fillWidth: true

        SearchField {
            id: search
            objectName: "teamSearch"
            placeholderText: qsTr("Search the team")
            text: team.company.search
            onTextChanged: team.company.search = text
            Layout.fillWidth: true
        }
        FormField {
            id: newName
            placeholderText: qsTr("Name")
            Layout.preferredWidth: 160
        }
        FormField {
            id: newEmail
            placeholderText: qsTr("Email")
            Layout.preferredWidth: 200
        }
        ActionButton {
            objectName: "teamAdd"
            text: qsTr("Add person")
            symbol: "plus"
            enabled: !team.company.busy && newName.text.trim().length > 0 && newEmail.text.trim().length > 0
            onClicked: team.company.addMember(newName.text, newEmail.text, "", ["Home", "Mail", "Schedule"])
        }
    }

    CompanyList {
        id: people
        objectName: "teamList"
        company: team.company
        model: team.company.team
        spacing: Theme.spacing.s
        Layout.fillWidth: true
        Layout.fillHeight: true

        // Positioners rather than layouts inside the delegate: Qt 6.4's layouts
        // can touch a half-destroyed delegate while the list is torn down.
        delegate: Column {
            id: person

            required property string personId
            required property string name
            required property string email
            required property string role
            required property bool owner
            required property var apps
            readonly property CompanyList list: ListView.view as CompanyList

            width: ListView.view.width
            spacing: Theme.spacing.xs

            ListRow {
                text: person.name
                avatarName: person.name
                subtitle: person.owner ? qsTr("%1 · %2 · owner, every app").arg(person.role).arg(person.email)
                                       : qsTr("%1 · %2").arg(person.role).arg(person.email)
                width: parent.width
            }
            Flow {
                visible: !person.owner
                spacing: Theme.spacing.xs
                x: Theme.spacing.xl
                width: parent.width - x

                Repeater {
                    model: person.list.company.allApps
                    onItemAdded: (index, item) => {
                        item.objectName = "appToggle_" + person.personId + "_" + item.text
                        item.checked = Qt.binding(() => person.apps.indexOf(item.text) >= 0)
                        item.enabled = Qt.binding(() => !person.list.company.busy)
                        item.toggled.connect(() => person.list.company.setMemberApp(person.personId, item.text,
                                                                                     item.checked))
                    }

                    CheckBox {
                        required property string modelData

                        text: modelData
                        font.pixelSize: Theme.type.footnote
                    }
                }
            }
        }
    }
}
