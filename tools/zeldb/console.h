#pragma once

#include <QByteArray>
#include <QString>

#include <cstdio>

namespace zel::tool {

void put(std::FILE *stream, const QByteArray &text);
/// On the standard output.
void say(const QString &text);
/// Ends the command with one sentence that says what is wrong, and what to do where that is not plain.
[[noreturn]] void refuse(const QString &sentence);

/// Typed twice on a terminal, unseen; else the first line of the standard input.
[[nodiscard]] QString askPassword();

} // namespace zel::tool
