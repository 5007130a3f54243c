#pragma once

#include "shell/design/NativeColours.h"
#include "shell/design/NativeDesktopScheme.h"
#include "shell/design/NativeRadii.h"
#include "shell/design/NativeSpacing.h"
#include "shell/design/NativeTypeScale.h"

#include <QColor>
#include <QObject>
#include <QString>

#include <optional>

class QQmlEngine;
class QSettings;

// What every screen draws with: the spacing, type scale, radii and colours
// of the scheme in use (light or dark, with the chosen accent and tint), the
// fonts, and the icon and avatar helpers. QML reaches it as the singleton
// `Theme` of PiloTarn.Design; the app builds one per window and hands it to
// its engine with attach().
class NativeTheme : public QObject {
    Q_OBJECT
    // "system" (follow the desktop), "light" or "dark": this computer's choice.
    Q_PROPERTY(QString colorScheme READ colorScheme WRITE setColorScheme NOTIFY changed)
    Q_PROPERTY(bool dark READ dark NOTIFY changed)
    Q_PROPERTY(NativeColours colours READ colours NOTIFY changed)
    Q_PROPERTY(NativeTypeScale type READ type NOTIFY changed)
    Q_PROPERTY(double textScale READ textScale NOTIFY changed)
    Q_PROPERTY(NativeSpacing spacing READ spacing CONSTANT)
    Q_PROPERTY(NativeRadii radii READ radii CONSTANT)
    Q_PROPERTY(QString textFamily READ textFamily CONSTANT)
    Q_PROPERTY(QString iconFamily READ iconFamily CONSTANT)

public:
    static constexpr QLatin1StringView colorSchemeKey { "tarn.colorScheme" };

    // `preferences` keeps the colour scheme; it must outlive the theme.
    explicit NativeTheme(QSettings &preferences, QObject *parent = nullptr);

    // Makes this the `Theme` that QML loaded by `engine` sees.
    void attach(QQmlEngine &engine);
    // The theme `engine` was given, if any.
    [[nodiscard]] static NativeTheme *attachedTo(const QQmlEngine &engine);

    // Registers the text and icon fonts the app carries, once per process,
    // and makes the text font the application's, so every Text has it.
    static void loadFonts();

    [[nodiscard]] QString colorScheme() const { return m_scheme; }
    void setColorScheme(const QString &scheme);
    // Overrides the scheme for this run only, as a screenshot of `chat:dark`
    // asks; never saved.
    void forceDark(std::optional<bool> dark);
    // The account's appearance choices, by value as TarnAppearance offers them.
    void setAppearance(const QString &accent, const QString &background, double textScale);

    [[nodiscard]] bool dark() const;
    [[nodiscard]] NativeColours colours() const { return m_colours; }
    [[nodiscard]] NativeTypeScale type() const { return NativeTypeScale::scaled(m_textScale); }
    [[nodiscard]] double textScale() const { return m_textScale; }
    [[nodiscard]] NativeSpacing spacing() const { return {}; }
    [[nodiscard]] NativeRadii radii() const { return {}; }
    [[nodiscard]] QString textFamily() const;
    [[nodiscard]] QString iconFamily() const;

    // The icon font's glyph for a symbol name of the navigation tables.
    Q_INVOKABLE QString glyph(const QString &symbol) const;
    // A person's avatar without a photo: the letters, and the two colours
    // of its gradient for `key` (their id, or their name).
    Q_INVOKABLE QString initials(const QString &name) const;
    Q_INVOKABLE QColor avatarTop(const QString &key) const;
    Q_INVOKABLE QColor avatarBottom(const QString &key) const;

Q_SIGNALS:
    void changed();

private:
    void update();

    QSettings &m_preferences;
    NativeDesktopScheme m_desktop;
    QString m_scheme;
    std::optional<bool> m_forced;
    QString m_accent;
    QString m_background;
    double m_textScale = 1.0;
    NativeColours m_colours;
    bool m_dark = false;
};
