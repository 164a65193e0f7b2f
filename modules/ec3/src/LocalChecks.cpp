// Resistance of cross-sections, 6.2: the entry of each rule is that of its largest utilisation along the member.

#include <algorithm>
#include <cmath>

#include "MemberCheck.h"

namespace Keltrix::EC3 {

using Design::CheckStatus;
using Design::Quantity;
using Design::RuleFinding;
using Design::Step;

namespace {

double Finite(double utilisation) { return Steel::CMemberResult::InfinitiseNANs(utilisation); }

} // namespace

struct MemberCheck::LocalRule {
    Rule rule;
    double Position::*utilisation;
    const Resistance* resistance;
    const wchar_t* symbol;
    Quantity quantity;
    double (*effect)(const Position&);
    const wchar_t* effectSymbol;
    const wchar_t* absent; ///< why the rule does not apply where the effect is nowhere above zero
};

// Place of the largest value in the list of positions; -1 where none is above zero.
int MemberCheck::Worst(double Position::*utilisation) const
{
    int worst = -1;
    double largest = 0.0;
    for (std::size_t i = 0; i < m_positions.size(); ++i) {
        const double u = Finite(m_positions[i].*utilisation);
        if (!(u > largest)) continue;
        largest = u;
        worst = static_cast<int>(i);
    }
    return worst;
}

void MemberCheck::RecordLocal(const LocalRule& rule)
{
    const auto acts = [&](const Position& p) { return !(rule.effect(p) <= 0.0); };
    const auto acting = std::find_if(m_positions.begin(), m_positions.end(), acts);
    if (acting == m_positions.end()) return Add(FindingOf(rule.rule, CheckStatus::NotApplicable, rule.absent));
    RuleFinding f =
        FindingOf(rule.rule, CheckStatus::NotEvaluated, rule.resistance->reason ? rule.resistance->reason : L"");
    const int worst = Worst(rule.utilisation);
    const Position& p = worst < 0 ? *acting : m_positions[static_cast<std::size_t>(worst)];
    f.start = f.end = p.x;
    if (*rule.resistance) {
        f.utilisation = worst < 0 ? 0.0 : Finite(p.*rule.utilisation);
        f.status = LocalStatus(f.utilisation);
        f.resistance = *rule.resistance->value;
        f.symbol = rule.symbol;
        f.quantity = rule.quantity;
        AddResistance(rule.symbol, rule.quantity, f.resistance, m_in.Start(), m_in.End());
        if (m_in.withSteps) AddResistanceSteps(f, rule, p);
    }
    Add(f);
}

// The resistance with its numbers, and what is held against it.
void MemberCheck::AddResistanceSteps(RuleFinding& f, const LocalRule& rule, const Position& p) const
{
    const Strength& m = m_in.strength;
    const CString fy = m_in.format.Stress(m.fy);
    Step step;
    switch (rule.rule) {
    case Rule::Tension:
        if (m_in.netGross == 1.0)
            step.Formula(L"A fy/γM0")
                .Values(L"%s * %s/%s", Design::AreaText(m_in.section.A), fy, m_in.format.NoDim(m.gammaM0));
        else
            step.Formula(L"min(A fy/γM0, 0.9 Anet fu/γM2)")
                .Values(L"min(%s * %s/%s, 0.9 * %s * %s/%s)", Design::AreaText(m_in.section.A), fy,
                        m_in.format.NoDim(m.gammaM0), Design::AreaText(m_in.netGross * m_in.section.A),
                        m_in.format.Stress(m.fu), m_in.format.NoDim(m.gammaM2));
        break;
    case Rule::Compression:
        step.Formula(L"%s fy/γM0", m_class.cls == 4 ? L"Aeff" : L"A")
            .Values(L"%s * %s/%s", Design::AreaText(m_class.A), fy, m_in.format.NoDim(m.gammaM0));
        break;
    case Rule::BendingMajor:
        step.Formula(L"%s fy/γM0", m_class.WyName)
            .Values(L"%s * %s/%s", Design::ModulusText(m_class.Wy), fy, m_in.format.NoDim(m.gammaM0));
        break;
    case Rule::BendingMinor:
        step.Formula(L"%s fy/γM0", m_class.WzName)
            .Values(L"%s * %s/%s", Design::ModulusText(m_class.Wz), fy, m_in.format.NoDim(m.gammaM0));
        break;
    case Rule::ShearMajor:
        step.Formula(L"Av fy/(3^0.5 γM0)")
            .Values(L"%s * %s/(3^0.5 * %s)", Design::AreaText(ShearAreaZ(m_in.section, m.eta)), fy,
                    m_in.format.NoDim(m.gammaM0));
        break;
    case Rule::ShearMinor:
        step.Formula(L"Av fy/(3^0.5 γM0)")
            .Values(L"%s * %s/(3^0.5 * %s)", Design::AreaText(ShearAreaY(m_in.section)), fy,
                    m_in.format.NoDim(m.gammaM0));
        break;
    case Rule::ShearBuckling: {
        const Section& s = rule.resistance == &m_check->vbwAcross ? m_check->turned : m_in.section;
        const double slenderness = WebSlenderness(s, m);
        AddStep(f, L"λw", Quantity::None, slenderness, L"(5.5)")
            .Formula(L"hw/(86.4 tw ε)")
            .Values(L"%s/(86.4 * %s)", m_in.format.NoDim(s.hw / s.tw), m_in.format.NoDim(m.epsilon));
        const double reduction = WebShearFactor(slenderness, m.eta, false);
        AddStep(f, L"χw", Quantity::None, reduction, L"Table 5.1");
        step.Formula(L"%sχw hw t fyw/(3^0.5 γM1)", s.webs > 1 ? L"2 " : L"")
            .Values(L"%s%s * %s * %s * %s/(3^0.5 * %s)", s.webs > 1 ? L"2 * " : L"", m_in.format.NoDim(reduction),
                    Design::QuantityText(Quantity::Length, s.hw, m_in.format),
                    Design::QuantityText(Quantity::Length, s.tw, m_in.format), fy, m_in.format.NoDim(m.gammaM1));
        break;
    }
    default:
        break;
    }
    step.symbol = rule.symbol;
    step.quantity = rule.quantity;
    step.value = f.resistance;
    step.clause = rule.resistance->clause;
    f.steps.push_back(std::move(step));
    AddStep(f, rule.effectSymbol, rule.quantity, rule.effect(p), L"");
    const bool isShear = rule.rule == Rule::ShearMajor || rule.rule == Rule::ShearMinor;
    if (!isShear || m_in.section.shape != Shape::CHS) return;
    AddStep(f, L"VEd", Quantity::Force, std::hypot(p.actions.Vy, p.actions.Vz), L"")
        .Formula(L"(VyEd² + VzEd²)^0.5")
        .Values(L"((%s)² + (%s)²)^0.5", m_in.format.Force(p.actions.Vy), m_in.format.Force(p.actions.Vz))
        .Note(L"a tube carries the resultant");
}

void MemberCheck::RecordClass()
{
    RuleFinding f = FindingOf(Rule::Classification, CheckStatus::Passed);
    f.clause = L"5.5, Table 5.2";
    if (m_in.withSteps) {
        AddStep(f, L"ε", Quantity::None, m_in.strength.epsilon, L"Table 5.2")
            .Values(L"(235/%s)^0.5", m_in.format.NoDim(m_in.material.fy * 1e-6));
        AddStep(f, L"NEd", Quantity::Force, m_classActions.NEd, L"").Note(L"largest compression along the member");
        for (int i = 0; i < m_class.count; ++i) {
            const PlateClass& p = m_class.plates[static_cast<std::size_t>(i)];
            AddStep(f, p.plate.ratioName, Quantity::None, p.ratio, L"Table 5.2")
                .Note(L"%s, %s; limits of classes 1 to 3 %s, %s, %s (α = %s, ψ = %s): class %i", p.plate.name, p.row,
                      m_in.format.NoDim(p.limit[0]), m_in.format.NoDim(p.limit[1]), m_in.format.NoDim(p.limit[2]),
                      m_in.format.NoDim(p.alpha), m_in.format.NoDim(p.psi), p.cls);
        }
        AddStep(f, L"class", Quantity::None, m_class.cls, L"5.5.2(6)").Note(L"of the member");
    }
    Add(f);
}

// 6.2.3(5). Of an angle that is welded by one leg the area of the angle with both legs as the shorter one counts, whichever is welded.
void MemberCheck::RecordAngleTie()
{
    const auto pulled = [](const Position& a, const Position& b) { return a.actions.N < b.actions.N; };
    const Position& p = *std::max_element(m_positions.begin(), m_positions.end(), pulled);
    if (!(p.actions.N > 0.0)) return Add(FindingOf(Rule::AngleTie, CheckStatus::NotApplicable, L"no tension"));
    RuleFinding f =
        FindingOf(Rule::AngleTie, CheckStatus::NotEvaluated,
                  L"bolted by one leg (3.10.3): number, pitch and edge distance of the bolts are not part of "
                  L"the input");
    f.start = f.end = p.x;
    if (m_in.netGross < 1.0) return Add(f);
    const Section& s = m_in.section;
    const double area = s.A - std::abs(s.h - s.b) * s.tw;
    f.reason = L"";
    f.resistance = area * m_in.strength.fy / m_in.strength.gammaM0;
    f.symbol = L"NtRd";
    f.quantity = Quantity::Force;
    f.clause = L"EN 1993-1-8 4.13";
    f.utilisation = p.actions.N / f.resistance;
    f.status = LocalStatus(f.utilisation);
    if (m_in.withSteps) {
        AddStep(f, L"NtRd", Quantity::Force, f.resistance, L"EN 1993-1-8 4.13")
            .Formula(L"A fy/γM0")
            .Values(L"%s * %s/%s", Design::AreaText(area), m_in.format.Stress(m_in.strength.fy),
                    m_in.format.NoDim(m_in.strength.gammaM0))
            .Note(L"the angle with both legs as the shorter one");
        AddStep(f, L"NEd", Quantity::Force, p.actions.N, L"");
    }
    Add(f);
}

// 6.2.5(4): the flange's net area, with all holes in it.
void MemberCheck::RecordHoles()
{
    const auto absent = [this](const wchar_t* why) {
        Add(FindingOf(Rule::HolesInFlange, CheckStatus::NotApplicable, why));
    };
    if (m_in.netGross == 1.0) return absent(L"the net area is the gross area");
    const bool bent = std::any_of(m_positions.begin(), m_positions.end(),
                                  [](const Position& p) { return p.actions.My != 0.0 || p.actions.Mz != 0.0; });
    if (!bent) return absent(L"no moment");
    const Section& s = m_in.section;
    const double flange = std::min(s.b * s.tf, s.b2 * s.tf2);
    const double net = flange - (1.0 - m_in.netGross) * s.A;
    const Strength& m = m_in.strength;
    if (s.HasTwoFlanges() && net * 0.9 * m.fu / m.gammaM2 >= flange * m.fy / m.gammaM0)
        return absent(L"0.9 Af,net fu/γM2 is not below Af fy/γM0, all holes in one flange");
    Add(FindingOf(Rule::HolesInFlange, CheckStatus::NotEvaluated,
                  L"the net to gross ratio does not say which holes lie in the tension flange; with all of them there "
                  L"they count"));
}

void MemberCheck::RecordTorsion()
{
    double torsion = 0.0, bending = 0.0;
    const Position* worst = nullptr;
    for (const Position& p : m_positions) {
        bending = std::max({bending, std::abs(p.actions.My), std::abs(p.actions.Mz)});
        if (!(std::abs(p.torsion) > torsion)) continue;
        torsion = std::abs(p.torsion);
        worst = &p;
    }
    if (!(torsion > std::max(1.0, 0.001 * bending)))
        return Add(FindingOf(Rule::Torsion, CheckStatus::NotApplicable, L"no torsion beyond the tolerance"));
    RuleFinding f = FindingOf(Rule::Torsion, CheckStatus::NotEvaluated,
                              L"torsion is not covered here (6.2.7); check it by other means");
    f.start = f.end = worst->x;
    Add(f);
}

// EN 1993-1-5 5.1(2), 5.2, 5.3: the plates along the shear alone, stiffened at supports only.
void MemberCheck::RecordShearBuckling()
{
    const auto along = [](const Position& p) { return p.actions.Vz; };
    const auto across = [](const Position& p) { return p.actions.Vy; };
    const double noise = 1e-6 * m_check->vcy.value.value_or(0.0);
    const bool acts = std::any_of(m_positions.begin(), m_positions.end(),
                                  [noise](const Position& p) { return p.actions.Vy > noise; });
    const bool isAcross = m_check->bucklesAcross && acts;
    if (isAcross)
        RecordLocal({Rule::ShearBuckling, &Position::shearBucklingAcross, &m_check->vbwAcross, L"VbwyRd",
                     Quantity::Force, across, L"VyEd", L"no shear across the web"});
    if (m_check->bucklesInShear)
        RecordLocal({Rule::ShearBuckling, &Position::shearBuckling, &m_check->vbw, L"VbwRd", Quantity::Force, along,
                     L"VzEd", L"no shear along the web"});
    else if (!isAcross)
        Add(FindingOf(Rule::ShearBuckling, CheckStatus::NotApplicable, L"hw/tw is not above 72 ε/η"));
    if (isAcross) RecordShearBending(true);
    if (m_check->bucklesInShear)
        RecordShearBending(false);
    else if (!isAcross)
        Add(FindingOf(Rule::ShearBucklingMoment, CheckStatus::NotApplicable, L"the web does not buckle in shear"));
}

void MemberCheck::RecordShearBending(bool across)
{
    const auto utilisation = across ? &Position::shearMomentAcross : &Position::shearMoment;
    const int worst = Worst(utilisation);
    if (worst < 0)
        return Add(
            FindingOf(Rule::ShearBucklingMoment, CheckStatus::NotApplicable,
                      L"nowhere shear above half of the web's resistance with a moment above that of the flanges"));
    const Position& p = m_positions[static_cast<std::size_t>(worst)];
    const double M = std::abs(across ? p.actions.Mz : p.actions.My);
    const double V = across ? p.actions.Vy : p.actions.Vz;
    const ShearBending r =
        BendWithShearBuckling(across ? m_check->turned : m_in.section, m_in.strength, {}, M, V, -p.actions.N)
            .value_or(ShearBending{});
    RuleFinding f = FindingOf(Rule::ShearBucklingMoment, LocalStatus(Finite(p.*utilisation)));
    f.start = f.end = p.x;
    f.utilisation = Finite(p.*utilisation);
    if (m_in.withSteps) {
        AddStep(f, L"MEd", Quantity::Moment, M, L"").Note(across ? L"about z-z" : L"about y-y");
        AddStep(f, L"η3", Quantity::None, r.eta3, L"7.1(1)")
            .Formula(L"VEd/Vbw,Rd")
            .Values(L"%s/%s", m_in.format.Force(V),
                    m_in.format.Force(across ? *m_check->vbwAcross.value : *m_check->vbw.value));
        AddStep(f, L"MfRd", Quantity::Moment, r.MfRd, L"5.4")
            .Note(r.MfRd > 0.0 ? L"of the flanges alone"
                               : L"the axial force takes the flanges or the whole web (7.1(4), (5))");
        AddStep(f, L"MplRd", Quantity::Moment, r.MplRd, L"7.1(1)")
            .Note(L"of the effective flanges and the whole web, whatever its class");
        AddStep(f, L"left side", Quantity::None, r.utilisation, L"(7.1)")
            .Formula(L"MEd/Mpl,Rd + (1 - Mf,Rd/Mpl,Rd)(2 η3 - 1)²");
    }
    Add(f);
}

// 6.2.8(3); the shear of a tube is that of the resultant.
void MemberCheck::AddShearSteps(RuleFinding& f, const Actions& a, double rhoZ, double rhoY) const
{
    const bool tube = m_in.section.shape == Shape::CHS;
    const auto add = [&](const wchar_t* symbol, double rho, double V, const Resistance& resistance) {
        AddStep(f, symbol, Quantity::None, rho, L"6.2.8(3)")
            .Formula(L"min(1, max(0, 2 VEd/Vpl,Rd - 1)²)")
            .Values(L"min(1, max(0, 2 * %s/%s - 1)²)", m_in.format.Force(V), m_in.format.Force(*resistance.value))
            .Note(tube ? L"VEd of the resultant" : L"");
    };
    add(L"ρz", rhoZ, tube ? std::hypot(a.Vy, a.Vz) : a.Vz, m_check->vcz);
    add(L"ρy", rhoY, tube ? std::hypot(a.Vy, a.Vz) : a.Vy, m_check->vcy);
}

void MemberCheck::AddCombinedSteps(RuleFinding& f, const Interaction& i, const Position& p) const
{
    const bool isLinear = !m_class.IsPlastic() || !m_in.section.IsDoublySymmetric();
    const auto moment = [this](double value) { return m_in.format.Moment(value); };
    const auto number = [this](double value) { return m_in.format.NoDim(value); };
    AddStep(f, L"NEd", Quantity::Force, p.actions.N, L"");
    Step& n = AddStep(f, isLinear ? L"NEd/NRd" : L"n", Quantity::None, i.n, isLinear ? L"" : L"6.2.9.1(5)");
    if (!isLinear) n.Formula(L"|NEd|/Npl,Rd");
    if (p.actions.N != 0.0) n.Values(L"%s/%s", m_in.format.Force(std::abs(p.actions.N)), m_in.format.Force(i.NRd));
    if (i.highShear) AddShearSteps(f, p.actions, i.rhoZ, i.rhoY);
    AddStep(f, isLinear ? L"MyRd" : L"MNyRd", Quantity::Moment, i.MyRd, i.clause);
    AddStep(f, L"MyEd", Quantity::Moment, i.My, L"").Note(i.My > std::abs(p.actions.My) ? L"with NEd eN,y" : L"");
    AddStep(f, isLinear ? L"MzRd" : L"MNzRd", Quantity::Moment, i.MzRd, i.clause);
    AddStep(f, L"MzEd", Quantity::Moment, i.Mz, L"").Note(i.Mz > std::abs(p.actions.Mz) ? L"with NEd eN,z" : L"");
    const auto ratio = [](double M, double resistance) { return M == 0.0 ? 0.0 : M / resistance; };
    const double y = ratio(i.My, i.MyRd);
    const double z = ratio(i.Mz, i.MzRd);
    if (isLinear) {
        const bool tube = m_in.section.shape == Shape::CHS;
        AddStep(f, L"sum", Quantity::None, i.utilisation, i.clause)
            .Formula(tube ? L"NEd/NRd + ((My,Ed/My,Rd)² + (Mz,Ed/Mz,Rd)²)^0.5" : L"NEd/NRd + My,Ed/My,Rd + Mz,Ed/Mz,Rd")
            .Values(tube ? L"%s + (%s² + %s²)^0.5" : L"%s + %s + %s", number(i.n), number(y), number(z));
        return;
    }
    AddStep(f, L"My,Ed/MN,y,Rd", Quantity::None, y, L"").Values(L"%s/%s", moment(i.My), moment(i.MyRd));
    AddStep(f, L"Mz,Ed/MN,z,Rd", Quantity::None, z, L"").Values(L"%s/%s", moment(i.Mz), moment(i.MzRd));
    AddStep(f, L"α", Quantity::None, i.exponents.alpha, L"(6.41)");
    AddStep(f, L"β", Quantity::None, i.exponents.beta, L"(6.41)");
    const double sum = std::pow(y, i.exponents.alpha) + std::pow(z, i.exponents.beta);
    AddStep(f, L"sum", Quantity::None, sum, L"(6.41)")
        .Formula(L"(My,Ed/MN,y,Rd)^α + (Mz,Ed/MN,z,Rd)^β")
        .Values(L"%s^%s + %s^%s", number(y), number(i.exponents.alpha), number(z), number(i.exponents.beta));
    AddStep(f, L"largest of the sum and the two ratios", Quantity::None, i.utilisation, L"")
        .Values(L"max(%s, %s, %s)", number(sum), number(y), number(z));
}

void MemberCheck::RecordCombined()
{
    const auto combined = [this](const Position& p) { return m_check->IsCombined(p.actions); };
    const auto any = std::find_if(m_positions.begin(), m_positions.end(), combined);
    if (any == m_positions.end())
        return Add(FindingOf(Rule::Combined, CheckStatus::NotApplicable,
                             L"nowhere more than one of axial force and both moments"));
    const int worst = Worst(&Position::combined);
    const Position& p = worst < 0 ? *any : m_positions[static_cast<std::size_t>(worst)];
    const Interaction i = Interact(m_in.section, m_in.strength, m_class, p.actions);
    RuleFinding f = FindingOf(Rule::Combined, CheckStatus::NotEvaluated);
    f.start = f.end = p.x;
    // A rule that is missing at one place is missing at all: it depends on section and class.
    const Interaction first = Interact(m_in.section, m_in.strength, m_class, any->actions);
    if (i.reason || first.reason) {
        f.reason = i.reason ? i.reason : first.reason;
        return Add(f);
    }
    f.utilisation = Finite(p.combined);
    f.status = LocalStatus(f.utilisation);
    if (m_class.IsPlastic() && m_in.section.IsDoublySymmetric()) {
        const bool isMinor = std::abs(i.Mz) * i.MyRd > std::abs(i.My) * i.MzRd;
        f.symbol = isMinor ? L"MNzRd" : L"MNyRd";
        f.quantity = Quantity::Moment;
        f.resistance = isMinor ? i.MzRd : i.MyRd;
        AddResistance(L"MNyRd", Quantity::Moment, i.MyRd, p.x, p.x);
        AddResistance(L"MNzRd", Quantity::Moment, i.MzRd, p.x, p.x);
    }
    if (m_in.withSteps) AddCombinedSteps(f, i, p);
    Add(f);
}

// EN 1993-1-5 (8.1), with k of a moment that is resisted elastically or plastically; rolled sections are far below it.
void MemberCheck::RecordSlenderWeb()
{
    Add(FindingOf(Rule::ShearLag, CheckStatus::OutOfScope,
                  L"flanges wider than a fiftieth of the distance between zero moments: take the effective width by "
                  L"other means"));
    const Section& s = m_in.section;
    if (!s.IsWelded() || !(s.HasTwoFlanges() || s.shape == Shape::RHS))
        return Add(FindingOf(Rule::FlangeInduced, CheckStatus::NotApplicable, L"no welded web between two flanges"));
    const double k = m_class.IsPlastic() ? 0.4 : 0.55;
    const double areas = s.webs * s.hw * s.tw / std::max(s.b * s.tf, s.b2 * s.tf2);
    const double limit = k * m_in.material.E / m_in.strength.fy * std::sqrt(areas);
    RuleFinding f = FindingOf(Rule::FlangeInduced, CheckStatus::Passed);
    f.utilisation = s.hw / s.tw / limit;
    f.status = LocalStatus(f.utilisation);
    if (m_in.withSteps) {
        const auto n = [this](double value) { return m_in.format.NoDim(value); };
        AddStep(f, L"limit", Quantity::None, limit, L"(8.1)")
            .Formula(L"k E/fyf (Aw/Afc)^0.5")
            .Values(L"%s * %s/%s * %s^0.5", n(k), m_in.format.Stress(m_in.material.E),
                    m_in.format.Stress(m_in.strength.fy), n(areas));
        AddStep(f, L"hw/tw", Quantity::None, s.hw / s.tw, L"")
            .Values(L"%s/%s", Design::QuantityText(Quantity::Length, s.hw, m_in.format),
                    Design::QuantityText(Quantity::Length, s.tw, m_in.format));
        AddStep(f, L"hw/tw over the limit", Quantity::None, f.utilisation, L"")
            .Values(L"%s/%s", n(s.hw / s.tw), n(limit));
    }
    Add(f);
}

void MemberCheck::CheckLocal()
{
    RecordClass();
    const CrossSectionCheck& c = *m_check;
    if (c.npl) AddResistance(L"NplRd", Quantity::Force, *c.npl.value, m_in.Start(), m_in.End());
    RecordLocal({Rule::Tension, &Position::tension, &c.nt, L"NtRd", Quantity::Force,
                 [](const Position& p) { return p.actions.N; }, L"NEd", L"no tension"});
    if (IsAngle()) RecordAngleTie();
    RecordLocal({Rule::Compression, &Position::compression, &c.nc, L"NcRd", Quantity::Force,
                 [](const Position& p) { return -p.actions.N; }, L"NEd", L"no compression"});
    RecordLocal({Rule::BendingMajor, &Position::major, &c.mcy, IsAngle() ? L"McuRd" : L"McyRd", Quantity::Moment,
                 [](const Position& p) { return std::abs(p.actions.My); }, IsAngle() ? L"MuEd" : L"MyEd",
                 L"no moment about the major axis"});
    RecordLocal({Rule::BendingMinor, &Position::minor, &c.mcz, IsAngle() ? L"McvRd" : L"MczRd", Quantity::Moment,
                 [](const Position& p) { return std::abs(p.actions.Mz); }, IsAngle() ? L"MvEd" : L"MzEd",
                 L"no moment about the minor axis"});
    RecordHoles();
    RecordLocal({Rule::ShearMajor, &Position::shearMajor, &c.vcz, L"VczRd", Quantity::Force,
                 [](const Position& p) { return p.actions.Vz; }, L"VzEd", L"no shear along the web"});
    RecordLocal({Rule::ShearMinor, &Position::shearMinor, &c.vcy, L"VcyRd", Quantity::Force,
                 [](const Position& p) { return p.actions.Vy; }, L"VyEd", L"no shear along the flanges"});
    RecordShearBuckling();
    RecordSlenderWeb();
    RecordTorsion();
    RecordHighShear(true);
    RecordHighShear(false);
    RecordCombined();
    RecordWebLoads();
}

// 6.2.8: where the shear is above half of the plastic resistance. Moments with an axial force are a matter of 6.2.10.
void MemberCheck::RecordHighShear(bool major)
{
    const Rule rule = major ? Rule::BendingShearMajor : Rule::BendingShearMinor;
    const auto utilisation = major ? &Position::highMajor : &Position::highMinor;
    const int worst = Worst(utilisation);
    if (worst < 0)
        return Add(FindingOf(rule, CheckStatus::NotApplicable,
                             L"nowhere a moment with a shear above half of the plastic resistance"));
    const Position& p = m_positions[static_cast<std::size_t>(worst)];
    const Resistance r = major ? MyVRd(m_in.section, m_in.strength, m_class, p.rhoZ, p.rhoY)
                               : MzVRd(m_in.section, m_in.strength, m_class, p.rhoZ, p.rhoY);
    RuleFinding f = FindingOf(rule, LocalStatus(Finite(p.*utilisation)));
    f.start = f.end = p.x;
    f.utilisation = Finite(p.*utilisation);
    f.resistance = r.value.value_or(0.0);
    f.symbol = major ? L"MyVRd" : L"MzVRd";
    f.quantity = Quantity::Moment;
    AddResistance(f.symbol, f.quantity, f.resistance, p.x, p.x);
    if (m_in.withSteps) {
        AddShearSteps(f, p.actions, p.rhoZ, p.rhoY);
        AddStep(f, f.symbol, f.quantity, f.resistance, r.clause)
            .Note(L"with (1 - ρ) fy on the areas that carry the shear");
        AddStep(f, major ? L"MyEd" : L"MzEd", Quantity::Moment, std::abs(major ? p.actions.My : p.actions.Mz), L"");
    }
    Add(f);
}

} // namespace Keltrix::EC3
