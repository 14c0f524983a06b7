#pragma once

#include <QElapsedTimer>

#include <cstdint>

namespace zel::tool {

/// How far a long work has come, as a bar on the standard error. There is none when that is no terminal, nor
/// in the first second; the bar goes with this.
class Progress {
public:
    /// `work` is what the bar says, such as "Backing up"; `whole` is for step().
    explicit Progress(const char *work, std::int64_t whole = 0);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// `done` of `whole`, in any unit. As cheap as reading a clock, so it may be told often.
    void tell(std::int64_t done, std::int64_t whole);
    /// One more of the whole.
    void step() {
        if ((++m_done & 0xff) == 0)
            tell(m_done, m_whole);
    }

private:
    void draw(std::int64_t done, std::int64_t whole);

    const char *m_work;
    std::int64_t m_whole;
    std::int64_t m_done = 0;
    QElapsedTimer m_clock;
    qint64 m_next; ///< milliseconds, when it is drawn next
    bool m_seen;   ///< somebody is there to see it
    bool m_drawn = false;
};

} // namespace zel::tool
