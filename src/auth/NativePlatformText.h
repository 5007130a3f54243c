#pragma once

#include <QString>

// Texts that name the platform's own tools ("Keychain Access" on the Mac,
// the keyring on Linux). Every such text lives in this one table so that each
// platform reads its own words.
namespace NativePlatformText {

enum class Id {
    keychainSaveFailed,
    secureRandomFailed,
    cameraDenied,
    screenStoppedBySystem,
};

[[nodiscard]] QString get(Id id);

} // namespace NativePlatformText
