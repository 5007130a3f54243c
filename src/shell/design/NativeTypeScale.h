#pragma once

#include <QObject>

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
