#pragma once

#include <array>
#include <string>

#include "keltrix/steel/Restraint.h"
#include "memberfile/DefectList.h"
#include "text/Fields.h"

namespace Keltrix::Host {

/// What the fields of a line of numbers say.
struct FieldValues {
    int index = 0;
    std::array<double, 12> numbers{}; ///< in the order of the line
    Data::CRestraint restraint;       ///< with its load height
};

/// Checks the fields of one line against their rules, and reads them as the library's reader does. What that takes as zero, Free or
/// nothing in silence is an error.
class FieldCheck {
public:
    FieldCheck(DefectList& defects, const MemberLine& line) :
        m_defects(defects), m_line(line), m_rule(RuleOf(line.kind)),
        m_list(SplitFields(line.rest, m_rule.fields.size() + 1))
    {}

    std::size_t Count() const { return m_list.count; }
    /// Empty where there is none.
    std::wstring_view Field(std::size_t i) const
    {
        return i < m_list.fields.size() ? m_list.fields[i] : std::wstring_view();
    }

    void Error(const char* code, std::string field, std::string got, std::string expected, std::string advice = {})
    {
        m_defects.Add(Severity::Error, code, m_line, std::move(field), std::move(got), std::move(expected),
                      std::move(advice));
    }
    void Warn(const char* code, std::string field, std::string got, std::string expected, std::string advice)
    {
        m_defects.Add(Severity::Warning, code, m_line, std::move(field), std::move(got), std::move(expected),
                      std::move(advice));
    }

    /// Whether the line has only empty fields after the first `wanted`, as spreadsheets write them to make all lines as long as the
    /// longest. The first such line of a member is a warning.
    bool IsPadding(std::size_t wanted);
    void WarnOfExtraFields(std::size_t wanted);
    /// In a line of numbers a field too many is as a rule the second half of a number.
    void RefuseExtraFields(std::size_t wanted);

    /// The only field of its line, a number.
    double SingleNumber();
    /// A number, which is noted where it is none that people mean.
    double Number(std::size_t i);
    /// All fields of a line of a point or a sub-span.
    FieldValues All();

private:
    void RefuseShortLine();
    bool HasDecimalCommaBeforeRestraint();
    bool RefuseDecimalComma(std::size_t i);
    bool CheckNumber(std::size_t i, double value);
    void NoteUnusual(const FieldRule& field, double value);
    int WholeNumber(std::size_t i);
    void Restraint(std::size_t i, Data::CRestraint& restraint);
    void LoadHeight(std::size_t i, Data::CRestraint& restraint);

    DefectList& m_defects;
    const MemberLine& m_line;
    const LineRule& m_rule;
    const FieldList m_list;
};

} // namespace Keltrix::Host
