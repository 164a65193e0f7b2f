#include "MemberCheck.h"

#include <algorithm>
#include <cmath>

#include "keltrix/design/MemberInput.h"

namespace Keltrix::EC3 {

using Design::CheckStatus;
using Design::Quantity;
using Design::RuleFinding;

MemberCheck::MemberCheck(MemberInput input) :
    m_in(std::move(input)), m_major(m_in.points, m_in.subSpans, Design::Bending::Major),
    m_minor(m_in.points, m_in.subSpans, Design::Bending::Minor), m_classActions(MakeClassActions())
{
    m_class = Classify(m_in.section, m_in.strength, m_classActions);
    m_check.emplace(m_in.section, m_in.strength, m_class, m_in.netGross);
    m_findings.designStrength = {L"fy", Quantity::Stress, m_in.material.fy};
    m_findings.momentFactor = m_in.momentFactor;
    m_heldInside = IsHeldInside();
    for (std::size_t k = 0; k < m_in.subSpans.size(); ++k)
        FindPositions(*m_check, m_major, m_minor, static_cast<int>(k), m_in.subSpans[k], m_positions);
}

// One class for the member: the largest compression (the smallest tension) along it, and the senses of its moments.
ClassActions MemberCheck::MakeClassActions() const
{
    const Section& s = m_in.section;
    const double fy = m_in.material.fy;
    const double noiseY = 1e-6 * s.Wely * fy;
    const double noiseZ = 1e-6 * s.Welz * fy;
    ClassActions actions;
    actions.NEd = -std::numeric_limits<double>::infinity();
    for (const Steel::CSubSpan& sub : m_in.subSpans)
        actions.NEd = std::max({actions.NEd, -sub.GetForcesLeft().x, -sub.GetForcesRight().x});
    if (std::abs(actions.NEd) <= 1e-6 * s.A * fy) actions.NEd = 0.0;
    const Design::Extremes y = m_major.Between(m_in.Start(), m_in.End());
    const Design::Extremes z = m_minor.Between(m_in.Start(), m_in.End());
    actions.compressesTop = y.least < -noiseY;
    actions.compressesBottom = y.greatest > noiseY;
    // Which side a moment about z-z compresses does not matter for the shapes that are symmetrical about z-z.
    actions.compressesBack = actions.compressesTips = z.least < -noiseZ || z.greatest > noiseZ;
    return actions;
}

void MemberCheck::Assume(const wchar_t* name, const wchar_t* text, double value)
{
    m_findings.assumptions.push_back({name, text, value});
}

// What the standard does not say of the heaviest sections, and the input not of those that are not doubly symmetric.
void MemberCheck::AssumeOfShape()
{
    const Section& s = m_in.section;
    const wchar_t* const curves = CompressionCurves(s.basis, m_in.material.grade).assumed;
    if (curves && LargestCompression(m_in.Start(), m_in.End()) > 0.0) Assume(L"buckling curves", curves);
    if (s.IsDoublySymmetric() || s.shape == Shape::UnequalI) return;
    const auto any = [this](auto acts) { return std::any_of(m_positions.begin(), m_positions.end(), acts); };
    if (any([](const Position& p) { return p.actions.N != 0.0; }))
        Assume(L"line of the axial force",
               L"through the centroid: moments from an end connection that is off it have to be among the given ones");
    const bool bent = any([](const Position& p) { return p.actions.My != 0.0 || p.actions.Mz != 0.0; });
    if (bent && s.shape == Shape::Channel)
        Assume(L"line of the loads",
               L"through the shear centre, which lies outside the back of the web: elsewhere they twist the member "
               L"(6.2.7)");
    if (bent && s.shape == Shape::Angle)
        Assume(
            L"line of the loads",
            L"through the shear centre, where the middles of the legs meet: elsewhere they twist the member (6.2.7)");
    if (bent && s.shape == Shape::Angle)
        Assume(L"principal axes",
               L"how the angle is turned is not part of the input: moments about u-u and v-v are the largest that "
               L"either way gives");
}

void MemberCheck::WarnOfMomentFactor()
{
    if (m_in.momentFactor.value_or(1.0) >= 0.4) return;
    CString text;
    text.Format(L"the equivalent uniform moment factor is given as %s; Table B.3 has none below 0.4, which is taken",
                m_in.format.NoDim(*m_in.momentFactor));
    m_findings.warnings.push_back({Design::WarningKind::LowMomentFactor, text, -1, std::nan(""), std::nan("")});
}

void MemberCheck::Add(RuleFinding finding) { m_findings.rules.push_back(std::move(finding)); }

void MemberCheck::AddResistance(const wchar_t* symbol, Quantity quantity, double value, double start, double end)
{
    Design::SpanFinding span{start, end, {}};
    span.resistance = {symbol, quantity, value};
    m_findings.spans.push_back(span);
}

void MemberCheck::CheckGeneral()
{
    const Material& m = m_in.material;
    RuleFinding strength = FindingOf(Rule::Strength, CheckStatus::Passed);
    strength.resistance = m.fy;
    strength.symbol = L"fy";
    strength.quantity = Quantity::Stress;
    Add(strength);
    RecordOutside();
    if (const wchar_t* note = Design::FabricationNote(m_in.section.basis)) Assume(L"fabrication", note);
    if (m.fuAssumed) Assume(L"ultimate strength", L"the grade gives none: fu is taken as fy, for net sections", m.fu);
    if (m.grade == Grade::User && m.E == ELASTIC_MODULUS)
        Assume(L"modulus of elasticity", L"210 kN/mm² where the grade gives none (3.2.6)", ELASTIC_MODULUS);
    if (m_in.momentFactor)
        Assume(L"equivalent uniform moment factor",
               L"given by the user in place of Cmy, Cmz and CmLT of Table B.3; C1 is as computed",
               std::max(0.4, *m_in.momentFactor));
    AssumeChoices();
    AssumeWebClass();
    AssumeOfShape();
    Design::AssumeUniformLoads(m_major, m_minor, m_findings.assumptions);
    Design::WarnOfUnbalancedForces(m_major, m_minor, m_in.format, m_findings.warnings);
    WarnOfMomentFactor();
}

// A length that is held against shear along the web all along does not buckle about y-y, however long it is.
void MemberCheck::WarnOfHeldAlong()
{
    for (const StrutSpan& span : m_struts) {
        if (span.mode != BucklingMode::Major || !span.held || !span.IsApplied()) continue;
        CString text;
        text.Format(L"flexural buckling about y-y, %s to %s: the restraint along the member holds it in the direction "
                    L"of the web all along, so that it counts as held there and NbyRd is that of the cross-section; a "
                    L"free member has such a restraint at its supports alone",
                    m_in.format.Length(span.start), m_in.format.Length(span.end));
        m_findings.warnings.push_back({Design::WarningKind::HeldAlong, text, -1, span.start, span.end});
    }
}

// A trace of My makes the class of the web that of bending and compression, which can be a better one.
void MemberCheck::AssumeWebClass()
{
    constexpr double TRACE = 0.05;
    if (!m_classActions.BendsMajor() || !(m_classActions.NEd > 0.0)) return;
    const double M = m_major.Between(m_in.Start(), m_in.End()).Magnitude();
    if (!m_check->mcy || M > TRACE * *m_check->mcy.value) return;
    const Classification alone = Classify(m_in.section, m_in.strength, ClassActions::Compression(m_classActions.NEd));
    if (alone.cls <= m_class.cls) return;
    Assume(L"class of the web",
           L"My is small, and for it the web counts as under bending and compression; under this compression alone the "
           L"section has a higher class",
           alone.cls);
}

// What a file of national choices says.
void MemberCheck::AssumeChoices()
{
    const std::vector<NationalChoice> choices = NationalChoices(*m_in.annex);
    for (const std::size_t place : m_in.annex->given) {
        const NationalChoice& choice = choices[place];
        Assume(L"national choice of the file", choice.name, choice.value);
    }
}

// What the input does not hold, and what its kind of member does not need.
void MemberCheck::RecordOutside()
{
    const auto outside = [this](Rule rule, const wchar_t* why) { Add(FindingOf(rule, CheckStatus::OutOfScope, why)); };
    outside(Rule::Frame, L"a matter of the frame: forces and moments are taken as given, with second-order effects and "
                         L"imperfections of the frame in them");
    Add(FindingOf(Rule::BuiltUp, CheckStatus::NotApplicable, L"the member is one section"));
    if (m_in.material.grade != Grade::User)
        Add(FindingOf(Rule::Ductility, CheckStatus::Passed, L"steels of the standard's list"));
    else if (m_in.material.fuAssumed)
        outside(Rule::Ductility, L"the user-defined grade gives no ultimate strength");
    else if (m_in.material.fu >= 1.10 * m_in.material.fy)
        Add(FindingOf(Rule::Ductility, CheckStatus::Passed, L"fu/fy is not below 1.10"));
    else
        Add(FindingOf(Rule::Ductility, CheckStatus::NotEvaluated,
                      L"fu/fy of the user-defined grade is below 1.10: not a steel for this standard's plastic rules"));
    outside(Rule::Deflection, L"a serviceability limit; the input holds factored actions");
    outside(Rule::Vibration, L"a serviceability limit; the input holds no masses");
    outside(Rule::Fatigue, L"the input holds one set of actions, no cycles");
    outside(Rule::Fracture, L"the input has no quality of the steel at its thickness, temperature and details");
    outside(Rule::Restraints, L"the strength and stiffness of what restrains the member are not part of the input");
    outside(Rule::Connections, L"connections are not part of the input");
    outside(Rule::Openings, L"the section is taken without openings; holes count by the net area alone");
    outside(Rule::Robustness, L"a matter of the structure");
}

void MemberCheck::Finish()
{
    RuleFinding* best = nullptr;
    bool failed = false, open = m_findings.rules.empty();
    for (RuleFinding& f : m_findings.rules) {
        failed = failed || f.status == CheckStatus::Failed;
        open = open || f.status == CheckStatus::NotEvaluated;
        if (Design::IsWorse(f.utilisation, best ? best->utilisation : 0.0)) best = &f;
    }
    if (best) best->governing = true;
    m_findings.status = failed ? Design::Status::Failed : open ? Design::Status::NotChecked : Design::Status::Passed;
    for (const Position& p : m_positions)
        m_findings.positions.push_back({p.x, p.subSpan, p.place, p.combined, p.Axial(), p.Major(), p.Minor(),
                                        p.ShearMajor(), p.ShearMinor(), p.torsion != 0.0});
}

} // namespace Keltrix::EC3
