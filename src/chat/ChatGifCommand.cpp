#include "chat/ChatGifCommand.h"

using namespace Qt::StringLiterals;

namespace ChatGifCommand {

std::optional<QString> query(const QString &composerText)
{
    static const QString command = u"/gif"_s;
    const QString text = composerText.trimmed();
    if (!text.startsWith(command, Qt::CaseInsensitive))
        return std::nullopt;
    if (text.size() > command.size() && !text.at(command.size()).isSpace())
        return std::nullopt;
    return text.mid(command.size()).trimmed();
}

QString fileName(const QString &title)
{
    constexpr qsizetype longest = 60;
    QString base;
    bool gap = false;
    for (const QChar c : title.toLower()) {
        if (c.isLetterOrNumber()) {
            if (gap && !base.isEmpty())
                base += u'-';
            base += c;
            gap = false;
        } else {
            gap = true;
        }
    }
    base.truncate(longest);
    if (base.endsWith(u'-'))
        base.chop(1);
    return (base.isEmpty() ? u"gif"_s : base) + u".gif"_s;
}

} // namespace ChatGifCommand
