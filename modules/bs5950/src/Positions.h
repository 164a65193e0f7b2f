#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "CrossSection.h"
#include "keltrix/design/MomentDiagram.h"

namespace Keltrix::BS5950 {

/// Forces and moments along one sub-span for one reading of its moments.
struct SubSpanActions {
    Vec3<double> forceLeft, forceRight;
    double torsionLeft = 0.0, torsionRight = 0.0;
    Design::Parabola major, minor;

    Actions At(double s, const CSectionBS5950& section) const;
};

/// Finds the positions of the local checks along a member: the ends of each sub-span, the extremes of both moments, and the
/// places where a utilisation is largest in between, because moments about two axes, a varying axial force or a high shear
/// reach their worst together elsewhere. Every reading of an unbalanced sub-span is gone through.
///
/// Along a sub-span every utilisation is piecewise smooth: it is smooth between the places where an action vanishes, a shear
/// reaches a threshold or an element of the section changes its class. Those places are solved for, or found by bisection, and the
/// side that is worse counts.
class PositionFinder {
public:
    PositionFinder(const CrossSection& section, const Design::MomentDiagram& major, const Design::MomentDiagram& minor);

    /// Adds the evaluated positions of the sub-span between the points at `from` and `to`, from left to right.
    void Find(int subSpan, const Steel::CSubSpan& sub, double from, double to, std::vector<PositionResult>& positions);

private:
    /// Axial, combined: of tension and of compression apart; major, minor.
    static constexpr std::size_t MEASURES = 6;

    static std::array<double, MEASURES> Measures(const PositionResult& p);

    /// Utilisations at a place, and the branch of the rules that gave them.
    struct Sample {
        double s = 0.0;
        std::uint64_t branch = 0;
        std::array<double, MEASURES> value{};
        std::array<double, 3> capacities{};
        bool sumOfRatios = true;    ///< not the more exact rule
        std::array<bool, 2> open{}; ///< a rule about x-x or y-y that cannot be evaluated
    };

    void FindReading(std::vector<PositionResult>& positions);
    PositionResult Position(double s, Place place) const;
    Sample Evaluate(double s) const;
    void AddExtremes(std::vector<PositionResult>& positions) const;
    bool NeedsSearch(const PositionResult* first, const PositionResult* last) const;
    bool IsWorst(const PositionResult& p) const;
    void Search(std::vector<PositionResult>& positions, std::size_t first);
    void FindBreaks();
    void AddRoots(const Design::Parabola& curve, double level);
    void AddStressBreaks();
    void AddResultantBreaks();
    void SearchPiece(double from, double to);
    void SearchRun(const Sample& from, const Sample& to);
    void RefineMaximum(std::size_t measure, const std::array<const Sample*, 3>& near, bool atEnd, bool parabolic);
    void Take(const Sample& sample);
    void AddOpenPlaces(std::vector<PositionResult>& positions, std::size_t first) const;

    const CrossSection& m_section;
    const Design::MomentDiagram& m_major;
    const Design::MomentDiagram& m_minor;

    // The sub-span and the reading at hand.
    double m_from = 0.0, m_to = 0.0;
    PositionResult m_blank; ///< what the positions to come have in common
    SubSpanActions m_actions;
    Design::Parabola m_first, m_second; ///< moments that are compared with Mcx and Mcy
    std::vector<double> m_breaks;
    std::array<Sample, MEASURES> m_best;
    std::array<double, 2> m_open{}; ///< place where a rule about x-x or y-y cannot be evaluated; below 0: none
};

} // namespace Keltrix::BS5950
