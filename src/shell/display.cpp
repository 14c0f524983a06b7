#include "shell/display.h"

namespace zel::shell {

std::optional<DisplayMode> Display::mode(int) const {
    return std::nullopt;
}

int Display::change(const DisplayMode &, std::uint32_t) {
    return -1;
}

void Display::broadcast(std::uint32_t, std::uint32_t, std::uint32_t, std::int32_t) {}

void Display::exitSystem(std::uint32_t, std::uint32_t) {}

void changeResolution(Display &display, std::uint32_t width, std::uint32_t height, AskRestart ask) {
    std::optional<DisplayMode> mode = display.mode(0);
    if (!mode)
        return;
    mode->fields = Display::WidthAndHeight;
    mode->width = width;
    mode->height = height;
    switch (display.change(*mode, Display::TestOnly)) {
    case Display::Successful:
        display.change(*mode, Display::UpdateRegistry);
        display.broadcast(Display::AllWindows, Display::DisplayChanged, 42, 0);
        break;
    case Display::RestartNeeded:
        if (ask("You must restart your computer to apply these changes.\n\nDo you want to restart now?",
                "Screen Resolution"))
            display.exitSystem(0, 0);
        break;
    default:
        break;
    }
}

} // namespace zel::shell
