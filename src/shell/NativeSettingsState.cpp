#include "shell/NativeSettingsState.h"

#include "service/TarnAPI.h"
#include "shell/TarnAppearance.h"
#include "shell/TarnNavigation.h"
#include "shell/TarnSettingsCalls.h"

#include <QPointer>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> preference(const QSettings &preferences, QLatin1StringView key)
{
    const QVariant value = preferences.value(key);
    return value.isValid() ? std::optional(value.toString()) : std::nullopt;
}

QString endedText(qint64 count)
{
    if (count <= 0)
        return u"No other sessions were signed in."_s;
    if (count == 1)
        return u"Signed out of 1 other session."_s;
    return u"Signed out of %1 other sessions."_s.arg(count);
}

} // namespace

const QList<TarnAppearanceChoice> &NativeSettingsState::choicesOf(Kind kind)
{
    switch (kind) {
    case TextSize:
        return TarnAppearance::textSizes();
    case Accent:
        return TarnAppearance::accents();
    case Background:
    case KindCount:
        break;
    }
    return TarnAppearance::backgrounds();
}

QString NativeSettingsState::known(Kind kind, const std::optional<QString> &value)
{
    return TarnAppearance::choice(choicesOf(kind), value).value;
}

NativeSettingsState::NativeSettingsState(
    TarnAPI &api, TarnNavigation &navigation, QSettings &preferences, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_navigation(navigation)
    , m_preferences(preferences)
{
    m_settings[TextSize].shown = known(TextSize, preference(m_preferences, textSizeKey));
    m_settings[Accent].shown = known(Accent, preference(m_preferences, accentKey));
    m_settings[Background].shown = known(Background, std::nullopt);
    for (const Kind kind : { TextSize, Accent, Background }) {
        m_settings[kind].saved = m_settings[kind].shown;
        m_choices[kind] = new NativeChoiceModel(
            choicesOf(kind), [this, kind](const QString &value) { choose(kind, value); }, this);
        m_choices[kind]->setChosen(m_settings[kind].shown);
    }
    connect(&m_api, &TarnAPI::sessionChanged, this, &NativeSettingsState::loadSession);
    loadSession();
}

NativeSettingsState::~NativeSettingsState() = default;

QString NativeSettingsState::personName() const
{
    return m_api.session() ? m_api.session()->name : QString();
}

QString NativeSettingsState::personEmail() const
{
    return m_api.session() ? m_api.session()->email : QString();
}

QString NativeSettingsState::role() const
{
    return m_api.session() ? m_api.session()->role.value_or(QString()) : QString();
}

double NativeSettingsState::textScale() const
{
    return TarnAppearance::choice(TarnAppearance::textSizes(), textSize()).scale;
}

QString NativeSettingsState::accentColour() const
{
    return TarnAppearance::choice(TarnAppearance::accents(), accent()).colour;
}

QString NativeSettingsState::backgroundColour() const
{
    return TarnAppearance::choice(TarnAppearance::backgrounds(), background()).colour;
}

void NativeSettingsState::loadSession()
{
    ++m_sessionGeneration;
    m_endingSessions = false;
    setMessage({}, false);
    if (const std::optional<TarnSession> &session = m_api.session()) {
        // The account's choices win; a choice it never made keeps this
        // computer's.
        const std::optional<QString> values[KindCount] = {
            session->text_size ? session->text_size : preference(m_preferences, textSizeKey),
            session->accent ? session->accent : preference(m_preferences, accentKey),
            session->background,
        };
        for (const Kind kind : { TextSize, Accent, Background }) {
            const QString value = known(kind, values[kind]);
            m_settings[kind].saved = value;
            show(kind, value);
        }
    } else {
        // The text size and accent belong to the computer too, so the
        // sign-in screen keeps them; the background is the account's.
        m_settings[Background].saved = known(Background, std::nullopt);
        m_settings[Background].shown = m_settings[Background].saved;
        m_choices[Background]->setChosen(m_settings[Background].shown);
    }
    Q_EMIT sessionChanged();
    Q_EMIT appearanceChanged();
}

void NativeSettingsState::show(Kind kind, const QString &value)
{
    m_settings[kind].shown = value;
    m_choices[kind]->setChosen(value);
    switch (kind) {
    case TextSize:
        m_preferences.setValue(textSizeKey, value);
        break;
    case Accent:
        m_preferences.setValue(accentKey, value);
        break;
    case Background:
        m_navigation.setBackground(value);
        break;
    case KindCount:
        break;
    }
    Q_EMIT appearanceChanged();
}

void NativeSettingsState::setMessage(const QString &text, bool isError)
{
    if (m_message == text && m_messageIsError == isError)
        return;
    m_message = text;
    m_messageIsError = isError;
    Q_EMIT messageChanged();
}

void NativeSettingsState::choose(Kind kind, const QString &value)
{
    if (!m_api.session() || known(kind, value) != value || m_settings[kind].shown == value)
        return;
    const int generation = ++m_settings[kind].generation;
    setMessage({}, false);
    show(kind, value);
    save(kind, value, generation);
}

QCoro::Task<> NativeSettingsState::save(Kind kind, QString value, int generation)
{
    const QPointer<NativeSettingsState> self(this);
    const int session = m_sessionGeneration;
    try {
        QString sent = value;
        if (kind == TextSize)
            co_await TarnSettingsCalls::setTextSize(m_api, std::move(sent));
        else if (kind == Accent)
            co_await TarnSettingsCalls::setAccent(m_api, std::move(sent));
        else
            co_await TarnSettingsCalls::setAppearance(m_api, std::move(sent));
    } catch (const TarnAPIError &error) {
        if (!self || session != m_sessionGeneration || generation != m_settings[kind].generation)
            co_return;
        show(kind, m_settings[kind].saved);
        setMessage(QString::fromUtf8(error.what()), true);
        co_return;
    }
    if (self && session == m_sessionGeneration)
        m_settings[kind].saved = value;
}

void NativeSettingsState::signOutOtherSessions()
{
    if (!m_api.session() || m_endingSessions)
        return;
    m_endingSessions = true;
    m_message.clear();
    m_messageIsError = false;
    Q_EMIT messageChanged();
    endOtherSessions();
}

QCoro::Task<> NativeSettingsState::endOtherSessions()
{
    const QPointer<NativeSettingsState> self(this);
    const int session = m_sessionGeneration;
    QString text;
    bool failed = false;
    try {
        const TarnSessionsEnded ended = co_await TarnSettingsCalls::endOtherSessions(m_api);
        text = endedText(ended.signed_out);
    } catch (const TarnAPIError &error) {
        text = QString::fromUtf8(error.what());
        failed = true;
    }
    if (!self || session != m_sessionGeneration)
        co_return;
    m_endingSessions = false;
    m_message = text;
    m_messageIsError = failed;
    Q_EMIT messageChanged();
}

bool NativeSettingsState::desktopNotifications() const
{
    return m_preferences.value(notificationsKey, true).toBool();
}

void NativeSettingsState::setDesktopNotifications(bool on)
{
    if (on == desktopNotifications())
        return;
    m_preferences.setValue(notificationsKey, on);
    Q_EMIT notificationsChanged();
}
