#include "keltrix/design/MemberInput.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace Keltrix::Design {

namespace {

bool IsQuality(std::wstring_view text)
{
    constexpr std::array<std::wstring_view, 21> QUALITIES{L"",    L"JR",  L"J0",  L"J2", L"K2", L"JRH", L"J0H",
                                                          L"J2H", L"K2H", L"N",   L"NL", L"NH", L"NLH", L"M",
                                                          L"ML",  L"MH",  L"MLH", L"H",  L"Q",  L"QL",  L"QL1"};
    return std::find(QUALITIES.begin(), QUALITIES.end(), text) != QUALITIES.end();
}

bool IsFinite(const Vec3<double>& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

bool HasFiniteForces(const Steel::CSubSpan& s)
{
    return IsFinite(s.GetForcesLeft()) && IsFinite(s.GetForcesRight()) && IsFinite(s.GetMomentsLeft()) &&
           IsFinite(s.GetMomentsRight());
}

template <class Part>
bool HasFiniteLoadHeight(const Part& part)
{
    return std::isfinite(part.GetRestraint().LoadHeight());
}

void AssumeLoadsOf(const MomentDiagram& moments, const wchar_t* name, double sign, std::vector<Assumption>& assumptions)
{
    double largest = 0.0;
    for (const auto& piece : moments.Pieces())
        largest = std::max({largest, std::abs(piece.shearLeft), std::abs(piece.shearRight)});
    constexpr double SAME = 1e-6;
    Assumption* before = nullptr;
    for (const auto& piece : moments.Pieces()) {
        if (!(piece.length > 0.0)) continue;
        const double load = sign * (piece.shearRight - piece.shearLeft) / piece.length;
        const bool loaded = std::abs(piece.shearRight - piece.shearLeft) > SAME * largest;
        if (loaded && before && std::abs(load - before->value) <= SAME * std::abs(load)) {
            before->end = piece.End();
            continue;
        }
        before = nullptr;
        if (!loaded) continue;
        assumptions.push_back(
            {name,
             L"shears that differ over a sub-span are read as a uniform load, though a load of another "
             L"shape inside it has the same shears",
             load, piece.start, piece.End(), true});
        before = &assumptions.back();
    }
}

} // namespace

CString GradeWithoutQuality(const CString& name)
{
    CString text = name;
    text.Remove(L' ');
    text.MakeUpper();
    if (text == L"USER_DEFINED") return text;
    if (!IsQuality(text.Mid(4).View())) return L"";
    return text.Left(4);
}

const wchar_t* UserGradeRefusal(const CSteelGrade& grade)
{
    const auto isUsable = [](double value) { return value >= 0.0 && std::isfinite(value); };
    if (!(grade.GetUserPy() > 0.0) || !std::isfinite(grade.GetUserPy()))
        return L"the user-defined grade gives no yield strength above zero";
    if (!isUsable(grade.GetUserPu()))
        return L"the user-defined grade's tensile strength must be finite and not below 0";
    if (!isUsable(grade.GetUserE())) return L"the user-defined grade's modulus must be finite and not below 0";
    if (!isUsable(grade.GetMatFactor()) || grade.GetMatFactor() == 0.0)
        return L"the user-defined grade's material factor must be finite and above 0";
    return nullptr;
}

Refusal NumbersRefusal(const std::vector<Steel::CMemberPoint>& points, const std::vector<Steel::CSubSpan>& subSpans,
                       std::optional<double> momentFactor)
{
    if (!std::all_of(points.begin(), points.end(),
                     [](const Steel::CMemberPoint& p) { return std::isfinite(p.GetPos()); }))
        return {Subject::Member, L"the position of a member point is not a finite number"};
    if (!std::all_of(subSpans.begin(), subSpans.end(), HasFiniteForces))
        return {Subject::Member, L"a force or a moment is not a finite number"};
    if (!std::all_of(points.begin(), points.end(), HasFiniteLoadHeight<Steel::CMemberPoint>) ||
        !std::all_of(subSpans.begin(), subSpans.end(), HasFiniteLoadHeight<Steel::CSubSpan>))
        return {Subject::Member, L"a load height is not a finite number"};
    const double factor = momentFactor.value_or(1.0);
    if (!(factor > 0.0 && std::isfinite(factor)))
        return {Subject::MomentFactor,
                L"the equivalent uniform moment factor that is given is not a finite number above 0"};
    return {};
}

void AssumeUniformLoads(const MomentDiagram& major, const MomentDiagram& minor, std::vector<Assumption>& assumptions)
{
    AssumeLoadsOf(major, L"uniform load, major axis", 1.0, assumptions);
    AssumeLoadsOf(minor, L"uniform load, minor axis", -1.0, assumptions);
}

void WarnOfUnbalancedForces(const MomentDiagram& major, const MomentDiagram& minor, const CDesFormat& fmt,
                            std::vector<Warning>& warnings)
{
    for (std::size_t k = 0; k < major.Pieces().size(); ++k)
        for (const auto bending : {Bending::Major, Bending::Minor}) {
            const MomentDiagram::Piece& piece = (bending == Bending::Major ? major : minor).Pieces()[k];
            if (piece.balance.balanced) continue;
            const int subSpan = static_cast<int>(k);
            warnings.push_back({WarningKind::UnbalancedForces, UnbalancedText(subSpan + 1, bending, piece, fmt),
                                subSpan, piece.start, piece.End()});
        }
}

} // namespace Keltrix::Design
