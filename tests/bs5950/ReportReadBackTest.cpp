// The verbose report, read back as numbers: every printed equation holds within its printed digits, every named quantity is that of
// the findings, and every row of the ledger's table is its entry.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <map>
#include <optional>
#include <random>
#include <sstream>

#include "Members.h"

using namespace BS5950Test;

namespace {

// A printed number stands for all that round to it.
struct Range {
    double low = 0.0;
    double high = 0.0;
    bool Overlaps(const Range& other) const { return low <= other.high && other.low <= high; }
    bool Holds(double value) const { return low <= value && value <= high; }
};

Range Spanned(std::initializer_list<double> corners) { return {std::min(corners), std::max(corners)}; }
Range operator+(const Range& a, const Range& b) { return {a.low + b.low, a.high + b.high}; }
Range operator-(const Range& a, const Range& b) { return {a.low - b.high, a.high - b.low}; }
Range operator*(const Range& a, const Range& b)
{
    return Spanned({a.low * b.low, a.low * b.high, a.high * b.low, a.high * b.high});
}
Range operator/(const Range& a, const Range& b)
{
    return Spanned({a.low / b.low, a.low / b.high, a.high / b.low, a.high / b.high});
}

// Units of the reports in SI; the longest that fits counts.
const std::pair<const char*, double> UNITS[] = {{"N/mm²", 1e6}, {"kNm", 1e3},  {"kN", 1e3},  {"cm²", 1e-4},
                                                {"cm³", 1e-6},  {"cm⁴", 1e-8}, {"mm", 1e-3}, {"cm", 1e-2},
                                                {"m", 1.0},     {"N", 1.0}};

// Numbers with units, + - * / ^ and parentheses. Stops at what is none of these.
class Arithmetic {
public:
    explicit Arithmetic(std::string_view text) : m_text(text) {}

    // The value of all of the text; nothing where it is no arithmetic.
    std::optional<Range> All()
    {
        const std::optional<Range> value = Sum();
        Skip();
        return m_text.empty() ? value : std::nullopt;
    }
    // The value at the front; what follows it does not matter.
    std::optional<Range> Front() { return Sum(); }

private:
    void Skip() { m_text.remove_prefix(std::min(m_text.find_first_not_of(' '), m_text.size())); }
    bool Take(char c)
    {
        Skip();
        if (!m_text.starts_with(c)) return false;
        m_text.remove_prefix(1);
        return true;
    }

    std::optional<Range> Sum()
    {
        std::optional<Range> value = Product();
        while (value) {
            const bool plus = Take('+');
            if (!plus && !Take('-')) break;
            const std::optional<Range> next = Product();
            if (!next) return std::nullopt;
            value = plus ? *value + *next : *value - *next;
        }
        return value;
    }

    std::optional<Range> Product()
    {
        std::optional<Range> value = Power();
        while (value) {
            const bool times = Take('*');
            if (!times && !Take('/')) break;
            const std::optional<Range> next = Power();
            if (!next) return std::nullopt;
            value = times ? *value * *next : *value / *next;
        }
        return value;
    }

    std::optional<Range> Power()
    {
        const std::optional<Range> base = Factor();
        if (!base || !Take('^')) return base;
        const std::optional<Range> exponent = Factor();
        if (!exponent) return std::nullopt;
        const double e = 0.5 * (exponent->low + exponent->high);
        return Spanned({std::pow(base->low, e), std::pow(base->high, e)});
    }

    std::optional<Range> Factor()
    {
        if (Take('(')) {
            const std::optional<Range> value = Sum();
            return Take(')') ? value : std::nullopt;
        }
        return Number();
    }

    std::optional<Range> Number()
    {
        Skip();
        const std::string rest(m_text.substr(0, 40));
        char* end = nullptr;
        const double value = std::strtod(rest.c_str(), &end);
        const std::size_t length = static_cast<std::size_t>(end - rest.c_str());
        if (length == 0 || std::isalpha(static_cast<unsigned char>(rest.front()))) return std::nullopt;
        const std::string digits = rest.substr(0, length);
        m_text.remove_prefix(length);
        std::string_view unit;
        double factor = 1.0;
        for (const auto& [name, inSI] : UNITS) {
            if (!m_text.starts_with(' ') || !m_text.substr(1).starts_with(name)) continue;
            unit = name;
            factor = inSI;
            m_text.remove_prefix(1 + unit.size());
            break;
        }
        const double half = HalfDigit(digits, value, unit);
        return Range{(value - half) * factor, (value + half) * factor};
    }

    // Half of the last place of four figures or of as many as are printed. Radii in cm have three figures, utilisations three
    // decimals; zeros at the end of other numbers are not printed.
    static double HalfDigit(const std::string& digits, double value, std::string_view unit)
    {
        if (value == 0.0) return 0.5e-3;
        const auto place = [&](int figures) {
            return 0.5 * std::pow(10.0, std::floor(std::log10(std::abs(value))) - figures + 1);
        };
        const std::size_t exponent = digits.find('E');
        const std::string mantissa = digits.substr(0, exponent);
        const std::size_t first = std::min(mantissa.find_first_of("123456789"), mantissa.size());
        const int figures = static_cast<int>(std::count_if(mantissa.begin() + static_cast<std::ptrdiff_t>(first),
                                                           mantissa.end(), [](char c) { return c != '.'; }));
        const std::size_t point = mantissa.find('.');
        const bool hasThreeDecimals = point != std::string::npos && mantissa.size() - point == 4;
        const double decimals = hasThreeDecimals && std::abs(value) < 10.0 ? 0.5e-3 : 0.0;
        return std::max(place(unit == "cm" || figures == 3 ? 3 : std::max(figures, 4)), decimals);
    }

    std::string_view m_text;
};

std::string Replaced(std::string text, const std::string& what, const std::string& by)
{
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

// Lines without the tags of styles; italics, which hold clauses, end an equation.
std::vector<std::string> LinesOf(const std::string& report)
{
    std::string text;
    for (std::size_t i = 0; i < report.size(); ++i) {
        const std::size_t close = report[i] == '<' ? report.find('>', i) : std::string::npos;
        const std::string tag = close == std::string::npos ? "" : report.substr(i + 1, close - i - 1);
        if (tag == "i") text += " ; ";
        if (tag == "b" || tag == "/b" || tag == "red" || tag == "/red" || tag == "i" || tag == "/i")
            i = close;
        else
            text += report[i];
    }
    std::vector<std::string> lines;
    std::istringstream in(Replaced(Replaced(std::move(text), " OK", " ;"), " FAIL", " ;"));
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

// The parts of a line between its equal signs; a comma, a colon or a semicolon ends an equation.
std::vector<std::vector<std::string>> EquationsOf(const std::string& line)
{
    std::vector<std::vector<std::string>> equations(1, std::vector<std::string>(1));
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool isEqual = line.compare(i, 3, " = ") == 0;
        const bool isEnd = line.compare(i, 2, ", ") == 0 || line.compare(i, 2, ": ") == 0 || line[i] == ';';
        if (isEnd) {
            equations.emplace_back(1);
        } else if (isEqual) {
            equations.back().emplace_back();
            i += 2;
        } else
            equations.back().back() += line[i];
    }
    return equations;
}

// Requires neighbouring parts that are both arithmetic to be equal, and counts them.
int CountEquations(const std::string& report)
{
    int count = 0;
    for (const std::string& line : LinesOf(report))
        for (const std::vector<std::string>& parts : EquationsOf(line))
            for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
                const std::optional<Range> left = Arithmetic(parts[i]).All();
                const std::optional<Range> right = Arithmetic(parts[i + 1]).All();
                if (!left || !right) continue;
                EXPECT_TRUE(left->Overlaps(*right)) << line;
                ++count;
            }
    return count;
}

// The value at the end of the first equation that begins with a symbol and ends in a number with the unit.
std::optional<Range> ValueOf(const std::string& report, const std::string& symbol, const std::string& unit)
{
    for (const std::string& line : LinesOf(report))
        for (const std::vector<std::string>& parts : EquationsOf(line)) {
            const std::string name =
                parts.front().substr(std::min(parts.front().find_first_not_of(" \t"), parts.front().size()));
            const bool isNamed = name == symbol || name.ends_with(' ' + symbol);
            if (parts.size() < 2 || !isNamed || (!unit.empty() && parts.back().find(' ' + unit) == std::string::npos))
                continue;
            if (auto value = Arithmetic(parts.back()).Front()) return value;
        }
    return std::nullopt;
}

void ExpectPrinted(const std::string& report, const std::string& symbol, const std::string& unit, double value)
{
    const std::optional<Range> printed = ValueOf(report, symbol, unit);
    ASSERT_TRUE(printed.has_value()) << symbol;
    EXPECT_TRUE(printed->Holds(value)) << symbol << " is " << value << ", printed " << printed->low << " to "
                                       << printed->high;
}

Case BeamColumn(const wchar_t* section, const wchar_t* grade, int option)
{
    Case given;
    given.section = section;
    given.grade = grade;
    given.option = option;
    given.points = {{0.0, L"Pinned"}, {3.0, L"F12L"}, {5.0, L"Pinned"}};
    EndMoments(given, 5.0, -20e3, 35e3, -120e3, 4e3, -6e3);
    return given;
}

struct Row {
    std::vector<std::string> cells;
};

// The table of the ledger: the last one of the report whose captions begin with "Clause".
std::vector<Row> LedgerRows(const std::string& report)
{
    std::vector<Row> rows;
    bool isInside = false;
    for (const std::string& line : LinesOf(report)) {
        if (line.find("Clause\tRule") != std::string::npos) {
            rows.clear();
            isInside = true;
        } else if (isInside && line.find("</") == 0)
            isInside = false;
        else if (isInside) {
            Row row;
            std::istringstream in(line);
            for (std::string cell; std::getline(in, cell, '\t');)
                row.cells.push_back(cell);
            rows.push_back(row);
        }
    }
    return rows;
}

std::string Narrow(const wchar_t* text) { return *CString(text).ToUtf8(); }

void ExpectRow(const Row& row, const LedgerEntry& e)
{
    ASSERT_GE(row.cells.size(), 3u);
    const auto cell = [&](std::size_t i) { return i < row.cells.size() ? row.cells[i] : std::string(); };
    EXPECT_EQ(cell(0), Narrow(e.clause));
    EXPECT_EQ(cell(1).find(Narrow(RuleName(e.rule))), 0u);
    EXPECT_EQ(cell(1).find("(governs)") != std::string::npos, e.governing);
    const std::string reason = Narrow(e.reason);
    EXPECT_EQ(cell(2), Narrow(StatusName(e.status)) + (reason.empty() ? "" : ": " + reason));
    const std::string place = e.position < 0 ? "" : "position " + std::to_string(e.position + 1) + " at ";
    EXPECT_EQ(cell(3).find(place), 0u) << cell(3);
    const bool isEvaluated = e.status == CheckStatus::Passed || e.status == CheckStatus::Failed;
    const std::optional<Range> utilisation = Arithmetic(cell(4)).All();
    if (!isEvaluated || e.utilisation == 0.0) {
        EXPECT_EQ(cell(4), "");
    } else {
        EXPECT_TRUE(utilisation && utilisation->Holds(e.utilisation)) << cell(4) << " for " << e.utilisation;
    }
    if (e.quantity == Quantity::None || !std::isfinite(e.resistance)) return;
    EXPECT_EQ(cell(5).find(Narrow(e.symbol) + " = "), 0u) << cell(5);
    const std::optional<Range> printed = ValueOf(cell(5), Narrow(e.symbol), "");
    EXPECT_TRUE(printed && printed->Holds(e.resistance)) << cell(5) << " for " << e.resistance;
}

} // namespace

// The reader itself.
TEST(Arithmetic, ReadsNumbersUnitsAndOperators)
{
    const auto holds = [](const char* text, double value) {
        const std::optional<Range> range = Arithmetic(text).All();
        return range && range->Holds(value) && range->high - range->low < 0.01 * std::abs(value) + 2e-3;
    };
    EXPECT_TRUE(holds("0.6 * 275 N/mm² * 38.54 cm²", 635.9e3));
    EXPECT_TRUE(holds("1200 kN/3002.8 kN", 0.39963));
    EXPECT_TRUE(holds("0.8497 * 0.828 * 68.73 * 1^0.5", 48.355));
    EXPECT_TRUE(holds("(1 + 2) * 3 - 4", 5.0));
    EXPECT_FALSE(holds("1200 kN/3002.8 kN", 0.41));
    EXPECT_FALSE(Arithmetic("0.6 py Av").All());
    EXPECT_FALSE(Arithmetic("").All());
    EXPECT_FALSE(Arithmetic("nan").All());
}

TEST(ReportReadBack, EveryPrintedEquationHolds)
{
    const std::tuple<const wchar_t*, const wchar_t*, int> members[] = {
        {L"UB 457x191x67", L"S275", SEC_ROLLED},   {L"UC 254x254x89", L"S355", SEC_ROLLED},
        {L"RHS 200x100x6.3", L"S355", SEC_ROLLED}, {L"CHS 168.3x5", L"S275", SEC_ROLLED},
        {L"PFC 200x90x30", L"S275", SEC_ROLLED},   {L"T 229x191x34", L"S275", SEC_ROLLED},
        {L"L 150x150x15", L"S275", SEC_ROLLED},    {L"I 500x200x10x16", L"S355", SEC_WELDED},
        {L"BOX 300x200x8x10", L"S275", SEC_WELDED}};
    for (const auto& [section, grade, type] : members)
        for (const int option : {CSteelMemberBS5950::SIMPLIFIED, CSteelMemberBS5950::MORE_EXACT}) {
            Case given = BeamColumn(section, grade, option);
            given.type = type;
            Checked c(given);
            c.Check();
            EXPECT_GT(CountEquations(c.Verbose()), 30) << Narrow(section);
        }
}

// A thousand members at random: the equations hold whatever the actions.
TEST(ReportReadBack, EveryPrintedEquationHoldsForRandomMembers)
{
    constexpr unsigned SEED = 5950;
    SCOPED_TRACE(SEED);
    std::mt19937 random(SEED);
    std::uniform_real_distribution<double> sign(-1.0, 1.0);
    const wchar_t* const sections[] = {L"UB 457x191x67", L"UC 203x203x46", L"RHS 200x100x6.3", L"CHS 168.3x5",
                                       L"PFC 200x90x30"};
    int equations = 0;
    for (int member = 0; member < 300; ++member) {
        Case given = BeamColumn(sections[member % 5], member % 2 ? L"S275" : L"S355", 1 + member % 2);
        const SectionProperties s = PropertiesOf(given.section, SEC_ROLLED);
        EndMoments(given, 5.0, s.Sx * 150e6 * sign(random), s.Sx * 150e6 * sign(random), s.A * 60e6 * sign(random),
                   s.Sy * 60e6 * sign(random), s.Sy * 60e6 * sign(random));
        Checked c(given);
        c.Check();
        equations += CountEquations(c.Verbose());
        if (testing::Test::HasFailure()) FAIL() << "member " << member;
    }
    EXPECT_GT(equations, 300 * 25);
}

// What the report calls by a symbol is the quantity of that name.
TEST(ReportReadBack, NamedQuantitiesAreThoseOfTheSection)
{
    for (const wchar_t* section : {L"UB 457x191x67", L"L 150x150x15"}) {
        Checked c(BeamColumn(section, L"S275", CSteelMemberBS5950::SIMPLIFIED));
        c.Check();
        const std::string report = c.Verbose();
        const SectionProperties& s = c.member.Properties();
        ExpectPrinted(report, "A", "cm²", s.A);
        ExpectPrinted(report, "Ix", "cm⁴", s.Ix);
        ExpectPrinted(report, "Iy", "cm⁴", s.Iy);
        ExpectPrinted(report, "Zx", "cm³", s.Zx);
        ExpectPrinted(report, "Zy", "cm³", s.Zy);
        ExpectPrinted(report, "Sx", "cm³", s.Sx);
        ExpectPrinted(report, "Sy", "cm³", s.Sy);
        ExpectPrinted(report, "rx", "cm", s.rx);
        ExpectPrinted(report, "ry", "cm", s.ry);
        ExpectPrinted(report, "J", "cm⁴", s.J);
        ExpectPrinted(report, "py", "N/mm²", 275e6);
        if (s.shape != Shape::Angle) continue;
        ExpectPrinted(report, "Zu", "cm³", s.Zu);
        ExpectPrinted(report, "Zv", "cm³", s.Zv);
        ExpectPrinted(report, "rv", "cm", s.rv);
        ExpectPrinted(report, "tan α", "", 1.0);
    }
}

TEST(ReportReadBack, NamedQuantitiesAreThoseOfTheFindings)
{
    Checked c(BeamColumn(L"UB 457x191x67", L"S275", CSteelMemberBS5950::SIMPLIFIED));
    c.Check();
    const std::string report = c.Verbose();
    const PositionResult& p = c.member.Positions().front();
    ExpectPrinted(report, "Pvy", "kN", p.Pvy);
    ExpectPrinted(report, "Ag py", "kN", p.Pz);
    ExpectPrinted(report, "F", "kN", -120e3);
    ExpectPrinted(report, "Mx", "kNm", -20e3);
    ExpectPrinted(report, "b/T", "", p.cls.elements[0].ratio);
    ExpectPrinted(report, "d/t", "", p.cls.elements[1].ratio);
    const SpanResult major = c.Spans(BucklingMode::Major).front();
    ExpectPrinted(report, "λ", "", major.slenderness);
    ExpectPrinted(report, "Pcx", "kN", major.resistance);
    ExpectPrinted(report, "pc", "N/mm²", major.strength);
    ExpectPrinted(report, "LE", "m", major.LE);
    const SpanResult minor = c.Spans(BucklingMode::Minor).front();
    ExpectPrinted(report, "Pcy", "kN", minor.resistance);
    const SpanResult lateral = c.Spans(BucklingMode::LateralTorsional).front();
    ExpectPrinted(report, "Mb", "kNm", lateral.resistance);
    ExpectPrinted(report, "pb", "N/mm²", lateral.strength);
    ExpectPrinted(report, "λLT", "", lateral.lt.lambdaLT);
}

// A thin web: the report shows the slenderness of the web that the check is about, d/t = (800 - 30)/8 = 96.25.
TEST(ReportReadBack, TheSlendernessOfAThinWebIsShown)
{
    Case given;
    given.section = L"I 800x300x8x15";
    given.type = SEC_WELDED;
    Uniform(given, 6.0, 60e3);
    Checked c(given);
    c.Check();
    ASSERT_EQ(c.Entry(Rule::ShearBuckling).status, CheckStatus::Passed);
    int shown = 0;
    for (const std::string& line : LinesOf(c.Verbose())) {
        if (line.find("4.4.5") == std::string::npos || line.find("d/t = ") == std::string::npos) continue;
        const std::optional<Range> ratio = ValueOf(line, "d/t", "");
        EXPECT_TRUE(ratio && ratio->Holds(96.25)) << line;
        ++shown;
    }
    EXPECT_GT(shown, 0);
}

// Torsion is reported at the positions where it acts, and only there.
TEST(ReportReadBack, TorsionIsShownWhereItActs)
{
    const auto mentions = [](double torsion) {
        Case given;
        given.points = {{0.0, L"Pinned"}, {3.0, L"Free"}, {6.0, L"Pinned"}};
        given.moment = [torsion](double x) { return Vector(x < 3.0 ? torsion : 0.0, 0, 0); };
        Checked c(given);
        c.Check();
        int count = 0;
        for (const std::string& line : LinesOf(c.Verbose()))
            if (line.find("NOT CHECKED") != std::string::npos && line.find("torsion of 5 kNm") != std::string::npos)
                ++count;
        return count;
    };
    EXPECT_EQ(mentions(5e3), 1) << "at the left end of the first sub-span alone";
    EXPECT_EQ(mentions(0.0), 0);
}

// Table 23 by the curves that the report names: one up to 40 mm, both between 40 and 50 mm, b and c of a rolled I about y-y.
TEST(ReportReadBack, TheCurvesOfThickFlangesAreNamed)
{
    const auto curves = [](const wchar_t* section) {
        Case given;
        given.section = section;
        EndMoments(given, 6.0, 0.0, 0.0, -500e3);
        Checked c(given);
        c.Check();
        std::vector<std::string> named;
        for (const std::string& line : LinesOf(c.Verbose()))
            if (line.find("Table 23") != std::string::npos) named.push_back(line.substr(0, line.find(" ;")));
        return named;
    };
    const std::vector<std::string> thin = curves(L"I 500x300x20x38");
    const std::vector<std::string> thick = curves(L"I 500x300x20x45");
    ASSERT_EQ(thin.size(), 2u);
    ASSERT_EQ(thick.size(), 2u);
    for (const std::string& line : thin)
        EXPECT_EQ(line.find(" and "), std::string::npos) << line;
    EXPECT_NE(thick[0].find("a and b"), std::string::npos) << thick[0];
    EXPECT_NE(thick[1].find("b and c"), std::string::npos) << thick[1];
}

// The clause of a tie's capacity: that of eccentric connections where it was applied, and only there.
TEST(ReportReadBack, TheClauseOfATieIsTheOneThatWasApplied)
{
    for (const wchar_t* section : {L"L 100x100x10", L"UC 203x203x46"}) {
        Case given;
        given.section = section;
        EndMoments(given, 6.0, 0.0, 0.0, 150e3);
        Checked c(given);
        c.Check();
        const std::string report = c.Verbose();
        const bool isEccentric = c.Entry(Rule::EccentricConnection).status == CheckStatus::Passed;
        EXPECT_EQ(isEccentric, std::wstring(section).starts_with(L"L"));
        EXPECT_EQ(report.find("4.6.3.1") < report.find("Ledger"), isEccentric) << Narrow(section);
    }
}

// Limits that a row of the tables does not have are shown as none.
TEST(ReportReadBack, LimitsThatDoNotExistAreNoNumbers)
{
    Case given;
    given.section = L"L 150x150x15";
    EndMoments(given, 2.0, 0.0, 0.0, -50e3);
    given.points = {{0.0, L"Pinned"}, {2.0, L"Pinned"}};
    Checked c(given);
    c.Check();
    int lines = 0;
    for (const std::string& line : LinesOf(c.Verbose())) {
        if (line.find("limits ") == std::string::npos) continue;
        EXPECT_NE(line.find("limits -, -, "), std::string::npos) << line;
        ++lines;
    }
    EXPECT_GE(lines, 3);
}

TEST(ReportReadBack, EveryRowOfTheLedgerIsItsEntry)
{
    Case tie;
    tie.section = L"L 100x100x10";
    EndMoments(tie, 6.0, 0.0, 0.0, 200e3);
    Case failing;
    Uniform(failing, 6.0, 90e3, -500e3);
    for (const Case& given : {BeamColumn(L"UC 203x203x46", L"S275", CSteelMemberBS5950::MORE_EXACT), tie, failing}) {
        Checked c(given);
        c.Check();
        const std::vector<Row> rows = LedgerRows(c.Verbose());
        const auto& entries = c.member.Checks().Entries();
        ASSERT_EQ(rows.size(), entries.size());
        for (std::size_t i = 0; i < rows.size(); ++i)
            ExpectRow(rows[i], entries[i]);
    }
}
