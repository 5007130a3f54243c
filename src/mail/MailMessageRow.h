#pragma once

#include <QString>
#include <QVariantList>

// One message of the open thread as its delegate draws it; the document
// itself stays with the view (NativeMailView::document).
struct MailMessageRow {
    QString key; // the message id
    QString fromName;
    QString fromEmail;
    QString recipients; // "To" and "Cc", as one line
    qint64 date = 0;
    QVariantList attachments; // {id, name, size, mime}
    bool parsing = true; // "Formatting message…"
    bool truncated = false; // a limit was hit: "Show entire message"
    bool full = false; // parsed with the full limits
    bool hasQuoted = false;
    bool quotedShown = false; // "Show quoted text" was chosen
    int blockedTrackers = 0;
    int revision = 0; // a new document was applied

    friend bool operator==(const MailMessageRow &, const MailMessageRow &) = default;
};
