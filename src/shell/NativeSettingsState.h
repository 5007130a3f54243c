#pragma once

#include "shell/NativeChoiceModel.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>

#include <array>
#include <optional>

class QSettings;
class TarnAPI;
class TarnNavigation;

// The settings window: the account, the appearance choices and the person's
// other sessions. A choice shows at once and is saved to the account behind
// it; when the service refuses, the last saved choice comes back with the
// service's words, so nothing is silently lost.
class NativeSettingsState : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString personName READ personName NOTIFY sessionChanged)
    Q_PROPERTY(QString personEmail READ personEmail NOTIFY sessionChanged)
    Q_PROPERTY(QString role READ role NOTIFY sessionChanged)
    Q_PROPERTY(NativeChoiceModel *textSizes READ textSizes CONSTANT)
    Q_PROPERTY(NativeChoiceModel *accents READ accents CONSTANT)
    Q_PROPERTY(NativeChoiceModel *backgrounds READ backgrounds CONSTANT)
    Q_PROPERTY(QString textSize READ textSize NOTIFY appearanceChanged)
    Q_PROPERTY(QString accent READ accent NOTIFY appearanceChanged)
    Q_PROPERTY(QString background READ background NOTIFY appearanceChanged)
    // What the window draws with.
    Q_PROPERTY(double textScale READ textScale NOTIFY appearanceChanged)
    Q_PROPERTY(QString accentColour READ accentColour NOTIFY appearanceChanged)
    Q_PROPERTY(QString backgroundColour READ backgroundColour NOTIFY appearanceChanged)
    Q_PROPERTY(bool endingSessions READ endingSessions NOTIFY messageChanged)
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
    Q_PROPERTY(bool messageIsError READ messageIsError NOTIFY messageChanged)
    // Desktop notifications for new customer messages, this computer's choice.
    Q_PROPERTY(
        bool desktopNotifications READ desktopNotifications WRITE setDesktopNotifications NOTIFY notificationsChanged)

public:
    static constexpr QLatin1StringView textSizeKey { "tarn.textSize" };
    static constexpr QLatin1StringView accentKey { "tarn.accent" };
    static constexpr QLatin1StringView notificationsKey { "tarn.desktopNotifications" };

    // `preferences` keeps the text size and accent for this computer, so the
    // window has them before the session loads; it must outlive this object.
    NativeSettingsState(TarnAPI &api, TarnNavigation &navigation, QSettings &preferences, QObject *parent = nullptr);
    ~NativeSettingsState() override;

    [[nodiscard]] QString personName() const;
    [[nodiscard]] QString personEmail() const;
    [[nodiscard]] QString role() const;
    [[nodiscard]] NativeChoiceModel *textSizes() const { return m_choices[TextSize]; }
    [[nodiscard]] NativeChoiceModel *accents() const { return m_choices[Accent]; }
    [[nodiscard]] NativeChoiceModel *backgrounds() const { return m_choices[Background]; }
    [[nodiscard]] QString textSize() const { return m_settings[TextSize].shown; }
    [[nodiscard]] QString accent() const { return m_settings[Accent].shown; }
    [[nodiscard]] QString background() const { return m_settings[Background].shown; }
    [[nodiscard]] double textScale() const;
    [[nodiscard]] QString accentColour() const;
    [[nodiscard]] QString backgroundColour() const;
    [[nodiscard]] bool endingSessions() const { return m_endingSessions; }
    [[nodiscard]] QString message() const { return m_message; }
    [[nodiscard]] bool messageIsError() const { return m_messageIsError; }
    [[nodiscard]] bool desktopNotifications() const;
    void setDesktopNotifications(bool on);

    Q_INVOKABLE void signOutOtherSessions();

Q_SIGNALS:
    void sessionChanged();
    void appearanceChanged();
    void messageChanged();
    void notificationsChanged();

private:
    enum Kind { TextSize, Accent, Background, KindCount };

    struct Setting {
        // What the window shows now.
        QString shown;
        // What the account holds, as far as this window knows.
        QString saved;
        // Bumped by every choice: only the newest save may undo a choice.
        int generation = 0;
    };

    [[nodiscard]] static const QList<TarnAppearanceChoice> &choicesOf(Kind kind);
    // The value as offered; one this version does not offer reads as the default.
    [[nodiscard]] static QString known(Kind kind, const std::optional<QString> &value);
    void loadSession();
    void choose(Kind kind, const QString &value);
    void show(Kind kind, const QString &value);
    void setMessage(const QString &text, bool isError);
    QCoro::Task<> save(Kind kind, QString value, int generation);
    QCoro::Task<> endOtherSessions();

    TarnAPI &m_api;
    TarnNavigation &m_navigation;
    QSettings &m_preferences;
    std::array<Setting, KindCount> m_settings;
    std::array<NativeChoiceModel *, KindCount> m_choices {};
    bool m_endingSessions = false;
    QString m_message;
    bool m_messageIsError = false;
    // Bumped per session, so answers meant for an earlier one are dropped.
    int m_sessionGeneration = 0;
};
