#pragma once

#include <QByteArray>
#include <QGuiApplication>
#include <QString>

// The application, timing each event it hands out (the outermost ones): the
// longest is the longest the window could not draw.
class TimedApp : public QGuiApplication {
public:
    using QGuiApplication::QGuiApplication;

    bool watching = false;
    qint64 longest = 0;
    QByteArray longestEvent;

    void resetLongest();
    [[nodiscard]] QString longestText() const;

    bool notify(QObject *receiver, QEvent *event) override;

private:
    int m_depth = 0;
};
