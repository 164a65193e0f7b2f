#include "catalogue/ReferenceTables.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace Keltrix::Steel::Test {

namespace {

double NumberOf(const std::string& text)
{
    double value = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

// Fields of a CSV line; those in quotation marks may hold commas.
std::vector<std::string> Fields(const std::string& line)
{
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (const char c : line) {
        if (c == '"') {
            quoted = !quoted;
        } else if (c == ',' && !quoted) {
            fields.emplace_back();
        } else if (c != '\r') {
            fields.back().push_back(c);
        }
    }
    return fields;
}

// "406 x 140 x  46.0" as "406x140x46": numbers without trailing zeros, no blanks.
std::string Designation(const std::string& text)
{
    std::string designation;
    std::string number;
    const auto flush = [&] {
        if (number.find('.') != std::string::npos) {
            number.erase(number.find_last_not_of('0') + 1);
            if (number.back() == '.') number.pop_back();
        }
        designation += number;
        number.clear();
    };
    for (const char c : text) {
        if (c == 'x') {
            flush();
            designation += 'x';
        } else if (c != ' ') {
            number += c;
        }
    }
    flush();
    return designation;
}

// Tables of European sections run family and size together: "HEA1000", "UPE-80".
std::string EuropeanDescription(const std::string& text)
{
    const std::size_t digits = text.find_first_of("0123456789");
    const std::size_t letters = text.find_last_not_of("-", digits - 1) + 1;
    return text.substr(0, letters) + ' ' + text.substr(digits);
}

// Tees are published as width x depth x mass and catalogued as depth x width x mass.
std::string DepthFirst(const std::string& size)
{
    const std::size_t first = size.find('x');
    const std::size_t second = size.find('x', first + 1);
    return size.substr(first + 1, second - first - 1) + 'x' + size.substr(0, first) + size.substr(second);
}

struct Table {
    const char* file;
    const char* family; // empty: the designation holds it
};

constexpr Table TABLES[] = {{"ub.csv", "UB"},
                            {"uc.csv", "UC"},
                            {"ubp.csv", "UBP"},
                            {"pfc.csv", "PFC"},
                            {"angles_equal.csv", "L"},
                            {"angles_unequal.csv", "L"},
                            {"tees_from_ub.csv", "T"},
                            {"tees_from_uc.csv", "T"},
                            {"shs_hf.csv", "SHS"},
                            {"rhs_hf.csv", "RHS"},
                            {"chs_hf.csv", "CHS"},
                            {"shs_cf.csv", "CFSHS"},
                            {"rhs_cf.csv", "CFRHS"},
                            {"chs_cf.csv", "CFCHS"},
                            {"european_ipe_he.csv", ""},
                            {"european_upn_upe.csv", ""}};

} // namespace

std::string PublishedRow::Text(const std::string& column) const
{
    const auto field = fields.find(column);
    return field == fields.end() ? std::string() : field->second;
}

double PublishedRow::Number(const std::string& column) const { return NumberOf(Text(column)); }

std::string PublishedRow::FirstOf(const std::vector<std::string>& columns) const
{
    for (const std::string& column : columns)
        if (fields.count(column) != 0) return column;
    return {};
}

std::string ReferenceFolder() { return KELTRIX_REFERENCE_DIR; }

PublishedTables ReadPublishedTables(const std::string& folder)
{
    PublishedTables tables;
    for (const Table& table : TABLES) {
        std::ifstream file(std::filesystem::path(folder) / table.file);
        std::string line;
        if (!std::getline(file, line))
            throw std::runtime_error("cannot read " + std::string(table.file) + " in " + folder);
        const std::vector<std::string> columns = Fields(line);
        while (std::getline(file, line)) {
            const std::vector<std::string> fields = Fields(line);
            PublishedRow row;
            row.file = table.file;
            for (std::size_t i = 0; i < std::min(columns.size(), fields.size()); ++i)
                row.fields[columns[i]] = fields[i];
            const std::string designation = row.Text("designation");
            std::string size = Designation(designation);
            if (table.family == std::string("T")) size = DepthFirst(size);
            const std::string name =
                *table.family == '\0' ? EuropeanDescription(designation) : table.family + (' ' + size);
            if (!tables.emplace(name, std::move(row)).second)
                throw std::runtime_error(std::string(table.file) + " has " + name + " twice");
        }
    }
    return tables;
}

} // namespace Keltrix::Steel::Test
