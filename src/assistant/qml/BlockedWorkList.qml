import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Assistant
import PiloTarn.Design

// The owner's review: every blocked request, each resumed with a decision
// and a note on how it was reconciled.
ColumnLayout {
    id: list

    required property NativePiloReview review

    spacing: Theme.spacing.m

    onVisibleChanged: if (visible) review.reload()

    ErrorBanner {
        visible: list.review.error.length > 0
        text: list.review.error
        retryable: true
        onRetry: list.review.reload()
        Layout.fillWidth: true
    }

    LoadingPlaceholder {
        visible: !list.review.loaded
        Layout.fillWidth: true
    }

    EmptyState {
        visible: list.review.loaded && blocked.count === 0 && list.review.error.length === 0
        symbol: "checkmark"
        title: qsTr("Nothing is waiting")
        text: qsTr("Requests that would move money or delete data wait here for your decision.")
        Layout.fillWidth: true
        Layout.fillHeight: true
    }

    // A delegate sees only its own roles: it signals the decision, and the
    // repeater that made it passes it on.
    component BlockedItem: Frame {
        id: item

        required property string requestId
        required property string content
        required property string createdAt
        property bool busy: false

        signal decided(bool approve, string note)

        Layout.fillWidth: true
        padding: Theme.spacing.l
        background: Rectangle {
            radius: Theme.radii.large
            color: Theme.colours.surface
            border.color: Theme.colours.separator
        }

        ColumnLayout {
            anchors.fill: parent
            spacing: Theme.spacing.s

            Text {
                text: item.content
                wrapMode: Text.Wrap
                font.pixelSize: Theme.type.body
                color: Theme.colours.text
                Layout.fillWidth: true
            }
            Text {
                text: new Date(item.createdAt).toLocaleString(Qt.locale(), Locale.ShortFormat)
                font.pixelSize: Theme.type.footnote
                color: Theme.colours.secondaryText
            }
            FormField {
                id: note
                label: qsTr("Reconciliation note")
                Layout.fillWidth: true
            }
            RowLayout {
                spacing: Theme.spacing.s
                Item { Layout.fillWidth: true }
                ActionButton {
                    text: qsTr("Decline")
                    kind: ActionButton.Destructive
                    enabled: !item.busy
                    onClicked: item.decided(false, note.text)
                }
                ActionButton {
                    text: qsTr("Resume")
                    kind: ActionButton.Primary
                    enabled: !item.busy
                    onClicked: item.decided(true, note.text)
                }
            }
        }
    }

    ScrollView {
        contentWidth: availableWidth
        clip: true
        Layout.fillWidth: true
        Layout.fillHeight: true

        ColumnLayout {
            objectName: "blockedWork"
            width: parent.width
            spacing: Theme.spacing.m

            Repeater {
                id: blocked
                model: list.review.requests
                onItemAdded: (index, item) => {
                    item.busy = Qt.binding(() => list.review.busy)
                    item.decided.connect((approve, note) => list.review.decide(item.requestId, approve, note))
                }

                BlockedItem {}
            }
        }
    }
}
