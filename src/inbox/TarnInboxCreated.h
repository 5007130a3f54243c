#pragma once

#include "service/TarnCreatedID.h"

// The answer of starting a new conversation: the thread's id, the shape
// every creation answers with.
using TarnInboxCreated = TarnCreatedID;
