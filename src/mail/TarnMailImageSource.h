#pragma once

#include "mail/TarnMailLink.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

// Where an image of a mail comes from. Remote images are only referenced here;
// the mail views load them later through the signed image proxy.
class TarnMailImageSource {
public:
    enum class Kind : quint8 {
        Remote, // http or https only
        Cid, // content id of an inline attachment, percent-decoded
        Embedded, // the decoded bytes of a data: image
        Unsupported, // anything else; kept only when it has alt text
    };

    TarnMailImageSource() = default;
    [[nodiscard]] static TarnMailImageSource remote(const TarnMailLink &link);
    [[nodiscard]] static TarnMailImageSource cid(const QString &contentID);
    [[nodiscard]] static TarnMailImageSource embedded(const QByteArray &bytes);
    [[nodiscard]] static TarnMailImageSource unsupported() { return {}; }

    [[nodiscard]] Kind kind() const { return m_kind; }
    // Meaningful for Remote only; empty otherwise.
    [[nodiscard]] const TarnMailLink &link() const { return m_link; }
    [[nodiscard]] QUrl url() const { return m_kind == Kind::Remote ? m_link.url() : QUrl(); }
    // Meaningful for Cid only.
    [[nodiscard]] const QString &contentID() const { return m_contentID; }
    // Meaningful for Embedded only.
    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }

    friend bool operator==(const TarnMailImageSource &, const TarnMailImageSource &) = default;

private:
    Kind m_kind = Kind::Unsupported;
    TarnMailLink m_link;
    QString m_contentID;
    QByteArray m_bytes;
};
