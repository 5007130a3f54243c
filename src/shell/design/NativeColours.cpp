#include "shell/design/NativeColours.h"

using namespace Qt::StringLiterals;

namespace {

QColor withAlpha(QColor colour, double alpha)
{
    colour.setAlphaF(static_cast<float>(alpha));
    return colour;
}

// `over` laid on `ground` at `amount`, as an opaque colour.
QColor mix(const QColor &ground, const QColor &over, double amount)
{
    const auto channel = [&](double a, double b) { return a + (b - a) * amount; };
    return QColor::fromRgbF(static_cast<float>(channel(ground.redF(), over.redF())),
        static_cast<float>(channel(ground.greenF(), over.greenF())),
        static_cast<float>(channel(ground.blueF(), over.blueF())));
}

} // namespace

NativeColours NativeColours::make(bool dark, const QString &accent, const QString &tint)
{
    const QColor accentColour(accent.isEmpty() ? (dark ? u"#6b9bf2"_s : u"#2f6fde"_s) : accent);
    const QColor ink = dark ? QColor(u"#ececf0"_s) : QColor(u"#1c1c21"_s);
    const QColor window = tint.isEmpty() ? (dark ? QColor(u"#1b1c20"_s) : QColor(u"#ffffff"_s)) : QColor(tint);
    // The sidebar sits a step away from the window: darker in light, lighter in dark.
    const QColor sidebar = dark ? mix(window, Qt::white, 0.035) : mix(window, QColor(u"#3c3c50"_s), 0.045);
    NativeColours colours;
    colours.window = window;
    colours.sidebar = sidebar;
    colours.surface = dark ? mix(window, Qt::white, 0.05) : QColor(u"#ffffff"_s);
    colours.raised = dark ? mix(window, Qt::white, 0.09) : QColor(u"#ffffff"_s);
    colours.text = ink;
    colours.secondaryText = withAlpha(ink, dark ? 0.68 : 0.64);
    colours.tertiaryText = withAlpha(ink, dark ? 0.48 : 0.45);
    colours.separator = withAlpha(ink, dark ? 0.12 : 0.09);
    colours.border = withAlpha(ink, dark ? 0.20 : 0.16);
    colours.hover = withAlpha(ink, dark ? 0.07 : 0.05);
    colours.pressed = withAlpha(ink, dark ? 0.12 : 0.09);
    colours.accent = accentColour;
    colours.accentText = dark ? QColor(u"#111216"_s) : QColor(u"#ffffff"_s);
    colours.accentSoft = withAlpha(accentColour, dark ? 0.24 : 0.13);
    colours.focusRing = accentColour;
    colours.danger = dark ? QColor(u"#ff7a70"_s) : QColor(u"#c42b1c"_s);
    colours.dangerSoft = withAlpha(colours.danger, dark ? 0.16 : 0.09);
    colours.success = dark ? QColor(u"#5fd08a"_s) : QColor(u"#1f7a3f"_s);
    colours.warning = dark ? QColor(u"#f0b75a"_s) : QColor(u"#9a5b00"_s);
    colours.scrim = withAlpha(Qt::black, dark ? 0.55 : 0.32);
    colours.toast = dark ? QColor(u"#ececf0"_s) : QColor(u"#25262b"_s);
    colours.toastText = dark ? QColor(u"#1b1c20"_s) : QColor(u"#f4f4f6"_s);
    return colours;
}
