// 6.3.2.4: the compression flange as a strut between its lateral supports.

#include <algorithm>
#include <cmath>

#include "MemberCheck.h"
#include "keltrix/design/Stretches.h"

namespace Keltrix::EC3 {

namespace {

using Design::Flange;

// kc of Table 6.6 for end moments; 1 for any other diagram, which is safe.
double CorrectionFactor(const Design::MomentDiagram& moments, double from, double to)
{
    const MomentPattern p = PatternOf(moments, from, to);
    const bool leftLarger = std::abs(p.left) >= std::abs(p.right);
    const double ends = leftLarger ? p.left : p.right;
    if (!p.linear) return 1.0;
    return std::min(1.0, 1.0 / (1.33 - 0.33 * (leftLarger ? p.right : p.left) / ends));
}

const wchar_t* RefusalOfEnds(const Design::Stretch& stretch)
{
    const auto holds = [](const Design::StretchEnd& end) {
        return end.kind == Design::EndKind::HeldPoint || end.kind == Design::EndKind::ContinuousEdge;
    };
    if (stretch.cantilever || !holds(stretch.left) || !holds(stretch.right))
        return L"6.3.2.4 is for a compression flange that is held laterally at both ends of its length";
    return nullptr;
}

} // namespace

double FlangeRadius(const Section& section)
{
    const double I = section.tf * section.b * section.b * section.b / 12.0;
    return std::sqrt(I / (section.b * section.tf + 0.5 * section.hw * section.tw / 3.0));
}

FlangeStrut ReduceFlange(const Section& section, const Strength& strength, const Annex& annex, double Lc, double kc)
{
    FlangeStrut f;
    f.Lc = Lc;
    f.kc = kc;
    f.radius = FlangeRadius(section);
    f.lambda1 = 93.9 * strength.epsilon;
    f.slenderness = kc * Lc / (f.radius * f.lambda1);
    f.curve = section.IsWelded() && section.h / section.tf <= 44.0 * strength.epsilon ? Curve::D : Curve::C;
    f.chi = std::min(1.0, annex.flangeFactor * CompressionReduction(f.slenderness, ImperfectionFactor(f.curve)).chi);
    return f;
}

// The worst of the compressed flange's lengths that a length between forks touches.
void MemberCheck::SetSimplified(LateralSpan& span) const
{
    if (span.open || span.mechanism || !(span.M > 0.0)) return;
    if (m_in.section.shape != Shape::I) {
        span.open = L"6.3.2.4 is applied to I and H sections with equal flanges alone";
        return;
    }
    if (m_class.cls == 4) {
        span.open = L"6.3.2.4 is not applied to class 4, whose flange and web are effective in part";
        return;
    }
    if (HasLoadHeight(span.start, span.end)) {
        span.open = L"a load acts off the shear centre, which 6.3.2.4 does not take";
        return;
    }
    for (const Design::Stretch& stretch : Design::FindStretches(m_in.points, m_in.subSpans, m_major)) {
        if (stretch.right.x <= span.start + m_in.SamePlace() || stretch.left.x >= span.end - m_in.SamePlace()) continue;
        for (const Flange flange : Design::FLANGES) {
            if (!stretch.Has(flange) || stretch.held || !(stretch.Compressing(flange) > m_check->NoiseMy())) continue;
            if (const wchar_t* const refusal = RefusalOfEnds(stretch)) {
                span.open = refusal;
                return;
            }
            const FlangeStrut f = ReduceFlange(m_in.section, m_in.strength, *m_in.annex, stretch.Length(),
                                               CorrectionFactor(m_major, stretch.left.x, stretch.right.x));
            if (!span.flange || f.slenderness > span.flange->slenderness) span.flange = f;
        }
    }
    // Held all along where it is compressed.
    if (!span.flange) span.flange = ReduceFlange(m_in.section, m_in.strength, *m_in.annex, 0.0, 1.0);
}

void MemberCheck::AddFlangeSteps(Design::RuleFinding& f, const LateralSpan& span) const
{
    using Design::Quantity;
    const FlangeStrut& s = *span.flange;
    AddStep(f, L"if,z", Quantity::Length, s.radius, L"6.3.2.4(1)")
        .Note(L"of the flange and a third of the compressed web");
    AddStep(f, L"Lc", Quantity::Distance, s.Lc, L"6.3.2.4(1)");
    AddStep(f, L"kc", Quantity::None, s.kc, L"Table 6.6");
    AddStep(f, L"λf", Quantity::None, s.slenderness, L"(6.59)")
        .Formula(L"kc Lc/(if,z λ1)")
        .Note(L"λ1 = 93.9 ε = %s", m_in.format.NoDim(s.lambda1));
    AddStep(f, L"λc0", Quantity::None, m_in.annex->flangePlateau, L"(6.59)")
        .Note(L"no reduction up to λc0 Mc,Rd/My,Ed");
    AddStep(f, L"kfl χ", Quantity::None, s.chi, L"(6.60)")
        .Note(L"at most 1; kfl = %s, curve %s", m_in.format.NoDim(m_in.annex->flangeFactor), CurveName(s.curve));
    AddStep(f, L"MbRd", Quantity::Moment, span.MbRd, L"(6.60)").Formula(L"kfl χ Mc,Rd");
    AddStep(f, L"MyEd", Quantity::Moment, span.M, L"");
}

} // namespace Keltrix::EC3
