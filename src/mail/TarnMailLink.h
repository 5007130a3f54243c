#pragma once

#include <QString>
#include <QUrl>

// A URL of a mail kept as its fully encoded text. A mail holds many links and
// a reader opens few: the text can share the mail's own string, where a parsed
// QUrl costs several allocations per link. Only links that passed
// TarnMailHTML::safeLink (or the image-source rules) are made into these.
class TarnMailLink {
public:
    TarnMailLink() = default;
    explicit TarnMailLink(const QUrl &url);
    // `encoded` must already be a URL's fully encoded form.
    [[nodiscard]] static TarnMailLink fromEncoded(QString encoded);

    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] QUrl url() const;
    [[nodiscard]] bool isMailto() const;

    friend bool operator==(const TarnMailLink &, const TarnMailLink &) = default;

private:
    QString m_text;
};
