#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "keltrix/platform/CString.h"
#include "keltrix/statics/Beam.h"
#include "keltrix/statics/Export.h"
#include "keltrix/statics/Line.h"

namespace Keltrix::Statics {

/// What a support gives to the member.
struct Reaction {
    double at = 0.0;
    double vertical = 0.0;      ///< N, upwards
    double moment = 0.0;        ///< N·m, about y: clockwise with x to the right and z up
    double lateral = 0.0;       ///< N, along y
    double lateralMoment = 0.0; ///< N·m, about z: turns x towards y. Below zero at a left clamp under a load along y
    double axial = 0.0;         ///< N, along x
};

/// The length between neighbouring vertical supports, or an overhang from the last of them to a free end.
struct Span {
    double from = 0.0;
    double to = 0.0;
    bool heldFrom = true; ///< false: `from` is a free end
    bool heldTo = true;

    double Length() const { return to - from; }
    bool IsOverhang() const { return heldFrom != heldTo; }
};

/// Forces, deflections and reactions under some loads. The breaks are those of the analysis.
struct Response {
    Line major;
    Line minor; ///< without pieces where no load of the beam bends it about the minor axis
    std::vector<AxialPiece> axial;
    std::vector<Reaction> reactions;

    /// Whether there is nothing in it: a sum without its first part, or of a beam without an answer.
    KELTRIX_STATICS_API bool IsEmpty() const;
    /// Adds a multiple of a response of the same analysis. An empty response takes the multiple, and adds nothing.
    /// Throws std::invalid_argument, and changes nothing, where breaks, reactions' places or stiffness differ or the
    /// factor is not finite.
    KELTRIX_STATICS_API void Add(double factor, const Response& other);

private:
    bool IsOfTheAnalysisOf(const Response& other) const;
};

/// Loads of a case on one span, or of the whole case. A point load over a support belongs to the span on its right, over a
/// support at the right end of the member to the span on its left.
struct Unit {
    std::size_t caseIndex = 0;
    int span = -1; ///< -1: the whole case
    Response response;
};

/// A case in a combination: its factor, and the spans on which it acts, by their index in Analysis::Spans(), from 0; an
/// empty list is all of them. The list is of cases with Case::bySpan alone: other cases act as a whole whatever it
/// says.
struct Term {
    std::size_t caseIndex = 0;
    double factor = 0.0;
    std::vector<bool> spans;

    /// A span beyond the list is not loaded. Every term acts on what has no span of its own (-1).
    bool ActsOn(int span) const
    {
        if (span < 0 || spans.empty()) return true;
        const auto place = static_cast<std::size_t>(span);
        return place < spans.size() && spans[place];
    }
};

/// A motion that nothing resists: displacement at places of the member, linear in between; the largest is 1 m.
struct FreeMotion {
    bool minor = false;                         ///< sideways instead of up and down
    std::vector<std::array<double, 2>> samples; ///< place, displacement
};

/// First-order statics of a beam by direct stiffness (Euler-Bernoulli: no shear deformation, no effect of axial force
/// on bending). Supports, hinges and ends are the nodes; end forces of the lengths in between come from the loads
/// exactly. Each such length is in equilibrium by construction; rounding enters the compatibility alone. Axial forces
/// are those of one axial hold.
///
/// A beam with faults or with a motion that nothing holds is not answered, and has a reason.
class KELTRIX_STATICS_API Analysis {
public:
    explicit Analysis(Beam beam);

    bool IsAnswered() const { return m_reason.IsEmpty(); }
    /// Why there is no answer: one sentence.
    const CString& Reason() const { return m_reason; }
    const std::vector<Fault>& Faults() const { return m_faults; }
    /// Without samples where everything is held.
    const FreeMotion& Motion() const { return m_motion; }

    /// The beam as analysed: infinite ends of loads are the end of the member, and self weight is among the loads.
    const Beam& GetBeam() const { return m_beam; }
    /// What an engineer has to know of how the beam was read.
    const std::vector<CString>& Notes() const { return m_notes; }

    /// Places where anything begins, ends or acts, ascending from 0 to the length.
    const std::vector<double>& Breaks() const { return m_breaks; }
    const std::vector<Span>& Spans() const { return m_spans; }
    const std::vector<Unit>& Units() const { return m_units; }

    /// Without an answer both are empty. Both throw std::invalid_argument where the beam has no such case or a factor is
    /// not finite, and std::overflow_error where a sum is beyond the range of numbers.
    Response OfCase(std::size_t caseIndex) const { return Of({{caseIndex, 1.0, {}}}); }
    /// Sum of the cases with their factors, on the spans given. Cases that are not by span act as a whole.
    Response Of(const std::vector<Term>& terms) const;

private:
    void Prepare();
    void FindSpans();
    void FindBreaks();
    void Solve();
    Response Zero() const;

    Beam m_beam;
    CString m_reason;
    std::vector<Fault> m_faults;
    FreeMotion m_motion;
    std::vector<CString> m_notes;
    std::vector<double> m_breaks;
    std::vector<Span> m_spans;
    std::vector<Unit> m_units;
    bool m_hasMinor = false;
};

} // namespace Keltrix::Statics
