#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace zel::shell {

/// A display mode as the platform's record of it names its parts.
struct DisplayMode {
    std::uint32_t fields = 0; ///< which of the parts below are set; see Display::WidthAndHeight
    std::uint32_t width = 0;  ///< pixels
    std::uint32_t height = 0; ///< pixels
};

/// The platform's display calls, as far as a change of resolution needs them. The base class is the platform
/// that has none of them: it knows no mode, so nothing is ever changed.
class Display {
public:
    static constexpr std::uint32_t WidthAndHeight = 1'572'864;
    static constexpr std::uint32_t UpdateRegistry = 1;
    static constexpr std::uint32_t TestOnly = 4;
    static constexpr std::uint32_t DisplayChanged = 126;
    static constexpr std::uint32_t AllWindows = 65'535;
    static constexpr int Successful = 0;
    static constexpr int RestartNeeded = 1;

    virtual ~Display() = default;
    /// The mode of that number; nullopt where the platform can't say.
    [[nodiscard]] virtual std::optional<DisplayMode> mode(int number) const;
    /// Successful, RestartNeeded, or another code of the platform for a refusal.
    virtual int change(const DisplayMode &mode, std::uint32_t flags);
    virtual void broadcast(std::uint32_t window, std::uint32_t message, std::uint32_t first,
                           std::int32_t second);
    virtual void exitSystem(std::uint32_t flags, std::uint32_t reserved);
};

/// Asks the person a Yes/No question in a system-modal box; true for Yes.
using AskRestart = bool (*)(const QString &text, const QString &title);

/// Changes the display to this size, at once where the platform can, after a restart where it must; asks
/// before it restarts. Does nothing on a platform that knows no modes.
void changeResolution(Display &display, std::uint32_t width, std::uint32_t height, AskRestart ask);

} // namespace zel::shell
