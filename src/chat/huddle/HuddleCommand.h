#pragma once

#include "chat/huddle/TarnHuddleCandidate.h"
#include "chat/huddle/TarnHuddleDescription.h"
#include "chat/huddle/TarnHuddleSignalData.h"

#include <QString>

// One step HuddleCall asks of the media (open, close, describe, apply) or of
// the service (send a signal), in the order given: the media carries them out
// one after another, so a candidate always follows the description it needs.
struct HuddleCommand {
    enum class Kind {
        OpenPeer, // a peer connection to `peer` on `conn`, making offers when `initiator`
        ClosePeer,
        MakeOffer, // create an offer, set it locally, report it with HuddleCall::descriptionCreated
        MakeAnswer, // the same for an answer
        SetRemote, // `description`
        AddCandidate, // `candidate`, once the remote description is set
        Send, // signal `type` with `data` to `conn`
        Receive, // make room in the connection for the participant's `track`
    };
    // A video track: each kind has its own payload type on the wire, which
    // is how a receiver tells a camera from a screen.
    enum class Track { Camera, Screen };

    Kind kind = Kind::OpenPeer;
    QString peer; // the remote user id
    QString conn {};
    bool initiator = false;
    TarnHuddleDescription description {};
    TarnHuddleCandidate candidate {};
    QString type {};
    TarnHuddleSignalData data {};
    Track track = Track::Camera;

    friend bool operator==(const HuddleCommand &, const HuddleCommand &) = default;
};
