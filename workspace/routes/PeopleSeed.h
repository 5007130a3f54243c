#pragma once

class PeopleStore;

// The demo's time clock: three weeks of shifts for the team, a late shift
// across midnight and one across the turn of the week, and two people
// clocked in now.
namespace PeopleSeed {

void plant(PeopleStore &people);

} // namespace PeopleSeed
