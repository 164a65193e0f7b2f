// Where along a sub-span the cross-section is checked.

#include <algorithm>
#include <array>
#include <cmath>

#include "CrossSectionCheck.h"
#include "keltrix/design/Places.h"

namespace Keltrix::EC3 {

using Design::MomentDiagram;
using Design::Parabola;
using Design::Place;

namespace {

// Steps of a search between two places at which an action vanishes or a shear reaches half of its resistance.
constexpr int STEPS = 16;
// Relative gain from which on a place inside becomes a position.
constexpr double GAIN = 1e-12;

// Forces and moments along one sub-span for one reading of its moments.
class Course {
public:
    Course(const CrossSectionCheck& check, const Steel::CSubSpan& sub, const MomentDiagram::Piece& piece, int subSpan) :
        m_check(check), m_left(sub.GetForcesLeft()), m_right(sub.GetForcesRight()),
        m_torsionLeft(sub.GetMomentsLeft().x), m_torsionRight(sub.GetMomentsRight().x), m_piece(piece),
        m_subSpan(subSpan)
    {}

    void Find(const Parabola& major, const Parabola& minor, std::vector<Position>& positions)
    {
        m_major = major;
        m_minor = minor;
        const std::size_t first = positions.size();
        positions.push_back(At(0.0, Place::LeftEnd));
        AddExtremes(positions);
        if (NeedsSearch()) Search(positions, first);
        positions.push_back(At(1.0, Place::RightEnd));
        std::sort(
            positions.begin() + static_cast<std::ptrdiff_t>(first), positions.end(),
            [](const Position& a, const Position& b) { return std::pair(a.place, a.x) < std::pair(b.place, b.x); });
    }

private:
    using Measure = double Position::*;
    static constexpr std::array<Measure, 5> MEASURES{&Position::combined, &Position::highMajor, &Position::highMinor,
                                                     &Position::shearMoment, &Position::shearMomentAcross};

    Position At(double s, Place place) const
    {
        Position p;
        p.x = m_piece.Position(s);
        if (place == Place::RightEnd) p.x = m_piece.End();
        p.subSpan = m_subSpan;
        p.place = place;
        p.actions = m_check.Significant(Design::Between(m_left, m_right, s), m_major.At(s), m_minor.At(s));
        p.torsion = Design::Between(m_torsionLeft, m_torsionRight, s);
        m_check.Evaluate(p);
        return p;
    }

    void AddExtremes(std::vector<Position>& positions) const
    {
        for (const double s : Design::ExtremePlaces(m_major, m_minor))
            if (!std::isnan(s)) positions.push_back(At(s, Place::Inside));
    }

    bool IsSheared() const
    {
        const double Vz = std::max(std::abs(m_left.z), std::abs(m_right.z));
        const double Vy = std::max(std::abs(m_left.y), std::abs(m_right.y));
        // The shear of a tube is that of the resultant.
        if (m_check.section.shape == Shape::CHS && std::hypot(Vy, Vz) > m_check.HalfVz()) return true;
        return Vz > m_check.HalfVz() || Vy > m_check.HalfVy() || m_check.bucklesInShear || m_check.bucklesAcross;
    }

    // With a constant axial force, little shear and moments that change linearly the utilisation of combined actions is convex: it is largest at an
    // end, if it is one of combined actions at both, or has no moment at one of them.
    bool IsConvex() const
    {
        if (m_left.x != m_right.x || m_major.curvature != 0.0 || m_minor.curvature != 0.0 || IsSheared()) return false;
        const auto isEndOfCourse = [this](const Vec3<double>& force, double My, double Mz) {
            const Actions a = m_check.Significant(force, My, Mz);
            return m_check.IsCombined(a) || (a.My == 0.0 && a.Mz == 0.0);
        };
        return isEndOfCourse(m_left, m_major.left, m_minor.left) &&
               isEndOfCourse(m_right, m_major.right, m_minor.right);
    }

    // Whether a measure can be above zero anywhere.
    bool IsOfUse(Measure measure) const
    {
        if (measure == &Position::combined) return true;
        if (measure == &Position::shearMoment) return m_check.bucklesInShear;
        if (measure == &Position::shearMomentAcross) return m_check.bucklesAcross;
        return IsSheared();
    }

    // One moment with a constant axial force and little shear is at its worst at an end or at an extreme.
    bool NeedsSearch() const
    {
        if (!(m_piece.length > 0.0)) return false;
        const bool y = Design::LargestMagnitude(m_major) > m_check.NoiseMy();
        const bool z = Design::LargestMagnitude(m_minor) > m_check.NoiseMz();
        if ((!y && !z) || IsConvex()) return false;
        return (y && z) || m_left.x != m_right.x || IsSheared();
    }

    std::vector<double> Breaks() const
    {
        std::vector<double> breaks{0.0, 1.0};
        const auto add = [&](const Parabola& curve, double level) { Design::AddPlacesAtLevel(curve, level, breaks); };
        for (const double side : {-1.0, 1.0}) {
            add(m_major, side * m_check.NoiseMy());
            add(m_minor, side * m_check.NoiseMz());
            add({m_left.x, m_right.x, 0.0}, side * m_check.NoiseN());
            add({m_left.z, m_right.z, 0.0}, side * m_check.HalfVz());
            add({m_left.y, m_right.y, 0.0}, side * m_check.HalfVy());
        }
        std::sort(breaks.begin(), breaks.end());
        return breaks;
    }

    // The place of the largest value of a measure around a sample, by golden section.
    double Refine(Measure measure, double a, double c) const
    {
        constexpr double GOLDEN = 0.3819660112501051;
        double u = a + GOLDEN * (c - a), v = c - GOLDEN * (c - a);
        double fu = At(u, Place::Inside).*measure, fv = At(v, Place::Inside).*measure;
        for (int i = 0; i < 45; ++i) {
            if (fu >= fv) {
                c = v, v = u, fv = fu;
                u = a + GOLDEN * (c - a);
                fu = At(u, Place::Inside).*measure;
            } else {
                a = u, u = v, fu = fv;
                v = c - GOLDEN * (c - a);
                fv = At(v, Place::Inside).*measure;
            }
        }
        return fu >= fv ? u : v;
    }

    // Each place inside at which a measure is larger than at the positions known becomes a position.
    void Search(std::vector<Position>& positions, std::size_t first) const
    {
        const Position end = At(1.0, Place::RightEnd);
        const std::vector<double> breaks = Breaks();
        for (const Measure measure : MEASURES) {
            if (!IsOfUse(measure)) continue;
            double known = end.*measure;
            for (std::size_t i = first; i < positions.size(); ++i)
                known = std::max(known, positions[i].*measure);
            double best = known, place = 0.0;
            for (std::size_t i = 1; i < breaks.size(); ++i)
                SearchPiece(measure, breaks[i - 1], breaks[i], best, place);
            if (best > known * (1.0 + GAIN)) positions.push_back(At(place, Place::Inside));
        }
    }

    void SearchPiece(Measure measure, double from, double to, double& best, double& place) const
    {
        if (!(to - from > 1e-12)) return;
        std::array<double, STEPS + 1> values{};
        const auto at = [&](int i) { return from + (to - from) * i / STEPS; };
        const auto take = [&](double s) {
            const double value = At(s, Place::Inside).*measure;
            if (value > best) best = value, place = s;
            return value;
        };
        for (int i = 0; i <= STEPS; ++i)
            values[static_cast<std::size_t>(i)] = take(at(i));
        for (int i = 0; i <= STEPS; ++i) {
            const auto k = static_cast<std::size_t>(i);
            const double value = values[k];
            const bool below = i > 0 && values[k - 1] > value;
            const bool above = i < STEPS && values[k + 1] > value;
            // Between samples a smooth course exceeds the largest by little: others are not worth a closer look.
            if (below || above || !(value > 0.9 * best)) continue;
            take(Refine(measure, at(std::max(0, i - 1)), at(std::min(STEPS, i + 1))));
        }
    }

    const CrossSectionCheck& m_check;
    Vec3<double> m_left, m_right;
    double m_torsionLeft, m_torsionRight;
    const MomentDiagram::Piece& m_piece;
    int m_subSpan;
    Parabola m_major, m_minor;
};

} // namespace

void FindPositions(const CrossSectionCheck& check, const MomentDiagram& major, const MomentDiagram& minor, int subSpan,
                   const Steel::CSubSpan& forces, std::vector<Position>& positions)
{
    Course course(check, forces, major.At(subSpan), subSpan);
    for (const Parabola& y : major.Curves(subSpan))
        for (const Parabola& z : minor.Curves(subSpan))
            course.Find(y, z, positions);
}

} // namespace Keltrix::EC3
