#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

// The body of reporting this client's marks: only the flags given are sent.
struct TarnHuddleMarks {
    QString sid;
    std::optional<bool> muted {};
    std::optional<bool> video {};
    std::optional<bool> screen {};

    [[nodiscard]] QJsonObject toJSON() const;
};
