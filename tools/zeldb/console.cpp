#include "console.h"

#include "platform/base/error.h"

#include <QTextStream>

#include <termios.h>
#include <unistd.h>

namespace zel::tool {

namespace {

/// The terminal without echo while one lives.
class SilentTerminal {
public:
    SilentTerminal() {
        tcgetattr(STDIN_FILENO, &m_before);
        termios silent = m_before;
        silent.c_lflag &= ~tcflag_t(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~SilentTerminal() { tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before); }
    SilentTerminal(const SilentTerminal &) = delete;
    SilentTerminal &operator=(const SilentTerminal &) = delete;

private:
    termios m_before{};
};

QString readLine(QTextStream &input) {
    QString line = input.readLine();
    if (line.isNull())
        refuse(QStringLiteral("No password was given."));
    return line;
}

} // namespace

void put(std::FILE *stream, const QByteArray &text) {
    std::fwrite(text.constData(), 1, std::size_t(text.size()), stream);
    std::fflush(stream);
}

void say(const QString &text) {
    put(stdout, text.toUtf8());
}

void refuse(const QString &sentence) {
    throw Error(errors::InvalidCall, sentence);
}

QString askPassword() {
    QTextStream input(stdin);
    if (!isatty(STDIN_FILENO))
        return readLine(input);
    const SilentTerminal silent;
    put(stderr, "New password: ");
    QString password = readLine(input);
    put(stderr, "\nOnce more: ");
    const QString again = readLine(input);
    put(stderr, "\n");
    if (password != again)
        refuse(QStringLiteral("The two passwords differ; nothing was changed."));
    return password;
}

} // namespace zel::tool
