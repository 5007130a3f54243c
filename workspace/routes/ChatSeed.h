#pragma once

class ChatStore;

// The demo company's chat: channels and direct rooms with a few days of
// history, threads, reactions, saves, a deleted message and attachments.
namespace ChatSeed {

// Plants it into an empty chat; false when the store refused.
[[nodiscard]] bool plant(ChatStore &chat);

} // namespace ChatSeed
