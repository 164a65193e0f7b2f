// Rules of the standards, written out by hand; patterns against all subsets.

#include <gmock/gmock.h>

#include <algorithm>
#include <stdexcept>

#include "keltrix/statics/Deflections.h"
#include "statics/RandomBeam.h"

namespace StaticsTest {

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

std::size_t AddCase(Beam& beam, const wchar_t* name, ActionKind kind, Category category = Category::None,
                    bool bySpan = false)
{
    beam.cases.push_back({name, kind, category, bySpan});
    return beam.cases.size() - 1;
}

// Dead 10 kN/m and imposed 20 kN/m; the imposed load by span.
Beam FloorBeam(const std::vector<double>& spans, Category category = Category::B)
{
    Beam beam = Continuous(spans);
    beam.cases.clear();
    beam.loads = {UniformLoad(AddCase(beam, L"Dead", ActionKind::Permanent), 10e3),
                  UniformLoad(AddCase(beam, L"Imposed", ActionKind::Imposed, category, true), 20e3)};
    return beam;
}

std::vector<std::string> Names(const Combinations& combinations, LimitState state)
{
    std::vector<std::string> names;
    for (const Combination& c : combinations.list)
        if (c.state == state) names.push_back(*c.name.ToUtf8());
    return names;
}

Combinations CombinationsOf(const Beam& beam, const RuleOptions& options)
{
    const Analysis analysis(beam);
    EXPECT_TRUE(analysis.IsAnswered());
    return Expand(analysis, MakeRules(analysis, options));
}

// "1.4 1.6 0": the unfavourable factors of a rule's cases.
std::vector<std::string> Factors(const Beam& beam, const RuleOptions& options, LimitState state)
{
    const CDesFormat format;
    std::vector<std::string> all;
    for (const CombinationRule& rule : MakeRules(Analysis(beam), options)) {
        if (rule.state != state) continue;
        CString text;
        for (std::size_t c = 0; c < beam.cases.size(); ++c) {
            double factor = 0.0;
            for (const RuleTerm& term : rule.terms)
                if (term.caseIndex == c) factor += term.unfavourable;
            text += (c ? L" " : L"") + format.NoDim(factor);
        }
        all.push_back(*text.ToUtf8());
    }
    return all;
}

constexpr RuleOptions BS{Basis::BS5950, Expression::E610};
constexpr RuleOptions EN{Basis::EN1990, Expression::E610};
constexpr RuleOptions EN_AB{Basis::EN1990, Expression::E610ab};
constexpr RuleOptions UK{Basis::EN1990UK, Expression::E610};
constexpr RuleOptions UK_AB{Basis::EN1990UK, Expression::E610ab};

} // namespace

TEST(Rules5950, Table2)
{
    Beam beam = FloorBeam({6.0});
    EXPECT_THAT(Factors(beam, BS, LimitState::Ultimate), ElementsAre("1.4 1.6"));
    EXPECT_THAT(Factors(beam, BS, LimitState::Serviceability), ElementsAre("1 1"));
    AddCase(beam, L"Wind left", ActionKind::Wind);
    AddCase(beam, L"Wind right", ActionKind::Wind);
    // Dead and imposed; all three, the winds being alternatives; dead and wind.
    EXPECT_THAT(Factors(beam, BS, LimitState::Ultimate),
                ElementsAre("1.4 1.6 0 0", "1.2 1.2 1.2 0", "1.2 1.2 0 1.2", "1.4 0 1.4 0", "1.4 0 0 1.4"));
    EXPECT_THAT(Factors(beam, BS, LimitState::Serviceability),
                ElementsAre("1 1 0 0", "1 0.8 0.8 0", "1 0.8 0 0.8", "1 0 1 0", "1 0 0 1"));
    for (const CombinationRule& rule : MakeRules(Analysis(beam), BS))
        for (const RuleTerm& term : rule.terms) {
            EXPECT_FALSE(term.source.IsEmpty());
            EXPECT_EQ(term.favourable, term.caseIndex == 0 ? 1.0 : 0.0);
        }
}

TEST(RulesEN1990, Expression610)
{
    Beam beam = FloorBeam({6.0});
    EXPECT_THAT(Factors(beam, EN, LimitState::Ultimate), ElementsAre("1.35 1.5"));
    AddCase(beam, L"Snow", ActionKind::Snow);
    AddCase(beam, L"Wind", ActionKind::Wind);
    // Leading imposed, snow, wind. 1.5 ψ0: offices 0.7, snow 0.5, wind 0.6 (UK 0.5).
    EXPECT_THAT(Factors(beam, EN, LimitState::Ultimate),
                ElementsAre("1.35 1.5 0.75 0.9", "1.35 1.05 1.5 0.9", "1.35 1.05 0.75 1.5"));
    EXPECT_THAT(Factors(beam, UK, LimitState::Ultimate),
                ElementsAre("1.35 1.5 0.75 0.75", "1.35 1.05 1.5 0.75", "1.35 1.05 0.75 1.5"));
    EXPECT_THAT(Factors(beam, EN, LimitState::Characteristic),
                ElementsAre("1 1 0.5 0.6", "1 0.7 1 0.6", "1 0.7 0.5 1"));
    // ψ1: 0.5, 0.2, 0.2; ψ2: 0.3, 0, 0.
    EXPECT_THAT(Factors(beam, EN, LimitState::Frequent), ElementsAre("1 0.5 0 0", "1 0.3 0.2 0", "1 0.3 0 0.2"));
    EXPECT_THAT(Factors(beam, EN, LimitState::QuasiPermanent), ElementsAre("1 0.3 0 0"));
}

TEST(RulesEN1990, Expressions610aAnd610b)
{
    Beam beam = FloorBeam({6.0});
    AddCase(beam, L"Wind", ActionKind::Wind);
    // 0.85 x 1.35 = 1.1475; UK 0.925 x 1.35 = 1.24875. Written with four digits.
    EXPECT_THAT(Factors(beam, EN_AB, LimitState::Ultimate),
                ElementsAre("1.35 1.05 0.9", "1.147 1.5 0.9", "1.147 1.05 1.5"));
    EXPECT_THAT(Factors(beam, UK_AB, LimitState::Ultimate),
                ElementsAre("1.35 1.05 0.75", "1.249 1.5 0.75", "1.249 1.05 1.5"));
    EXPECT_DOUBLE_EQ(MakeRules(Analysis(beam), EN_AB)[1].terms[0].unfavourable, 1.1475);
    EXPECT_DOUBLE_EQ(MakeRules(Analysis(beam), UK_AB)[1].terms[0].unfavourable, 1.24875);
}

TEST(RulesEN1990, ImposedLoadsOnRoofsWithoutSnowAndWind)
{
    Beam beam = FloorBeam({6.0}, Category::H);
    AddCase(beam, L"Snow", ActionKind::Snow);
    AddCase(beam, L"Wind", ActionKind::Wind);
    EXPECT_THAT(Factors(beam, UK, LimitState::Ultimate),
                ElementsAre("1.35 0 1.5 0.75", "1.35 0 0.75 1.5", "1.35 1.5 0 0"));
}

TEST(RulesEN1990, OneCategoryIsOneAction)
{
    Beam beam = FloorBeam({6.0});
    AddCase(beam, L"More offices", ActionKind::Imposed, Category::B);
    AddCase(beam, L"Storage", ActionKind::Imposed, Category::E);
    EXPECT_THAT(Factors(beam, EN, LimitState::Ultimate), ElementsAre("1.35 1.5 1.5 1.5", "1.35 1.05 1.05 1.5"));
}

TEST(RulesEN1990, WithoutACategoryPsiIsOne)
{
    Beam beam = FloorBeam({6.0}, Category::None);
    AddCase(beam, L"Wind", ActionKind::Wind);
    EXPECT_THAT(Factors(beam, EN, LimitState::QuasiPermanent), ElementsAre("1 1 0"));
    EXPECT_THAT(Factors(beam, EN, LimitState::Ultimate), ElementsAre("1.35 1.5 0.9", "1.35 1.5 1.5"));
    bool told = false;
    for (const CombinationRule& rule : MakeRules(Analysis(beam), EN))
        for (const RuleTerm& term : rule.terms)
            told = told || term.source.Find(L"no category") >= 0;
    EXPECT_TRUE(told);
}

// Table A1.1 of EN 1990, and Table NA.A1.1 of its UK National Annex.
TEST(RulesEN1990, CombinationValues)
{
    struct Row {
        ActionKind kind;
        Category category;
        Psi en, uk;
    };
    const auto imposed = ActionKind::Imposed;
    const Row rows[] = {
        {imposed, Category::A, {0.7, 0.5, 0.3}, {0.7, 0.5, 0.3}},
        {imposed, Category::B, {0.7, 0.5, 0.3}, {0.7, 0.5, 0.3}},
        {imposed, Category::C, {0.7, 0.7, 0.6}, {0.7, 0.7, 0.6}},
        {imposed, Category::D, {0.7, 0.7, 0.6}, {0.7, 0.7, 0.6}},
        {imposed, Category::E, {1.0, 0.9, 0.8}, {1.0, 0.9, 0.8}},
        {imposed, Category::F, {0.7, 0.7, 0.6}, {0.7, 0.7, 0.6}},
        {imposed, Category::G, {0.7, 0.5, 0.3}, {0.7, 0.5, 0.3}},
        {imposed, Category::H, {0.0, 0.0, 0.0}, {0.7, 0.0, 0.0}},
        {ActionKind::Snow, Category::None, {0.5, 0.2, 0.0}, {0.5, 0.2, 0.0}},
        {ActionKind::SnowAbove1000m, Category::None, {0.7, 0.5, 0.2}, {0.7, 0.5, 0.2}},
        {ActionKind::Wind, Category::None, {0.6, 0.2, 0.0}, {0.5, 0.2, 0.0}},
    };
    for (const Row& row : rows) {
        const Psi en = PsiOf(Basis::EN1990, row.kind, row.category);
        const Psi uk = PsiOf(Basis::EN1990UK, row.kind, row.category);
        EXPECT_THAT((std::array{en.psi0, en.psi1, en.psi2}), ElementsAre(row.en.psi0, row.en.psi1, row.en.psi2));
        EXPECT_THAT((std::array{uk.psi0, uk.psi1, uk.psi2}), ElementsAre(row.uk.psi0, row.uk.psi1, row.uk.psi2));
    }
}

// Both loads are uniform: the forces of all are shares of the first one's. The last has the least reactions; the dead load alone is always there.
TEST(MinimalSets, OneSpan)
{
    const Combinations c = CombinationsOf(FloorBeam({6.0}), BS);
    EXPECT_THAT(Names(c, LimitState::Ultimate),
                UnorderedElementsAre("dead and imposed: 1.4 Dead + 1.6 Imposed", "dead and imposed: 1.4 Dead",
                                     "dead and imposed: 1 Dead"));
    EXPECT_THAT(Names(c, LimitState::Serviceability),
                UnorderedElementsAre("dead and imposed: 1 Dead + 1 Imposed", "dead and imposed: 1 Dead"));
    EXPECT_EQ(*c.list[0].clause.ToUtf8(), "BS 5950-1 2.4.1.2, Table 2");
    ASSERT_EQ(c.list[0].sources.size(), 2U);
    EXPECT_EQ(*c.list[0].sources[1].ToUtf8(), "Table 2: imposed load 1.6");
}

// With one span loaded, 1.0 of the dead load makes the least reaction at the far end; alone, the least at the middle.
TEST(MinimalSets, TwoSpans)
{
    const Combinations c = CombinationsOf(FloorBeam({8.0, 8.0}), BS);
    EXPECT_THAT(Names(c, LimitState::Ultimate),
                UnorderedElementsAre("dead and imposed: 1.4 Dead + 1.6 Imposed", "dead and imposed: 1.4 Dead",
                                     "dead and imposed: 1.4 Dead + 1.6 Imposed on span 1",
                                     "dead and imposed: 1.4 Dead + 1.6 Imposed on span 2",
                                     "dead and imposed: 1 Dead + 1.6 Imposed on span 1",
                                     "dead and imposed: 1 Dead + 1.6 Imposed on span 2", "dead and imposed: 1 Dead"));
    EXPECT_THAT(Names(c, LimitState::Serviceability),
                UnorderedElementsAre("dead and imposed: 1 Dead + 1 Imposed", "dead and imposed: 1 Dead",
                                     "dead and imposed: 1 Dead + 1 Imposed on span 1",
                                     "dead and imposed: 1 Dead + 1 Imposed on span 2"));
}

// Of two rules that give the same factors one is left; the name is that of the first.
TEST(MinimalSets, TheSameFactorsOnce)
{
    Beam beam = FloorBeam({6.0});
    beam.loads.push_back(UniformLoad(AddCase(beam, L"Wind", ActionKind::Wind), -5e3));
    const Combinations c = CombinationsOf(beam, BS);
    const std::vector<std::string> names = Names(c, LimitState::Ultimate);
    EXPECT_THAT(names, testing::Contains("dead and imposed: 1.4 Dead"));
    EXPECT_THAT(names, testing::Not(testing::Contains("dead and wind: 1.4 Dead")));
    EXPECT_GT(c.dropped, 0U);
}

// Continuous beams of S spans: odd and even spans, at each inner support the two beside it and alternate ones beyond, the
// complements of these, all, none.
TEST(MinimalSets, KnownPatternsOfContinuousBeams)
{
    for (std::size_t spans = 2; spans <= 7; ++spans) {
        const Combinations c = CombinationsOf(FloorBeam(std::vector<double>(spans, 6.0)), EN);
        std::vector<std::vector<bool>> expected;
        const auto add = [&](std::vector<bool> pattern) {
            const bool all = std::find(pattern.begin(), pattern.end(), false) == pattern.end();
            if (all) pattern.clear();
            if (std::find(expected.begin(), expected.end(), pattern) == expected.end()) expected.push_back(pattern);
        };
        add(std::vector<bool>(spans, true));
        add(std::vector<bool>(spans, false));
        for (const std::size_t parity : {0U, 1U}) {
            std::vector<bool> pattern(spans);
            for (std::size_t i = 0; i < spans; ++i)
                pattern[i] = i % 2 == parity;
            add(pattern);
        }
        for (std::size_t support = 1; support < spans; ++support) {
            std::vector<bool> pattern(spans);
            for (std::size_t i = 0; i < spans; ++i)
                pattern[i] = i < support ? (support - 1 - i) % 2 == 0 : (i - support) % 2 == 0;
            add(pattern);
            pattern.flip();
            if (std::find(pattern.begin(), pattern.end(), true) != pattern.end()) add(pattern);
        }
        std::vector<std::vector<bool>> found;
        for (const Combination& combination : c.list)
            if (combination.state == LimitState::Characteristic) {
                const Term& last = combination.terms.back();
                found.push_back(last.caseIndex == 1 ? last.spans : std::vector<bool>(spans, false));
            }
        EXPECT_THAT(found, testing::UnorderedElementsAreArray(expected)) << spans;
    }
}

namespace {

// Values of all effects at some places; moments, shears and deflections in shares of the largest that any unit alone makes.
class Effects {
public:
    explicit Effects(const Analysis& analysis) : m_analysis(analysis)
    {
        for (const Unit& unit : analysis.Units()) {
            const Line& line = unit.response.major;
            const double length = analysis.GetBeam().length;
            m_moment = std::max(m_moment, std::abs(line.Moments(0.0, length).Worst().value));
            m_deflection = std::max(m_deflection, std::abs(line.Deflections(0.0, length).Worst().value));
            m_shear = std::max({m_shear, std::abs(line.Shears(0.0, length).Worst().value), m_moment / length});
        }
    }

    std::vector<double> Of(const Response& r) const
    {
        std::vector<double> values;
        for (const Piece& p : r.major.Pieces())
            for (const double s : {0.0, 0.17, 0.5, 0.77, 1.0}) {
                values.push_back(p.MomentAt(s * p.length) / m_moment);
                values.push_back(p.ShearAt(s * p.length) / m_shear);
            }
        for (const Reaction& reaction : r.reactions) {
            values.push_back(reaction.vertical / m_shear);
            values.push_back(reaction.moment / m_moment);
        }
        for (const Span& span : m_analysis.Spans()) {
            const double from = r.major.Deflection(span.heldFrom ? span.from : span.to);
            const double to = r.major.Deflection(span.heldTo ? span.to : span.from);
            for (const double s : {0.13, 0.5, 0.91}) {
                const double w = r.major.Deflection((1.0 - s) * span.from + s * span.to);
                values.push_back((w - (1.0 - s) * from - s * to) / m_deflection);
            }
        }
        return values;
    }

private:
    const Analysis& m_analysis;
    double m_moment = 1e-6;
    double m_shear = 1e-6;
    double m_deflection = 1e-15;
};

struct Envelope {
    std::vector<double> least, greatest;

    void Take(const std::vector<double>& values)
    {
        if (least.empty()) least = greatest = values;
        for (std::size_t i = 0; i < values.size(); ++i) {
            least[i] = std::min(least[i], values[i]);
            greatest[i] = std::max(greatest[i], values[i]);
        }
    }
};

} // namespace

// Every subset of the loaded spans of two imposed cases, each with both factors of the permanent load.
TEST(RandomLaws, EnvelopeOfAllPatterns)
{
    BeamGenerator::Kinds kinds;
    kinds.minor = false;
    kinds.cases = 3;
    ForRandomBeams(150, kinds, [](const Analysis& plain, BeamGenerator&) {
        Beam beam = plain.GetBeam();
        for (const std::size_t c : {1U, 2U}) {
            beam.cases[c].kind = ActionKind::Imposed;
            beam.cases[c].category = Category::A;
            beam.cases[c].bySpan = true;
        }
        const Analysis analysis(beam);
        std::vector<const Unit*> units;
        for (const Unit& unit : analysis.Units())
            if (unit.caseIndex > 0) units.push_back(&unit);
        if (units.size() > 9) return;
        const Effects effects(analysis);
        Envelope all;
        const std::vector<double> dead = effects.Of(analysis.OfCase(0));
        std::vector<std::vector<double>> imposed;
        for (const Unit* unit : units)
            imposed.push_back(effects.Of(unit->response));
        for (const double permanent : {1.0, 1.4})
            for (std::size_t subset = 0; subset < (std::size_t{1} << units.size()); ++subset) {
                std::vector<double> sum = dead;
                for (std::size_t i = 0; i < sum.size(); ++i) {
                    sum[i] *= permanent;
                    for (std::size_t u = 0; u < units.size(); ++u)
                        if (subset >> u & 1U) sum[i] += 1.6 * imposed[u][i];
                }
                all.Take(sum);
            }
        Envelope found;
        for (const Combination& c : Expand(analysis, MakeRules(analysis, BS)).list)
            if (c.state == LimitState::Ultimate) found.Take(effects.Of(analysis.Of(c.terms)));
        ASSERT_EQ(found.least.size(), all.least.size());
        for (std::size_t i = 0; i < all.least.size(); ++i) {
            EXPECT_NEAR(found.greatest[i], all.greatest[i], 1e-8) << i;
            EXPECT_NEAR(found.least[i], all.least[i], 1e-8) << i;
        }
    });
}

TEST(OwnTables, FactorsByCaseAndFavourableOnesOfVariableLoads)
{
    const Analysis analysis(FloorBeam({8.0, 8.0}));
    CombinationRule rule;
    rule.name = L"own";
    rule.terms = {{0, 1.2, 1.2, L"client"}, {1, 1.5, 0.5, L"client"}};
    std::vector<std::string> names;
    for (const Combination& c : Expand(analysis, {rule}).list) {
        names.push_back(*c.name.ToUtf8());
        const Response r = analysis.Of(c.terms);
        for (const Piece& p : r.major.Pieces()) {
            const Term& last = c.terms.back();
            const bool light = last.factor == 0.5 && (last.spans.empty() || last.spans[p.start < 7.9 ? 0 : 1]);
            EXPECT_NEAR(p.loadLeft, 12e3 + (light ? 10e3 : 30e3), 1e-6) << names.back();
        }
    }
    EXPECT_THAT(names, UnorderedElementsAre("own: 1.2 Dead + 1.5 Imposed", "own: 1.2 Dead + 0.5 Imposed",
                                            "own: 1.2 Dead + 1.5 Imposed on span 1 + 0.5 Imposed on span 2",
                                            "own: 1.2 Dead + 1.5 Imposed on span 2 + 0.5 Imposed on span 1"));
}

TEST(OwnTables, ARuleWithoutItsCasesIsLeftOutAndToldOf)
{
    const Analysis analysis(FloorBeam({8.0}));
    CombinationRule rule;
    rule.name = L"own";
    rule.terms = {{0, 1.2, 1.2, L"client"}, {7, 1.5, 0.0, L"client"}};
    const Combinations c = Expand(analysis, {rule});
    EXPECT_TRUE(c.list.empty());
    ASSERT_FALSE(c.notes.empty());
    EXPECT_EQ(*c.notes[0].text.ToUtf8(), "own: left out, because it names a case that the beam has not");
    // A term's list of spans may be short.
    EXPECT_EQ(analysis.Of({{1, 1.0, {false}}}).major.Moment(4.0, Side::Left), 0.0);
}

// A load by span is divided at the supports, and a force on a support is there once.
TEST(Units, AddUpToTheirCase)
{
    Beam beam = FloorBeam({8.0, 8.0});
    beam.length = 18.0;
    beam.loads = {PointLoad(1, 50e3, 8.0), PointLoad(1, 20e3, 16.0), TrapezoidalLoad(1, 2.0, 3e3, 18.0, 19e3)};
    const Analysis analysis(beam);
    ASSERT_EQ(analysis.Units().size(), 3U);
    Beam whole = beam;
    whole.cases[1].bySpan = false;
    const Response sum = analysis.OfCase(1);
    const Response once = Analysis(whole).OfCase(1);
    double total = 0.0;
    for (std::size_t i = 0; i < once.reactions.size(); ++i) {
        ExpectClose(sum.reactions[i].vertical, once.reactions[i].vertical);
        total += sum.reactions[i].vertical;
    }
    ExpectClose(total, 50e3 + 20e3 + 11e3 * 16.0);
    ExpectClose(sum.major.Moment(8.0, Side::Left), once.major.Moment(8.0, Side::Left));
}

// The smaller load stays, although its forces are a share of the other's: what comes with it, such as its height, does not.
TEST(MinimalSets, ALoadThatTheOtherHasNotStays)
{
    Beam beam = Continuous({6.0});
    beam.cases.clear();
    beam.loads = {UniformLoad(AddCase(beam, L"Left wind", ActionKind::Wind), 5e3),
                  UniformLoad(AddCase(beam, L"Right wind", ActionKind::Wind), 4e3)};
    const auto count = [&] { return Names(CombinationsOf(beam, BS), LimitState::Ultimate).size(); };
    EXPECT_EQ(count(), 2U);
}

// Dead 7.6 kN/m and imposed 20 kN/m on 6 m: reactions from 1.0 x 7.6 x 3 = 22.8 kN to (1.4 x 7.6 + 1.6 x 20) x 3 = 127.92 kN.
TEST(MinimalSets, TheLeastReactionIsThatOfPermanentLoadsAlone)
{
    Beam beam = FloorBeam({6.0});
    beam.loads[0] = UniformLoad(0, 7.6e3);
    const Analysis analysis(beam);
    double least = INFINITY;
    double greatest = -INFINITY;
    for (const Combination& c : CombinationsOf(beam, BS).list) {
        if (c.state != LimitState::Ultimate) continue;
        const double reaction = analysis.Of(c.terms).reactions[0].vertical;
        least = std::min(least, reaction);
        greatest = std::max(greatest, reaction);
    }
    EXPECT_NEAR(least, 22.8e3, 1e-6);
    EXPECT_NEAR(greatest, 127.92e3, 1e-6);
}

// For every standard and limit state.
TEST(MinimalSets, EverythingAndPermanentLoadsAloneStay)
{
    Beam beam = FloorBeam({6.0, 8.0});
    AddCase(beam, L"Wind", ActionKind::Wind);
    beam.loads.push_back(UniformLoad(2, -3e3));
    for (const RuleOptions& options : {BS, EN, EN_AB, UK, UK_AB}) {
        const Combinations c = CombinationsOf(beam, options);
        std::vector<LimitState> states;
        for (const Combination& combination : c.list)
            if (std::find(states.begin(), states.end(), combination.state) == states.end())
                states.push_back(combination.state);
        for (const LimitState state : states) {
            std::size_t permanent = 0;
            std::size_t all = 0;
            for (const Combination& combination : c.list) {
                if (combination.state != state) continue;
                std::vector<std::size_t> whole;
                for (const Term& term : combination.terms)
                    if (term.spans.empty()) whole.push_back(term.caseIndex);
                permanent += whole == std::vector<std::size_t>{0} && combination.terms.size() == 1;
                all += whole.size() == (state == LimitState::QuasiPermanent ? 2 : 3);
            }
            EXPECT_GE(permanent, 1U) << static_cast<int>(state);
            EXPECT_GE(all, state == LimitState::Frequent ? 0U : 1U) << static_cast<int>(state);
        }
    }
}

// A self weight with a case of its own, of a beam that the user gave without one.
TEST(SelfWeight, IsInTheRulesAndACaseWithoutARuleIsTold)
{
    Beam beam = Continuous({6.0});
    beam.cases.clear();
    beam.loads = {UniformLoad(AddCase(beam, L"Imposed", ActionKind::Imposed, Category::B), 20e3)};
    beam.selfWeight = true;
    beam.section.mass = 100.0;
    const Analysis analysis(beam);
    const Combinations c = Expand(analysis, MakeRules(analysis, BS));
    EXPECT_THAT(Names(c, LimitState::Ultimate), testing::Contains("dead and imposed: 1.4 Self weight + 1.6 Imposed"));
    for (const Note& note : c.notes)
        EXPECT_LT(note.text.Find(L"act in no "), 0);
    CombinationRule rule;
    rule.name = L"own";
    rule.terms = {{0, 1.6, 0.0, L"client"}, {1, 0.0, 0.0, L"client"}};
    const Combinations own = Expand(analysis, {rule});
    ASSERT_EQ(own.notes.size(), 1U);
    EXPECT_EQ(*own.notes[0].text.ToUtf8(),
              "the loads of the case Self weight act in no ultimate combination: no rule counts them");
    EXPECT_TRUE(own.notes[0].isUnsafe);
    EXPECT_EQ(Expand(analysis, {}).notes.size(), 2U);
}

TEST(OwnTables, RulesThatSayNothingOfUseAreLeftOutAndToldOf)
{
    const Analysis analysis(FloorBeam({8.0}));
    CombinationRule good;
    good.name = L"own";
    good.terms = {{0, 1.2, 1.2, L"client"}, {1, 1.5, 0.0, L"client"}};
    CombinationRule notANumber = good;
    notANumber.terms[1].unfavourable = NAN;
    CombinationRule infinite = good;
    infinite.terms[0].favourable = INFINITY;
    CombinationRule noState = good;
    noState.state = static_cast<LimitState>(17);
    for (const CombinationRule& rule : {notANumber, infinite}) {
        const Combinations c = Expand(analysis, {rule});
        EXPECT_TRUE(c.list.empty());
        ASSERT_EQ(c.notes.size(), 4U); // patterns, and the loads of both cases
        EXPECT_EQ(*c.notes[0].text.ToUtf8(), "own: left out, because it has a factor that is not a number");
    }
    EXPECT_EQ(*Expand(analysis, {noState}).notes[0].text.ToUtf8(), "own: left out, because it is for no limit state");
    EXPECT_EQ(Expand(analysis, {good}).list.size(), 2U);
    EXPECT_THROW(MakeRules(analysis, {static_cast<Basis>(9), Expression::E610}), std::invalid_argument);
    EXPECT_THROW(MakeRules(analysis, {Basis::EN1990, static_cast<Expression>(9)}), std::invalid_argument);
    for (const int basis : {-1, 9}) {
        EXPECT_THROW(PsiOf(static_cast<Basis>(basis), ActionKind::Wind, Category::None), std::invalid_argument);
        EXPECT_THROW(DeflectionLimitsOf(static_cast<Basis>(basis), true), std::invalid_argument);
    }
    // BS 5950-1 has no such factors, nor has a permanent action: nothing is reduced.
    for (const Psi& none : {PsiOf(Basis::BS5950, ActionKind::Imposed, Category::B),
                            PsiOf(Basis::EN1990, ActionKind::Permanent, Category::B)}) {
        EXPECT_EQ(none.psi0, 1.0);
        EXPECT_EQ(none.psi1, 1.0);
        EXPECT_EQ(none.psi2, 1.0);
    }
    const Analysis loose(Single(6.0, PINNED, 0));
    EXPECT_TRUE(MakeRules(loose, BS).empty());
    ASSERT_EQ(Expand(loose, {good}).notes.size(), 1U);
}

} // namespace StaticsTest
