import QtQuick
import Qt.labs.qmlmodels
import PiloTarn.Mail
import PiloTarn.Design

// A message's blocks (or its quoted history), one delegate per kind, each
// indented by how deep it sits in quotes and lists. A plain column rather
// than a layout: a long newsletter has thousands of blocks, and a layout
// weighs every one of them again each time a block is added.
Column {
    id: blocks

    required property NativeMailView mail
    required property string messageId
    required property bool quoted

    spacing: Theme.spacing.s

    Repeater {
        model: NativeMailBlockModel {
            view: blocks.mail
            messageId: blocks.messageId
            quoted: blocks.quoted
        }

        delegate: DelegateChooser {
            role: "kind"

            DelegateChoice {
                roleValue: "paragraph"
                MailTextBlock {}
            }
            DelegateChoice {
                roleValue: "heading"
                MailTextBlock {}
            }
            DelegateChoice {
                roleValue: "preformatted"
                MailTextBlock { monospace: true }
            }
            DelegateChoice {
                roleValue: "table"
                MailTableBlock {}
            }
            DelegateChoice {
                roleValue: "images"
                MailImagesBlock {}
            }
            DelegateChoice {
                roleValue: "rule"
                Rectangle {
                    required property int depth
                    x: depth * Theme.spacing.l
                    width: parent ? parent.width - x : 0
                    height: 1
                    color: Theme.colours.separator
                }
            }
        }
    }
}
