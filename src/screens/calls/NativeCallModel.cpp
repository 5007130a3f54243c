#include "screens/calls/NativeCallModel.h"

#include "screens/calls/CallBookRules.h"

using Row = TarnCall;

NativeCallModel::NativeCallModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "callId", [](const Row &r) { return r.id; } },
            { "direction", [](const Row &r) { return r.direction; } },
            { "party", [](const Row &r) { return CallBookRules::partyOf(r); } },
            { "clientId", [](const Row &r) { return r.client_id.value_or(QString()); } },
            { "number", [](const Row &r) { return r.number; } },
            { "personName", [](const Row &r) { return r.person_name; } },
            { "started",
                [](const Row &r) { return CallBookRules::startedLabel(r.started_at, QDateTime::currentDateTime()); } },
            { "duration", [](const Row &r) { return CallBookRules::durationLabel(r.duration); } },
            { "outcome", [](const Row &r) { return r.outcome; } },
            { "notes", [](const Row &r) { return r.notes; } },
            { "status", [](const Row &r) { return r.status; } },
            { "hasRecording", [](const Row &r) { return r.has_recording; } },
            { "version", [](const Row &r) { return r.version; } },
        },
        parent)
{
}

const TarnCall *NativeCallModel::find(const QString &id) const
{
    const auto at = std::find_if(rows().begin(), rows().end(), [&id](const TarnCall &call) { return call.id == id; });
    return at == rows().end() ? nullptr : &*at;
}
