#pragma once

#include <QtCore/qtmetamacros.h>

// A screen state's first reading: `loading` from when it starts until it
// ends, well or not, and `loaded` for good after that, with `busyChanged`
// told only when one of them moves. Every reading's end, the first or a
// refresh, is told as `refreshed`.
namespace NativeFirstLoad {

template <typename State> void begin(State &state, bool &loading, bool loaded)
{
    if (loaded || loading)
        return;
    loading = true;
    Q_EMIT state.busyChanged();
}

template <typename State> void end(State &state, bool &loading, bool &loaded)
{
    if (loading || !loaded) {
        loading = false;
        loaded = true;
        Q_EMIT state.busyChanged();
    }
    Q_EMIT state.refreshed();
}

} // namespace NativeFirstLoad
