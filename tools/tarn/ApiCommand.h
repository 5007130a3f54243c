#pragma once

class CommandLine;

// tarn api [--workspace URL] [--workspace-ca FILE] [--token-stdin] METHOD PATH [JSON-BODY]
// Sends one request through the service client, with the stored session
// (loaded first, as the app does, so that changes carry the CSRF token), and
// prints the JSON answer; on failure prints the error's text and exits 1.
[[nodiscard]] int runApi(CommandLine &line);
