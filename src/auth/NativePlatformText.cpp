#include "auth/NativePlatformText.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Words {
    NativePlatformText::Id id;
    QStringView mac;
    QStringView freedesktop;
};

constexpr std::array table {
    Words { NativePlatformText::Id::keychainSaveFailed,
        u"This Mac could not save your sign-in. Check Keychain Access and try again.",
        u"This computer could not save your sign-in. Check that your keyring is unlocked and try again." },
    Words { NativePlatformText::Id::secureRandomFailed, u"This Mac could not make a secure sign-in key. Try again.",
        u"This computer could not make a secure sign-in key. Try again." },
    Words { NativePlatformText::Id::cameraDenied, u"Allow camera access in System Settings to turn on video.",
        u"Allow camera access in your desktop's privacy settings to turn on video." },
    Words { NativePlatformText::Id::screenStoppedBySystem, u"Screen sharing stopped in macOS.",
        u"Screen sharing stopped in the system." },
};

} // namespace

QString NativePlatformText::get(Id id)
{
    for (const Words &words : table) {
        if (words.id == id) {
#ifdef Q_OS_MACOS
            return words.mac.toString();
#else
            return words.freedesktop.toString();
#endif
        }
    }
    return {};
}
