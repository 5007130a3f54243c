#pragma once

class CustomerStore;

// The demo company's customer register: a few dozen customers across the
// stages (those the other demos made plus more of its own) with months of
// notes, tasks, stage changes, contacts, files, reminders and drafts.
namespace CustomerSeed {

void plant(CustomerStore &customers);

} // namespace CustomerSeed
