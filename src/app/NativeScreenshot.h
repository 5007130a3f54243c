#pragma once

#include "shell/TarnDestination.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <optional>

class NativeRootState;
class TarnNavigation;
class QQuickWindow;

// `--screenshot FILE.png`: once the window has settled (signed in and drawn,
// or on the sign-in screen), saves it as a PNG and quits, with status 0 when
// the file was written. PILO_TARN_SCREENSHOT_PROFILE names the place to
// show, so that screenshots of a screen can be made again at will: a place
// ("chat", "books"), "search" or "settings" for the command search or the
// settings window over the home page, or "gallery" for the design gallery,
// which needs no sign-in; a ":dark" or ":light" suffix forces the colour
// scheme. PILO_TARN_SCREENSHOT_COMPOSER puts its text in the chat screen's
// composer, or opens the mail screen's composer on a new message holding it.
class NativeScreenshot : public QObject {
    Q_OBJECT

public:
    static constexpr auto profileVariable = "PILO_TARN_SCREENSHOT_PROFILE";
    // The text the chat screen's composer holds in the shot.
    static constexpr auto composerVariable = "PILO_TARN_SCREENSHOT_COMPOSER";

    struct Profile {
        // The place, without the scheme suffix.
        QString place;
        bool gallery = false;
        bool search = false;
        bool settings = false;
        // The agent screen with the assistant panel open beside it.
        bool pilo = false;
        // Dark or light for the run; none follows the person's choice.
        std::optional<bool> dark;
    };

    [[nodiscard]] static Profile profile(const QString &text);

    // A screen's name ("chat", "mail", "people"...) or one of the places
    // people ask for by name ("books", "inbox", "home"); none for an unknown
    // profile or "home", which leave the window at the person's home.
    [[nodiscard]] static std::optional<TarnDestination> destination(const QString &profile);

    // `root` is null for a page that shows without signing in.
    NativeScreenshot(QQuickWindow &window, NativeRootState *root, TarnNavigation &navigation, Profile profile,
        QString file, QObject *parent = nullptr);

    // A shown screen's first load: the shot waits until this holds, looked
    // at again whenever recheck() is called.
    void setReady(std::function<bool()> ready) { m_ready = std::move(ready); }
    void recheck() { settleCheck(); }

private:
    static constexpr std::chrono::milliseconds settleTime { 300 };

    void settleCheck();
    void capture();

    QQuickWindow &m_window;
    NativeRootState *m_root;
    TarnNavigation &m_navigation;
    Profile m_profile;
    std::function<bool()> m_ready;
    // The window taken: the settings window for "settings", else the main one.
    QQuickWindow *m_shot = nullptr;
    QString m_file;
    bool m_capturing = false;
};
