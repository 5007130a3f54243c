#pragma once

// How the agent works a request: answer at once, or work it step by step
// and say how it went about it. Sent as the ask body's "run".
enum class TarnPiloRun { fast, process };
