#include "MemberCheck.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "AcrossChecks.h"
#include "CompressionChecks.h"
#include "ElasticRules.h"
#include "Interaction.h"
#include "LateralChecks.h"
#include "LocalChecks.h"
#include "TorsionalBuckling.h"
#include "keltrix/design/MemberInput.h"

namespace Keltrix::BS5950 {

void MemberCheck::CheckGeneral()
{
    ElasticRules(m_model).FindUnits(m_found);
    LocalChecks(m_model, m_found).FindPositions();
    m_found.ledger.Drop(Stage::General);
    LedgerEntry strength;
    strength.rule = Rule::DesignStrength;
    strength.clause = m_model.Steel().grade == Grade::User ? L"3.1.1" : L"3.1.1, Table 9";
    strength.status = CheckStatus::Passed;
    strength.resistance = m_model.Steel().py;
    strength.symbol = L"py";
    strength.quantity = Quantity::Stress;
    m_found.ledger.Add(strength);
    RecordOutside();
    RecordAssumptions();
    RecordWarnings();
}

void MemberCheck::Add(Rule rule, CheckStatus status, const wchar_t* why)
{
    LedgerEntry e;
    e.rule = rule;
    e.clause = RuleClause(rule);
    e.status = status;
    e.reason = why;
    m_found.ledger.Add(e);
}

// What the input does not hold, and what its kind of member does not need.
void MemberCheck::RecordOutside()
{
    const auto outside = [this](Rule rule, const wchar_t* why) { Add(rule, CheckStatus::OutOfScope, why); };
    const auto absent = [this](Rule rule, const wchar_t* why) { Add(rule, CheckStatus::NotApplicable, why); };
    outside(Rule::SwayStability,
            L"a matter of the frame: forces and moments are taken as given, sway effects included");
    outside(Rule::Robustness, L"a matter of the structure: ties and key elements");
    outside(Rule::Fatigue, L"the input holds one set of actions, no cycles");
    outside(Rule::BrittleFracture, L"the input has no quality of the steel at its thickness, temperature and details");
    outside(Rule::Deflection, L"a serviceability limit; the input holds factored actions");
    outside(Rule::Vibration, L"a serviceability limit; the input holds no masses");
    outside(Rule::Restraints, L"the strength and stiffness of what restrains the member are not part of the input");
    outside(Rule::Connections, L"connections are not part of the input");
    outside(Rule::WebOpenings, L"the section is taken without openings; holes count by the net area alone");
    absent(Rule::CompoundStruts, L"the member is one section, not laced, battened or back to back");
    absent(
        Rule::TensionFlange,
        UsesElastic(m_found.units)
            ? L"an alternative that is not used: the elastic critical moment has restraints of the tension flange in it"
            : L"an alternative that is not used: each compressed flange is checked between the sections that hold it");
    const bool angle = m_model.Properties().shape == Shape::Angle;
    absent(Rule::AngleInteraction, angle ? L"not used: angles are judged about their principal axes by 4.3.8 and "
                                           L"4.8.3.3.1, all terms with the worse sign"
                                         : L"not an angle");
    absent(Rule::SimpleColumn, m_model.options.simpleColumn
                                   ? L"takes the place of the rules of lateral-torsional buckling and interaction, and "
                                     L"stands there"
                                   : L"the options do not say that the member is a column in simple construction");
}

void MemberCheck::RecordAssumptions()
{
    const Material& m = m_model.Steel();
    if (m_model.section.PlasElasAssumed())
        m_found.Assume(L"plastic to elastic limit", L"Mc limited to 1.2 py Z (4.2.5.1), none was given", 1.2);
    if (m_model.section.Design().plasElas > 1.5)
        m_found.Assume(L"plastic to elastic limit", L"Mc limited to 1.5 py Z (4.2.5.1), more was given", 1.5);
    if (m.keAssumed)
        m_found.Assume(L"Ke", L"effective net area coefficient 1.0: the grade gives no tensile strength (3.4.3)", 1.0);
    if (m.grade == Grade::User && m_model.section.GetGrade().GetUserE() == 0.0)
        m_found.Assume(L"modulus of elasticity", L"205 kN/mm² (3.1.3), the grade gives none", ELASTIC_MODULUS);
    if (const wchar_t* note = FabricationNote(m_model.Properties())) m_found.Assume(L"fabrication", note, std::nan(""));
    const Shape shape = m_model.Properties().shape;
    if (shape == Shape::Channel || shape == Shape::Tee || shape == Shape::Angle)
        m_found.Assume(L"line of loading", L"loads act through the shear centre, so that bending causes no torsion",
                       std::nan(""));
    std::erase_if(m_found.assumptions, [](const Assumption& a) { return a.isLoad; });
    Design::AssumeUniformLoads(m_model.major, m_model.minor, m_found.assumptions);
}

void MemberCheck::RecordWarnings()
{
    m_found.warnings.clear();
    const CDesFormat& fmt = m_model.format;
    Design::WarnOfUnbalancedForces(m_model.major, m_model.minor, fmt, m_found.warnings);
    const double factor = m_model.momentFactor.value_or(1.0);
    if (factor < 0.4) {
        CString text;
        text.Format(
            L"the equivalent uniform moment factor is given as %s; no table of the standard has one below 0.4 (Tables "
            L"18 and 26)",
            fmt.NoDim(factor));
        m_found.warnings.push_back({Design::WarningKind::LowMomentFactor, text, -1, std::nan(""), std::nan("")});
    }
    ElasticRules(m_model).AddWarnings(m_found);
}

void MemberCheck::AssumeFactors()
{
    if (m_model.momentFactor)
        m_found.Assume(L"equivalent uniform moment factor", L"given by the user in place of m and mLT",
                       *m_model.momentFactor);
    if (!m_model.options.simpleColumn) return;
    const bool all = std::all_of(m_found.spans.begin(), m_found.spans.end(), [](const SpanResult& span) {
        return span.mode != BucklingMode::LateralTorsional || span.lateral.simpleColumn;
    });
    m_found.Assume(
        L"column in simple construction",
        all ? L"as the options say: the moments are the nominal ones of 4.7.7, m = 1.0 and λLT = 0.5 L/ry"
            : L"the options say so, but 4.7.7 is used only for I, H and hollow sections in compression between "
              L"levels that "
              L"are held in both directions, under end moments alone and without given effective lengths",
        std::nan(""));
}

void MemberCheck::CheckLocal()
{
    m_found.ledger.Drop(Stage::Local);
    std::erase_if(m_found.parts, [](const auto& part) { return !(part.second.start < part.second.end); });
    LocalChecks(m_model, m_found).Check();
    m_found.ledger.MarkGoverning();
}

void MemberCheck::FindSpans()
{
    m_found.spans.clear();
    CompressionChecks compression(m_model, m_found);
    LateralChecks lateral(m_model, m_found);
    for (const bool turned : {false, true}) {
        if (turned && !m_model.HasTwoWays()) break;
        compression.FindSpans(BucklingMode::Major, turned);
        compression.FindSpans(BucklingMode::Minor, turned);
        lateral.FindSpans(turned);
    }
}

void MemberCheck::CheckBuckling()
{
    m_found.ledger.Drop(Stage::Buckling);
    std::erase_if(m_found.parts, [](const auto& part) { return part.second.start < part.second.end; });
    m_found.interactions.clear();
    FindSpans();
    AssumeFactors();
    CompressionChecks compression(m_model, m_found);
    LateralChecks lateral(m_model, m_found);
    for (SpanResult& span : m_found.spans)
        if (span.mode == BucklingMode::LateralTorsional)
            lateral.Check(span);
        else
            compression.Check(span);
    AcrossChecks across(m_model, m_found);
    across.Check();
    compression.RecordConnections();
    RecordTorsionalBuckling(m_model, m_found);
    CheckInteractions(m_model, m_found);
    across.RecordCombinations();
    m_found.ledger.MarkGoverning();
}

std::vector<LedgerEntry> Information(const MemberModel& model, const MemberResults& found,
                                     const std::vector<SpanResult>& offers)
{
    std::vector<LedgerEntry> entries;
    ElasticRules(model).AddInformation(found.spans, offers, entries);
    const std::vector<LedgerEntry> struts = StrutInformation(model, found.spans);
    entries.insert(entries.end(), struts.begin(), struts.end());
    return entries;
}

} // namespace Keltrix::BS5950
