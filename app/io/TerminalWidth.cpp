#include "io/TerminalWidth.h"

#include <algorithm>

#if defined(_WIN32)
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>
#elif __has_include(<sys/ioctl.h>) && __has_include(<unistd.h>)
#include <sys/ioctl.h>
#include <unistd.h>
#define KSTEEL_HAS_WINDOW_SIZE
#endif

namespace Keltrix::App {

std::size_t TerminalWidth()
{
    std::size_t columns = 0;
#if defined(_WIN32)
    CONSOLE_SCREEN_BUFFER_INFO info;
    if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info))
        columns = static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
#elif defined(KSTEEL_HAS_WINDOW_SIZE) && defined(TIOCGWINSZ)
    winsize size{};
    if (isatty(STDOUT_FILENO) == 1 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0) columns = size.ws_col;
#endif
    return columns == 0 ? 0 : std::max(columns, NARROWEST_WIDTH);
}

} // namespace Keltrix::App
