#pragma once

#include <QObject>

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
