#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

#include "keltrix/design/Findings.h"
#include "keltrix/platform/CString.h"
#include "keltrix/platform/KxUtil.h"

namespace Keltrix::BS5950 {

/// Whether a step is a utilisation, whose text shows a verdict: BelowOne fails at 1, UpToOne above it.
enum class Judged { No, BelowOne, UpToOne };

/// The result of a step with its kind.
struct LineValue {
    Design::Quantity quantity = Design::Quantity::None;
    double value = std::nan("");
    Judged judged = Judged::No;

    static LineValue Force(double N) { return {Design::Quantity::Force, N}; }
    static LineValue Moment(double Nm) { return {Design::Quantity::Moment, Nm}; }
    static LineValue Stress(double Pa) { return {Design::Quantity::Stress, Pa}; }
    static LineValue Distance(double m) { return {Design::Quantity::Distance, m}; }
    static LineValue Area(double m2) { return {Design::Quantity::Area, m2}; }
    static LineValue Number(double value) { return {Design::Quantity::None, value}; }
    static LineValue Utilisation(double value, bool failsAtOne)
    {
        return {Design::Quantity::None, value, failsAtOne ? Judged::BelowOne : Judged::UpToOne};
    }
};

/// A line of the calculation: a step with what stands before it in the text, or a remark.
struct CalculationLine {
    CString lead;       ///< before the step; all of a remark
    Design::Step step;  ///< without a symbol where the line is a remark
    bool cites = false; ///< the text names the step's clause
    Judged judged = Judged::No;
    int indent = 0;

    CalculationLine& Lead(const CString& text) { return lead = text, *this; }
    template <class... Args>
    CalculationLine& Formula(const wchar_t* format, const Args&... args)
    {
        return step.Formula(format, args...), *this;
    }
    template <class... Args>
    CalculationLine& Values(const wchar_t* format, const Args&... args)
    {
        return step.Values(format, args...), *this;
    }
    template <class... Args>
    CalculationLine& Note(const wchar_t* format, const Args&... args)
    {
        return step.Note(format, args...), *this;
    }
    /// The step's clause, which the text names at the end of the line; Of: that it has named before.
    CalculationLine& Cite(const wchar_t* clause) { return cites = true, step.clause = clause, *this; }
    CalculationLine& Of(const wchar_t* clause) { return step.clause = clause, *this; }
};

/// The lines of one rule at one place.
class CalculationLines {
public:
    CalculationLines() { m_lines.reserve(USUAL_LINES); }

    CalculationLine& Step(const wchar_t* symbol, const LineValue& value)
    {
        CalculationLine& line = m_lines.emplace_back();
        line.step.symbol = symbol;
        line.step.quantity = value.quantity;
        line.step.value = value.value;
        line.judged = value.judged;
        line.indent = m_indent;
        return line;
    }
    template <class... Args>
    void Remark(const wchar_t* text, const Args&... args)
    {
        CalculationLine& line = m_lines.emplace_back();
        line.lead.AppendFormat(text, args...);
        line.indent = m_indent;
    }
    /// Indents the lines that follow.
    void Indent(int steps) { m_indent += steps; }

    const std::vector<CalculationLine>& Lines() const { return m_lines; }
    /// The steps alone.
    std::vector<Design::Step> Steps() const;

private:
    static constexpr std::size_t USUAL_LINES = 32;

    std::vector<CalculationLine> m_lines;
    int m_indent = 0;
};

/// A dimension of the section: "45.34 cm", four figures without an exponent.
CString DimensionText(double m);

} // namespace Keltrix::BS5950
