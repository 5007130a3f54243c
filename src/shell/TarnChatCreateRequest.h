#pragma once

#include <QObject>
#include <QString>

// A request, raised anywhere in the window, to open chat with its
// room-creation sheet. The id tells two equal requests apart, so that asking
// twice for the same kind of room opens the sheet twice.
struct TarnChatCreateRequest {
    Q_GADGET
    Q_PROPERTY(QString mode MEMBER mode)
    Q_PROPERTY(QString id MEMBER id)

public:
    QString mode;
    QString id;

    friend bool operator==(const TarnChatCreateRequest &, const TarnChatCreateRequest &) = default;
};
