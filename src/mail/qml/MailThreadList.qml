import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import PiloTarn.Mail
import PiloTarn.Design

// The views, the search field and the conversations of the chosen view or
// search, paged as the list nears its end.
ColumnLayout {
    id: side

    required property NativeMailView mail

    function focusSearch() {
        search.forceActiveFocus()
    }

    spacing: Theme.spacing.s

    RowLayout {
        spacing: Theme.spacing.xs
        Layout.fillWidth: true
        Layout.margins: Theme.spacing.s

        SearchField {
            id: search
            objectName: "mailSearch"
            placeholderText: qsTr("Search mail")
            onTextChanged: side.mail.searchText = text
            Layout.fillWidth: true
        }
        IconButton {
            symbol: "square.and.pencil"
            onClicked: side.mail.composer.compose()
        }
    }

    MailViewButtons {
        mail: side.mail
        Layout.fillWidth: true
        Layout.leftMargin: Theme.spacing.s
        Layout.rightMargin: Theme.spacing.s
    }

    ErrorBanner {
        visible: side.mail.loadFailed
        text: qsTr("Mail didn’t load") + ". " + qsTr("Check your connection, then try again.")
        retryable: true
        onRetry: side.mail.refresh()
        Layout.fillWidth: true
    }

    Label {
        visible: !side.mail.loading && !side.mail.loadFailed && threads.count === 0
        text: side.mail.emptyText
        color: Theme.colours.secondaryText
        wrapMode: Text.Wrap
        Layout.fillWidth: true
        Layout.margins: Theme.spacing.m
    }

    MailThreadListView {
        id: threads
        mail: side.mail
        Layout.fillWidth: true
        Layout.fillHeight: true
    }
}
