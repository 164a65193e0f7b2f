#include "Output.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

#include "Failure.h"
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
    return _isatty(_fileno(stream)) != 0;
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
    const fs::file_status status = fs::status(path, ignored);
    if (fs::is_directory(status)) throw BadOutput(name + ": is a directory, expected a file");
    // A device or a pipe keeps its name; there is no half of it to protect.
    if (fs::exists(status) && !fs::is_regular_file(status)) return WriteInPlace(path, name, write);

    TemporaryFile temporary(path + ".part" + std::to_string(std::random_device{}()));
    WriteInPlace(temporary.Path().string(), name, write);
    std::error_code failed;
    fs::rename(temporary.Path(), path, failed);
    if (failed) throw BadOutput(name + ": cannot be written: " + failed.message());
    temporary.Keep();
}

void IgnoreClosedPipes()
{
#if defined(SIGPIPE)
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

bool TerminalHasColour()
{
    const char* const noColour = std::getenv("NO_COLOR");
    return !(noColour && *noColour) && IsAbleTerminal(stdout);
}

bool TerminalShowsProgress() { return IsAbleTerminal(stderr); }

} // namespace Keltrix::App
