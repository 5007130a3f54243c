#include "service/TarnPath.h"

#include <QByteArray>

TarnPath TarnPath::segment(QLatin1StringView literal) const
{
    return TarnPath(m_text + u'/' + literal);
}

TarnPath TarnPath::id(const QString &value) const
{
    return TarnPath(m_text + u'/' + escape(value));
}

TarnPath TarnPath::query(QLatin1StringView key, const QString &value) const
{
    const QChar separator = m_text.contains(u'?') ? u'&' : u'?';
    return TarnPath(m_text + separator + key + u'=' + escape(value));
}

TarnPath TarnPath::query(QLatin1StringView key, const std::optional<QString> &value) const
{
    return value ? query(key, *value) : *this;
}

QString TarnPath::escape(const QString &value)
{
    // The query-allowed set is the unreserved characters plus "!$&'()*+,;=:@/?";
    // of those, "&=+#?/" are always escaped, leaving these to pass through.
    static const QByteArray kept = QByteArrayLiteral("!$'()*,;:@");
    return QString::fromLatin1(value.toUtf8().toPercentEncoding(kept));
}
