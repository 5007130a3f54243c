#include "shell/TarnAppearance.h"

using namespace Qt::StringLiterals;

namespace TarnAppearance {

const QList<TarnAppearanceChoice> &textSizes()
{
    static const QList<TarnAppearanceChoice> sizes {
        { u"standard"_s, u"Standard"_s, {}, 1.0, {} },
        { u"large"_s, u"Large"_s, {}, 1.2, {} },
        { u"larger"_s, u"Larger"_s, {}, 1.4, {} },
    };
    return sizes;
}

const QList<TarnAppearanceChoice> &accents()
{
    // The dark scheme's accents are lighter, to keep their contrast on dark
    // grounds.
    static const QList<TarnAppearanceChoice> colours {
        { u"blue"_s, u"Blue"_s, u"#2f6fde"_s, 1.0, u"#6b9bf2"_s },
        { u"teal"_s, u"Teal"_s, u"#0f8282"_s, 1.0, u"#3fb3b0"_s },
        { u"green"_s, u"Green"_s, u"#2e7d32"_s, 1.0, u"#62b866"_s },
        { u"orange"_s, u"Orange"_s, u"#c8571b"_s, 1.0, u"#ee8a4d"_s },
        { u"pink"_s, u"Pink"_s, u"#c2185b"_s, 1.0, u"#ec5f93"_s },
        { u"purple"_s, u"Purple"_s, u"#6f42c1"_s, 1.0, u"#a585ec"_s },
        { u"graphite"_s, u"Graphite"_s, u"#5c636e"_s, 1.0, u"#9aa1ac"_s },
    };
    return colours;
}

const QList<TarnAppearanceChoice> &backgrounds()
{
    // Each tint has a dark counterpart of the same hue: every text colour of
    // the window stays readable on both.
    static const QList<TarnAppearanceChoice> tints {
        { u"plain"_s, u"Plain"_s, {}, 1.0, {} },
        { u"paper"_s, u"Paper"_s, u"#f6f1e7"_s, 1.0, u"#262420"_s },
        { u"mist"_s, u"Mist"_s, u"#ebf1f7"_s, 1.0, u"#1f242b"_s },
        { u"sage"_s, u"Sage"_s, u"#edf3ec"_s, 1.0, u"#1f2520"_s },
    };
    return tints;
}

TarnAppearanceChoice choice(const QList<TarnAppearanceChoice> &choices, const std::optional<QString> &value)
{
    Q_ASSERT(!choices.isEmpty());
    for (const TarnAppearanceChoice &entry : choices) {
        if (value && entry.value == *value)
            return entry;
    }
    return choices.constFirst();
}

} // namespace TarnAppearance
