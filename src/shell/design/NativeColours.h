#pragma once

#include <QColor>
#include <QObject>

// The colours of one scheme, light or dark, with the chosen accent and
// background tint applied.
struct NativeColours {
    Q_GADGET
    Q_PROPERTY(QColor window MEMBER window CONSTANT)
    Q_PROPERTY(QColor sidebar MEMBER sidebar CONSTANT)
    Q_PROPERTY(QColor surface MEMBER surface CONSTANT)
    Q_PROPERTY(QColor raised MEMBER raised CONSTANT)
    Q_PROPERTY(QColor text MEMBER text CONSTANT)
    Q_PROPERTY(QColor secondaryText MEMBER secondaryText CONSTANT)
    Q_PROPERTY(QColor tertiaryText MEMBER tertiaryText CONSTANT)
    Q_PROPERTY(QColor separator MEMBER separator CONSTANT)
    Q_PROPERTY(QColor border MEMBER border CONSTANT)
    Q_PROPERTY(QColor hover MEMBER hover CONSTANT)
    Q_PROPERTY(QColor pressed MEMBER pressed CONSTANT)
    Q_PROPERTY(QColor accent MEMBER accent CONSTANT)
    Q_PROPERTY(QColor accentText MEMBER accentText CONSTANT)
    Q_PROPERTY(QColor accentSoft MEMBER accentSoft CONSTANT)
    Q_PROPERTY(QColor focusRing MEMBER focusRing CONSTANT)
    Q_PROPERTY(QColor danger MEMBER danger CONSTANT)
    Q_PROPERTY(QColor dangerSoft MEMBER dangerSoft CONSTANT)
    Q_PROPERTY(QColor success MEMBER success CONSTANT)
    Q_PROPERTY(QColor warning MEMBER warning CONSTANT)
    Q_PROPERTY(QColor scrim MEMBER scrim CONSTANT)
    Q_PROPERTY(QColor toast MEMBER toast CONSTANT)
    Q_PROPERTY(QColor toastText MEMBER toastText CONSTANT)

public:
    // The window's ground and the sidebar's, a step darker (lighter in dark).
    QColor window;
    QColor sidebar;
    // Cards, fields and lists; `raised` for sheets and menus above them.
    QColor surface;
    QColor raised;
    QColor text;
    QColor secondaryText;
    QColor tertiaryText;
    QColor separator;
    QColor border;
    // Washes laid over a control under the pointer or pressed.
    QColor hover;
    QColor pressed;
    QColor accent;
    // Text on the accent.
    QColor accentText;
    // The lit row's wash.
    QColor accentSoft;
    QColor focusRing;
    QColor danger;
    QColor dangerSoft;
    QColor success;
    QColor warning;
    // Behind a modal sheet.
    QColor scrim;
    QColor toast;
    QColor toastText;

    // `accent` and `tint` are "#rrggbb"; an empty tint is the scheme's plain ground.
    [[nodiscard]] static NativeColours make(bool dark, const QString &accent, const QString &tint);
    friend bool operator==(const NativeColours &, const NativeColours &) = default;
};
