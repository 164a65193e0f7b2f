// Reading and writing the member input file.

#include "Bench.h"

#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "support/ConcreteMember.h"

namespace Keltrix::Bench {

namespace {

using namespace Keltrix::Steel;
using Steel::Test::ConcreteMember;

/// A continuous beam under a distributed load, with a brace at every fifth point.
std::shared_ptr<ConcreteMember> MakeMember(int numSubSpans)
{
    std::vector<CMemberPoint> points;
    std::vector<CSubSpan> subSpans;
    for (int i = 0; i <= numSubSpans; ++i) {
        const bool atEnd = i == 0 || i == numSubSpans;
        points.push_back(Steel::Test::Point(i + 1, 0.35 * i, atEnd ? CRestraint::PINNED : i % 5 == 0 ? 0x1 : 0));
    }
    for (int i = 0; i < numSubSpans; ++i) {
        const double phase = 0.37 * i;
        CSubSpan subSpan;
        subSpan.Set1Index(i + 1);
        subSpan.SetForcesAll({-125340.0, 0.0, 83251.7 * std::cos(phase)},
                             {-125340.0, 0.0, 83251.7 * std::cos(phase + 0.37)});
        subSpan.SetMomentsAll({0.0, 96410.3 * std::sin(phase), 1250.0},
                              {0.0, 96410.3 * std::sin(phase + 0.37), 1250.0});
        subSpan.SetRestraint(CRestraint(CRestraint::TOP_FLANGE_LATERAL, SHR_CENTRE, 0.0));
        subSpans.push_back(subSpan);
    }
    auto member = std::make_shared<ConcreteMember>();
    member->SetTitle(L"Beam 2/C-D");
    member->SetKeltrixSec(CSection(L"UB 457x191x67"));
    if (!member->SetMemberPointVec(points) || !member->SetSubSpanVec(subSpans)) throw std::logic_error("no member");
    return member;
}

bool MayStartNumber(wchar_t c) { return (c >= L'0' && c <= L'9') || c == L'-' || c == L'.'; }

/// One pass over the text that finds the separators and converts every number.
double ReadNumbers(std::wstring_view text)
{
    double sum = 0.0;
    std::array<char, 64> digits{};
    std::size_t count = 0;
    bool isNumber = false;
    for (const wchar_t c : text) {
        if (c != L',' && c != L'\n') {
            if (count == 0) isNumber = MayStartNumber(c);
            if (isNumber && count < digits.size()) digits[count] = static_cast<char>(c);
            ++count;
            continue;
        }
        double value = 0.0;
        if (isNumber) std::from_chars(digits.data(), digits.data() + std::min(count, digits.size()), value);
        sum += value;
        count = 0;
        isNumber = false;
    }
    return sum;
}

/// The numbers of a member file in their order, whole numbers apart.
struct FileNumbers {
    std::vector<double> reals;
    std::vector<int> wholes;

    explicit FileNumbers(ConcreteMember& member)
    {
        const CSection section = member.GetKeltrixSec();
        reals = {section.Component(0).NetGross(), section.Component(0).PlasElas(), section.Component(0).Beta()};
        for (const CMemberPoint& point : member.MemberPoints()) {
            wholes.push_back(point.Get1Index());
            reals.insert(reals.end(), {point.GetPos(), point.GetRestraint().LoadHeight()});
        }
        for (const CSubSpan& subSpan : member.SubSpans()) {
            wholes.push_back(subSpan.Get1Index());
            for (const Vec3<double>& v : {subSpan.GetForcesLeft(), subSpan.GetForcesRight(), subSpan.GetMomentsLeft(),
                                          subSpan.GetMomentsRight()})
                reals.insert(reals.end(), {v.x, v.y, v.z});
            reals.push_back(subSpan.GetRestraint().LoadHeight());
        }
    }

    /// All of them as text of six significant digits into a prepared buffer; returns its end.
    char* WriteTo(std::vector<char>& buffer) const
    {
        char* place = buffer.data();
        char* const end = place + buffer.size();
        for (const int n : wholes)
            place = std::to_chars(place, end, n).ptr;
        for (const double x : reals)
            place = std::to_chars(place, end, x, std::chars_format::general, 6).ptr;
        return place;
    }
};

} // namespace

void RegisterMemberFiles()
{
    for (const int numSubSpans : {4, 20, 200, 2000}) {
        const auto member = MakeMember(numSubSpans);
        CSteelGrade grade(L"S355", 0.0, 0.0, 0.0, 1.0);
        const auto text = std::make_shared<CString>(member->CSVInputData(grade));
        const std::string size = ", " + std::to_string(numSubSpans) + " sub-spans";
        const auto reader = std::make_shared<ConcreteMember>();
        if (!reader->CSVInputData(*text, grade)) throw std::logic_error("the file written is not read");

        MeasureWithFloor(
            "read a member" + size, [reader, text, grade]() mutable { return reader->CSVInputData(*text, grade); },
            [text] { return ReadNumbers(*text); }, 2.0);

        const FileNumbers numbers(*member);
        std::vector<char> buffer(16 * (numbers.reals.size() + numbers.wholes.size()));
        MeasureWithFloor(
            "write a member" + size, [member, grade]() mutable { return member->CSVInputData(grade).GetLength(); },
            [numbers, buffer]() mutable { return numbers.WriteTo(buffer); }, 2.0);
    }
}

} // namespace Keltrix::Bench
