#include "keltrix/bs5950/Results.h"

#include <algorithm>

namespace Keltrix::BS5950 {

const wchar_t* LoadPatternName(LoadPattern pattern)
{
    switch (pattern) {
    case LoadPattern::None:
        return L"no moment";
    case LoadPattern::EndMoments:
        return L"end moments only";
    case LoadPattern::Uniform:
        return L"uniform load";
    case LoadPattern::CentralPoint:
        return L"central point load";
    case LoadPattern::PointLoads:
        return L"point loads";
    case LoadPattern::General:
        break;
    }
    return L"distributed and point loads together, or a load that varies";
}

double PositionResult::Largest() const
{
    return std::max({axial, major, minor, shearMajor, shearMinor, shearBuckling, shearBucklingX, combined});
}

void MemberResults::Assume(const wchar_t* name, const wchar_t* text, double value)
{
    const auto known = [&](const Assumption& a) { return a.name == name; };
    if (std::none_of(assumptions.begin(), assumptions.end(), known)) assumptions.push_back({name, text, value});
}

void MemberResults::Clear()
{
    refusal = {};
    cls = 0;
    ledger.Clear();
    assumptions.clear();
    warnings.clear();
    positions.clear();
    webLoads.clear();
    spans.clear();
    interactions.clear();
    across.clear();
    units.clear();
    elasticReason = CString();
    information.reset();
    parts.clear();
}

ResistanceSummary MemberResults::Resistances() const
{
    ResistanceSummary r;
    const auto weakest = [this](double PositionResult::*resistance) {
        double least = std::numeric_limits<double>::quiet_NaN();
        for (const PositionResult& p : positions)
            if (!(p.*resistance >= least)) least = p.*resistance;
        return least;
    };
    r.Pz = weakest(&PositionResult::Pz);
    r.Pt = weakest(&PositionResult::Pt);
    r.Pvx = weakest(&PositionResult::Pvx);
    r.Pvy = weakest(&PositionResult::Pvy);
    r.Mcx = weakest(&PositionResult::Mcx);
    r.Mcy = weakest(&PositionResult::Mcy);
    return r;
}

} // namespace Keltrix::BS5950
