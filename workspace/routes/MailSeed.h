#pragma once

#include <QString>

class MailStore;
class WorkspaceStore;

// The demo mailboxes: the owner's realistic mailbox (":/mail-seed/mailbox.json"
// with its HTML, attachments and generated notifications, and a newsletter
// of about 2 MB made here), small mailboxes for most of the company, and
// Jonah Whitfield's not connected.
namespace MailSeed {

[[nodiscard]] bool plant(MailStore &mail, const WorkspaceStore &store);

// The long newsletter: the same issue's articles repeated to about 2 MB.
[[nodiscard]] QString longNewsletter();

} // namespace MailSeed
