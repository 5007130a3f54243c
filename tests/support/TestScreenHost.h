#pragma once

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>
#include <QTemporaryDir>

#include <memory>

class NativeTheme;

// A screen's QML drawn offscreen in a window of its own over the design
// system's theme, as the app's window draws it, for tests to use by pointer
// and keyboard.
class TestScreenHost {
public:
    TestScreenHost();
    ~TestScreenHost();

    // Makes `source` (an import and the screen's type) with `state` as its
    // `property`, sized to the window; the reason when it cannot.
    [[nodiscard]] QString show(const QByteArray &source, const QString &property, QObject *state);
    [[nodiscard]] QObject *screen() const { return m_screen.get(); }
    // The visible items named `name`, in tree order.
    [[nodiscard]] QList<QQuickItem *> shown(const QString &name) const;
    void click(QQuickItem *item, QPointF at = { 8, 8 });
    // Takes the screen down before the state it draws goes.
    void close() { m_screen.reset(); }

    QQuickWindow window;

private:
    QTemporaryDir m_folder;
    QSettings m_settings;
    std::unique_ptr<NativeTheme> m_theme;
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_screen;
};
