#include "MemberMutator.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "keltrix/platform/KxUtil.h"

namespace Keltrix::Fuzz {

namespace {

constexpr const char* RESTRAINTS[] = {"Free",
                                      "Pinned",
                                      "Fixed",
                                      "Full rotational",
                                      "Partial rotational",
                                      "F1L",
                                      "F2L",
                                      "F12L",
                                      "Top flange lateral",
                                      "Bottom flange lateral",
                                      "FCL",
                                      "FTL TR",
                                      "F1L TF MAJV",
                                      "F12LW TR MAJV",
                                      "TP F2L MAJV",
                                      "MAJV",
                                      "MINV",
                                      "MAJRV MINV",
                                      "F1P",
                                      "Top and Bottom flange lateral",
                                      "CAB",
                                      "6144",
                                      "513",
                                      "MAJP MINR",
                                      "TR F1LW"};
constexpr const char* SHAPES[] = {
    "I 500x200x10x16",      "I 1000x250x6x12", "I 600x200x8x12x10",       "C 200x80x8x12",   "TEE 200x200x10x15",
    "ANGLE 150x90x12x10x5", "ANGLE 100x100x5", "BOX 400x200x8x12",        "BOX 200x400x6x6", "TUBE 300x4",
    "TUBE 200x20",          "I 300x300x45x60", "GI 800x300x200x12x20x15", "TEE 100x400x8x8", "C 200x80x8x10x10x5"};
constexpr const char* TYPES[] = {"ROLLED", "WELDED", "FORMED", "UNDEF"};
constexpr const char* GRADES[] = {"S275",
                                  "S355",
                                  "S460",
                                  "S355J2H",
                                  "S235",
                                  "User_defined,300e6,400e6,0,1.1",
                                  "User_defined,235e6,0,210e9,1",
                                  "User_defined,0,0,0,0"};
constexpr const char* NUMBERS[] = {"0",   "-0",  "1",    "-1", "1e-9", "1e9",  "-1e12",  "1e308",
                                   "nan", "inf", "-inf", "",   "2.5m", "0x10", "1e-320", "999999999999999999999"};
constexpr const char* TITLES[] = {
    "<b>bold</b>", "</table><script>", "\xE2\x80\xAEturned",    "a & b \"c\"", "", "\t tab",
    "=1+1",        "\xF0\x9F\x94\xA9", "zero\xE2\x80\x8Bwidth", "\xC2\x85next"};
constexpr const char* FACTORS[] = {"NET_TO_GROSS", "ALLOWABLE_PLASTIC/ELASTIC_RATIO", "SHEAR_LAG_FACTOR"};

// Fields of a SUBSPAN line: forces and moments of the left and of the right end.
constexpr std::size_t FX_L = 2, FY_L = 3, FX_R = 5, FY_R = 6, MY_L = 9, MZ_L = 10, MY_R = 12, MZ_R = 13, ALONG = 14;
constexpr std::size_t LAST_MOMENT = 13;

std::string Written(double value)
{
    char buffer[32];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 9).ptr};
}

} // namespace

std::size_t MemberMutator::Below(std::size_t count) { return m_random() % count; }

double MemberMutator::Between(double from, double to) { return from + (to - from) * (m_random() % 10001) / 10000.0; }

void MemberMutator::Read(std::string_view text)
{
    m_lines.assign(1, Fields(1));
    for (const char c : text) {
        if (c == '\n')
            m_lines.emplace_back(1);
        else if (c == ',')
            m_lines.back().emplace_back();
        else
            m_lines.back().back() += c;
    }
}

std::string MemberMutator::Text() const
{
    std::string text;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        if (i > 0) text += '\n';
        for (std::size_t k = 0; k < m_lines[i].size(); ++k)
            text += (k > 0 ? "," : "") + m_lines[i][k];
    }
    return text;
}

std::vector<std::size_t> MemberMutator::Lines(std::string_view keyword) const
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < m_lines.size(); ++i)
        if (keyword.empty() || m_lines[i].front() == keyword) places.push_back(i);
    return places;
}

MemberMutator::Fields* MemberMutator::SomeLine(std::string_view keyword)
{
    const std::vector<std::size_t> places = Lines(keyword);
    return places.empty() ? nullptr : &m_lines[OneOf(places)];
}

double MemberMutator::Number(const Fields& line, std::size_t field) const
{
    double value = 0.0;
    if (field < line.size()) std::from_chars(line[field].data(), line[field].data() + line[field].size(), value);
    return value;
}

void MemberMutator::Set(Fields& line, std::size_t field, std::string value)
{
    if (line.size() <= field) line.resize(field + 1);
    line[field] = std::move(value);
}

void MemberMutator::Set(Fields& line, std::size_t field, double value) { Set(line, field, Written(value)); }

void MemberMutator::ChangeNumber()
{
    Fields* const line = SomeLine(Below(3) == 0 ? "MEMBERPOINT" : "SUBSPAN");
    if (!line || line->size() < 2) return;
    const std::size_t field = 1 + Below(line->size() - 1);
    const double value = Number(*line, field);
    switch (Below(5)) {
    case 0:
        return Set(*line, field, OneOf(NUMBERS));
    case 1:
        return Set(*line, field, -value);
    case 2:
        return Set(*line, field, value * std::pow(10.0, Between(-6.0, 6.0)));
    case 3:
        return Set(*line, field, (*line)[1 + Below(line->size() - 1)]);
    default:
        return Set(*line, field, value * Between(0.5, 1.5) + Between(-1.0, 1.0));
    }
}

void MemberMutator::ChangeRestraint()
{
    const bool along = Below(3) == 0;
    if (Fields* const line = SomeLine(along ? "SUBSPAN" : "MEMBERPOINT")) {
        std::string restraint = Below(6) == 0 ? std::to_string(Below(1 << 22)) : OneOf(RESTRAINTS);
        if (Below(8) == 0) restraint += std::string(" ") + OneOf(RESTRAINTS);
        Set(*line, along ? ALONG : 3, std::move(restraint));
    }
}

void MemberMutator::ChangeSection()
{
    Fields* const line = SomeLine("SECTION");
    if (!line) return;
    if (Below(3) == 0) return Set(*line, 2, OneOf(TYPES));
    if (Below(3) == 0) return Set(*line, 1, OneOf(SHAPES));
    Set(*line, 1, OneOf(CSectDB::GetDatabase()->Entries()).designation.ToUtf8().value_or(std::string()));
}

void MemberMutator::ChangeGrade()
{
    if (Fields* const line = SomeLine("GRADE")) *line = {"GRADE", OneOf(GRADES)};
}

void MemberMutator::ChangeFactor()
{
    if (Fields* const line = SomeLine(OneOf(FACTORS)))
        Below(4) == 0 ? Set(*line, 1, OneOf(NUMBERS)) : Set(*line, 1, Between(0.5, 2.0));
}

void MemberMutator::ChangeOverrides()
{
    Fields* const line = SomeLine("EFFECTIVE_LENGTH_OVERRIDES");
    if (!line) return;
    *line = {"EFFECTIVE_LENGTH_OVERRIDES", Below(2) == 0 ? "NO" : "YES"};
    if (line->back() == "NO") return;
    for (int i = 0; i < 3; ++i)
        line->push_back(Below(8) == 0 ? OneOf(NUMBERS) : Written(Between(-2.0, 10.0)));
    if (Below(3) == 0) line->back() += "\nEQUIVALENT_UNIFORM_MOMENT_FACTOR," + Written(Between(-0.2, 1.2));
}

void MemberMutator::ChangeTitle()
{
    if (Fields* const line = SomeLine("TITLE")) Set(*line, 1, OneOf(TITLES));
}

void MemberMutator::ChangeLoadHeights()
{
    const double height = Below(3) == 0 ? 0.0 : Between(-1.0, 1.0);
    for (const std::size_t i : Lines("MEMBERPOINT"))
        Set(m_lines[i], 4, height);
}

void MemberMutator::ScaleForces()
{
    const double k = Below(6) == 0 ? -1.0 : std::pow(10.0, Between(-1.5, 1.5));
    for (const std::size_t i : Lines("SUBSPAN"))
        for (std::size_t field = FX_L; field <= LAST_MOMENT; ++field)
            Set(m_lines[i], field, k * Number(m_lines[i], field));
}

void MemberMutator::AddAxialForce()
{
    const double force = std::round(Between(-2e6, 1e6));
    for (const std::size_t i : Lines("SUBSPAN"))
        for (const std::size_t field : {FX_L, FX_R})
            Set(m_lines[i], field, force);
}

// Moments about y-y that are a share of those about x-x, with the shears that belong to them: dMz/dx = -Fy.
void MemberMutator::AddMinorBending()
{
    const double k = Below(4) == 0 ? 0.0 : Between(-0.2, 0.2);
    for (const std::size_t i : Lines("SUBSPAN")) {
        Fields& line = m_lines[i];
        for (const std::size_t end : {std::size_t(0), FX_R - FX_L}) {
            Set(line, FY_L + end, -k * Number(line, FY_L + 1 + end));
            Set(line, MZ_L + end, k * Number(line, MY_L + end));
        }
    }
}

// A member k times as long under the same forces has k times the moments.
void MemberMutator::Stretch()
{
    const double k = Between(0.3, 3.0);
    for (const std::size_t i : Lines("MEMBERPOINT"))
        Set(m_lines[i], 2, k * Number(m_lines[i], 2));
    for (const std::size_t i : Lines("SUBSPAN"))
        for (const std::size_t field : {MY_L, MZ_L, MY_R, MZ_R})
            Set(m_lines[i], field, k * Number(m_lines[i], field));
}

// One more point within a sub-span: forces are linear there, moments the parabolas that belong to them.
void MemberMutator::SplitSubSpan()
{
    const std::vector<std::size_t> points = Lines("MEMBERPOINT");
    const std::vector<std::size_t> subs = Lines("SUBSPAN");
    if (subs.empty() || points.size() != subs.size() + 1 || points.back() > subs.front()) return;
    const std::size_t k = Below(subs.size());
    const double s = Between(0.05, 0.95);
    const double from = Number(m_lines[points[k]], 2);
    const double length = Number(m_lines[points[k + 1]], 2) - from;
    Fields left = m_lines[subs[k]];
    left.resize(std::max<std::size_t>(left.size(), ALONG + 2));
    Fields right = left;
    for (std::size_t component = 0; component < 6; ++component) {
        const std::size_t l = component < 3 ? FX_L + component : FX_L + 3 + component;
        const std::size_t r = l + 3;
        double value = (1.0 - s) * Number(left, l) + s * Number(left, r);
        const double change = component == 4   ? Number(left, FY_R + 1) - Number(left, FY_L + 1)
                              : component == 5 ? Number(left, FY_L) - Number(left, FY_R)
                                               : 0.0;
        value -= 0.5 * change * length * s * (1.0 - s);
        Set(left, r, value);
        Set(right, l, value);
    }
    m_lines[subs[k]] = std::move(left);
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(subs[k]) + 1, std::move(right));
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(points[k]) + 1,
                   {"MEMBERPOINT", "", Written(from + s * length), OneOf(RESTRAINTS), "0"});
    for (const char* keyword : {"MEMBERPOINT", "SUBSPAN"}) {
        int number = 0;
        for (const std::size_t i : Lines(keyword))
            Set(m_lines[i], 1, std::to_string(++number));
    }
}

void MemberMutator::RepeatLine()
{
    const std::size_t i = Below(m_lines.size());
    const Fields line = m_lines[i];
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(i), line);
}

void MemberMutator::DropLine()
{
    if (m_lines.size() > 1) m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(Below(m_lines.size())));
}

void MemberMutator::SwapLines() { std::swap(m_lines[Below(m_lines.size())], m_lines[Below(m_lines.size())]); }

void MemberMutator::ScrambleField()
{
    Fields& line = m_lines[Below(m_lines.size())];
    std::string& field = line[Below(line.size())];
    field = m_scramble(field, field.size() + 16);
}

void MemberMutator::RepeatMember()
{
    const std::size_t count = m_lines.size();
    if (count > 40) return;
    for (std::size_t i = 0; i < count; ++i)
        m_lines.push_back(Fields(m_lines[i]));
}

std::string MemberMutator::Mutate(std::string_view text)
{
    using M = MemberMutator;
    // What keeps a member readable comes up most.
    static constexpr Edit EDITS[] = {
        &M::ChangeNumber,  &M::ChangeNumber,  &M::ChangeRestraint, &M::ChangeRestraint,  &M::ChangeRestraint,
        &M::ChangeSection, &M::ChangeSection, &M::ChangeGrade,     &M::ChangeFactor,     &M::ChangeOverrides,
        &M::ChangeTitle,   &M::ScaleForces,   &M::ScaleForces,     &M::AddAxialForce,    &M::AddMinorBending,
        &M::Stretch,       &M::SplitSubSpan,  &M::SplitSubSpan,    &M::RepeatLine,       &M::DropLine,
        &M::SwapLines,     &M::ScrambleField, &M::RepeatMember,    &M::ChangeLoadHeights};
    Read(text);
    for (std::size_t edits = 1 + Below(3); edits > 0; --edits)
        (this->*OneOf(EDITS))();
    return Text();
}

std::string MemberMutator::Cross(std::string_view one, std::string_view other)
{
    Read(other);
    const std::vector<Fields> others = m_lines;
    Read(one);
    const std::size_t from = Below(std::min(m_lines.size(), others.size()));
    const std::size_t to = from + Below(std::min(m_lines.size(), others.size()) - from) + 1;
    for (std::size_t i = from; i < to; ++i)
        m_lines[i] = others[i];
    return Text();
}

} // namespace Keltrix::Fuzz
