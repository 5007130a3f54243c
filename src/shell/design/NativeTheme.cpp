#include "shell/design/NativeTheme.h"

#include "chat/MessagesStyle.h"
#include "chat/TarnInitials.h"
#include "shell/TarnAppearance.h"
#include "shell/design/NativeSymbols.h"

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

constexpr auto engineProperty = "piloTarnTheme";

const QStringList &schemes()
{
    static const QStringList values { u"system"_s, u"light"_s, u"dark"_s };
    return values;
}

QColor colourOf(const MessagesStyle::Colour &colour)
{
    return QColor::fromRgbF(static_cast<float>(colour.r), static_cast<float>(colour.g), static_cast<float>(colour.b));
}

} // namespace

NativeTheme::NativeTheme(QSettings &preferences, QObject *parent)
    : QObject(parent)
    , m_preferences(preferences)
    , m_scheme(preferences.value(colorSchemeKey).toString())
{
    if (!schemes().contains(m_scheme))
        m_scheme = schemes().constFirst();
    connect(&m_desktop, &NativeDesktopScheme::changed, this, &NativeTheme::update);
    update();
}

void NativeTheme::attach(QQmlEngine &engine)
{
    engine.setProperty(engineProperty, QVariant::fromValue(this));
}

NativeTheme *NativeTheme::attachedTo(const QQmlEngine &engine)
{
    return engine.property(engineProperty).value<NativeTheme *>();
}

void NativeTheme::loadFonts()
{
    static const bool loaded = [] {
        for (const QString &file : { u"Inter-Regular.otf"_s, u"Inter-Medium.otf"_s, u"Inter-SemiBold.otf"_s,
                 u"Inter-Bold.otf"_s, u"MaterialIcons-Regular.ttf"_s }) {
            if (QFontDatabase::addApplicationFont(u":/PiloTarn/Design/fonts/"_s + file) < 0)
                qWarning("The font %s could not be loaded", qPrintable(file));
        }
        // Every text the QML draws starts from the application's font.
        QFont font = QGuiApplication::font();
        font.setFamilies({ u"Inter"_s, u"DejaVu Sans"_s });
        QGuiApplication::setFont(font);
        return true;
    }();
    Q_UNUSED(loaded);
}

void NativeTheme::setColorScheme(const QString &scheme)
{
    const QString known = schemes().contains(scheme) ? scheme : schemes().constFirst();
    if (known == m_scheme)
        return;
    m_scheme = known;
    m_preferences.setValue(colorSchemeKey, m_scheme);
    update();
}

void NativeTheme::forceDark(std::optional<bool> dark)
{
    m_forced = dark;
    update();
}

void NativeTheme::setAppearance(const QString &accent, const QString &background, double textScale)
{
    m_accent = accent;
    m_background = background;
    m_textScale = textScale;
    update();
}

bool NativeTheme::dark() const
{
    return m_dark;
}

QString NativeTheme::textFamily() const
{
    // DejaVu Sans, which every Debian desktop has, stands in for missing glyphs.
    return u"Inter"_s;
}

QString NativeTheme::iconFamily() const
{
    return u"Material Icons"_s;
}

QString NativeTheme::glyph(const QString &symbol) const
{
    return NativeSymbols::glyph(symbol);
}

QString NativeTheme::initials(const QString &name) const
{
    return TarnInitials::letters(name);
}

QColor NativeTheme::avatarTop(const QString &key) const
{
    return colourOf(MessagesStyle::gradient(key).top);
}

QColor NativeTheme::avatarBottom(const QString &key) const
{
    return colourOf(MessagesStyle::gradient(key).bottom);
}

void NativeTheme::update()
{
    if (m_forced)
        m_dark = *m_forced;
    else if (m_scheme == "system"_L1)
        m_dark = m_desktop.prefersDark();
    else
        m_dark = m_scheme == "dark"_L1;
    const TarnAppearanceChoice accent = TarnAppearance::choice(TarnAppearance::accents(), m_accent);
    const TarnAppearanceChoice tint = TarnAppearance::choice(TarnAppearance::backgrounds(), m_background);
    m_colours = NativeColours::make(
        m_dark, m_dark ? accent.darkColour : accent.colour, m_dark ? tint.darkColour : tint.colour);
    Q_EMIT changed();
}
