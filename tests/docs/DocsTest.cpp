// Runs the documents: in a fenced block marked "console" every line that starts with "$ " is a command, and the lines after
// it are its exact output; a block marked "cpp FILE" must stand, as it is, in that file, which the build compiles, one marked
// "py FILE" in a file that a command of the same document runs. "tie_build/tie_code.so" is the module that the build makes of the example.
// "./run ARGS" stands for "ksteel ARGS", which it ends in, and "./python ARGS" for Python with the package on its path.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const fs::path SOURCE_DIR = KELTRIX_SOURCE_DIR;
/// Python with the package on its path; empty where it is not built.
const std::string PYTHON = KELTRIX_PYTHON_COMMAND;
/// A module as the documents name it, and where the build has it; empty where the program loads none.
const std::string MODULE = "tie_build/tie_code.so";
const std::string TIE_MODULE = KELTRIX_TIE_MODULE;

struct Command {
    std::string text;
    std::string expected;
    int line;
};

struct CodeBlock {
    std::string language;
    std::string file;
    std::string text;
    int line;
};

struct Document {
    std::vector<Command> commands;
    std::vector<CodeBlock> code;
};

std::string ReadFile(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in) << "cannot read " << path;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

Document ReadDocument(const fs::path& path)
{
    Document document;
    std::istringstream in(ReadFile(path));
    std::string line;
    std::string fence;
    for (int number = 1; std::getline(in, line); ++number) {
        if (fence.empty()) {
            if (line.rfind("```", 0) != 0) continue;
            fence = line.size() > 3 ? line.substr(3) : "text";
            if (const std::size_t space = fence.find(' '); space != std::string::npos)
                document.code.push_back({fence.substr(0, space), fence.substr(space + 1), "", number});
            continue;
        }
        if (line == "```") {
            fence.clear();
        } else if (fence == "console") {
            if (line.rfind("$ ", 0) == 0)
                document.commands.push_back({line.substr(2), "", number});
            else if (!document.commands.empty())
                document.commands.back().expected += line + "\n";
        } else if (fence.find(' ') != std::string::npos) {
            document.code.back().text += line + "\n";
        }
    }
    return document;
}

std::string OutputOf(const std::string& command)
{
    // On the path, where the shells that a command starts find them, too.
    const std::string line = "cd '" + SOURCE_DIR.string() +
                             "' && PATH='" KELTRIX_KSTEEL_DIR ":" KELTRIX_EXAMPLES_DIR "':\"$PATH\" && { " + command +
                             "\n} 2>&1";
    FILE* const pipe = popen(line.c_str(), "r");
    if (pipe == nullptr) return "cannot start a shell";
    std::string output;
    std::array<char, 4096> buffer;
    while (const std::size_t n = fread(buffer.data(), 1, buffer.size(), pipe))
        output.append(buffer.data(), n);
    pclose(pipe);
    return output;
}

std::vector<fs::path> Documents()
{
    std::vector<fs::path> documents{SOURCE_DIR / "README.md"};
    for (const auto& entry : fs::directory_iterator(SOURCE_DIR / "docs"))
        if (entry.path().extension() == ".md") documents.push_back(entry.path());
    return documents;
}

} // namespace

TEST(Docs, EveryCommandPrintsWhatTheDocumentsSay)
{
    // Where there is no /sys it works, with a complaint.
    const bool hasParallel = OutputOf("parallel echo ::: works") == "works\n";
    int commands = 0;
    int left = 0;
    int leftPython = 0;
    for (const fs::path& path : Documents()) {
        for (const Command& command : ReadDocument(path).commands) {
            std::string text = command.text;
            if (text == "./test" || text == "./run") continue; // set up a machine; the gates run them
            if (text.rfind("./run ", 0) == 0) text = "ksteel " + text.substr(6);
            if (const std::size_t at = text.find("| ./run "); at != std::string::npos) text.replace(at, 8, "| ksteel ");
            if (text.rfind("./python ", 0) == 0) {
                if (PYTHON.empty()) {
                    ++leftPython;
                    continue;
                }
                text = PYTHON + text.substr(8);
            }
            if (const std::size_t at = text.find(MODULE); at != std::string::npos) {
                if (TIE_MODULE.empty()) continue; // a static program loads none
                text.replace(at, MODULE.size(), "'" + TIE_MODULE + "'");
            }
            if (!hasParallel && text.find("parallel --") != std::string::npos) {
                ++left;
                continue;
            }
            ++commands;
            EXPECT_EQ(OutputOf(text), command.expected)
                << path.filename().string() << ":" << command.line << ": " << command.text;
        }
    }
    EXPECT_GE(commands, 10) << "the documents show the tool at work";
    if (leftPython > 0)
        GTEST_SKIP() << "Left out: needs the Python package (configure with KELTRIX_BUILD_PYTHON=ON) for " << leftPython
                     << " commands";
    if (left > 0)
        GTEST_SKIP() << "Left out: needs GNU parallel (Debian: apt-get install parallel) for " << left << " commands";
}

TEST(Docs, CodeInTheDocumentsIsCompiledOrRun)
{
    const std::string whole = "whole ";
    const std::string compiled = ReadFile(SOURCE_DIR / "tests/docs/CMakeLists.txt");
    int programs = 0;
    for (const fs::path& path : Documents()) {
        const Document document = ReadDocument(path);
        for (const CodeBlock& block : document.code) {
            SCOPED_TRACE(path.filename().string() + ":" + std::to_string(block.line));
            const bool isWhole = block.file.rfind(whole, 0) == 0;
            const std::string file = isWhole ? block.file.substr(whole.size()) : block.file;
            const std::string text = ReadFile(SOURCE_DIR / file);
            EXPECT_NE(text.find(block.text), std::string::npos) << "not found as it stands in " << file;
            if (!isWhole) continue;
            ++programs;
            EXPECT_EQ(block.text, text) << "is not " << file;
            if (block.language == "py")
                EXPECT_TRUE(
                    std::any_of(document.commands.begin(), document.commands.end(),
                                [&](const Command& command) { return command.text.find(file) != std::string::npos; }))
                    << "no command runs " << file;
            else
                EXPECT_NE(compiled.find(fs::path(file).stem().string()), std::string::npos)
                    << "nobody compiles " << file;
        }
    }
    EXPECT_GE(programs, 4) << "a first program, a module, a host and a table in Python are shown as a whole";
}

TEST(Docs, EveryExportedHeaderIsUsedInAnExample)
{
    std::string examples;
    for (const auto& entry : fs::recursive_directory_iterator(SOURCE_DIR / "examples"))
        if (entry.path().extension() == ".cpp") examples += ReadFile(entry.path());
    int headers = 0;
    for (const char* folder : {"include", "platform/include", "design/include", "stability/include", "statics/include",
                               "modules/bs5950/include", "modules/ec3/include", "host/include", "testkit/include"}) {
        for (const auto& entry : fs::recursive_directory_iterator(SOURCE_DIR / folder)) {
            if (entry.path().extension() != ".h" || entry.path().filename() == "Export.h") continue;
            ++headers;
            const std::string name = entry.path().lexically_relative(SOURCE_DIR / folder).generic_string();
            EXPECT_NE(examples.find("#include \"" + name + "\""), std::string::npos) << "no example uses " << name;
        }
    }
    EXPECT_GE(headers, 50);
}

TEST(Docs, EveryRelativeLinkLeadsToAFile)
{
    for (const fs::path& path : Documents()) {
        const std::string text = ReadFile(path);
        for (std::size_t at = text.find("]("); at != std::string::npos; at = text.find("](", at + 1)) {
            const std::size_t end = text.find(')', at);
            std::string target = text.substr(at + 2, end - at - 2);
            target = target.substr(0, target.find('#'));
            if (target.empty() || target.find("://") != std::string::npos) continue;
            EXPECT_TRUE(fs::exists(path.parent_path() / target)) << path.filename().string() << " links to " << target;
        }
    }
}
