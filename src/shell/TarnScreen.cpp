#include "shell/TarnScreen.h"

#include "shell/TarnShellTables.h"

namespace TarnScreens {

QString rawValue(TarnScreen screen)
{
    return TarnShellTables::screen(screen).rawValue;
}

std::optional<TarnScreen> fromRawValue(QStringView raw)
{
    for (const TarnShellTables::Screen &row : TarnShellTables::screens()) {
        if (row.rawValue == raw)
            return row.screen;
    }
    return std::nullopt;
}

} // namespace TarnScreens
