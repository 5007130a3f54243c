#include "mail/TarnMailImageSource.h"

TarnMailImageSource TarnMailImageSource::remote(const TarnMailLink &link)
{
    TarnMailImageSource source;
    source.m_kind = Kind::Remote;
    source.m_link = link;
    return source;
}

TarnMailImageSource TarnMailImageSource::cid(const QString &contentID)
{
    TarnMailImageSource source;
    source.m_kind = Kind::Cid;
    source.m_contentID = contentID;
    return source;
}

TarnMailImageSource TarnMailImageSource::embedded(const QByteArray &bytes)
{
    TarnMailImageSource source;
    source.m_kind = Kind::Embedded;
    source.m_bytes = bytes;
    return source;
}
