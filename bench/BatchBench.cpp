// Whole runs of the program over many members: one process, workers, and the best that two processes can do.

#include "Bench.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "Examples.h"

namespace Keltrix::Bench {

namespace {

namespace fs = std::filesystem;

#if defined(__SANITIZE_ADDRESS__)
constexpr int MEMBERS = 400; // times mean nothing there
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr int MEMBERS = 400;
#else
constexpr int MEMBERS = 8000;
#endif
#else
constexpr int MEMBERS = 8000;
#endif

/// The examples over and over: as one file, as its two halves, and as a file for each member. Gone with the program.
class BatchFiles {
public:
    BatchFiles() : m_folder(fs::temp_directory_path() / ("keltrix-bench-" + std::to_string(std::random_device{}())))
    {
        fs::create_directories(m_folder / "each");
        std::vector<std::string> texts;
        for (const auto& path : ExampleFiles())
            texts.push_back(ReadBytes(path));
        std::ofstream whole(Whole(), std::ios::binary);
        std::ofstream halves[] = {std::ofstream(Half(0), std::ios::binary), std::ofstream(Half(1), std::ios::binary)};
        for (int i = 0; i < MEMBERS; ++i) {
            const std::string& text = texts[static_cast<std::size_t>(i) % texts.size()];
            whole << text;
            halves[i < MEMBERS / 2 ? 0 : 1] << text;
            std::ofstream(m_folder / "each" / (std::to_string(i) + ".csv"), std::ios::binary) << text;
        }
    }
    BatchFiles(const BatchFiles&) = delete;
    BatchFiles& operator=(const BatchFiles&) = delete;
    ~BatchFiles()
    {
        std::error_code ignored;
        fs::remove_all(m_folder, ignored);
    }

    std::string Whole() const { return (m_folder / "whole.csv").string(); }
    std::string Half(int i) const { return (m_folder / ("half" + std::to_string(i) + ".csv")).string(); }
    /// A pattern of the shell.
    std::string Each() const { return (m_folder / "each").string() + "/*.csv"; }

private:
    fs::path m_folder;
};

std::string Program(const std::string& arguments)
{
    return "'" KELTRIX_BENCH_KSTEEL "' check " + arguments + " >/dev/null";
}

/// A name so many times in a row, for the command line.
std::string Times(int n, const std::string& name)
{
    std::string names;
    for (int i = 0; i < n; ++i)
        names += name + ' ';
    return names;
}

/// `command` goes over the members so many times.
void MeasureRun(const std::string& name, const std::shared_ptr<BatchFiles>& files, const std::string& command,
                int times = 1)
{
    const auto run = [files, command] {
        const int status = std::system(command.c_str());
        if (status != 0) throw std::runtime_error("exit status " + std::to_string(status) + ": " + command);
        return status;
    };
    Work work{static_cast<double>(MEMBERS) * times};
    work.wallClock = true;
    Measure(name, run, work);
}

} // namespace

void RegisterBatches()
{
    const auto files = std::make_shared<BatchFiles>();
    // Each runs for most of a second, beside which the start of a program is nothing.
    const struct {
        const char* name;
        const char* options;
        int times;
    } outputs[] = {{"JSON Lines in full", "--format jsonl ", 1},
                   {"JSON Lines of headlines", "--format jsonl --report table ", 4},
                   {"brief reports", "", 1}};
    for (const auto& output : outputs) {
        const std::string name = std::string("batch, ") + output.name;
        const std::string options = output.options;
        const int n = output.times;
        MeasureRun(name, files, Program(options + Times(n, files->Whole())), n);
        Compare({name, "read and check all examples without text"});
        if (std::thread::hardware_concurrency() < 2) continue;
        MeasureRun(name + ", --jobs 2", files, Program(options + "--jobs 2 " + Times(n, files->Whole())), n);
        MeasureRun(name + ", two programs at once", files,
                   Program(options + Times(n, files->Half(0))) + " & " + Program(options + Times(n, files->Half(1))) +
                       "; wait",
                   n);
        Compare({name + ", --jobs 2", name, 1.0 / 1.8});
        Compare({name + ", two programs at once", name, 1.0 / 1.8});
        Compare({name + ", --jobs 2", name + ", two programs at once"});
    }
    const std::string options = "--format jsonl --report table ";
    const std::string each = "batch, a file for each member";
    MeasureRun(each, files, Program(options + files->Each()));
    Compare({each, "batch, JSON Lines of headlines"});
    if (std::thread::hardware_concurrency() < 2) return;
    MeasureRun(each + ", --jobs 2", files, Program(options + "--jobs 2 " + files->Each()));
    Compare({each + ", --jobs 2", each, 1.0 / 1.8});
}

} // namespace Keltrix::Bench
