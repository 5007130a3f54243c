#include "assistant/TarnAgentWelcome.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace TarnAgentWelcome {

QString greeting(const QString &name, int hour)
{
    const QString salutation = hour < 12 ? u"Good morning"_s : (hour < 17 ? u"Good afternoon"_s : u"Good evening"_s);
    const QStringList pieces = name.split(u' ', Qt::SkipEmptyParts);
    const bool anyWord
        = std::any_of(pieces.begin(), pieces.end(), [](const QString &piece) { return piece.size() > 1; });
    const QString first = anyWord ? pieces.first() : pieces.join(QString());
    return first.isEmpty() ? salutation : salutation + u", "_s + first;
}

const QList<Suggestion> &suggestions()
{
    static const QList<Suggestion> all {
        { u"Who is on the team?"_s, u"person.2"_s, u"Who is on the team?"_s },
        { u"Connected services"_s, u"link"_s, u"Which Google services are connected?"_s },
        { u"Where am I signed in?"_s, u"person.2.crop.square.stack"_s, u"Where am I signed in?"_s },
        { u"What can you do?"_s, u"questionmark.circle"_s, u"What can you do?"_s },
    };
    return all;
}

} // namespace TarnAgentWelcome
