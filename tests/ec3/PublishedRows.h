#pragma once

// Published resistances to BS EN 1993-1-1 with the UK National Annex, where they are at hand: CSV files in the folder ec3 of the
// reference tables, which are no part of the project.

#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace EC3Test {

/// A row: its fields by column name, as printed.
using PublishedRow = std::map<std::string, std::string>;

/// Rows of a table; empty where the folder or the file is not there.
inline std::vector<PublishedRow> PublishedRows(const std::string& file)
{
    const std::string folder = KELTRIX_REFERENCE_DIR;
    std::ifstream in(folder + "/ec3/" + file);
    std::vector<PublishedRow> rows;
    if (folder.empty() || !in) return rows;
    const auto fields = [](const std::string& line) { // those in quotation marks may hold commas
        std::vector<std::string> parts(1);
        bool quoted = false;
        for (const char c : line) {
            if (c == '"')
                quoted = !quoted;
            else if (c == ',' && !quoted)
                parts.emplace_back();
            else if (c != '\r')
                parts.back().push_back(c);
        }
        return parts;
    };
    std::string line;
    std::getline(in, line);
    const std::vector<std::string> names = fields(line);
    while (std::getline(in, line)) {
        const std::vector<std::string> values = fields(line);
        PublishedRow row;
        for (std::size_t i = 0; i < names.size() && i < values.size(); ++i)
            row[names[i]] = values[i];
        rows.push_back(row);
    }
    return rows;
}

/// A field as a number; throws where the row has none.
inline double Number(const PublishedRow& row, const std::string& column) { return std::stod(row.at(column)); }

/// "UB 457x191x67"
inline std::string SectionName(const PublishedRow& row) { return row.at("family") + " " + row.at("section"); }

} // namespace EC3Test

/// Leaves a test out that needs a table that is not there.
#define SKIP_WITHOUT(rows)                                                                                             \
    if ((rows).empty())                                                                                                \
    GTEST_SKIP() << "Left out: the published tables make this test possible "                                          \
                    "(KELTRIX_REFERENCE_DIR)"
