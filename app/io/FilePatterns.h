#pragma once

#include <string>
#include <vector>

namespace Keltrix::App {

/// A list of file names with each pattern replaced by the files that match it, for systems whose shell does not do so. `*` stands for any
/// characters, `?` for one, in the last part of a path alone; the case of ASCII letters does not count. Files come in the order of the bytes of
/// their names, folders not at all. What is no pattern stays as it is, and so does a pattern that no file matches.
std::vector<std::string> ExpandPatterns(const std::vector<std::string>& names);

} // namespace Keltrix::App
