#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

// The body of the person's appearance endpoints: each sends the one choice
// it changes, under the session record's own key.
struct TarnAppearanceUpdate {
    std::optional<QString> accent {};
    std::optional<QString> text_size {};
    std::optional<QString> background {};

    [[nodiscard]] QJsonObject toJSON() const;
};
