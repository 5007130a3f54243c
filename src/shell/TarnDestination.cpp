#include "shell/TarnDestination.h"

using namespace Qt::StringLiterals;

QString TarnDestination::resolvedSection() const
{
    if (screen == TarnScreen::documents) {
        if (!section)
            return u"Worksheets"_s;
        const auto alias = documentsAliases().constFind(*section);
        if (alias != documentsAliases().cend())
            return *alias;
    }
    if (section && !section->isEmpty())
        return *section;
    return defaultSection(screen);
}

bool TarnDestination::samePlace(const TarnDestination &other) const
{
    return screen == other.screen && resolvedSection() == other.resolvedSection();
}

QString TarnDestination::defaultSection(TarnScreen screen)
{
    switch (screen) {
    case TarnScreen::agent:
        return u"New chat"_s;
    case TarnScreen::sales:
        return u"Lead Generation"_s;
    case TarnScreen::support:
        return u"Maintenance"_s;
    case TarnScreen::documents:
        return u"Worksheets"_s;
    case TarnScreen::owner:
        return u"Dashboard"_s;
    case TarnScreen::company:
        return u"My account"_s;
    case TarnScreen::calls:
        return u"Calls"_s;
    case TarnScreen::people:
        return u"HR"_s;
    default:
        return {};
    }
}

const QHash<QString, QString> &TarnDestination::documentsAliases()
{
    static const QHash<QString, QString> aliases {
        { u"Templates"_s, u"Worksheets"_s },
        { u"All documents"_s, u"Agreements"_s },
    };
    return aliases;
}
