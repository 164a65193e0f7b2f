#include "io/FilePatterns.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "io/Input.h"

namespace Keltrix::App {

namespace {

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// The place after a character in UTF-8.
std::size_t After(std::string_view text, std::size_t place)
{
    do
        ++place;
    while (place < text.size() && (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80);
    return place;
}

bool Matches(std::string_view pattern, std::string_view name)
{
    std::size_t inPattern = 0;
    std::size_t inName = 0;
    // The last star, and how far it reaches.
    std::size_t star = std::string_view::npos;
    std::size_t reach = 0;
    while (inName < name.size()) {
        const char wanted = inPattern < pattern.size() ? pattern[inPattern] : '\0';
        if (wanted == '*') {
            star = inPattern++;
            reach = inName;
        } else if (wanted == '?') {
            ++inPattern;
            inName = After(name, inName);
        } else if (LowerAscii(wanted) == LowerAscii(name[inName])) {
            ++inPattern;
            ++inName;
        } else if (star != std::string_view::npos) {
            inPattern = star + 1;
            reach = After(name, reach);
            inName = reach;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

std::string Bytes(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

// Sorted; none where the folder cannot be read.
std::vector<std::string> FilesLike(const std::string& pattern)
{
    namespace fs = std::filesystem;
    const fs::path path = FilePath(pattern);
    const std::string last = Bytes(path.filename());
    const std::string folder = pattern.substr(0, pattern.size() - last.size());
    std::vector<std::string> files;
    std::error_code error;
    fs::directory_iterator entry(folder.empty() ? fs::path(".") : path.parent_path(), error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string name = Bytes(entry->path().filename());
        std::error_code ignored;
        if (Matches(last, name) && !entry->is_directory(ignored)) files.push_back(folder + name);
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

std::vector<std::string> ExpandPatterns(const std::vector<std::string>& names)
{
    std::vector<std::string> files;
    for (const std::string& name : names) {
        const bool isPattern = name.find_first_of("*?") != std::string::npos;
        const std::vector<std::string> found = isPattern ? FilesLike(name) : std::vector<std::string>();
        if (found.empty())
            files.push_back(name);
        else
            files.insert(files.end(), found.begin(), found.end());
    }
    return files;
}

} // namespace Keltrix::App
