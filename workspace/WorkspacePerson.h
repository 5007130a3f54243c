#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// One person of the workspace's company, as the store keeps them.
struct WorkspacePerson {
    QString id;
    QString name;
    QString email;
    QString role;
    bool owner = false;
    bool books_owner = false;
    QStringList apps;
    std::optional<QString> background;
    std::optional<QString> accent;
    std::optional<QString> text_size;
};
