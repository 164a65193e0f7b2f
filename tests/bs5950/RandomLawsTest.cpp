// Laws that hold for every member, tried on random ones of every shape: dividing a sub-span changes nothing, a member turned end
// for end gives the same utilisations, a restraint added lowers no resistance.
//
// KELTRIX_TEST_SCALE multiplies the number of members.

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <ostream>
#include <sstream>
#include <string_view>

#include "Members.h"
#include "design/RandomMember.h"
#include "support/RandomCases.h"

using Keltrix::TestSupport::RandomCases;

namespace {

using namespace BS5950Test;
using DesignTest::Divided;
using DesignTest::Member;
using DesignTest::Mirrored;
using DesignTest::RandomMember;

constexpr unsigned SEED = 20260311;
constexpr int MEMBERS_A_SHAPE = 720;

struct SectionOf {
    const wchar_t* section;
    const wchar_t* grade;
    int type;
};

std::ostream& operator<<(std::ostream& out, const SectionOf& s) { return out << *CString(s.section).ToUtf8(); }

const SectionOf SECTIONS[] = {
    {L"UB 457x191x67", L"S275", SEC_ROLLED},          {L"UC 254x254x89", L"S355", SEC_ROLLED},
    {L"I 1200x400x10x25", L"S355", SEC_WELDED},       {L"GI 600x300x200x12x20x15", L"S275", SEC_WELDED},
    {L"GI 600x200x300x7x15x20", L"S355", SEC_WELDED}, {L"PFC 300x90x41", L"S275", SEC_ROLLED},
    {L"T 254x343x63", L"S275", SEC_ROLLED},           {L"T 229x191x34", L"S355", SEC_ROLLED},
    {L"L 150x150x15", L"S275", SEC_ROLLED},           {L"L 200x100x15", L"S355", SEC_ROLLED},
    {L"L 150x150x10", L"S355", SEC_ROLLED},           {L"RHS 200x100x6.3", L"S355", SEC_ROLLED},
    {L"BOX 400x300x8x8", L"S355", SEC_WELDED},        {L"CHS 168.3x5", L"S355", SEC_ROLLED},
};

// What varies beside forces and restraints.
struct Manner {
    int option = CSteelMemberBS5950::SIMPLIFIED;
    bool lengthsGiven = false;
    DesignOptions options;
};

Manner RandomManner(std::mt19937& random)
{
    const auto one = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(random) == 0; };
    Manner manner;
    if (one(2)) manner.option = CSteelMemberBS5950::MORE_EXACT;
    manner.lengthsGiven = one(10);
    manner.options.connection = one(3) ? Connection::OneBolt : one(2) ? Connection::TwoBoltsMore : Connection::NotGiven;
    manner.options.momentsHoldEccentricity = one(3);
    manner.options.simpleColumn = one(5);
    return manner;
}

// Sections differ in strength by a factor of a hundred; actions that are far beyond it would hide differences.
Member Scaled(Member m, double factor)
{
    for (Steel::CSubSpan& s : m.subSpans) {
        s.SetForcesAll(BS5950Test::Scaled(s.GetForcesLeft(), factor), BS5950Test::Scaled(s.GetForcesRight(), factor));
        s.SetMomentsAll(BS5950Test::Scaled(s.GetMomentsLeft(), factor),
                        BS5950Test::Scaled(s.GetMomentsRight(), factor));
    }
    return m;
}

// A member that is checked again and again with other points and forces.
class Subject {
public:
    explicit Subject(const SectionOf& s)
    {
        CSection section{CString(s.section)};
        CSecComp component = section.Component(0);
        component.SetType(s.type);
        section.SetComponent(0, component);
        if (!m_member.SetKeltrixSec(section) || !m_member.SetGrade(GradeNamed(s.grade)))
            throw std::runtime_error("section of a test is refused");
    }

    const CSteelMemberBS5950& Check(const Member& m, const Manner& manner)
    {
        m_member.SetDesOpt(manner.option);
        m_member.SetOptions(manner.options);
        m_member.SetLengthOverride(manner.lengthsGiven);
        m_member.SetLyy(-1.0);
        m_member.SetLzz(-0.9);
        m_member.SetLlt(-0.8);
        m_member.SetMemberPointVec(m.points);
        m_member.SetSubSpanVec(m.subSpans);
        m_member.Check();
        return m_member;
    }

    const CSteelMemberBS5950& Get() const { return m_member; }

private:
    CSteelMemberBS5950 m_member;
};

// Utilisations of the ledger by rule, ascending.
std::map<Rule, std::vector<double>> Utilisations(const CSteelMemberBS5950& member)
{
    std::map<Rule, std::vector<double>> all;
    for (const LedgerEntry& e : member.Checks().Entries())
        all[e.rule].push_back(e.utilisation);
    for (auto& [rule, utilisations] : all)
        std::sort(utilisations.begin(), utilisations.end());
    return all;
}

std::string Words(const Member& m)
{
    std::ostringstream text;
    text.precision(17);
    for (std::size_t i = 0; i < m.points.size(); ++i) {
        text << "\npoint " << m.points[i].GetPos() << " " << *m.points[i].GetRestraint().UserDescription().ToUtf8();
        if (i + 1 == m.points.size()) break;
        const Steel::CSubSpan& s = m.subSpans[i];
        const auto put = [&](const Vector& v) { text << " " << v.x << "," << v.y << "," << v.z; };
        text << "\n  sub-span " << *s.GetRestraint().UserDescription().ToUtf8();
        put(s.GetForcesLeft());
        put(s.GetForcesRight());
        put(s.GetMomentsLeft());
        put(s.GetMomentsRight());
    }
    return text.str();
}

::testing::AssertionResult Agree(const std::map<Rule, std::vector<double>>& a,
                                 const std::map<Rule, std::vector<double>>& b)
{
    if (a.size() != b.size()) return ::testing::AssertionFailure() << a.size() << " rules and " << b.size();
    for (const auto& [rule, utilisations] : a) {
        const std::string name = *CString(RuleName(rule)).ToUtf8();
        const auto other = b.find(rule);
        if (other == b.end()) return ::testing::AssertionFailure() << name << " is missing";
        if (other->second.size() != utilisations.size())
            return ::testing::AssertionFailure()
                   << name << ": " << utilisations.size() << " entries and " << other->second.size();
        for (std::size_t i = 0; i < utilisations.size(); ++i) {
            const double u = utilisations[i];
            const double v = other->second[i];
            if (u != v && !(std::abs(u - v) <= 1e-9 * std::max(1.0, std::abs(u))))
                return ::testing::AssertionFailure() << name << ": " << u << " and " << v << ", differing by " << u - v;
        }
    }
    return ::testing::AssertionSuccess();
}

class RandomMembers : public ::testing::TestWithParam<SectionOf> {
protected:
    // Each shape has random numbers of its own.
    std::mt19937 Random() const
    {
        unsigned seed = SEED;
        for (const wchar_t c : std::wstring_view(GetParam().section))
            seed = seed * 31 + static_cast<unsigned>(c);
        return std::mt19937(seed);
    }

    // Actions of the size that the section can carry, more or less.
    Member Loaded(std::mt19937& random) const
    {
        const SectionProperties s = PropertiesOf(GetParam().section, GetParam().type);
        const double share = std::uniform_real_distribution<double>(0.1, 1.5)(random);
        return Scaled(RandomMember(random), share * 300e6 * s.Zx / 6e5);
    }
};

TEST_P(RandomMembers, AreTheSameHoweverTheyAreDivided)
{
    std::mt19937 random = Random();
    std::uniform_real_distribution<double> share(0.0, 1.0);
    Subject whole(GetParam());
    Subject divided(GetParam());
    for (int i = 0; i < RandomCases(MEMBERS_A_SHAPE); ++i) {
        const Member m = Loaded(random);
        const Manner manner = RandomManner(random);
        Member d = m;
        for (int cuts = 0; cuts < 3; ++cuts) {
            const auto k = static_cast<std::size_t>(share(random) * static_cast<double>(d.subSpans.size()));
            d = Divided(d, k, 0.01 + 0.98 * share(random));
        }
        ASSERT_TRUE(Agree(Utilisations(whole.Check(m, manner)), Utilisations(divided.Check(d, manner))))
            << "seed " << SEED << ", member " << i << Words(m) << "\ndivided" << Words(d);
    }
}

TEST_P(RandomMembers, AreTheSameTurnedEndForEnd)
{
    std::mt19937 random = Random();
    Subject one(GetParam());
    Subject other(GetParam());
    for (int i = 0; i < RandomCases(MEMBERS_A_SHAPE); ++i) {
        const Member m = Loaded(random);
        const Manner manner = RandomManner(random);
        ASSERT_TRUE(Agree(Utilisations(one.Check(m, manner)), Utilisations(other.Check(Mirrored(m), manner))))
            << "seed " << SEED << ", member " << i << Words(m);
    }
}

// Smallest resistance of a mode at a place. Stretches of a flange that nothing compresses resist nothing and need not.
double ResistanceAt(const CSteelMemberBS5950& member, BucklingMode mode, double x)
{
    double least = std::numeric_limits<double>::infinity();
    for (const SpanResult& s : member.Spans()) {
        const bool checked = mode != BucklingMode::LateralTorsional || s.applied;
        if (s.mode == mode && checked && x > s.start && x < s.end) least = std::min(least, s.resistance);
    }
    return least;
}

// Ends that are held or free of everything, and points and lengths that are held laterally: with flanges held against rotation
// on plan, partial torsional restraint, or tips held in torsion the tables themselves can break the law.
Member PlainlyHeld(std::mt19937& random, Member m)
{
    static const wchar_t* const HOLDS[] = {L"Free", L"Free", L"F1L", L"F2L", L"F12L", L"Pinned", L"FCL"};
    const auto any = [&]() {
        return HOLDS[std::uniform_int_distribution<std::size_t>(0, std::size(HOLDS) - 1)(random)];
    };
    const auto one = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(random) == 0; };
    m.points.front().SetRestraint(DesignTest::Restraint(one(6) ? L"Free" : L"Pinned"));
    for (std::size_t i = 1; i + 1 < m.points.size(); ++i)
        m.points[i].SetRestraint(DesignTest::Restraint(any()));
    for (Steel::CSubSpan& s : m.subSpans)
        s.SetRestraint(DesignTest::Restraint(one(2) ? L"Free" : one(2) ? L"F1L" : one(2) ? L"F2L" : L"FCL"));
    return m;
}

Member WithOneMore(std::mt19937& random, Member m)
{
    static const wchar_t* const MORE[] = {L"F1L", L"F2L", L"F12L", L"TR F1L"};
    const Steel::CRestraint more =
        DesignTest::Restraint(MORE[std::uniform_int_distribution<std::size_t>(0, std::size(MORE) - 1)(random)]);
    const auto place = std::uniform_int_distribution<std::size_t>(0, m.points.size() + m.subSpans.size() - 3)(random);
    const auto add = [&](auto& to) {
        Steel::CRestraint r = to.GetRestraint();
        r.Add(more.RestFlag());
        to.SetRestraint(r);
    };
    if (place + 2 < m.points.size())
        add(m.points[place + 1]);
    else
        add(m.subSpans[place + 2 - m.points.size()]);
    return m;
}

TEST_P(RandomMembers, LoseNoResistanceByARestraint)
{
    std::mt19937 random = Random();
    Subject before(GetParam());
    Subject after(GetParam());
    Manner manner;
    for (int i = 0; i < RandomCases(MEMBERS_A_SHAPE); ++i) {
        const Member m = PlainlyHeld(random, Divided(Loaded(random), 0, 0.5));
        const Member more = WithOneMore(random, m);
        before.Check(m, manner);
        after.Check(more, manner);
        for (const BucklingMode mode : {BucklingMode::Major, BucklingMode::Minor, BucklingMode::LateralTorsional})
            for (int j = 0; j < 40; ++j) {
                const double x = m.points.front().GetPos() + (j + 0.517) / 40.0 * m.Length();
                ASSERT_GE(ResistanceAt(after.Get(), mode, x), ResistanceAt(before.Get(), mode, x) * (1.0 - 1e-9))
                    << "seed " << SEED << ", member " << i << ", mode " << static_cast<int>(mode) << " at " << x
                    << Words(m) << "\nwith one more" << Words(more);
            }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryShape, RandomMembers, ::testing::ValuesIn(SECTIONS),
                         [](const ::testing::TestParamInfo<SectionOf>& shape) {
                             std::string name = *CString(shape.param.section).ToUtf8();
                             std::replace_if(
                                 name.begin(), name.end(),
                                 [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
                             return name;
                         });

} // namespace
