#pragma once

#include "shell/TarnAccess.h"
#include "shell/TarnDestination.h"

#include <optional>

// The places and access shapes the shell's tests build their rows from.
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

} // namespace ShellTestAccess
