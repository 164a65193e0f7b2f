#include "io/Output.h"

#include <algorithm>
#include <array>
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
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "io/Failure.h"
#include "io/Input.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

namespace fs = std::filesystem;

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

std::string Reason(int error) { return error ? std::string(": ") + std::strerror(error) : std::string(); }

[[noreturn]] void RefuseWriting(const std::string& name, int error)
{
    if (error == EPIPE) throw ClosedPipe(name + ": cannot be written" + Reason(error));
    throw BadOutput(name + ": cannot be written" + Reason(error));
}

void Put(std::FILE* stream, std::string_view text, const std::string& name)
{
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), stream) != text.size()) RefuseWriting(name, errno);
}

void Flush(std::FILE* stream, const std::string& name)
{
    errno = 0;
    if (std::fflush(stream) != 0) RefuseWriting(name, errno);
}

// A name that nothing else has: eight random hexadecimal digits.
std::string RandomName()
{
    std::array<char, 9> digits;
    std::snprintf(digits.data(), digits.size(), "%08x", static_cast<unsigned>(std::random_device{}()));
    return std::string(".ksteel-") + digits.data() + ".part";
}

// A terminal that knows more than plain lines.
bool IsAbleTerminal(std::FILE* stream)
{
    const char* const terminal = std::getenv("TERM");
    if (terminal && std::strcmp(terminal, "dumb") == 0) return false;
#if defined(_WIN32)
    // A console follows escape sequences only when this mode is set, and one of before Windows 10 never does.
    const HANDLE console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) && SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
#else
    return isatty(fileno(stream)) != 0;
#endif
}

// What a name stands for at the end of its symbolic links. That file may not exist yet.
fs::path LinkTarget(const std::string& path, const std::string& name)
{
    constexpr int mostLinks = 40;
    fs::path target = FilePath(path);
    std::error_code ignored;
    for (int links = 0; fs::is_symlink(fs::symlink_status(target, ignored)); ++links) {
        if (links == mostLinks) RefuseWriting(name, ELOOP);
        target = target.parent_path() / fs::read_symlink(target, ignored);
    }
    return target;
}

void WriteThrough(const std::string& path, const std::string& name, const std::function<void(const TextSink&)>& write)
{
    errno = 0;
    Stream stream(std::fopen(path.c_str(), "wb"), std::fclose);
    if (!stream) RefuseWriting(name, errno);
    write([&](std::string_view text) { Put(stream.get(), text, name); });
    Flush(stream.get(), name);
    errno = 0;
    if (std::fclose(stream.release()) != 0) RefuseWriting(name, errno);
}

#if !defined(_WIN32)

// The temporary file that a signal has to take away before it ends the program.
std::array<char, 4096> g_unfinished{};

extern "C" void RemoveUnfinished(int signal)
{
    unlink(g_unfinished.data());
    raise(signal); // it has its usual effect again, and is delivered on return
}

// Has the ordinary signals that end the program remove a file first. Those that are ignored stay so.
class RemovalBySignals {
public:
    explicit RemovalBySignals(const fs::path& path)
    {
        const std::string& native = path.native();
        if (native.size() >= g_unfinished.size()) return;
        std::copy(native.c_str(), native.c_str() + native.size() + 1, g_unfinished.begin());
        struct sigaction action {};
        action.sa_handler = RemoveUnfinished;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        for (std::size_t i = 0; i < SIGNALS.size(); ++i) {
            sigaction(SIGNALS[i], nullptr, &m_before[i]);
            if (m_before[i].sa_handler == SIG_DFL) sigaction(SIGNALS[i], &action, nullptr);
        }
        m_isSet = true;
    }
    RemovalBySignals(const RemovalBySignals&) = delete;
    RemovalBySignals& operator=(const RemovalBySignals&) = delete;
    ~RemovalBySignals()
    {
        for (std::size_t i = 0; m_isSet && i < SIGNALS.size(); ++i)
            sigaction(SIGNALS[i], &m_before[i], nullptr);
    }

private:
    static constexpr std::array SIGNALS{SIGHUP, SIGINT, SIGQUIT, SIGTERM};
    std::array<struct sigaction, SIGNALS.size()> m_before{};
    bool m_isSet = false;
};

// Holds all signals back while it lives.
class SignalsHeldBack {
public:
    SignalsHeldBack()
    {
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_BLOCK, &all, &m_before);
    }
    SignalsHeldBack(const SignalsHeldBack&) = delete;
    SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;
    ~SignalsHeldBack() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }

private:
    sigset_t m_before{};
};

// Whether a name is that of an open descriptor's regular file.
bool IsFileOf(int descriptor, const std::string& path)
{
    struct stat open {};
    struct stat named {};
    return fstat(descriptor, &open) == 0 && S_ISREG(open.st_mode) && stat(path.c_str(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

// Gives a new file the mode and the owner of the one whose place it takes. False where they cannot be given.
bool TakeAttributes(std::FILE* made, const struct stat& from)
{
    struct stat own {};
    if (fstat(fileno(made), &own) != 0) return false;
    const bool isOwners = own.st_uid == from.st_uid && own.st_gid == from.st_gid;
    if (!isOwners && fchown(fileno(made), from.st_uid, from.st_gid) != 0) return false;
    return fchmod(fileno(made), from.st_mode & 07777U) == 0;
}

// Makes room for `size` bytes in an open file without touching those that it has. Only a system that says that there is no
// room is believed: others cannot say.
void Reserve(std::FILE* stream, off_t size, off_t sizeBefore, const std::string& name)
{
    const int error = posix_fallocate(fileno(stream), 0, size);
    if (error != ENOSPC && error != EFBIG && error != EDQUOT) return;
    static_cast<void>(ftruncate(fileno(stream), sizeBefore) == 0);
    RefuseWriting(name, error);
}

// Writes the new text over the old one, after it was made as a whole elsewhere and room was made for it.
void WriteOver(const fs::path& path, const std::string& name, const std::function<void(const TextSink&)>& write)
{
    const Stream text(OpenTemporaryFile(), std::fclose);
    write([&](std::string_view piece) { Put(text.get(), piece, name); });
    Flush(text.get(), name);

    const SignalsHeldBack whileItIsHalf;
    errno = 0;
    Stream stream(std::fopen(path.c_str(), "r+b"), std::fclose);
    struct stat before {};
    struct stat made {};
    if (!stream || fstat(fileno(stream.get()), &before) != 0 || fstat(fileno(text.get()), &made) != 0)
        RefuseWriting(name, errno);
    if (made.st_size > before.st_size) Reserve(stream.get(), made.st_size, before.st_size, name);
    std::rewind(text.get());
    std::array<char, 1 << 16> block;
    while (const std::size_t got = std::fread(block.data(), 1, block.size(), text.get()))
        Put(stream.get(), {block.data(), got}, name);
    if (std::ferror(text.get())) throw BadOutput(name + ": a temporary file cannot be read");
    Flush(stream.get(), name);
    errno = 0;
    if (ftruncate(fileno(stream.get()), made.st_size) != 0 || std::fclose(stream.release()) != 0)
        RefuseWriting(name, errno);
}

#else

// Whether a name is that of an open descriptor's file on a disk.
bool IsFileOf(int descriptor, const std::string& path)
{
    const auto open = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    if (GetFileType(open) != FILE_TYPE_DISK) return false;
    const HANDLE named = CreateFileW(FilePath(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (named == INVALID_HANDLE_VALUE) return false;
    BY_HANDLE_FILE_INFORMATION one;
    BY_HANDLE_FILE_INFORMATION other;
    const bool areKnown = GetFileInformationByHandle(open, &one) && GetFileInformationByHandle(named, &other);
    CloseHandle(named);
    return areKnown && one.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
           one.nFileIndexHigh == other.nFileIndexHigh && one.nFileIndexLow == other.nFileIndexLow;
}

#endif

// The descriptors of the standard streams.
constexpr int INPUT = 0;
constexpr int OUTPUT = 1;

// Not one that is there already; on some Windows runtimes that cannot be asked for.
#if defined(_WIN32)
constexpr const char* NEW_FILE = "wb";
#else
constexpr const char* NEW_FILE = "wbx";
#endif

// A file that is removed again, also by a signal, unless it was moved to its place.
class TemporaryFile {
public:
    explicit TemporaryFile(fs::path path) :
        m_path(std::move(path)),
#if !defined(_WIN32)
        m_removal(m_path),
#endif
        m_stream(std::fopen(m_path.string().c_str(), NEW_FILE), std::fclose), m_exists(m_stream != nullptr)
    {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile()
    {
        std::error_code ignored;
        m_stream.reset();
        if (m_exists) fs::remove(m_path, ignored);
    }
    std::FILE* Get() const { return m_stream.get(); }
    bool Close() { return std::fclose(m_stream.release()) == 0; }
    std::error_code MoveTo(const fs::path& target)
    {
        std::error_code failed;
        fs::rename(m_path, target, failed);
        m_exists = static_cast<bool>(failed);
        return failed;
    }

private:
    fs::path m_path;
#if !defined(_WIN32)
    RemovalBySignals m_removal;
#endif
    Stream m_stream;
    bool m_exists;
};

void WriteBeside(TemporaryFile& temporary, const fs::path& target, const std::string& name,
                 const std::function<void(const TextSink&)>& write)
{
    write([&](std::string_view text) { Put(temporary.Get(), text, name); });
    Flush(temporary.Get(), name);
    errno = 0;
    if (!temporary.Close()) RefuseWriting(name, errno);
    if (const std::error_code failed = temporary.MoveTo(target))
        throw BadOutput(name + ": cannot be written: " + failed.message());
}

} // namespace

void WriteAll(std::FILE* stream, std::string_view text)
{
    const std::string name = stream == stderr ? "standard error" : "standard output";
    Put(stream, text, name);
    Flush(stream, name);
}

void WriteFile(const std::string& path, std::string_view text)
{
    WriteFile(path, [&](const TextSink& put) { put(text); });
}

void WriteFile(const std::string& path, const std::function<void(const TextSink&)>& write)
{
    if (path == "-" || IsFileOf(OUTPUT, path)) return write([](std::string_view text) { WriteAll(stdout, text); });
    const std::string name = PrintableLine(path);
    std::error_code ignored;
    const fs::file_status status = fs::status(FilePath(path), ignored);
    if (fs::is_directory(status)) throw BadOutput(name + ": is a directory, expected a file");
    // A device or a pipe keeps its name; there is no half of it to protect.
    if (fs::exists(status) && !fs::is_regular_file(status)) return WriteThrough(path, name, write);

    const fs::path target = LinkTarget(path, name);
    errno = 0;
    TemporaryFile temporary(target.parent_path() / RandomName());
    const int error = errno;
#if !defined(_WIN32)
    struct stat before {};
    if (stat(target.c_str(), &before) == 0) {
        if (access(target.c_str(), W_OK) != 0) RefuseWriting(name, errno);
        if (!temporary.Get() || before.st_nlink > 1 || !TakeAttributes(temporary.Get(), before))
            return WriteOver(target, name, write);
    }
#endif
    if (!temporary.Get()) RefuseWriting(name, error);
    WriteBeside(temporary, target, name, write);
}

void RequireNoInput(const std::string& option, const std::string& output, const std::vector<std::string>& inputs)
{
    if (output == "-") return;
    for (const std::string& input : inputs) {
        std::error_code ignored;
        bool isSame = input != "-" && fs::equivalent(FilePath(output), FilePath(input), ignored);
        if (input == "-") isSame = IsFileOf(INPUT, output);
        if (isSame)
            throw BadUsage(option + ": " + PrintableLine(output) + " is the input " + NameOfInput(input) +
                           ", which would be replaced; name another file");
    }
}

std::FILE* OpenTemporaryFile()
{
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error);
    std::FILE* file = nullptr;
    errno = 0;
#if defined(_WIN32)
    // "D" deletes the file when it is closed.
    if (!error) file = _wfopen((folder / RandomName()).c_str(), L"w+bTD");
#else
    const std::string path = (folder / RandomName()).string();
    const int descriptor = error ? -1 : open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor >= 0) {
        unlink(path.c_str());
        file = fdopen(descriptor, "w+b");
    }
#endif
    if (file) return file;
    if (!error) error.assign(errno, std::generic_category());
    const char* const variable = std::getenv("TMPDIR");
    throw BadOutput("a temporary file cannot be made in " +
                    (variable ? PrintableLine(variable) + " (TMPDIR)" : PrintableLine(folder.string())) + ": " +
                    error.message());
}

void OpenClosedStreams()
{
#if !defined(_WIN32)
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) continue;
        // The lowest descriptor that is free is this one.
        const int opened = open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        if (opened != descriptor) std::abort(); // there is no null device: nothing can be said, and nothing is safe
    }
#endif
}

void LetWritesFail()
{
#if !defined(_WIN32)
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
#endif
}

void EndByClosedPipe()
{
#if !defined(_WIN32)
    std::signal(SIGPIPE, SIG_DFL);
    std::raise(SIGPIPE);
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
