#pragma once

#include <QString>
#include <QVariantList>

// One row of a message as its delegate draws it: a block of text, a table,
// images side by side or a rule, with how deep it sits in quotes and lists.
// Text is Qt's styled text (b, i, u, s, code, a), escaped.
struct MailBlockRow {
    QString key; // its place in the message
    QString kind; // "paragraph", "heading", "preformatted", "table", "images", "rule"
    int depth = 0; // quotes and list items it is inside
    bool quote = false; // inside a quote
    bool signature = false;
    QString marker; // "•" or "3." on the first row of a list item
    int level = 0; // headings: 1...6
    QString text;
    QVariantList table; // rows of cells' text
    int headerRows = 0;
    QVariantList images; // {source ("https://…", "cid:…" or "data:…"), alt, width, height, link}

    friend bool operator==(const MailBlockRow &, const MailBlockRow &) = default;
};
