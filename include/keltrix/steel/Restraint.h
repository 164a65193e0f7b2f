#pragma once

#include <string_view>
#include <vector>

#include "keltrix/platform/CString.h"
#include "keltrix/platform/KxUtil.h"
#include "keltrix/platform/Vec3.h"
#include "keltrix/steel/Export.h"

namespace Keltrix::Data {

/// What a load height is measured from. Other values can be stored; they have no name.
enum LoadPos : int {
    SHR_CENTRE = 0, ///< the shear centre
    TOP_FLANGE = 1, ///< the top flange
    BOT_FLANGE = 2  ///< the bottom flange
};

/// "SHR_CENTRE", "TOP_FLANGE" or "BOT_FLANGE"; empty for any other value.
KELTRIX_STEEL_API CString LoadPosString(LoadPos pos);

/// The load position that a text names: its name in any case or its number, white space around it forgiven.
/// An empty text gives `defaultPos`. Throws std::runtime_error ("Unrecognised steel load position") for any other.
KELTRIX_STEEL_API LoadPos LoadPosID(CString text, LoadPos defaultPos);

/// How a member is held at a point or along a stretch of its length, and at what height load is applied there.
///
/// Flange 1 is the top flange, flange 2 the bottom flange. Which of them is the compression flange follows from the
/// sign of the major-axis moment (the y component) where forces and moments are set: above zero flange 2, below zero
/// flange 1.
///
/// A set of bits implies others (both flanges held laterally hold the whole section, for instance); MakeConsistent
/// adds what is implied. Closing only adds bits, and closing twice changes nothing more.
class KELTRIX_STEEL_API CRestraint {
public:
    // Restraint bits.
    KELTRIX_CONSTANT static constexpr unsigned int FLANGE1_LATERAL = 0x1;
    KELTRIX_CONSTANT static constexpr unsigned int FLANGE2_LATERAL = 0x2;
    KELTRIX_CONSTANT static constexpr unsigned int FLANGE1_WARPING = 0x4;
    KELTRIX_CONSTANT static constexpr unsigned int FLANGE2_WARPING = 0x8;
    KELTRIX_CONSTANT static constexpr unsigned int FLANGE1_WARPING_PART = 0x10;
    KELTRIX_CONSTANT static constexpr unsigned int FLANGE2_WARPING_PART = 0x20;
    KELTRIX_CONSTANT static constexpr unsigned int TORSION = 0x40;
    KELTRIX_CONSTANT static constexpr unsigned int TORSION_PART = 0x80;
    KELTRIX_CONSTANT static constexpr unsigned int TORSION_FRICTION =
        0x100; ///< torsion held by friction or bearing only
    KELTRIX_CONSTANT static constexpr unsigned int COMP_FLANGE_LATERAL = 0x200;
    KELTRIX_CONSTANT static constexpr unsigned int TENS_FLANGE_LATERAL = 0x400;
    KELTRIX_CONSTANT static constexpr unsigned int COMP_FLANGE_WARPING = 0x800;
    KELTRIX_CONSTANT static constexpr unsigned int TENS_FLANGE_WARPING = 0x1000;
    KELTRIX_CONSTANT static constexpr unsigned int COMP_FLANGE_WARPING_PART = 0x2000;
    KELTRIX_CONSTANT static constexpr unsigned int TENS_FLANGE_WARPING_PART = 0x4000;
    KELTRIX_CONSTANT static constexpr unsigned int MAJOR_ROTATION = 0x10000; ///< about the section's x-x axis
    KELTRIX_CONSTANT static constexpr unsigned int MAJOR_ROTATION_PART = 0x20000;
    KELTRIX_CONSTANT static constexpr unsigned int MINOR_ROTATION = 0x40000; ///< about the section's y-y axis
    KELTRIX_CONSTANT static constexpr unsigned int MINOR_ROTATION_PART = 0x80000;
    KELTRIX_CONSTANT static constexpr unsigned int MINOR_SHEAR =
        0x100000; ///< section x direction: lateral restraint of the whole section
    KELTRIX_CONSTANT static constexpr unsigned int MAJOR_SHEAR = 0x200000; ///< section y direction: vertical support
    KELTRIX_CONSTANT static constexpr unsigned int PART_A_CONNECTED = 0x1000000; ///< parts of a compound section
    KELTRIX_CONSTANT static constexpr unsigned int PART_B_CONNECTED = 0x2000000;

    /// Every bit that is a restraint.
    KELTRIX_CONSTANT static constexpr unsigned int RESTRAINT_MASK = 0x33f7fff;
    /// The bits that MakeConsistent can add.
    KELTRIX_CONSTANT static constexpr unsigned int IMPLIED_MASK = 0x1a7fff;
    /// Held in every way: the state that IsEnc tests and SetEnc makes.
    KELTRIX_CONSTANT static constexpr unsigned int ENCASTRE = 0x3f01ff;
    /// Bits that are not restraints; they are carried along and kept by SetFree and SetPreset.
    KELTRIX_CONSTANT static constexpr unsigned int NON_RESTRAINT_MASK = 0xfcc08000;

    /// Named bit sets; the value is the set itself. FULL_ROTATIONAL and PARTIAL_ROTATIONAL hold flange 1 laterally
    /// and not flange 2. "Fixed" is no set of its own but the encastre state.
    enum Presets : int {
        FREE = 0,
        PINNED = 0x300043,
        FULL_ROTATIONAL = 0x31004d,
        PARTIAL_ROTATIONAL = 0x320071,
        TOP_FLANGE_LATERAL = 0x1,
        BOTTOM_FLANGE_LATERAL = 0x2,
        TOP_AND_BOTTOM_FLANGE_LATERAL = 0x100643
    };

    /// Names for a user's pick list: "Free", "Pinned", "Fixed", "Full rotational", "Partial rotational",
    /// "Top flange lateral".
    static std::vector<CString> PresetStrings();
    /// The presets offered for the continuous restraint of a span.
    static const std::vector<Presets>& SpanPresets();
    /// The presets offered at a member point.
    static const std::vector<Presets>& PointPresets();

    /// Free, load at the shear centre, no load height, no forces and moments.
    CRestraint() = default;
    /// Height in m, above the reference; positive destabilises.
    CRestraint(int restFlag, LoadPos ref, double loadHeight) :
        m_iRestFlag(static_cast<unsigned int>(restFlag)), m_eRefLoadHeight(ref), m_dLoadHeight(loadHeight)
    {}

    /// Equal when the closures of the bit sets are equal, the load reference is the same, the load heights agree to
    /// 1e-5 of the larger (or are both below 1e-10 m), and the forces and moments are the same: both absent, or
    /// both present and exactly equal with the same use of the moment sign.
    bool operator==(const CRestraint& other) const;
    bool operator!=(const CRestraint& other) const { return !(*this == other); }

    int RestFlag() const { return static_cast<int>(m_iRestFlag); }
    void SetRestFlag(int bits) { m_iRestFlag = static_cast<unsigned int>(bits); }
    LoadPos RefLoadHeight() const { return m_eRefLoadHeight; }
    void SetRefLoadHeight(LoadPos ref) { m_eRefLoadHeight = ref; }
    /// Height of load application above the reference, m; positive destabilises, negative stabilises.
    double LoadHeight() const { return m_dLoadHeight; }
    void SetLoadHeight(double metres) { m_dLoadHeight = metres; }

    void Add(int bits) { m_iRestFlag |= static_cast<unsigned int>(bits); }
    void Remove(int bits) { m_iRestFlag &= ~static_cast<unsigned int>(bits); }
    /// Clears every restraint bit and keeps the others.
    void SetFree() { m_iRestFlag &= NON_RESTRAINT_MASK; }
    /// Replaces the restraint bits by those given, keeping the bits that are not restraints.
    void SetPreset(int preset) { m_iRestFlag = (m_iRestFlag & NON_RESTRAINT_MASK) | static_cast<unsigned int>(preset); }
    /// Clears the compression- and tension-flange bits and the part connections, then sets ENCASTRE.
    void SetEnc() { m_iRestFlag = (m_iRestFlag & 0xfcff81ff) | ENCASTRE; }

    /// Whether every one of the bits is set; with `consistent`, in the closure.
    bool IsRestrained(unsigned int bits, bool consistent) const;
    /// Whether none of the restraint bits among `bits` is set; with `consistent`, in the closure. A zero flag is free
    /// of anything, bits outside the restraint mask included. RESTRAINT_MASK is answered without closing, because
    /// closing cannot change that answer.
    bool IsFree(unsigned int bits, bool consistent) const;
    /// Whether every ENCASTRE bit is set; with `consistent`, in the closure.
    bool IsEnc(bool consistent) const;
    /// Whether this restraint equals the preset at the shear centre with no load height and no forces; a load
    /// height, another reference or stored forces make it no preset.
    bool IsPreset(unsigned int preset) const;
    bool IsDestabilized() const { return m_dLoadHeight > 0.0; }
    bool IsStabilized() const { return m_dLoadHeight < 0.0; }

    /// Stores force (N) and moment (N·m); with `useMomentSign`, the sign of moment.y says which flange is in
    /// compression.
    void SetForcesAndMoments(const Vec3<double>& force, const Vec3<double>& moment, bool useMomentSign);
    /// Fills all three (with zeros and true where none were set) and returns whether they were set.
    bool GetForcesAndMoments(Vec3<double>& force, Vec3<double>& moment, bool& useMomentSign) const;
    /// Forgets forces and moments; bits and load height stay.
    void ClearForcesAndMoments();
    /// Back to the default state.
    void Clear() { *this = CRestraint(); }

    /// Mirrors the member about its major axis: force z, moment x and moment y change sign, and every restraint bit is
    /// emptied (kept for compatibility: callers apply the restraints again). Load reference and height stay.
    void MirrorMajorAxis();

    /// Adds every restraint that those present imply.
    void MakeConsistent() { m_iRestFlag = Closure(m_iRestFlag, CompressionSign()); }

    /// The report's list of what is held, one tab-led line each, in mark-up, then a line on the load height. With or
    /// without `consistent` the list is that of the closure, as is required; only the raw bits decide on "none".
    CString GetString(const CDesFormat& fmt, bool consistent = false) const;
    /// The short code: a preset name ("Pinned"), "Fixed", "Free", or a code such as "F1L F2W TR MAJRV". With
    /// `consistent`, the code of the closure. SetDescription reads it back to the same closure, except for sets that
    /// pair a named flange with the compression or the tension flange: their code names both flanges or none (kept for
    /// compatibility with written files). A restraint whose closure was made with a moment is such a set.
    CString Description(bool consistent = false) const;
    /// Description with underscores shown as blanks.
    CString UserDescription(bool consistent = false) const;
    /// Reads a short code, a preset name or a list of both separated by blanks or commas, in any letter case. True:
    /// the restraint is that of the text and everything else (bits that are no restraints, load reference and height,
    /// forces) is back to default. False: the text has a character or a word that is not understood, and nothing
    /// changed.
    bool SetDescription(const CString& text);

private:
    friend class CRestraintTestAccess;

    /// Closure of a bit set; `compression` above zero: flange 2 in compression, below zero: flange 1, zero: unknown.
    static unsigned int Closure(unsigned int flag, int compression);
    int CompressionSign() const
    {
        if (!m_bHasForcesAndMoments || !m_bUseMomentSign) return 0;
        return (m_vMoment.y > 0.0) - (m_vMoment.y < 0.0);
    }
    unsigned int ConsistentFlag() const { return Closure(m_iRestFlag, CompressionSign()); }
    static void SwapBits(unsigned int& flag, unsigned int a, unsigned int b);
    bool SetDescriptionFragment(std::wstring_view token);

    unsigned int m_iRestFlag = 0;
    LoadPos m_eRefLoadHeight = SHR_CENTRE;
    double m_dLoadHeight = 0.0;
    Vec3<double> m_vForce{0.0, 0.0, 0.0};
    Vec3<double> m_vMoment{0.0, 0.0, 0.0};
    bool m_bUseMomentSign = true;
    bool m_bHasForcesAndMoments = false;
};

} // namespace Keltrix::Data
