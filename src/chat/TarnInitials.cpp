#include "chat/TarnInitials.h"

#include <QRegularExpression>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace TarnInitials {

QString letters(const QString &name)
{
    static const QRegularExpression space(u"\\s+"_s);
    const QStringList words = name.split(space, Qt::SkipEmptyParts);
    if (words.isEmpty())
        return u"?"_s;
    QString result;
    for (const QString &word : words.first(std::min<qsizetype>(2, words.size()))) {
        // A character outside the basic plane is two UTF-16 units.
        result += word.left(word.front().isHighSurrogate() && word.size() > 1 ? 2 : 1);
    }
    return result.toUpper();
}

} // namespace TarnInitials
