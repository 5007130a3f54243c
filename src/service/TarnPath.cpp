#include "service/TarnPath.h"

#include <QByteArray>

QString TarnPath::escape(const QString &value)
{
    // The query-allowed set is the unreserved characters plus "!$&'()*+,;=:@/?";
    // of those, "&=+#?/" are always escaped, leaving these to pass through.
    static const QByteArray kept = QByteArrayLiteral("!$'()*,;:@");
    return QString::fromLatin1(value.toUtf8().toPercentEncoding(kept));
}
