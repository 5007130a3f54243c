#pragma once

class PeopleHRStore;
class PeopleStore;
class PeoplePayrollStore;

// The demo's time clock: three weeks of shifts for the team, a late shift
// across midnight and one across the turn of the week, and two people
// clocked in now.
namespace PeopleSeed {

void plant(PeopleStore &people);
// Everyone's job title, employment, start day, phone and emergency contact.
void plantHR(PeopleHRStore &hr);
// Rates for the team; the last period paid, the one before it too, and the
// current one open with notes and two adjustments.
void plantPayroll(PeoplePayrollStore &payroll);

} // namespace PeopleSeed
