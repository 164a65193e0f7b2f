#include "Output.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>

#if defined(_WIN32)
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

#include "Failure.h"
#include "Input.h"
#include "Text.h"

namespace Keltrix::App {

namespace {

namespace fs = std::filesystem;

std::string Reason(int error) { return error ? std::string(": ") + std::strerror(error) : std::string(); }

// False where not every byte could be handed over.
bool TryWrite(std::FILE* stream, std::string_view text)
{
    errno = 0;
    return std::fwrite(text.data(), 1, text.size(), stream) == text.size() && std::fflush(stream) == 0;
}

// A file that is removed again unless it was kept.
class TemporaryFile {
public:
    explicit TemporaryFile(fs::path path) : m_path(std::move(path)) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile()
    {
        std::error_code ignored;
        if (!m_kept) fs::remove(m_path, ignored);
    }
    const fs::path& Path() const { return m_path; }
    void Keep() { m_kept = true; }

private:
    fs::path m_path;
    bool m_kept = false;
};

// A terminal that knows more than plain lines.
bool IsAbleTerminal(std::FILE* stream)
{
    const char* const terminal = std::getenv("TERM");
    if (terminal && std::strcmp(terminal, "dumb") == 0) return false;
#if defined(_WIN32)
    // A console follows escape sequences only when told to, and one of before Windows 10 never does.
    const HANDLE console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) && SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
#else
    return isatty(fileno(stream)) != 0;
#endif
}

void WriteInPlace(const std::string& path, const std::string& name, const std::function<void(const TextSink&)>& write)
{
    errno = 0;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(path.c_str(), "wb"), std::fclose);
    const auto require = [&](bool written) {
        if (!written) throw BadOutput(name + ": cannot be written" + Reason(errno));
    };
    require(stream != nullptr);
    write([&](std::string_view text) {
        errno = 0;
        require(std::fwrite(text.data(), 1, text.size(), stream.get()) == text.size());
    });
    errno = 0;
    require(std::fclose(stream.release()) == 0);
}

} // namespace

void WriteAll(std::FILE* stream, std::string_view text)
{
    if (!TryWrite(stream, text)) throw BadOutput("standard output: cannot be written" + Reason(errno));
}

void WriteFile(const std::string& path, std::string_view text)
{
    WriteFile(path, [&](const TextSink& put) { put(text); });
}

void WriteFile(const std::string& path, const std::function<void(const TextSink&)>& write)
{
    if (path == "-") return write([](std::string_view text) { WriteAll(stdout, text); });
    const std::string name = Printable(path);
    std::error_code ignored;
    const fs::file_status status = fs::status(FilePath(path), ignored);
    if (fs::is_directory(status)) throw BadOutput(name + ": is a directory, expected a file");
    // A device or a pipe keeps its name; there is no half of it to protect.
    if (fs::exists(status) && !fs::is_regular_file(status)) return WriteInPlace(path, name, write);

    const std::string part = path + ".part" + std::to_string(std::random_device{}());
    TemporaryFile temporary(FilePath(part));
    WriteInPlace(part, name, write);
    std::error_code failed;
    fs::rename(temporary.Path(), FilePath(path), failed);
    if (failed) throw BadOutput(name + ": cannot be written: " + failed.message());
    temporary.Keep();
}

std::FILE* OpenTemporaryFile()
{
#if defined(_WIN32)
    // tmpfile's place is the root of the drive, where not everyone may write. "D" deletes the file when it is closed.
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error);
    const std::string name = "ksteel" + std::to_string(std::random_device{}()) + ".tmp";
    return error ? nullptr : _wfopen((folder / name).c_str(), L"w+bTD");
#else
    return std::tmpfile();
#endif
}

void IgnoreClosedPipes()
{
#if defined(SIGPIPE)
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

void PassBytesUnchanged()
{
#if defined(_WIN32)
    static_cast<void>(_setmode(_fileno(stdout), _O_BINARY));
    static_cast<void>(_setmode(_fileno(stderr), _O_BINARY));
    // At a console Ctrl-Z remains the end of the input.
    if (!_isatty(_fileno(stdin))) static_cast<void>(_setmode(_fileno(stdin), _O_BINARY));
    static_cast<void>(SetConsoleOutputCP(CP_UTF8));
#endif
}

bool TerminalHasColour()
{
    const char* const noColour = std::getenv("NO_COLOR");
    return !(noColour && *noColour) && IsAbleTerminal(stdout);
}

bool TerminalShowsProgress() { return IsAbleTerminal(stderr); }

} // namespace Keltrix::App
