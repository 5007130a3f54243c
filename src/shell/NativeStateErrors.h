#pragma once

#include "service/TarnAPIError.h"

#include <QString>

// How a screen's state shows what went wrong: a refusal's own text in its
// `errorText`, QML told only when it changed, and a signed-out answer
// handed on as `signedOut` for the window to ask for sign-in.
namespace NativeStateErrors {

template <typename State> void show(State &state, QString &shown, const QString &text)
{
    if (shown == text)
        return;
    shown = text;
    Q_EMIT state.errorTextChanged();
}

template <typename State> void fail(State &state, QString &shown, const TarnAPIError &error)
{
    if (error.kind() == TarnAPIError::Kind::signedOut) {
        Q_EMIT state.signedOut();
        return;
    }
    show(state, shown, error.text());
}

} // namespace NativeStateErrors
