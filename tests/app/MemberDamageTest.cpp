// One-step damages of the examples: a line cut, a field emptied or exchanged, a line or a pair of lines lost. What somebody
// meant is gone then, so that none of them may pass in silence.

#include <cmath>
#include <filesystem>
#include <set>

#include <gtest/gtest.h>

#include "AppSupport.h"
#include "check/CheckedMember.h"
#include "io/Failure.h"

namespace Keltrix::App {
namespace {

using Trial::LinesOf;
using Lines = std::vector<std::string>;

std::string Joined(const Lines& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}

std::vector<std::string> FieldsOf(const std::string& line)
{
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, ',');)
        fields.push_back(field);
    return fields;
}

std::string LineOf(const std::vector<std::string>& fields)
{
    std::string line;
    for (const std::string& field : fields)
        line += (line.empty() ? "" : ",") + field;
    return line;
}

bool StartsWithWord(const std::string& line, const std::string& word) { return line.rfind(word + ',', 0) == 0; }

bool IsLayoutLine(const std::string& line)
{
    return StartsWithWord(line, "MEMBERPOINT") || StartsWithWord(line, "SUBSPAN");
}

struct Outcome {
    bool isSilentPass = false;
    CString member; ///< as the library writes it
};

Outcome OutcomeOf(const std::string& text)
{
    MemberPiece piece;
    piece.bytes = text;
    Outcome outcome;
    try {
        const MemberFile file("damaged.csv", piece);
        if (file.Check().Errors() > 0 || file.MemberCount() != 1) return outcome;
        const CheckedMember checked = CheckMember(file, 0, DefaultCode(), false);
        // Torsion in the place of a force is no contradiction, and no rule evaluates it: the result says NOT CHECKED.
        outcome.isSilentPass = checked.Status() == "pass" && checked.warnings.empty() &&
                               !checked.result->TestFlags(Steel::CMemberResult::NOT_CHECKED);
        CSteelGrade grade = checked.member->GetGrade();
        outcome.member = checked.member->CSVInputData(grade);
    } catch (const BadInput&) {
    }
    return outcome;
}

class Damage : public ::testing::TestWithParam<std::string> {
protected:
    void SetUp() override
    {
        m_lines = LinesOf(Trial::ReadWhole(std::filesystem::path(KSTEEL_SOURCE_DIR) / "examples" / GetParam()));
        const Outcome good = OutcomeOf(Joined(m_lines));
        ASSERT_TRUE(good.isSilentPass) << "the example as it is";
        m_member = good.member;
    }
    void TearDown() override { EXPECT_GT(m_tried, 0); }

    // A damage that leaves the member as it was is none.
    void ExpectNoSilentPass(const Lines& lines, const std::string& how)
    {
        ++m_tried;
        const Outcome outcome = OutcomeOf(Joined(lines));
        EXPECT_FALSE(outcome.isSilentPass && !(outcome.member == m_member)) << how << "\n" << Joined(lines);
    }

    Lines Without(std::size_t line) const
    {
        Lines lines = m_lines;
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(line));
        return lines;
    }

    void ForEachField(const std::function<void(std::size_t, std::size_t, const std::vector<std::string>&)>& use)
    {
        for (std::size_t i = 0; i < m_lines.size(); ++i) {
            if (!IsLayoutLine(m_lines[i])) continue;
            const std::vector<std::string> fields = FieldsOf(m_lines[i]);
            for (std::size_t k = 1; k < fields.size(); ++k)
                use(i, k, fields);
        }
    }

    // What is below the tolerance of equilibrium, 1 % of the moments.
    bool AreSmallForces(const std::string& a, const std::string& b) const
    {
        double largest = 0.0;
        for (const std::string& line : m_lines) {
            if (!StartsWithWord(line, "SUBSPAN")) continue;
            const std::vector<std::string> fields = FieldsOf(line);
            for (std::size_t k = 2; k < 8; ++k)
                largest = std::max(largest, std::fabs(std::stod(fields[k])));
        }
        const double larger =
            std::max(std::fabs(std::strtod(a.c_str(), nullptr)), std::fabs(std::strtod(b.c_str(), nullptr)));
        return larger > 0.0 && larger < 0.02 * largest && larger > 100.0;
    }

    Lines m_lines;
    CString m_member;
    int m_tried = 0;
};

TEST_P(Damage, LineCut)
{
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        if (!IsLayoutLine(m_lines[i])) continue;
        // A number cut in its last digits is a number.
        for (std::size_t length = 0; length <= m_lines[i].rfind(','); ++length) {
            Lines lines = m_lines;
            lines[i].resize(length);
            ExpectNoSilentPass(lines, "line " + std::to_string(i + 1) + " cut at " + std::to_string(length));
        }
    }
}

TEST_P(Damage, FieldEmptied)
{
    ForEachField([&](std::size_t i, std::size_t k, std::vector<std::string> fields) {
        fields[k].clear();
        Lines lines = m_lines;
        lines[i] = LineOf(fields);
        ExpectNoSilentPass(lines, "field " + std::to_string(k) + " of line " + std::to_string(i + 1));
    });
}

TEST_P(Damage, FieldsExchangedWithinALine)
{
    ForEachField([&](std::size_t i, std::size_t k, const std::vector<std::string>& fields) {
        for (std::size_t other = k + 1; other < fields.size(); ++other) {
            // The forces of the two ends, exchanged, are another load in between.
            if (other == k + 3 && k >= 2 && k <= 4) continue;
            if (AreSmallForces(fields[k], fields[other])) continue;
            std::vector<std::string> swapped = fields;
            std::swap(swapped[k], swapped[other]);
            Lines lines = m_lines;
            lines[i] = LineOf(swapped);
            ExpectNoSilentPass(lines, "fields " + std::to_string(k) + " and " + std::to_string(other));
        }
    });
}

TEST_P(Damage, TextPutIntoANumber)
{
    ForEachField([&](std::size_t i, std::size_t k, const std::vector<std::string>& fields) {
        for (const char* text : {",", " ", "kN", "m", "x", "\"", ";", ".."}) {
            for (std::size_t at = 1; at <= fields[k].size(); ++at) {
                std::vector<std::string> spoiled = fields;
                spoiled[k].insert(at, text);
                if (k + 1 == fields.size() && std::string(text) == "," && at == fields[k].size())
                    continue; // an empty field
                Lines lines = m_lines;
                lines[i] = LineOf(spoiled);
                ExpectNoSilentPass(lines, std::string(text) + " in " + fields[k]);
            }
        }
    });
}

TEST_P(Damage, LineLost)
{
    for (std::size_t i = 0; i < m_lines.size(); ++i)
        ExpectNoSilentPass(Without(i), "without line " + std::to_string(i + 1));
}

TEST_P(Damage, LineDoubledOrExchanged)
{
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        Lines lines = m_lines;
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(i), m_lines[i]);
        ExpectNoSilentPass(lines, "twice: line " + std::to_string(i + 1));
        for (std::size_t other = i + 1; other < m_lines.size(); ++other) {
            lines = m_lines;
            std::swap(lines[i], lines[other]);
            ExpectNoSilentPass(lines, "exchanged: " + std::to_string(i + 1) + " and " + std::to_string(other + 1));
        }
    }
}

TEST_P(Damage, PointAndSubSpanLostTogether)
{
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        if (!StartsWithWord(m_lines[i], "MEMBERPOINT")) continue;
        for (std::size_t k = i + 1; k < m_lines.size(); ++k) {
            if (!StartsWithWord(m_lines[k], "SUBSPAN")) continue;
            Lines lines = Without(k);
            lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(i));
            ExpectNoSilentPass(lines, "without lines " + std::to_string(i + 1) + " and " + std::to_string(k + 1));
        }
    }
}

TEST_P(Damage, ShearOrMomentLosesItsSign)
{
    ForEachField([&](std::size_t i, std::size_t k, std::vector<std::string> fields) {
        // The axial force and torsion of one end say nothing of the other's.
        const bool isAxial = k == 2 || k == 5 || k == 8 || k == 11;
        if (!StartsWithWord(m_lines[i], "SUBSPAN") || isAxial || fields[k][0] != '-') return;
        fields[k].erase(0, 1);
        Lines lines = m_lines;
        lines[i] = LineOf(fields);
        ExpectNoSilentPass(lines, "sign of field " + std::to_string(k) + " of line " + std::to_string(i + 1));
    });
    ++m_tried; // some examples have none
}

std::vector<std::string> Examples()
{
    std::set<std::string> names;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(KSTEEL_SOURCE_DIR) / "examples")) {
        if (entry.path().extension() == ".csv") names.insert(entry.path().filename().string());
    }
    return {names.begin(), names.end()};
}

INSTANTIATE_TEST_SUITE_P(Examples, Damage, ::testing::ValuesIn(Examples()),
                         [](const auto& row) { return row.param.substr(0, row.param.find('.')); });

} // namespace
} // namespace Keltrix::App
