#pragma once

#include <QString>
#include <QStringView>

#include <optional>

// The top-level screens of the window. Their raw values, titles and gates
// are rows of TarnShellTables::screens(), in this order.
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

// Lower-case ("chat", "workplan", "marketscan"): what crosses into QML and
// screenshot profiles, so it is part of the interface.
[[nodiscard]] QString rawValue(TarnScreen screen);
[[nodiscard]] std::optional<TarnScreen> fromRawValue(QStringView raw);

} // namespace TarnScreens
