#pragma once

class CommandLine;

// tarn mail-blocks [--plain] [--full] FILE: prints a mail body as the mail
// views see it, one JSON document (see TarnMailJSON). A file that is not
// text is refused.
[[nodiscard]] int runMailBlocks(CommandLine &line);
