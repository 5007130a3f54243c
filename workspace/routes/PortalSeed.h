#pragma once

class PortalStore;

// The demo's client portals: the payments demo's five customers, four of
// them with a portal (live, paused or being set up), their people, half a
// year of figures, monthly reports, work in hand and a few open alerts.
namespace PortalSeed {

void plant(PortalStore &portals);

} // namespace PortalSeed
