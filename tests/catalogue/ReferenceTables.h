#pragma once

#include <map>
#include <string>
#include <vector>

/// Published tables, where they are at hand: CSV files of dimensions and properties in a folder that is not part of the
/// project. Each table's rows are found by the catalogue's section descriptions.
namespace Keltrix::Steel::Test {

/// A published row: its fields by column name, as printed.
struct PublishedRow {
    std::string file;
    std::map<std::string, std::string> fields;

    /// The field as printed; empty where the table has no such column or leaves it open.
    std::string Text(const std::string& column) const;
    /// The field as a number, 0 where it is empty.
    double Number(const std::string& column) const;
    /// The first of several column names that the table has.
    std::string FirstOf(const std::vector<std::string>& columns) const;
};

/// Published rows by section description ("UB 457x191x67").
using PublishedTables = std::map<std::string, PublishedRow>;

/// The folder of published tables this build was given; empty without one.
std::string ReferenceFolder();

/// Reads the tables of a folder. Throws std::runtime_error that names the file that cannot be read.
PublishedTables ReadPublishedTables(const std::string& folder);

} // namespace Keltrix::Steel::Test
