// The module against the second calculation, member by member and rule by rule.
//
// SECOND_MEMBERS sets the number of members of each family, SECOND_SEED the first of them.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string_view>

#include "RandomMembers.h"
#include "keltrix/bs5950/BS5950.h"

using namespace Keltrix;
using BS5950::CheckStatus;
using BS5950::LedgerEntry;
using BS5950::Rule;

namespace {

std::uint64_t FromEnvironment(const char* name, std::uint64_t otherwise)
{
    const char* text = std::getenv(name);
    return text ? std::strtoull(text, nullptr, 10) : otherwise;
}

/// Elastic critical moments of sections that are stiffer about y-y, which the second calculation does not have.
bool IsAcross(const LedgerEntry& e)
{
    return std::wstring_view(e.reason).find(L"y-y, the stiffer axis") != std::wstring_view::npos;
}

/// The module's largest utilisation of some rules.
double Module(const BS5950::CSteelMemberBS5950& member, std::initializer_list<Rule> rules)
{
    double most = 0.0;
    for (const LedgerEntry& e : member.Checks().Entries())
        if (std::find(rules.begin(), rules.end(), e.rule) != rules.end() && !IsAcross(e))
            most = std::max(most, e.utilisation);
    return most;
}

/// Whether the module says that it has no moment capacity for some place.
bool NotEvaluated(const BS5950::CSteelMemberBS5950& member)
{
    const auto& entries = member.Checks().Entries();
    return std::any_of(entries.begin(), entries.end(), [](const LedgerEntry& e) {
        return (e.rule == Rule::MomentMajor || e.rule == Rule::MomentMinor) && e.status == CheckStatus::NotEvaluated;
    });
}

struct Compared {
    const char* rule;
    double module, second;

    bool Agrees() const
    {
        constexpr double NO_RESISTANCE = 1e9; // what a resistance of rounding makes of any effect
        if (std::min(module, second) > NO_RESISTANCE) return true;
        return std::fabs(module - second) <= 0.005 * std::max(module, second) + 1e-6;
    }
};

std::vector<Compared> Compare(const BS5950::CSteelMemberBS5950& m, const Second::Findings& f)
{
    const Second::Local& l = f.local;
    // Where one action is alone at a place its own rule has it; the sums start from there.
    const double alone =
        Module(m, {Rule::Tension, Rule::EccentricConnection, Rule::Compression, Rule::MomentMajor, Rule::MomentMinor});
    const double aloneSecond = std::max({l.tension, l.tie, l.compression, l.momentMajor, l.momentMinor});
    // A tube has one shear: where a component begins at 0, either row may tell it.
    const bool isTube = m.Properties().shape == BS5950::Shape::CHS;
    const double shear = Module(m, {Rule::ShearMajor}), shearMinor = Module(m, {Rule::ShearMinor});
    return {{"tension", Module(m, {Rule::Tension, Rule::EccentricConnection}), std::max(l.tension, l.tie)},
            {"compression", Module(m, {Rule::Compression}), l.compression},
            {"shear major", std::max(shear, isTube ? shearMinor : 0.0),
             std::max(l.shearMajor, isTube ? l.shearMinor : 0.0)},
            {"shear minor", isTube ? 0.0 : shearMinor, isTube ? 0.0 : l.shearMinor},
            {"shear buckling", Module(m, {Rule::ShearBuckling}), l.shearBuckling},
            {"not evaluated", NotEvaluated(m) ? 1.0 : 0.0, l.notEvaluated ? 1.0 : 0.0},
            {"moment major", Module(m, {Rule::MomentMajor}), l.momentMajor},
            {"moment minor", Module(m, {Rule::MomentMinor}), l.momentMinor},
            {"combined local", std::max(alone, Module(m, {Rule::CombinedTension, Rule::CombinedCompression})),
             std::max({aloneSecond, l.combinedTension, l.combinedCompression})},
            {"buckling major", Module(m, {Rule::BucklingMajor}), f.buckling.major},
            {"buckling minor", Module(m, {Rule::BucklingMinor}), f.buckling.minor},
            {"lateral-torsional", Module(m, {Rule::LateralTorsional}), f.buckling.lateral},
            {"interaction", Module(m, {Rule::BucklingInteraction}), f.buckling.interaction}};
}

struct Tally {
    std::map<std::string, int> compared, higher, lower;
    int members = 0, refused = 0, disagreeing = 0;
};

class SecondCalculation : public testing::TestWithParam<Second::Family> {};

void CheckOne(Second::Family family, std::uint64_t seed, Tally& tally, bool verbose)
{
    const Second::RandomMember made = Second::MakeRandomMember(family, seed);
    BS5950::CSteelMemberBS5950 member;
    Steel::CMemberResult result;
    result.EnableText(false);
    member.SetResult(&result);
    member.SetQuickCheckMode();
    if (made.member.exact) member.SetDesOpt(BS5950::CSteelMemberBS5950::MORE_EXACT);
    CSteelGrade grade;
    ++tally.members;
    if (!member.CSVInputData(CString(std::wstring(made.text.begin(), made.text.end()).c_str()), grade) ||
        !member.SetGrade(grade)) {
        ++tally.refused;
        if (verbose) std::printf("refused: %s\n", made.text.c_str());
        return;
    }
    member.Check();
    const Second::Findings second = Second::Check(made.member);
    bool differs = false;
    for (const Compared& c : Compare(member, second)) {
        if (c.module != 0.0 || c.second != 0.0) ++tally.compared[c.rule];
        if (c.Agrees()) continue;
        differs = true;
        if (verbose) continue;
        ++(c.module > c.second ? tally.higher : tally.lower)[c.rule];
        const std::size_t at = made.text.find("SECTION,"), end = made.text.find('\n', at);
        std::printf("DIFF;%s;%s;%llu;%.6g;%.6g;%s\n", Second::FamilyName(family), c.rule,
                    static_cast<unsigned long long>(seed), c.module, c.second,
                    made.text.substr(at + 8, end - at - 8).c_str());
    }
    if (differs) ++tally.disagreeing;
    if (verbose) {
        std::printf("%s", made.text.c_str());
        for (const Compared& c : Compare(member, second))
            if (c.module + c.second > 0)
                std::printf("%-18s module %.6g second %.6g%s\n", c.rule, c.module, c.second, c.Agrees() ? "" : "  <<<");
        for (const auto& e : member.Checks().Entries())
            if (e.utilisation > 0 || e.status == CheckStatus::Failed)
                std::printf("   %ls %ls [%g..%g] u %.5g R %.6g %ls %ls\n", BS5950::RuleName(e.rule), e.clause, e.start,
                            e.end, e.utilisation, e.resistance, e.symbol, e.reason);
        if (std::getenv("SECOND_SPANS"))
            for (const auto& s : member.Spans())
                std::printf("   span mode %d %g..%g LE %g lambda %g strength %.6g R %.6g effect %.6g u %.5g m %.4g myx "
                            "%.4g cls %d Mx %.6g My %.6g cont %d cant %d dest %d\n",
                            static_cast<int>(s.mode), s.start, s.end, s.LE, s.slenderness, s.strength, s.resistance,
                            s.effect, s.utilisation, s.m, s.flexural.myx, s.cls, s.Mx, s.flexural.My, s.continuous,
                            s.lateral.cantilever, s.lateral.destabilising);
        if (std::getenv("SECOND_POS"))
            for (const auto& q : member.Positions())
                std::printf("   pos %.4g sub %d F %.5g Mx %.5g My %.5g Vy %.5g Vx %.5g cls %d Wx %.6g Wy %.6g Mcx %.6g "
                            "Mcy %.6g Aeff %.6g comb %.5g\n",
                            q.x, q.subSpan, q.actions.F, q.actions.Mx, q.actions.My, q.actions.Fvy, q.actions.Fvx,
                            q.cls.cls, q.cls.Wx, q.cls.Wy, q.Mcx, q.Mcy, q.cls.Aeff, q.combined);
        const auto& p = member.Properties();
        const Second::Properties o = Second::PropertiesOf(made.member.section);
        std::printf("   A %.6g %.6g Ix %.6g %.6g Iy %.6g %.6g Zx %.6g %.6g Zy %.6g %.6g Sx %.6g %.6g Sy %.6g %.6g J "
                    "%.6g %.6g H %.6g %.6g Zu %.6g %.6g Zv %.6g %.6g rv %.6g %.6g psi %.6g %.6g\n",
                    p.A, o.A, p.Ix, o.Ix, p.Iy, o.Iy, p.Zx, o.Zx, p.Zy, o.Zy, p.Sx, o.Sx, p.Sy, o.Sy, p.J, o.J, p.H,
                    o.H, p.Zu, o.Zu, p.Zv, o.Zv, p.rv, o.rv, p.psi, o.psi);
    }
}

TEST_P(SecondCalculation, RulesAgree)
{
    const std::uint64_t members = FromEnvironment("SECOND_MEMBERS", 2500), first = FromEnvironment("SECOND_SEED", 1);
    Tally tally;
    for (std::uint64_t seed = first; seed < first + members; ++seed)
        CheckOne(GetParam(), seed, tally, members == 1);
    std::printf("%s: %d members, %d refused, %d disagree\n", Second::FamilyName(GetParam()), tally.members,
                tally.refused, tally.disagreeing);
    for (const auto& [rule, n] : tally.compared)
        std::printf("  %-18s compared %6d higher %5d lower %5d\n", rule.c_str(), n, tally.higher[rule],
                    tally.lower[rule]);
    EXPECT_EQ(tally.disagreeing, 0);
}

using Second::Family;
INSTANTIATE_TEST_SUITE_P(Families, SecondCalculation,
                         testing::Values(Family::RolledI, Family::PlateI, Family::UnequalI, Family::Channel,
                                         Family::Tee, Family::Angle, Family::Hollow, Family::Tube),
                         [](const auto& family) {
                             std::string name = Second::FamilyName(family.param);
                             name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
                             return name;
                         });

} // namespace
