// The short code of restraints and the names of load positions.
#include <algorithm>
#include <array>
#include <stdexcept>

#include "Fuzz.h"
#include "keltrix/steel/Restraint.h"

using namespace Keltrix;
using Keltrix::Data::CRestraint;

namespace {

constexpr int SENTINEL = CRestraint::TORSION | CRestraint::MAJOR_SHEAR;

/// The marks of one flange group as the short code knows them: lateral, full warping, and part warping without full.
unsigned int Marks(unsigned int flag, unsigned int lateral, unsigned int warping, unsigned int warpingPart)
{
    const bool full = (flag & warping) != 0;
    return (flag & lateral ? 1u : 0u) | (full ? 2u : 0u) | (!full && (flag & warpingPart) ? 4u : 0u);
}

/// Whether the code of a closed set of bits loses some of them, as it is meant to in some mixed cases: it then writes the
/// marks of flange 1 for all four groups.
bool CodeLoses(unsigned int flag)
{
    using R = CRestraint;
    const unsigned int flange1 = Marks(flag, R::FLANGE1_LATERAL, R::FLANGE1_WARPING, R::FLANGE1_WARPING_PART);
    const unsigned int flange2 = Marks(flag, R::FLANGE2_LATERAL, R::FLANGE2_WARPING, R::FLANGE2_WARPING_PART);
    const unsigned int comp = Marks(flag, R::COMP_FLANGE_LATERAL, R::COMP_FLANGE_WARPING, R::COMP_FLANGE_WARPING_PART);
    const unsigned int tens = Marks(flag, R::TENS_FLANGE_LATERAL, R::TENS_FLANGE_WARPING, R::TENS_FLANGE_WARPING_PART);
    return (flange1 ^ flange2 ^ comp) == tens && (flange2 != flange1 || comp != flange1);
}

/// Whether a fuller restraint hides a lesser one of the same kind, which the code then leaves out.
bool CodeHides(unsigned int flag)
{
    using R = CRestraint;
    constexpr std::array<std::array<unsigned int, 2>, 8> pairs{{
        {R::FLANGE1_WARPING, R::FLANGE1_WARPING_PART},
        {R::FLANGE2_WARPING, R::FLANGE2_WARPING_PART},
        {R::COMP_FLANGE_WARPING, R::COMP_FLANGE_WARPING_PART},
        {R::TENS_FLANGE_WARPING, R::TENS_FLANGE_WARPING_PART},
        {R::TORSION, R::TORSION_PART | R::TORSION_FRICTION},
        {R::TORSION_PART, R::TORSION_FRICTION},
        {R::MAJOR_ROTATION, R::MAJOR_ROTATION_PART},
        {R::MINOR_ROTATION, R::MINOR_ROTATION_PART},
    }};
    return std::any_of(pairs.begin(), pairs.end(),
                       [&](const auto& pair) { return (flag & pair[0]) && (flag & pair[1]); });
}

void Check(const CString& text)
{
    CRestraint restraint(SENTINEL, Data::TOP_FLANGE, 0.25);
    if (!restraint.SetDescription(text)) {
        Fuzz::Require(restraint == CRestraint(SENTINEL, Data::TOP_FLANGE, 0.25), "a refused text changes nothing",
                      text);
        return;
    }
    Fuzz::Require(restraint.LoadHeight() == 0.0 && restraint.RefLoadHeight() == Data::SHR_CENTRE,
                  "a text that is taken sets the load height back", text);

    CRestraint once = restraint;
    once.MakeConsistent();
    CRestraint twice = once;
    twice.MakeConsistent();
    Fuzz::Require(twice.RestFlag() == once.RestFlag(), "closing twice changes nothing more", text);
    Fuzz::Require((restraint.RestFlag() & ~once.RestFlag()) == 0, "closing only adds", text);
    Fuzz::Require(restraint == once, "a restraint equals its closure", text);

    const CString code = restraint.Description(true);
    CRestraint back;
    Fuzz::Require(back.SetDescription(code), "a code that is written is understood", text, code);
    const CString second = back.Description(true);
    const auto flag = static_cast<unsigned int>(once.RestFlag());
    if (!CodeLoses(flag)) {
        Fuzz::Require(CodeHides(flag) || back == restraint, "a code reads back to the same restraint", text, code);
        Fuzz::Require(second == code, "a code reads back to itself", code, second);
    }
    CRestraint third;
    Fuzz::Require(third.SetDescription(second) && third.Description(true) == second, "codes settle", code, second);
    CString shown = code;
    shown.Replace(L'_', L' ');
    Fuzz::Require(restraint.UserDescription(true) == shown, "the shown code is the code with blanks", code, shown);
    restraint.GetString(CDesFormat());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const CString text = Fuzz::Text(Fuzz::Bytes(data, size));
    Check(text);
    try {
        Data::LoadPosID(text, Data::SHR_CENTRE);
    } catch (const std::runtime_error&) {
        // The documented answer to a text that names no position.
    }
    return 0;
}
