#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <optional>

// The top-level screens of the window, in sidebar order of their first
// appearance. The raw value (see TarnScreens::rawValue) is what crosses into
// QML and screenshot profiles, so it is part of the interface.
enum class TarnScreen {
    chat,
    agent,
    sales,
    support,
    workPlan,
    documents,
    payments,
    kiln,
    owner,
    company,
    websites,
    portals,
    calls,
    marketScan,
    overview,
    schedule,
    mail,
    people,
};

namespace TarnScreens {

inline constexpr std::array all {
    TarnScreen::chat,
    TarnScreen::agent,
    TarnScreen::sales,
    TarnScreen::support,
    TarnScreen::workPlan,
    TarnScreen::documents,
    TarnScreen::payments,
    TarnScreen::kiln,
    TarnScreen::owner,
    TarnScreen::company,
    TarnScreen::websites,
    TarnScreen::portals,
    TarnScreen::calls,
    TarnScreen::marketScan,
    TarnScreen::overview,
    TarnScreen::schedule,
    TarnScreen::mail,
    TarnScreen::people,
};

// Lower-case: "chat", "workplan", "marketscan".
[[nodiscard]] QString rawValue(TarnScreen screen);
[[nodiscard]] std::optional<TarnScreen> fromRawValue(QStringView raw);

} // namespace TarnScreens
