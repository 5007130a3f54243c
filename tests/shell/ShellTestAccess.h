#pragma once

#include "shell/TarnAccess.h"
#include "shell/TarnDestination.h"

#include <optional>

// The places and access shapes the shell's and the window's tests build their
// rows from, and the keys they read lists back by.
namespace ShellTestAccess {

inline TarnDestination at(TarnScreen screen, std::optional<QString> section = std::nullopt)
{
    return { .screen = screen, .section = std::move(section) };
}

inline TarnAccess withApps(const QStringList &apps, bool owner = false, bool booksOwner = false)
{
    TarnAccess access;
    access.apps = apps;
    access.owner = owner;
    access.booksOwner = booksOwner;
    return access;
}

template <typename Record> QStringList keysOf(const QList<Record> &records)
{
    QStringList keys;
    for (const Record &record : records)
        keys.append(record.key);
    return keys;
}

} // namespace ShellTestAccess
