#pragma once

#include <QStringList>

// tarn mail-blocks [--plain] [--full] FILE: prints a mail body as the mail
// views see it, one JSON document (see TarnMailJSON).
[[nodiscard]] int runMailBlocks(const QStringList &args);
