#pragma once

#include <QString>

#include <stdexcept>
#include <string>

namespace zel {

/// The one exception type: what the database, a report definition or a control refuses.
/// `number` is the database server's error number where the failure is one of its kinds, else a
/// run-time number of the program's own; `what()` is the description shown to the user, UTF-8.
class Error : public std::runtime_error {
public:
    Error(int number, const std::string &description) : std::runtime_error(description), m_number(number) {}
    Error(int number, const char *description) : Error(number, std::string(description)) {}
    Error(int number, const QString &description) : Error(number, description.toStdString()) {}

    [[nodiscard]] int number() const noexcept { return m_number; }
    [[nodiscard]] QString description() const { return QString::fromUtf8(what()); }

private:
    int m_number;
};

/// Run-time numbers of failures that are not the database's.
namespace errors {
inline constexpr int InvalidCall = 5;
inline constexpr int FileNotFound = 53;
inline constexpr int BadFile = 54;
inline constexpr int InputPastEnd = 62;
inline constexpr int ObjectNotSet = 91;
inline constexpr int ControlNotFound = 730;
inline constexpr int ObjectClosed = 3704;
inline constexpr int NoCurrentRow = 3021;
inline constexpr int ItemNotFound = 3265;
inline constexpr int TypeMismatch = 13;
} // namespace errors

} // namespace zel
