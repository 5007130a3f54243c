#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

// The body of editing (with a new body) or deleting (without one) a
// message: the version the change was made against.
struct TarnMessageEdit {
    std::optional<QString> body {};
    qint64 version = 0;

    [[nodiscard]] QJsonObject toJSON() const;
};
