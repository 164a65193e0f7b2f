#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "memberfile/MemberCheck.h"

namespace Keltrix::Host {

/// Without blanks and tabs at its ends.
std::string_view Trimmed(std::string_view text);
/// As messages quote what stands in a table.
std::string Quoted(std::string_view text);
/// A place along a member, "4.5 m", in all its digits.
std::string PlaceText(double metres);

/// Something that is wrong with a table, or has to be known of it.
struct ImportFinding {
    std::string file;
    Defect defect; ///< `keyword` is the caption of the column

    /// "forces.csv:14: My: got "x", expected a number in kNm".
    std::string Message() const { return defect.Text(file); }
};

/// What several tables add their findings to. A thousand are kept and the others counted.
class ImportFindings {
public:
    void Error(const std::string& file, LineNumber line, std::string column, std::string got, std::string expected,
               std::string advice = {});
    void Say(Severity severity, const std::string& file, LineNumber line, std::string text);
    bool HasErrors() const { return m_errors > 0; }
    std::vector<ImportFinding> Take();

private:
    void Add(ImportFinding finding);

    std::vector<ImportFinding> m_list;
    std::size_t m_errors = 0;
    std::size_t m_left = 0;
};

enum class ImportUnitKind { Length, Force, Moment };

/// A unit of a table; `factor` makes SI of its numbers.
struct ImportUnit {
    const char* word; ///< "kNm"
    ImportUnitKind kind;
    double factor;
};
/// Blanks and what stands between the parts of a unit do not matter: "kN.m", "kN·m", "kN m". Null where the text is none.
const ImportUnit* ImportUnitNamed(std::string_view text);
/// "m, cm or mm".
std::string ImportUnitWords(ImportUnitKind kind);

/// A column that a table may have.
struct ImportField {
    const char* name;                   ///< "My", as messages call it
    std::vector<const char*> captions;  ///< what it is called in headers; letter case, blanks, _ and - do not matter
    std::optional<ImportUnitKind> unit; ///< numbers of that kind
    bool isRequired = true;
};

/// What the user says of a table beyond its header.
struct ImportNames {
    std::map<std::string, std::string> columns; ///< caption by the name of a field; "none": there is no such column
    std::map<ImportUnitKind, const ImportUnit*> units; ///< of columns whose captions have none
};

/// A number of a table in SI, with half a unit of its last digit.
struct ImportNumber {
    double value = 0.0;
    double half = 0.0;
};

/// A table with one line of captions and lines of values, separated by commas or semicolons, with double quotes around a value where its
/// text holds one of these. Empty lines do not count, nor lines above the captions that begin with #. Units stand in brackets behind captions, or in the
/// line below them.
class ImportTable {
public:
    /// Everything that is wrong with its form goes to the findings. Throws BadInput for bytes that are no text.
    ImportTable(std::string name, std::string_view bytes, ImportFindings& findings);

    struct Row {
        LineNumber line;
        std::vector<std::string> cells; ///< as many as there are columns
    };

    const std::string& Name() const { return m_name; }
    LineNumber HeaderLine() const { return m_headerLine; }
    const std::vector<Row>& Rows() const { return m_rows; }

    /// Finds the columns of the fields and their units. What is missing, ambiguous or without a unit, and different units of one
    /// kind are errors. False where a column that is required is not there.
    bool Find(const std::vector<ImportField>& fields, const ImportNames& names);
    bool Has(std::size_t field) const { return m_places[field] >= 0; }
    /// The captions that belong to no field.
    std::vector<std::string> Others() const;
    /// The cell of a field; empty without its column.
    std::string Text(const Row& row, std::size_t field) const;
    /// The number of a field with its unit; nothing, with an error, where there is none.
    std::optional<ImportNumber> Number(const Row& row, std::size_t field);
    /// The caption of a field's column; its name without one.
    std::string CaptionOf(std::size_t field) const;

private:
    struct Column {
        std::string caption; ///< as it stands there
        std::string name;    ///< without its unit
        std::string unit;    ///< empty: none is stated
    };

    void ReadHeader(std::string_view line);
    bool ReadUnits(const std::vector<std::string>& cells, LineNumber number);
    void ReadRow(std::string_view line, LineNumber number);
    std::optional<std::vector<std::string>> Split(std::string_view line, LineNumber number);
    void FindColumn(std::size_t field, const ImportNames& names);
    void FindUnit(std::size_t field, const ImportNames& names);
    void RequireOneUnit();

    std::string m_name;
    ImportFindings& m_findings;
    char m_separator = ',';
    LineNumber m_headerLine = 0;
    std::vector<Column> m_columns;
    std::vector<Row> m_rows;
    std::vector<ImportField> m_fields;
    std::vector<int> m_places;              ///< column of each field, -1 without one
    std::vector<const ImportUnit*> m_units; ///< of each field
};

} // namespace Keltrix::Host
