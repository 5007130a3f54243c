#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>

// The "Undo" offer after an action that can be taken back, such as archiving
// a mail: shown for ten seconds, then the action stands. A new offer ends the
// one before it, which then stands too. A screen connects `undone` to take
// its action back and `stood` to make it final; the timing lives here so
// tests drive it without a window.
class NativeUndoToast : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString text READ text NOTIFY offerChanged)
    Q_PROPERTY(bool shown READ shown NOTIFY offerChanged)

public:
    static constexpr std::chrono::milliseconds standardTime { 10000 };

    explicit NativeUndoToast(QObject *parent = nullptr);
    NativeUndoToast(std::chrono::milliseconds time, QObject *parent);

    [[nodiscard]] QString text() const { return m_text; }
    [[nodiscard]] bool shown() const { return !m_key.isEmpty(); }

    // `text` says what was done ("Archived"); `key` names it in the signals.
    Q_INVOKABLE void offer(const QString &text, const QString &key);
    Q_INVOKABLE void undo();
    // The person closed the toast: the action stands at once.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void undone(const QString &key);
    void stood(const QString &key);
    void offerChanged();

private:
    // Ends the shown offer; `undoing` says which way.
    void end(bool undoing);

    QTimer m_timer;
    QString m_text;
    QString m_key;
};
