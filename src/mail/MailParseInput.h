#pragma once

#include <QString>

#include <optional>

// What one message hands to the HTML reader: the HTML when there is some,
// else the text; the snippet stands in while neither says anything.
struct MailParseInput {
    QString id;
    std::optional<QString> html {};
    QString text;
    QString snippet;
};
