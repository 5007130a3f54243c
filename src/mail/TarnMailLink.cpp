#include "mail/TarnMailLink.h"

#include <utility>

using namespace Qt::StringLiterals;

TarnMailLink::TarnMailLink(const QUrl &url)
    : m_text(url.toString(QUrl::FullyEncoded))
{
}

TarnMailLink TarnMailLink::fromEncoded(QString encoded)
{
    TarnMailLink link;
    link.m_text = std::move(encoded);
    return link;
}

QUrl TarnMailLink::url() const
{
    // Tolerant, so that a text that came from a tolerant parse reads back as the same URL.
    return QUrl(m_text, QUrl::TolerantMode);
}

bool TarnMailLink::isMailto() const
{
    // The encoded form has its scheme in lower case.
    return m_text.startsWith("mailto:"_L1);
}
