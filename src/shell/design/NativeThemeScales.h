#pragma once

#include <QColor>
#include <QObject>

// The measures every screen draws with, as the theme hands them to QML
// (`Theme.spacing.m`, `Theme.type.body`, `Theme.colours.text`). Plain
// values: the theme makes new ones when the scheme or the text size changes.

// Gaps and paddings, in logical pixels, on a 4-pixel grid.
struct NativeSpacing {
    Q_GADGET
    Q_PROPERTY(int xxs MEMBER xxs CONSTANT)
    Q_PROPERTY(int xs MEMBER xs CONSTANT)
    Q_PROPERTY(int s MEMBER s CONSTANT)
    Q_PROPERTY(int m MEMBER m CONSTANT)
    Q_PROPERTY(int l MEMBER l CONSTANT)
    Q_PROPERTY(int xl MEMBER xl CONSTANT)
    Q_PROPERTY(int xxl MEMBER xxl CONSTANT)

public:
    int xxs = 2;
    int xs = 4;
    int s = 8;
    int m = 12;
    int l = 16;
    int xl = 24;
    int xxl = 32;
};

// Corner radii: controls, cards and sheets; `pill` rounds any height fully.
struct NativeRadii {
    Q_GADGET
    Q_PROPERTY(int small MEMBER small CONSTANT)
    Q_PROPERTY(int medium MEMBER medium CONSTANT)
    Q_PROPERTY(int large MEMBER large CONSTANT)
    Q_PROPERTY(int pill MEMBER pill CONSTANT)

public:
    int small = 6;
    int medium = 8;
    int large = 12;
    int pill = 999;
};

// Font sizes in logical pixels (a point of a 72-per-inch reference screen,
// the unit text sizes are given in), already multiplied by the text-size
// preference: `body` is 16, 19.2 or 22.4.
struct NativeTypeScale {
    Q_GADGET
    Q_PROPERTY(double caption MEMBER caption CONSTANT)
    Q_PROPERTY(double footnote MEMBER footnote CONSTANT)
    Q_PROPERTY(double callout MEMBER callout CONSTANT)
    Q_PROPERTY(double body MEMBER body CONSTANT)
    Q_PROPERTY(double title3 MEMBER title3 CONSTANT)
    Q_PROPERTY(double title2 MEMBER title2 CONSTANT)
    Q_PROPERTY(double title1 MEMBER title1 CONSTANT)

public:
    // Labels under other labels, counts.
    double caption = 12;
    // Secondary lines, group headings.
    double footnote = 13;
    // Controls, list rows, the sidebar.
    double callout = 14;
    // Reading text: messages, mail, descriptions.
    double body = 16;
    double title3 = 18;
    double title2 = 22;
    double title1 = 28;

    [[nodiscard]] static NativeTypeScale scaled(double factor);
    friend bool operator==(const NativeTypeScale &, const NativeTypeScale &) = default;
};

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
