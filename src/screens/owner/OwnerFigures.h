#pragma once

#include "screens/owner/OwnerFigure.h"
#include "screens/owner/TarnTeamSnapshot.h"

#include <QList>
#include <QString>

// The dashboard's figures read from a snapshot, in the order they are shown.
namespace OwnerFigures {

// Whole dollars with thousands separated: "$19,675".
[[nodiscard]] QString money(qint64 cents);
[[nodiscard]] QList<OwnerFigure> figures(const TarnTeamSnapshot &snapshot);
// "3h 20m", "45m", "" for none.
[[nodiscard]] QString minutes(qint64 minutes);

} // namespace OwnerFigures
