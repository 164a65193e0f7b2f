#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

#include "keltrix/design/Findings.h"
#include "keltrix/platform/CString.h"
#include "keltrix/platform/KxUtil.h"

namespace Keltrix::BS5950 {

/// How the text shows the value of a step. InFormula: as the end of the formula, in a unit that Quantity has no name for. The utilisations
/// show their verdict; BelowOne fails at 1, UpToOne above it.
enum class Shown { InFormula, Value, BelowOne, UpToOne };

/// The result of a step with its kind.
struct LineValue {
    Design::Quantity quantity = Design::Quantity::None;
    double value = std::nan("");
    Shown shown = Shown::InFormula;

    static LineValue Force(double N) { return {Design::Quantity::Force, N, Shown::Value}; }
    static LineValue Moment(double Nm) { return {Design::Quantity::Moment, Nm, Shown::Value}; }
    static LineValue Stress(double Pa) { return {Design::Quantity::Stress, Pa, Shown::Value}; }
    static LineValue Number(double value) { return {Design::Quantity::None, value, Shown::Value}; }
    static LineValue Utilisation(double value, bool failsAtOne)
    {
        return {Design::Quantity::None, value, failsAtOne ? Shown::BelowOne : Shown::UpToOne};
    }
};

/// A line of the calculation: a step with what stands around it in the text, or a remark.
struct CalculationLine {
    CString lead;       ///< before the step; all of a remark
    Design::Step step;  ///< without a symbol where the line is a remark
    CString tail;       ///< after the step
    bool cites = false; ///< the text names the step's clause
    Shown shown = Shown::InFormula;
    int indent = 0;

    CalculationLine& Lead(const CString& text) { return lead = text, *this; }
    CalculationLine& Tail(const CString& text) { return tail = text, *this; }
    /// The step's clause, which the text names after the value; Of: that it has named before.
    CalculationLine& Cite(const wchar_t* clause) { return cites = true, step.clause = clause, *this; }
    CalculationLine& Of(const wchar_t* clause) { return step.clause = clause, *this; }
};

/// The lines of one rule at one place.
class CalculationLines {
public:
    CalculationLines() { m_lines.reserve(USUAL_LINES); }

    template <class... Args>
    CalculationLine& Step(const wchar_t* symbol, const LineValue& value, const wchar_t* formula, const Args&... args)
    {
        CalculationLine& line = m_lines.emplace_back();
        line.step.symbol = symbol;
        line.step.quantity = value.quantity;
        line.step.value = value.value;
        line.step.formula.AppendFormat(formula, args...);
        line.shown = value.shown;
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

/// "98.3 cm³", "85.5 cm²", "45.34 cm": four figures without an exponent.
CString VolumeText(double m3);
CString AreaText(double m2);
/// A dimension of the section.
CString DimensionText(double m);

} // namespace Keltrix::BS5950
