#pragma once

#include <QDBusVariant>
#include <QObject>

#include <optional>

// Whether the desktop prefers dark: the portal's appearance setting when a
// portal answers, otherwise the lightness of the application palette's
// window colour. With no portal on the session bus (or no bus) it quietly
// follows the palette.
class NativeDesktopScheme : public QObject {
    Q_OBJECT

public:
    explicit NativeDesktopScheme(QObject *parent = nullptr);

    [[nodiscard]] bool prefersDark() const;

Q_SIGNALS:
    void changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private Q_SLOTS:
    void portalSettingChanged(const QString &space, const QString &key, const QDBusVariant &value);

private:
    void readPortal();
    void setPortalValue(std::optional<uint> value);

    // 1 prefers dark, 2 prefers light, 0 no preference.
    std::optional<uint> m_portal;
};
