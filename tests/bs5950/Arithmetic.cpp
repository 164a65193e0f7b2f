#include "Arithmetic.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string_view>

namespace BS5950Test {

namespace {

struct Unit {
    std::string_view name;
    double factor;
    int figures; ///< printed at most
};

// The first name that fits counts.
constexpr std::array<Unit, 10> UNITS{{{"N/mm²", 1e6, 5},
                                      {"kN/m", 1e3, 5},
                                      {"kNm", 1e3, 5},
                                      {"kN", 1e3, 5},
                                      {"cm⁴", 1e-8, 4},
                                      {"cm³", 1e-6, 4},
                                      {"cm²", 1e-4, 4},
                                      {"cm", 1e-2, 4},
                                      {"m", 1.0, 6},
                                      {"°", 1.0, 4}}};
constexpr Unit NO_UNIT{"", 1.0, 4};

// Half a unit of the last figure of a number, whose zeros at the end are not printed.
double HalfUnit(double value, int figures)
{
    return value == 0.0 ? 0.0 : 0.5 * std::pow(10.0, std::floor(std::log10(std::abs(value))) + 1.0 - figures);
}

Interval Make(double a, double b) { return {std::min(a, b), std::max(a, b)}; }

Interval Times(Interval a, Interval b)
{
    const auto p = {a.low * b.low, a.low * b.high, a.high * b.low, a.high * b.high};
    return {std::min(p), std::max(p)};
}

Interval Over(Interval a, Interval b)
{
    if (b.low <= 0.0 && b.high >= 0.0)
        return {-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    return Times(a, Make(1.0 / b.low, 1.0 / b.high));
}

Interval Power(Interval a, Interval n)
{
    if (a.low < 0.0) {
        const double m = std::max(-a.low, a.high);
        return {a.high < 0.0 ? std::pow(-a.high, n.low) : 0.0, std::pow(m, n.low)};
    }
    const auto p = {std::pow(a.low, n.low), std::pow(a.low, n.high), std::pow(a.high, n.low), std::pow(a.high, n.high)};
    return {std::min(p), std::max(p)};
}

Interval Magnitude(Interval a)
{
    if (a.low >= 0.0) return a;
    if (a.high <= 0.0) return {-a.high, -a.low};
    return {0.0, std::max(-a.low, a.high)};
}

// Recursive descent over + - * / ^ ² ( ) | | min( , ) max( , ).
class Parser {
public:
    explicit Parser(std::string_view text) : m_text(text) {}

    /// The value of the whole text; nothing where it is no expression of numbers.
    std::optional<Interval> Whole()
    {
        const Interval value = Sum();
        Blanks();
        if (m_failed || !m_text.empty()) return std::nullopt;
        return value;
    }
    bool HasOperator() const { return m_operators > 0; }

private:
    void Blanks()
    {
        while (!m_text.empty() && m_text.front() == ' ')
            m_text.remove_prefix(1);
    }
    bool Take(std::string_view token)
    {
        Blanks();
        if (m_text.substr(0, token.size()) != token) return false;
        m_text.remove_prefix(token.size());
        return true;
    }
    bool TakeOperator(std::string_view token)
    {
        const bool taken = Take(token);
        m_operators += taken;
        return taken;
    }
    Interval Sum()
    {
        Interval value = Product();
        while (!m_failed) {
            if (TakeOperator("+")) {
                const Interval b = Product();
                value = {value.low + b.low, value.high + b.high};
            } else if (TakeOperator("-")) {
                const Interval b = Product();
                value = {value.low - b.high, value.high - b.low};
            } else
                break;
        }
        return value;
    }
    Interval Product()
    {
        Interval value = Factor();
        while (!m_failed) {
            if (TakeOperator("*"))
                value = Times(value, Factor());
            else if (TakeOperator("/"))
                value = Over(value, Factor());
            else
                break;
        }
        return value;
    }
    Interval Factor()
    {
        Interval value = Atom();
        if (TakeOperator("²")) value = Power(value, {2.0, 2.0});
        if (TakeOperator("^")) value = Power(value, Atom());
        return value;
    }
    Interval Atom()
    {
        if (TakeOperator("min(")) return Choice(true);
        if (TakeOperator("max(")) return Choice(false);
        if (Take("|")) {
            const Interval value = Sum();
            m_failed = m_failed || !Take("|");
            ++m_operators;
            return Magnitude(value);
        }
        if (Take("(")) {
            const Interval value = Sum();
            m_failed = m_failed || !Take(")");
            return value;
        }
        return Number();
    }
    Interval Choice(bool least)
    {
        Interval value = Sum();
        while (!m_failed && Take(",")) {
            const Interval b = Sum();
            value = least ? Interval{std::min(value.low, b.low), std::min(value.high, b.high)}
                          : Interval{std::max(value.low, b.low), std::max(value.high, b.high)};
        }
        m_failed = m_failed || !Take(")");
        return value;
    }
    Interval Number()
    {
        Blanks();
        std::size_t n = 0;
        if (n < m_text.size() && m_text[n] == '-') ++n;
        const std::size_t digits = n;
        while (n < m_text.size() && (std::isdigit(static_cast<unsigned char>(m_text[n])) || m_text[n] == '.'))
            ++n;
        if (n == digits || m_text[digits] == '.') {
            m_failed = true;
            return {};
        }
        const std::size_t mantissa = n;
        if (n + 1 < m_text.size() && (m_text[n] == 'e' || m_text[n] == 'E')) {
            std::size_t k = n + 1;
            if (m_text[k] == '+' || m_text[k] == '-') ++k;
            const std::size_t first = k;
            while (k < m_text.size() && std::isdigit(static_cast<unsigned char>(m_text[k])))
                ++k;
            if (k > first) n = k;
        }
        const std::string number(m_text.substr(0, n));
        const double value = std::strtod(number.c_str(), nullptr);
        const std::size_t point = number.find('.');
        m_text.remove_prefix(n);
        const Unit& unit = TakeUnit();
        double half = HalfUnit(value, unit.figures);
        if (&unit == &NO_UNIT) {
            // Utilisations have three decimals, other ratios four figures.
            if (point != std::string::npos && mantissa == n && n - point == 4) half = 0.0005;
        }
        return {(value - half) * unit.factor, (value + half) * unit.factor};
    }
    const Unit& TakeUnit()
    {
        std::string_view rest = m_text;
        while (!rest.empty() && rest.front() == ' ')
            rest.remove_prefix(1);
        for (const Unit& unit : UNITS) {
            if (rest.substr(0, unit.name.size()) != unit.name) continue;
            const std::string_view after = rest.substr(unit.name.size());
            if (!after.empty() && std::isalpha(static_cast<unsigned char>(after.front()))) continue;
            m_text = after;
            return unit;
        }
        return NO_UNIT;
    }

    std::string_view m_text;
    int m_operators = 0;
    bool m_failed = false;
};

std::string WithoutMarkup(const std::string& report)
{
    std::string text;
    bool inside = false;
    for (std::size_t i = 0; i < report.size(); ++i) {
        if (report[i] == '<' && i + 1 < report.size() &&
            (std::isalpha(static_cast<unsigned char>(report[i + 1])) || report[i + 1] == '/')) {
            // What is set in italics is a remark: a clause or a table.
            if (report.compare(i, 3, "<i>") == 0) {
                const std::size_t end = report.find("</i>", i);
                if (end != std::string::npos && report.find('\n', i) > end) {
                    i = end + 3;
                    continue;
                }
            }
            inside = true;
        } else if (report[i] == '>' && inside)
            inside = false;
        else if (!inside)
            text += report[i];
    }
    return text;
}

// Cuts at ',' ';' and ": " outside brackets.
std::vector<std::string> Statements(const std::string& line)
{
    std::vector<std::string> parts(1);
    int depth = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        depth += (c == '(') - (c == ')');
        const bool colon = c == ':' && i + 1 < line.size() && line[i + 1] == ' ';
        if (depth == 0 && (c == ',' || c == ';' || colon))
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

std::string Trimmed(std::string text)
{
    for (const std::string_view tail : {" OK", " FAIL"})
        if (text.size() > tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0)
            text.resize(text.size() - tail.size());
    const std::size_t first = text.find_first_not_of(" \t");
    const std::size_t last = text.find_last_not_of(" \t");
    return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

} // namespace

std::vector<Equation> EquationsOf(const std::string& report)
{
    std::vector<Equation> equations;
    const std::string text = WithoutMarkup(report);
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::string line = text.substr(start, end - start);
        start = end + 1;
        const std::size_t first = line.find_first_not_of('\t');
        if (first == std::string::npos || line.find('\t', first) != std::string::npos) continue; // a row of a table
        for (const std::string& statement : Statements(line)) {
            if (statement.find('=') == std::string::npos || statement.find(">=") != std::string::npos) continue;
            Equation e;
            e.text = Trimmed(statement);
            for (std::size_t from = 0; from <= e.text.size();) {
                const std::size_t to = std::min(e.text.find('=', from), e.text.size());
                e.sides.push_back({Trimmed(e.text.substr(from, to - from)), false, false, {}});
                from = to + 1;
            }
            for (Side& side : e.sides) {
                Parser parser(side.text);
                const std::optional<Interval> value = parser.Whole();
                if (!value) continue;
                side.value = *value;
                side.isNumeric = true;
                side.hasOperator = parser.HasOperator();
            }
            equations.push_back(e);
        }
    }
    return equations;
}

std::string FaultOf(const Equation& e)
{
    const auto isFormula = [](const Side& side) {
        return !side.isNumeric && side.text.find_first_of("+-*/^( ") != std::string::npos;
    };
    const Side& last = e.sides.back();
    const bool isResult = last.isNumeric && !last.hasOperator;
    // A formula in the middle of an equation with a number at its end must show the numbers that went into it.
    bool formula = false;
    bool worked = false;
    for (std::size_t i = 1; i < e.sides.size(); ++i) {
        formula = formula || isFormula(e.sides[i]);
        worked = worked || (e.sides[i].isNumeric && e.sides[i].hasOperator);
    }
    if (formula && isResult && !worked) return "a formula without its numbers";
    if (!isResult) return {};
    for (const Side& side : e.sides) {
        if (!side.isNumeric) continue;
        const double slack = 1e-9 * (std::abs(last.value.low) + std::abs(last.value.high));
        if (side.value.low <= last.value.high + slack && side.value.high >= last.value.low - slack) continue;
        return side.text + " gives " + std::to_string(side.value.low) + " to " + std::to_string(side.value.high) +
               ", not " + last.text;
    }
    return {};
}

} // namespace BS5950Test
