#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <vector>

namespace zel::tool {

struct Command;

/// What was typed behind a command's name.
class Arguments {
public:
    /// Fails with a sentence for an option that the command does not have, and for words too few or too many.
    Arguments(const Command &command, const QStringList &typed);

    [[nodiscard]] qsizetype words() const { return m_words.size(); }
    /// The words that are no options, counted from 0.
    [[nodiscard]] const QString &word(qsizetype at) const { return m_words.at(at); }
    [[nodiscard]] bool isSet(const char *option) const { return m_line.isSet(QLatin1String(option)); }
    /// '' when the option was not given.
    [[nodiscard]] QString value(const char *option) const { return m_line.value(QLatin1String(option)); }

private:
    QCommandLineParser m_line;
    QStringList m_words;
};

struct Option {
    const char *name;
    const char *value; ///< what stands behind it, as the help names it; nullptr for a switch
    const char *help;
};

/// A command of the program; each has a file of its own.
struct Command {
    const char *name;
    const char *words;   ///< behind the name, as the help shows them
    const char *summary; ///< one line, for the list
    const char *help;    ///< what it does, in lines of at most 79 characters
    std::vector<Option> options{};
    int least; ///< words
    int most;
    int (*run)(const Arguments &given); ///< the program's status
    int failed = 1;                     ///< the status when it fails
};

/// All commands, and how to go on.
[[nodiscard]] QString helpOf(const std::vector<const Command *> &commands);
/// One command with its options.
[[nodiscard]] QString helpOf(const Command &command);

} // namespace zel::tool
