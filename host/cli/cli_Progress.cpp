#include "host/cli/cli_Progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>

namespace {

std::size_t TerminalColumns() {
    constexpr std::size_t kUsual = 80;
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsual;
}

/// The leading characters of UTF-8 `text` that fit into `columns`.
std::string Cut(const std::string& text, std::size_t columns) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool startsCharacter = (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80;
        if (startsCharacter && count++ == columns) return text.substr(0, i);
    }
    return text;
}

}  // namespace

cli_Progress::cli_Progress() : isTerminal(isatty(STDERR_FILENO) == 1) {}

void cli_Progress::Show(const std::string& text) {
    if (!isTerminal || text == shown) return;
    shown = text;
    // A line as wide as the terminal would wrap.
    std::fprintf(stderr, "\r\x1b[K%s", Cut(text, TerminalColumns() - 1).c_str());
    std::fflush(stderr);
}

void cli_Progress::Show(const std::string& text, double fraction) {
    if (fraction < 0) {
        Show(text);
    } else {
        Show(text + ' ' + std::to_string(static_cast<int>(fraction * 100)) + " %");
    }
}

void cli_Progress::Clear() {
    if (shown.empty()) return;
    shown.clear();
    std::fputs("\r\x1b[K", stderr);
    std::fflush(stderr);
}
