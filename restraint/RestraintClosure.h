#pragma once

#include "keltrix/steel/Restraint.h"

namespace Keltrix::Data {

/// One rule of the closure: where every bit of `given` is set, `implied` follows.
struct Implication {
    unsigned int given;
    unsigned int implied;
};

/// One pass of rules in their order, each seeing what those before it added.
template <std::size_t N>
constexpr unsigned int ApplyImplications(unsigned int flag, const Implication (&rules)[N])
{
    for (const Implication& rule : rules)
        if ((flag & rule.given) == rule.given) flag |= rule.implied;
    return flag;
}

/// Flange 2 is the compression flange: flange bits and compression/tension bits of the same kind imply each other.
inline constexpr Implication FLANGE2_IN_COMPRESSION[] = {
    {0x2, 0x200}, {0x1, 0x400}, {0x8, 0x800}, {0x4, 0x1000}, {0x20, 0x2000}, {0x10, 0x4000},
    {0x200, 0x2}, {0x400, 0x1}, {0x800, 0x8}, {0x1000, 0x4}, {0x2000, 0x20}, {0x4000, 0x10}};

/// Flange 1 is the compression flange.
inline constexpr Implication FLANGE1_IN_COMPRESSION[] = {
    {0x1, 0x200}, {0x2, 0x400}, {0x4, 0x800}, {0x8, 0x1000}, {0x10, 0x2000}, {0x20, 0x4000},
    {0x200, 0x1}, {0x400, 0x2}, {0x800, 0x4}, {0x1000, 0x8}, {0x2000, 0x10}, {0x4000, 0x20}};

/// Both flanges laterally held hold the section.
inline constexpr Implication BOTH_FLANGES_LATERAL[] = {{0x1 | 0x2, 0x100640}, {0x200 | 0x400, 0x100043}};

/// Torsion together with any one of these lateral restraints holds the whole section laterally.
inline constexpr unsigned int ANY_LATERAL = 0x1 | 0x2 | 0x200 | 0x400 | 0x100000;
inline constexpr unsigned int LATERAL_BY_TORSION = 0x100603;

/// Both flanges held alike are both the compression and the tension flange, whichever is which; full restraint implies part
/// restraint.
inline constexpr Implication WARPING_AND_PARTS[] = {{0x4 | 0x8, 0x1800},   {0x800 | 0x1000, 0xC},   {0x4, 0x10},
                                                    {0x8, 0x20},           {0x800, 0x2000},         {0x1000, 0x4000},
                                                    {0x10 | 0x20, 0x6000}, {0x2000 | 0x4000, 0x30}, {0x40, 0x180},
                                                    {0x10000, 0x20000},    {0x40000, 0x80000}};

/// Closure of a bit set under the rules above. `compression` above zero: flange 2 is the compression flange, below zero:
/// flange 1, zero: it is not known and flange bits stay apart from it.
///
/// One pass closes, because of the order: a rule comes after all that can bring about what it asks for. Where the
/// compression flange is known, the first rules make flange and compression/tension bits say the same, and every later
/// rule adds to both alike. Lateral and torsional bits, then full, then part warping each depend on those before only.
constexpr unsigned int RestraintClosure(unsigned int flag, int compression)
{
    if (compression > 0)
        flag = ApplyImplications(flag, FLANGE2_IN_COMPRESSION);
    else if (compression < 0)
        flag = ApplyImplications(flag, FLANGE1_IN_COMPRESSION);
    flag = ApplyImplications(flag, BOTH_FLANGES_LATERAL);
    if ((flag & CRestraint::TORSION) && (flag & ANY_LATERAL)) flag |= LATERAL_BY_TORSION;
    return ApplyImplications(flag, WARPING_AND_PARTS);
}

} // namespace Keltrix::Data
