#include "keltrix/statics/Deflections.h"

#include <cmath>
#include <stdexcept>

namespace Keltrix::Statics {

namespace {

bool CountsCamber(const DeflectionLimit& limit) { return limit.counted == Counted::Total && !limit.minor; }

// The checks of a limit before any combination: one for each span to which it applies, with what keeps it from being evaluated.
std::vector<DeflectionCheck> ChecksOf(const DeflectionLimit& limit, std::size_t index, const std::vector<Span>& spans,
                                      const std::vector<double>& camber)
{
    std::vector<DeflectionCheck> checks;
    for (std::size_t s = 0; s < spans.size(); ++s) {
        const double ratio = spans[s].IsOverhang() ? limit.overhangRatio : limit.spanRatio;
        if (ratio == 0.0) continue;
        DeflectionCheck check;
        check.limit = index;
        check.span = s;
        check.allowed = spans[s].Length() / ratio;
        if (!(std::isfinite(ratio) && ratio > 0.0)) {
            check.allowed = std::numeric_limits<double>::quiet_NaN();
            check.reason.Format(L"the ratio %s of the limit: 0 (no limit) or a number above zero is expected",
                                CDesFormat().NoDim(ratio));
        } else if (limit.counted != Counted::Total && limit.counted != Counted::Variable)
            check.reason = L"the limit counts neither the variable loads nor all";
        else if (CountsCamber(limit) && s < camber.size() && !std::isfinite(camber[s]))
            check.reason = L"the camber of the span is not a number";
        checks.push_back(check);
    }
    return checks;
}

// Takes a deflection in a combination into a check, if it is the largest so far.
void Take(const Extreme& worst, std::size_t combination, DeflectionCheck& check)
{
    if (!check.reason.IsEmpty()) return;
    if (!std::isfinite(worst.value)) {
        const DeflectionCheck found = check;
        check = DeflectionCheck();
        check.limit = found.limit;
        check.span = found.span;
        check.allowed = found.allowed;
        check.reason = L"the deflection is beyond the range of numbers";
        return;
    }
    if (check.IsEvaluated() && !(std::abs(worst.value) > std::abs(check.deflection))) return;
    check.combination = static_cast<int>(combination);
    check.deflection = worst.value;
    check.at = worst.at;
    check.utilisation = std::abs(worst.value) / check.allowed;
}

} // namespace

std::vector<DeflectionLimit> DeflectionLimitsOf(Basis basis, bool brittleFinish)
{
    if (basis < Basis::BS5950 || basis > Basis::EN1990UK) throw std::invalid_argument("no basis of limits");
    if (basis == Basis::EN1990) return {};
    const bool uk = basis == Basis::EN1990UK;
    DeflectionLimit limit;
    limit.name = brittleFinish ? L"variable loads, brittle finish" : L"variable loads";
    limit.clause = uk ? L"NA to BS EN 1993-1-1, NA.2.23" : L"BS 5950-1 2.5.2, Table 8";
    limit.counted = Counted::Variable;
    limit.state = uk ? LimitState::Characteristic : LimitState::Serviceability;
    limit.spanRatio = brittleFinish ? 360.0 : 200.0;
    limit.overhangRatio = 180.0;
    return {limit};
}

std::vector<Term> CountedTerms(const Beam& beam, const Combination& combination, const DeflectionLimit& limit)
{
    if (limit.counted == Counted::Total) return combination.terms;
    std::vector<Term> terms;
    for (const Term& term : combination.terms)
        // An unknown case stays, for the analysis to refuse.
        if (term.caseIndex >= beam.cases.size() || beam.cases[term.caseIndex].kind != ActionKind::Permanent)
            terms.push_back(term);
    return terms;
}

Extremes SpanDeflections(const Line& line, const Span& span, double camber)
{
    Reference reference;
    reference.from = span.from;
    reference.to = span.to;
    reference.valueFrom = line.Deflection(span.heldFrom ? span.from : span.to);
    reference.valueTo = line.Deflection(span.heldTo ? span.to : span.from);
    if (!span.IsOverhang()) reference.rise = camber;
    return line.Deflections(span.from, span.to, reference);
}

std::vector<DeflectionCheck> CheckDeflections(const Analysis& analysis, const std::vector<Combination>& combinations,
                                              const std::vector<DeflectionLimit>& limits,
                                              const std::vector<double>& camber)
{
    const std::vector<Span>& spans = analysis.Spans();
    std::vector<DeflectionCheck> checks;
    if (!analysis.IsAnswered()) return checks;
    for (std::size_t l = 0; l < limits.size(); ++l) {
        const DeflectionLimit& limit = limits[l];
        std::vector<DeflectionCheck> ofLimit = ChecksOf(limit, l, spans, camber);
        for (std::size_t c = 0; c < combinations.size(); ++c) {
            if (combinations[c].state != limit.state) continue;
            const Response response = analysis.Of(CountedTerms(analysis.GetBeam(), combinations[c], limit));
            for (DeflectionCheck& check : ofLimit) {
                const bool counts = CountsCamber(limit) && check.span < camber.size();
                Take(SpanDeflections(limit.minor ? response.minor : response.major, spans[check.span],
                                     counts ? camber[check.span] : 0.0)
                         .Worst(),
                     c, check);
            }
        }
        for (DeflectionCheck& check : ofLimit)
            if (!check.IsEvaluated() && check.reason.IsEmpty())
                check.reason = L"there is no combination of the limit state of this limit";
        checks.insert(checks.end(), ofLimit.begin(), ofLimit.end());
    }
    return checks;
}

} // namespace Keltrix::Statics
