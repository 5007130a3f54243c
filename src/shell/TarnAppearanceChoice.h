#pragma once

#include <QObject>
#include <QString>

// One option of the appearance settings: the value stored with the account,
// what the person reads, and what it does to the window.
struct TarnAppearanceChoice {
    Q_GADGET
    Q_PROPERTY(QString value MEMBER value)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString colour MEMBER colour)
    Q_PROPERTY(double scale MEMBER scale)
    Q_PROPERTY(QString darkColour MEMBER darkColour)

public:
    QString value;
    QString label;
    // "#rrggbb"; empty for a background that follows the system's.
    QString colour;
    // The text size's factor over the standard size.
    double scale = 1.0;
    // The colour in the dark scheme, "#rrggbb"; empty as `colour` is.
    QString darkColour;

    friend bool operator==(const TarnAppearanceChoice &, const TarnAppearanceChoice &) = default;
};
