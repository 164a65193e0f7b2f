#include "Patterns.h"

#include <algorithm>
#include <cmath>

#include "Polynomial.h"

namespace Keltrix::Statics {

namespace {

// Contributions below this share of the largest one of all units are nothing.
constexpr double LEAST_RESPONSE = 1e-10;

class SignFinder {
public:
    SignFinder(const Analysis& analysis, const std::vector<const Unit*>& variable) : m_analysis(analysis)
    {
        std::vector<Term> permanent;
        const std::vector<Case>& cases = analysis.GetBeam().cases;
        for (std::size_t c = 0; c < cases.size(); ++c)
            if (cases[c].kind == ActionKind::Permanent) permanent.push_back({c, 1.0, {}});
        m_permanent = analysis.Of(permanent);
        m_responses.push_back(&m_permanent);
        for (const Unit* const unit : variable)
            m_responses.push_back(&unit->response);
    }

    std::vector<Signs> Find()
    {
        FindInPlane(&Response::major);
        if (!m_permanent.minor.IsEmpty()) FindInPlane(&Response::minor);
        const std::size_t pieces = m_permanent.axial.size();
        Along(pieces, [](const Response& r, std::size_t j) {
            const AxialPiece& a = r.axial[j];
            return Polynomial{{a.left, a.right - a.left + a.bow, -a.bow}};
        });
        for (double Reaction::*const part :
             {&Reaction::vertical, &Reaction::moment, &Reaction::lateral, &Reaction::lateralMoment, &Reaction::axial})
            Along(m_permanent.reactions.size(),
                  [part](const Response& r, std::size_t i) { return Polynomial{{r.reactions[i].*part}}; });
        return std::move(m_found);
    }

private:
    void FindInPlane(Line Response::*plane)
    {
        const std::size_t pieces = (m_permanent.*plane).Pieces().size();
        Along(pieces, [plane](const Response& r, std::size_t j) { return MomentOf((r.*plane).Pieces()[j]); });
        Along(pieces, [plane](const Response& r, std::size_t j) { return ShearOf((r.*plane).Pieces()[j]); });
        for (const Span& span : m_analysis.Spans())
            Deflections(plane, span);
    }

    // From the chord of a span, or from the support of an overhang.
    void Deflections(Line Response::*plane, const Span& span)
    {
        std::vector<std::size_t> inside;
        const std::vector<Piece>& pieces = (m_permanent.*plane).Pieces();
        for (std::size_t j = 0; j < pieces.size(); ++j)
            if (pieces[j].start + 0.5 * pieces[j].length > span.from &&
                pieces[j].start + 0.5 * pieces[j].length < span.to)
                inside.push_back(j);
        Along(inside.size(), [&](const Response& r, std::size_t k) {
            const Line& line = r.*plane;
            const Piece& piece = line.Pieces()[inside[k]];
            const double from = line.Deflection(span.heldFrom ? span.from : span.to);
            const double to = line.Deflection(span.heldTo ? span.to : span.from);
            const Reference chord{span.from, span.to, from, to, 0.0};
            Polynomial p = DeflectionOf(piece, line.EI());
            p.c[0] -= chord.At(piece.start);
            p.c[1] -= chord.At(piece.End()) - chord.At(piece.start);
            return p;
        });
    }

    // One effect, as a polynomial over each of some lengths.
    template <class Of>
    void Along(std::size_t lengths, Of of)
    {
        std::vector<Polynomial> all;
        all.reserve(lengths * m_responses.size());
        double largest = 0.0;
        for (std::size_t j = 0; j < lengths; ++j)
            for (const Response* const response : m_responses) {
                all.push_back(of(*response, j));
                largest = std::max(
                    {largest, std::abs(all.back().c[0]), std::abs(all.back().At(1.0)), std::abs(all.back().At(0.5))});
            }
        if (largest == 0.0) return;
        for (std::size_t j = 0; j < lengths; ++j)
            Over(all.data() + j * m_responses.size(), LEAST_RESPONSE * largest);
    }

    // The signs between the zeros of all units over one length.
    void Over(const Polynomial* of, double nothing)
    {
        m_cuts.assign({0.0, 1.0});
        for (std::size_t u = 0; u < m_responses.size(); ++u)
            for (const double s : FindRoots(of[u]))
                m_cuts.push_back(s);
        std::sort(m_cuts.begin(), m_cuts.end());
        for (std::size_t i = 1; i < m_cuts.size(); ++i) {
            if (m_cuts[i] - m_cuts[i - 1] < 1e-9) continue;
            const double s = 0.5 * (m_cuts[i - 1] + m_cuts[i]);
            m_signs.assign(m_responses.size(), 0);
            for (std::size_t u = 0; u < m_responses.size(); ++u) {
                const double value = of[u].At(s);
                if (std::abs(value) > nothing) m_signs[u] = value > 0.0 ? 1 : -1;
            }
            Add();
            for (std::int8_t& sign : m_signs)
                sign = static_cast<std::int8_t>(-sign);
            Add();
        }
    }

    void Add()
    {
        if (std::find(m_found.begin(), m_found.end(), m_signs) == m_found.end()) m_found.push_back(m_signs);
    }

    const Analysis& m_analysis;
    Response m_permanent;
    std::vector<const Response*> m_responses;
    std::vector<double> m_cuts;
    Signs m_signs;
    std::vector<Signs> m_found;
};

std::size_t Count(const Signs& signs)
{
    return static_cast<std::size_t>(std::count_if(signs.begin(), signs.end(), [](std::int8_t s) { return s != 0; }));
}

} // namespace

std::vector<const Unit*> VariableUnits(const Analysis& analysis)
{
    std::vector<const Unit*> units;
    for (const Unit& unit : analysis.Units())
        if (analysis.GetBeam().cases[unit.caseIndex].kind != ActionKind::Permanent) units.push_back(&unit);
    return units;
}

std::vector<Signs> FindSigns(const Analysis& analysis, const std::vector<const Unit*>& variable)
{
    return SignFinder(analysis, variable).Find();
}

std::vector<Signs> Distinct(std::vector<Signs> all)
{
    std::stable_sort(all.begin(), all.end(), [](const Signs& a, const Signs& b) { return Count(a) > Count(b); });
    std::vector<Signs> kept;
    for (const Signs& signs : all) {
        const bool covered = std::any_of(kept.begin(), kept.end(), [&](const Signs& other) {
            return std::equal(signs.begin(), signs.end(), other.begin(),
                              [](std::int8_t s, std::int8_t o) { return s == 0 || s == o; });
        });
        if (covered) continue;
        kept.push_back(signs);
        for (std::size_t i = 0; i < signs.size(); ++i)
            if (signs[i] == 0) kept.back()[i] = i == 0 ? 1 : -1;
    }
    return kept;
}

} // namespace Keltrix::Statics
