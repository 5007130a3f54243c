#pragma once

#include <QJsonObject>
#include <QString>

// The body of resuming blocked work: the reviewer's decision ("approve" or
// "decline") and a note on how the work was reconciled.
struct TarnAgentResume {
    QString decision;
    QString reconciliation;

    [[nodiscard]] QJsonObject toJSON() const;
};
