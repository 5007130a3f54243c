#include "shell/TarnScreen.h"

using namespace Qt::StringLiterals;

namespace TarnScreens {

QString rawValue(TarnScreen screen)
{
    switch (screen) {
    case TarnScreen::chat:
        return u"chat"_s;
    case TarnScreen::agent:
        return u"agent"_s;
    case TarnScreen::sales:
        return u"sales"_s;
    case TarnScreen::support:
        return u"support"_s;
    case TarnScreen::workPlan:
        return u"workplan"_s;
    case TarnScreen::documents:
        return u"documents"_s;
    case TarnScreen::payments:
        return u"payments"_s;
    case TarnScreen::kiln:
        return u"kiln"_s;
    case TarnScreen::owner:
        return u"owner"_s;
    case TarnScreen::company:
        return u"company"_s;
    case TarnScreen::websites:
        return u"websites"_s;
    case TarnScreen::portals:
        return u"portals"_s;
    case TarnScreen::calls:
        return u"calls"_s;
    case TarnScreen::marketScan:
        return u"marketscan"_s;
    case TarnScreen::overview:
        return u"overview"_s;
    case TarnScreen::schedule:
        return u"schedule"_s;
    case TarnScreen::mail:
        return u"mail"_s;
    case TarnScreen::people:
        return u"people"_s;
    }
    Q_UNREACHABLE();
    return {};
}

std::optional<TarnScreen> fromRawValue(QStringView raw)
{
    for (const TarnScreen screen : all) {
        if (rawValue(screen) == raw)
            return screen;
    }
    return std::nullopt;
}

} // namespace TarnScreens
