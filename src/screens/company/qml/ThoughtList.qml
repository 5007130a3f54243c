import QtQuick
import QtQuick.Controls
import PiloTarn.Company
import PiloTarn.Design

// "Thought board": ideas from the team, newest first. Opening one marks it
// read; the owner adopts it, keeps it for later or declines it.
ListView {
    id: board

    required property NativeCompanyView company

    objectName: "thoughtList"
    model: company.thoughts
    clip: true
    spacing: Theme.spacing.s
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    // Positioners rather than layouts inside the delegate: Qt 6.4's layouts
    // can touch a half-destroyed delegate while the list is torn down.
    delegate: Column {
        id: post

        required property string postId
        required property string title
        required property string body
        required property string author
        required property string created
        required property bool read
        required property string decision
        required property string decidedBy
        readonly property ThoughtList list: ListView.view as ThoughtList

        width: ListView.view.width
        spacing: Theme.spacing.xs

        ListRow {
            text: post.title
            symbol: "lightbulb"
            dot: !post.read
            subtitle: post.decision.length > 0
                      ? qsTr("%1 · %2 · %3 by %4").arg(post.author).arg(post.created).arg(post.decision).arg(post.decidedBy)
                      : qsTr("%1 · %2 · waiting").arg(post.author).arg(post.created)
            onClicked: post.list.company.markRead(post.postId)
            width: parent.width
        }
        Label {
            text: post.body
            wrapMode: Text.Wrap
            font.pixelSize: Theme.type.callout
            color: Theme.colours.secondaryText
            x: Theme.spacing.xl
            width: parent.width - x
        }
        Row {
            visible: post.list.company.decidesPosts
            spacing: Theme.spacing.s
            x: Theme.spacing.xl

            Repeater {
                model: [{ "key": "adopt", "label": qsTr("Adopt") }, { "key": "later", "label": qsTr("Later") },
                        { "key": "decline", "label": qsTr("Decline") }]
                onItemAdded: (index, item) => {
                    item.kind = Qt.binding(() => post.decision === item.key ? ActionButton.Primary
                                                                            : ActionButton.Secondary)
                    item.enabled = Qt.binding(() => !post.list.company.busy)
                    item.clicked.connect(() => post.list.company.decide(post.postId, item.key))
                }

                ActionButton {
                    required property var modelData
                    readonly property string key: modelData.key

                    objectName: "decide_" + key
                    text: modelData.label
                }
            }
        }
    }

    EmptyState {
        visible: board.count === 0
        anchors.fill: parent
        symbol: "lightbulb"
        title: qsTr("No ideas yet")
        text: qsTr("Ideas for what comes next show here.")
    }
}
