#include "chat/QuickMeeting.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The first word of a name, lower-cased; empty when it holds no letter or digit.
QString firstWord(const QString &name)
{
    const QStringList words = name.split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts);
    if (words.isEmpty())
        return {};
    const QString word = words.first().toLower();
    const bool usable = std::any_of(word.begin(), word.end(), [](QChar c) { return c.isLetterOrNumber(); });
    return usable ? word : QString();
}

} // namespace

namespace QuickMeeting {

QString channelName(const QString &userName, const QStringList &inviteeNames, const QString &givenName, qint64 nowMs)
{
    QStringList words;
    for (const QString &name : QStringList { userName } + inviteeNames) {
        const QString word = firstWord(name);
        if (!word.isEmpty())
            words.append(word);
    }
    if (words.isEmpty()) {
        const QString digits = QString::number(nowMs);
        return givenName.left(55) + u'-' + digits.right(4);
    }
    const QString name = u"meet-"_s + words.join(u'-');
    return name.left(60);
}

} // namespace QuickMeeting
