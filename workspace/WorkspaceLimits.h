#pragma once

#include <QtGlobal>

// What one client may ask of the service. Each is enforced in front of the
// HTTP library (see WorkspaceConnection) and documented in workspace/README.md.
namespace WorkspaceLimits {

// The request line and every header, up to the blank line that ends them:
// past this the answer is 431. The app's largest head is under 2 KiB.
inline constexpr qsizetype headBytes = 16 * 1024;
inline constexpr int headerCount = 100;

// A body larger than its route allows is refused from its Content-Length,
// before a byte of it is read. JSON routes take this much.
inline constexpr qint64 bodyBytes = 64 * 1024;
// The largest route: a mail with 18 MiB of attachments travels as base64
// (4/3 of that, 24 MiB) plus its text and envelope.
inline constexpr qint64 mailBodyBytes = 26 * 1024 * 1024;
// A bank statement's 500 rows as JSON: descriptions of up to 500 characters
// that may each grow sixfold when escaped.
inline constexpr qint64 statementBodyBytes = 4 * 1024 * 1024;

// An open connection with no request under way is closed after this.
inline constexpr int idleTimeoutMs = 30'000;
// A request's head and body (and the TLS handshake) must arrive within this
// from their first byte, or the answer is 408.
inline constexpr int requestTimeoutMs = 30'000;
// After a refusal, what the client still sends is read and dropped until it
// pauses this long (or for the drain time at most), so that it can read the
// refusal before the connection closes.
inline constexpr int refusalQuietMs = 100;
inline constexpr int refusalDrainMs = 1'000;

// Open connections, handshakes included; at the cap the one idle longest is
// closed for a newcomer, and a newcomer finds none idle is turned away. The
// cap stays this far under the descriptor limit.
inline constexpr int connections = 1024;
inline constexpr int descriptorReserve = 64;
// After an accept error (descriptors exhausted) accepting resumes this soon.
// It is logged once, and again only if it lasts this long.
inline constexpr int acceptRetryMs = 100;
inline constexpr int acceptLogIntervalMs = 60'000;

// Answers to keyed changes ("Idempotency-Key"), kept to answer a resend of
// the same request: the client's network layer resends on its own within
// moments, and a person retries within minutes.
inline constexpr int rememberedAnswers = 512;
inline constexpr qint64 rememberedAnswerMs = 10 * 60 * 1000;

// The request log of "--test-faults": the latest requests, bodies cut short.
inline constexpr int loggedRequests = 200;
inline constexpr qsizetype loggedBodyBytes = 4 * 1024;

} // namespace WorkspaceLimits
