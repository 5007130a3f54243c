#pragma once

#include <QObject>

// Gaps and paddings, in logical pixels, on a 4-pixel grid. Like the other
// measures of the theme it reaches QML as a plain value (`Theme.spacing.m`),
// made anew when the scheme or the text size changes.
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
