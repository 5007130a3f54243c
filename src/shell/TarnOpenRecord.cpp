#include "shell/TarnOpenRecord.h"

std::optional<TarnOpenRecord> TarnOpenRecord::neighbour(qsizetype step) const
{
    qsizetype index = -1;
    for (qsizetype i = 0; i < siblings.size(); ++i) {
        if (siblings.at(i).id == id) {
            index = i;
            break;
        }
    }
    if (index < 0)
        return std::nullopt;
    const qsizetype target = index + step;
    if (target < 0 || target >= siblings.size())
        return std::nullopt;
    TarnOpenRecord next = siblings.at(target);
    next.siblings = siblings;
    return next;
}

bool operator==(const TarnOpenRecord &a, const TarnOpenRecord &b)
{
    return a.id == b.id && a.name == b.name && a.siblings == b.siblings;
}
