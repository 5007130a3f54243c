#pragma once

#include <QString>

// The desktop file that names the app to the desktop and registers it as the
// handler of "pilo-tarn:" addresses (the sign-in callback). An installed app
// brings its own (`make install`, the package). A build tree registers
// itself on request (`pilo-tarn --register-desktop-entry`, run by
// `make demo`) in the person's applications folder, marked as a build tree's
// entry so that it is never taken for an installed one: an installed entry
// is never replaced, nor hidden behind one that points into a build tree.
namespace NativeDesktopEntry {

inline constexpr auto fileName = "pilo-tarn.desktop";
// The key that marks an entry written for a build tree.
inline constexpr auto buildTreeKey = "X-Pilo-Tarn-Build-Tree";

enum class Outcome {
    written, // the entry now names `executable`
    unchanged, // it already did
    installedKept, // an installed entry exists and is the one the desktop uses
    failed, // the folder or the file could not be written
};

// The installed entry (the one `make install` copies) with its Exec line
// naming `executable`, and marked as a build tree's.
[[nodiscard]] QString buildTreeContents(const QString &executable);
// Registers `executable` as the handler of the scheme unless an installed
// entry exists, in which case a build tree's entry in the person's folder is
// removed so that the installed one is used.
[[nodiscard]] Outcome registerBuildTree(const QString &executable);

} // namespace NativeDesktopEntry
