#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

struct TarnSession;

// What the signed-in person may open, taken from their session.
struct TarnAccess {
    Q_GADGET
    Q_PROPERTY(QStringList apps READ appList)
    Q_PROPERTY(bool everyApp READ everyApp)
    Q_PROPERTY(bool owner MEMBER owner)
    Q_PROPERTY(bool booksOwner MEMBER booksOwner)
    Q_PROPERTY(QString role READ roleText)
    Q_PROPERTY(QString email MEMBER email)
    Q_PROPERTY(bool reviewsBlockedWork READ reviewsBlockedWork)

public:
    // Set per deployment when building (TARN_OWNER_ADDRESS); the demo
    // company's owner otherwise.
    static constexpr QLatin1StringView defaultOwnerAddress { TARN_OWNER_ADDRESS };

    // Absent means every app; an empty list means none.
    std::optional<QStringList> apps;
    bool owner = false;
    bool booksOwner = false;
    std::optional<QString> role;
    QString email;
    // The one address whose admin may review the assistant's blocked work.
    QString ownerAddress = defaultOwnerAddress;

    [[nodiscard]] static TarnAccess fromSession(
        const TarnSession &session, const QString &ownerAddress = defaultOwnerAddress);

    [[nodiscard]] Q_INVOKABLE bool has(const QString &app) const;
    [[nodiscard]] bool reviewsBlockedWork() const;

    [[nodiscard]] QStringList appList() const { return apps.value_or(QStringList()); }
    [[nodiscard]] bool everyApp() const { return !apps.has_value(); }
    [[nodiscard]] QString roleText() const { return role.value_or(QString()); }

    friend bool operator==(const TarnAccess &, const TarnAccess &) = default;
};
