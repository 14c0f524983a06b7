#pragma once

#include <QString>

namespace zel::schema {

/// A new catalog's file beside where it is to stand. Removed when this goes, unless it was kept.
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

private:
    QString m_folder;
    QString m_path;
    bool m_madeFolder;
    bool m_kept = false;
};

[[noreturn]] void refuseSecond(const QString &folder);

} // namespace zel::schema
