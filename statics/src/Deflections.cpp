#include "keltrix/statics/Deflections.h"

#include <cmath>

namespace Keltrix::Statics {

namespace {

// The terms of a combination that a limit counts.
std::vector<Term> TermsOf(const Combination& combination, const DeflectionLimit& limit, const Beam& beam)
{
    if (limit.counted == Counted::Total) return combination.terms;
    std::vector<Term> terms;
    for (const Term& term : combination.terms)
        if (term.caseIndex < beam.cases.size() && beam.cases[term.caseIndex].kind != ActionKind::Permanent)
            terms.push_back(term);
    return terms;
}

double AllowedOf(const DeflectionLimit& limit, const Span& span)
{
    const double ratio = span.IsOverhang() ? limit.overhangRatio : limit.spanRatio;
    return ratio > 0.0 ? span.Length() / ratio : 0.0;
}

} // namespace

std::vector<DeflectionLimit> DeflectionLimitsOf(Basis basis, bool brittleFinish)
{
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
        const std::size_t first = checks.size();
        for (std::size_t s = 0; s < spans.size(); ++s)
            if (AllowedOf(limit, spans[s]) > 0.0) {
                checks.emplace_back();
                checks.back().limit = l;
                checks.back().span = s;
                checks.back().allowed = AllowedOf(limit, spans[s]);
            }
        for (std::size_t c = 0; c < combinations.size(); ++c) {
            if (combinations[c].state != limit.state) continue;
            const Response response = analysis.Of(TermsOf(combinations[c], limit, analysis.GetBeam()));
            for (std::size_t i = first; i < checks.size(); ++i) {
                DeflectionCheck& check = checks[i];
                const bool counts = limit.counted == Counted::Total && !limit.minor && check.span < camber.size();
                const Extreme worst = SpanDeflections(limit.minor ? response.minor : response.major, spans[check.span],
                                                      counts ? camber[check.span] : 0.0)
                                          .Worst();
                if (check.IsEvaluated() && !(std::abs(worst.value) > std::abs(check.deflection))) continue;
                check.combination = static_cast<int>(c);
                check.deflection = worst.value;
                check.at = worst.at;
                check.utilisation = std::abs(worst.value) / check.allowed;
            }
        }
    }
    return checks;
}

} // namespace Keltrix::Statics
