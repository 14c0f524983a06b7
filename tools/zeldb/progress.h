#pragma once

#include <QElapsedTimer>

#include <cstdint>

namespace zel::tool {

/// How far a long work has come, as a bar on the standard error. There is none when that is no terminal, nor
/// in the first second; the bar goes with this.
class Progress {
public:
    /// `work` is what the bar says, such as "Backing up".
    explicit Progress(const char *work);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// `done` of `whole`, in any unit. As cheap as reading a clock, so it may be told often.
    void tell(std::int64_t done, std::int64_t whole);

private:
    void draw(std::int64_t done, std::int64_t whole);

    const char *m_work;
    QElapsedTimer m_clock;
    qint64 m_next; ///< milliseconds, when it is drawn next
    bool m_seen;   ///< somebody is there to see it
    bool m_drawn = false;
};

} // namespace zel::tool
