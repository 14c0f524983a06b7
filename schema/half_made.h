#pragma once

#include <QString>

#include <csignal>

namespace zel::schema {

/// While one lives, the signals that ask the program to end (Ctrl+C among them) wait.
class SignalsWait {
public:
    SignalsWait();
    ~SignalsWait();
    SignalsWait(const SignalsWait &) = delete;
    SignalsWait &operator=(const SignalsWait &) = delete;

private:
    sigset_t m_before{};
};

/// A new catalog's file beside where it is to stand. Removed when this goes, unless it was kept; a program
/// that is asked to end does so only then.
class HalfMade {
public:
    /// `madeFolder`: the folder goes with it, too.
    HalfMade(const QString &folder, bool madeFolder);
    ~HalfMade();
    HalfMade(const HalfMade &) = delete;
    HalfMade &operator=(const HalfMade &) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }
    /// Gives the file its name, in one step and never over another one (Error 1802), and makes that last.
    void keepAs(const QString &path);
    /// The same in place of what stands there, which nobody may have open and which gets the name `kept`;
    /// with its logs, unless it is whole without them.
    void keepInPlaceOf(const QString &path, const QString &kept, bool withLogs);

private:
    SignalsWait m_signals; // the first, since it goes last
    QString m_folder;
    QString m_path;
    bool m_madeFolder;
    bool m_kept = false;
};

/// Puts the names of a folder's files on the disk; true, too, when the folder is none that can be asked to.
[[nodiscard]] bool synced(const QString &folder);

[[noreturn]] void refuseSecond(const QString &folder);

} // namespace zel::schema
