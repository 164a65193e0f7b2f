#pragma once

// A second, independent statement of the restraint rules, written as tables and as slow as it is plain. The tests hold
// the library against it over whole ranges of bit sets, beside the literal values.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "keltrix/steel/Restraint.h"

namespace Keltrix::Data {

/// Opens the private operations of a restraint to the tests.
class CRestraintTestAccess {
public:
    static void SwapBits(unsigned int& flag, unsigned int a, unsigned int b) { CRestraint::SwapBits(flag, a, b); }
    static bool SetDescriptionFragment(CRestraint& restraint, std::wstring_view token)
    {
        return restraint.SetDescriptionFragment(token);
    }
};

} // namespace Keltrix::Data

namespace RestraintOracle {

using Keltrix::CString;
using Keltrix::Vec3;
using Keltrix::Data::CRestraint;

inline std::string Utf8(const CString& text) { return text.ToUtf8().value_or("<ill-formed text>"); }
inline CString Wide(std::string_view text) { return CString::FromUtf8(text).value_or(CString(L"<ill-formed text>")); }

inline std::string Hex(unsigned int bits)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%x", bits);
    return text.data();
}

inline unsigned int Bits(const CRestraint& restraint) { return static_cast<unsigned int>(restraint.RestFlag()); }

/// What is known of the compression flange: no forces set, or forces set with this moment about the major axis.
enum class Moment { None, Positive, Negative, Zero, PositiveUnused, NegativeUnused };

inline constexpr std::array allMoments{Moment::None, Moment::Positive,       Moment::Negative,
                                       Moment::Zero, Moment::PositiveUnused, Moment::NegativeUnused};

inline const char* Name(Moment moment)
{
    constexpr std::array names{"no forces",  "moment y +5",          "moment y -5",
                               "moment y 0", "moment y +5 (unused)", "moment y -5 (unused)"};
    return names[static_cast<std::size_t>(moment)];
}

inline CRestraint Make(unsigned int bits, Moment moment = Moment::None)
{
    CRestraint restraint(static_cast<int>(bits), Keltrix::Data::SHR_CENTRE, 0.0);
    const Vec3<double> force(1.0, 2.0, 3.0);
    switch (moment) {
    case Moment::None:
        break;
    case Moment::Positive:
        restraint.SetForcesAndMoments(force, {7.0, 5.0, 9.0}, true);
        break;
    case Moment::Negative:
        restraint.SetForcesAndMoments(force, {7.0, -5.0, 9.0}, true);
        break;
    case Moment::Zero:
        restraint.SetForcesAndMoments(force, {7.0, 0.0, 9.0}, true);
        break;
    case Moment::PositiveUnused:
        restraint.SetForcesAndMoments(force, {7.0, 5.0, 9.0}, false);
        break;
    case Moment::NegativeUnused:
        restraint.SetForcesAndMoments(force, {7.0, -5.0, 9.0}, false);
        break;
    }
    return restraint;
}

/// Every bit of `all` and, where `any` is given, one bit of it: then `adds` is implied.
struct Rule {
    unsigned int all;
    unsigned int any;
    unsigned int adds;
};

inline constexpr std::array<Rule, 12> positiveMomentRules{{{0x2, 0, 0x200},
                                                           {0x1, 0, 0x400},
                                                           {0x8, 0, 0x800},
                                                           {0x4, 0, 0x1000},
                                                           {0x20, 0, 0x2000},
                                                           {0x10, 0, 0x4000},
                                                           {0x200, 0, 0x2},
                                                           {0x400, 0, 0x1},
                                                           {0x800, 0, 0x8},
                                                           {0x1000, 0, 0x4},
                                                           {0x2000, 0, 0x20},
                                                           {0x4000, 0, 0x10}}};
inline constexpr std::array<Rule, 12> negativeMomentRules{{{0x1, 0, 0x200},
                                                           {0x2, 0, 0x400},
                                                           {0x4, 0, 0x800},
                                                           {0x8, 0, 0x1000},
                                                           {0x10, 0, 0x2000},
                                                           {0x20, 0, 0x4000},
                                                           {0x200, 0, 0x1},
                                                           {0x400, 0, 0x2},
                                                           {0x800, 0, 0x4},
                                                           {0x1000, 0, 0x8},
                                                           {0x2000, 0, 0x10},
                                                           {0x4000, 0, 0x20}}};
inline constexpr std::array<Rule, 16> generalRules{{{0x4, 0, 0x10},
                                                    {0x8, 0, 0x20},
                                                    {0x800, 0, 0x2000},
                                                    {0x40, 0, 0x180},
                                                    {0x1000, 0, 0x4000},
                                                    {0x10000, 0, 0x20000},
                                                    {0x40000, 0, 0x80000},
                                                    {0x3, 0, 0x100640},
                                                    {0x600, 0, 0x100043},
                                                    {0x40, 0x1 | 0x2 | 0x200 | 0x400 | 0x100000, 0x100603},
                                                    {0x3, 0, 0x600},
                                                    {0x600, 0, 0x3},
                                                    {0xc, 0, 0x1800},
                                                    {0x1800, 0, 0xc},
                                                    {0x30, 0, 0x6000},
                                                    {0x6000, 0, 0x30}}};

template <std::size_t N>
void ApplyPass(unsigned int& flag, const std::array<Rule, N>& rules)
{
    for (const Rule& rule : rules) {
        const bool holds = (flag & rule.all) == rule.all && (rule.any == 0 || (flag & rule.any) != 0);
        if (holds) flag |= rule.adds;
    }
}

inline unsigned int Closure(unsigned int flag, Moment moment)
{
    unsigned int before;
    do {
        before = flag;
        if (moment == Moment::Positive) ApplyPass(flag, positiveMomentRules);
        if (moment == Moment::Negative) ApplyPass(flag, negativeMomentRules);
        ApplyPass(flag, generalRules);
    } while (flag != before);
    return flag;
}

inline bool IsRestrained(unsigned int flag, Moment moment, unsigned int bits, bool consistent)
{
    if (consistent && (bits & 0x1a7fff) != 0) flag = Closure(flag, moment);
    return (flag & bits) == bits;
}

inline bool IsFree(unsigned int flag, Moment moment, unsigned int bits, bool consistent)
{
    if (flag == 0) return true;
    if (consistent && (bits & 0x1a7fff) != 0 && bits != 0x33f7fff) flag = Closure(flag, moment);
    return (flag & bits & 0x33f7fff) == 0;
}

inline bool IsEnc(unsigned int flag, Moment moment, bool consistent)
{
    if (consistent) flag = Closure(flag, moment);
    return (flag & 0x3f01ff) == 0x3f01ff;
}

inline bool Has(unsigned int flag, unsigned int bits) { return (flag & bits) == bits; }

/// The report's list, without the line on the load height.
inline std::string ReportList(unsigned int raw, Moment moment)
{
    std::string text = "Restraints set:\n";
    if ((raw & 0x33f7fff) == 0) return text + "\tnone\n";
    const unsigned int c = Closure(raw, moment);
    if (Has(c, 0x3f01ff)) return text + "\tfully encastre\n";
    struct Line {
        unsigned int bit;
        unsigned int unless;
        const char* text;
    };
    constexpr std::array<Line, 21> lines{{
        {0x10000, 0, "major axis rotation full <i>(section XX axis)</i>"},
        {0x20000, 0x10000, "major axis rotation part <i>(section XX axis)</i>"},
        {0x40000, 0, "minor axis rotation full <i>(section YY axis)</i>"},
        {0x80000, 0x40000, "minor axis rotation part <i>(section YY axis)</i>"},
        {0x100000, 0, "minor axis shear <i>(section X direction)</i>"},
        {0x200000, 0, "major axis shear <i>(section Y direction)</i>"},
        {0x1, 0, "flange 1 lateral"},
        {0x2, 0, "flange 2 lateral"},
        {0x200, 0, "compression flange lateral"},
        {0x400, 0, "tension flange lateral"},
        {0x4, 0, "flange 1 warping"},
        {0x10, 0x4, "flange 1 warping part"},
        {0x8, 0, "flange 2 warping"},
        {0x20, 0x8, "flange 2 warping part"},
        {0x40, 0, "torsion"},
        {0x80, 0x40, "torsion part"},
        {0x100, 0x40 | 0x80, "torsion by friction/bearing"},
        {0x3000000, 0, "parts A and B connected"},
        {0x1000000, 0x2000000, "part A connected"},
        {0x2000000, 0x1000000, "part B connected"},
        {0, 0, nullptr},
    }};
    for (const Line& line : lines)
        if (line.text && Has(c, line.bit) && (c & line.unless) == 0) text += "\t" + std::string(line.text) + "\n";
    return text;
}

struct FlangeGroup {
    const char* prefix;
    unsigned int lateral;
    unsigned int warping;
    unsigned int part;

    bool L(unsigned int f) const { return (f & lateral) != 0; }
    bool W(unsigned int f) const { return (f & warping) != 0; }
    bool P(unsigned int f) const { return (f & part) != 0 && !W(f); }
    std::string Code(unsigned int f, const std::string& start) const
    {
        if (!L(f) && !W(f) && !P(f)) return "";
        return start + (L(f) ? "L" : "") + (W(f) ? "W" : P(f) ? "P" : "") + " ";
    }
};

inline constexpr FlangeGroup flange1{"F1", 0x1, 0x4, 0x10};
inline constexpr FlangeGroup flange2{"F2", 0x2, 0x8, 0x20};
inline constexpr FlangeGroup compressionFlange{"FC", 0x200, 0x800, 0x2000};
inline constexpr FlangeGroup tensionFlange{"FT", 0x400, 0x1000, 0x4000};

/// The test on which only flange 1's marks are written, for both flanges.
inline bool WritesFlangesTogether(unsigned int f)
{
    const bool lateral = (flange1.L(f) ^ flange2.L(f) ^ compressionFlange.L(f)) == tensionFlange.L(f);
    const bool warping = (flange1.W(f) ^ flange2.W(f) ^ compressionFlange.W(f)) == tensionFlange.W(f);
    const bool part = (flange1.P(f) ^ flange2.P(f) ^ compressionFlange.P(f)) == tensionFlange.P(f);
    return lateral && warping && part;
}

inline std::string LetterCode(unsigned int f)
{
    std::string text;
    if (WritesFlangesTogether(f))
        text += flange1.Code(f, "F12");
    else
        for (const FlangeGroup& group : {flange1, flange2, compressionFlange, tensionFlange})
            text += group.Code(f, group.prefix);
    if (f & 0x40)
        text += "TR ";
    else if (f & 0x80)
        text += "TP ";
    else if (f & 0x100)
        text += "TF ";
    if (f & 0x230000)
        text += std::string("MAJ") + (f & 0x10000 ? "R" : f & 0x20000 ? "P" : "") + (f & 0x200000 ? "V" : "") + " ";
    if (f & 0x1c0000)
        text += std::string("MIN") + (f & 0x40000 ? "R" : f & 0x80000 ? "P" : "") + (f & 0x100000 ? "V" : "") + " ";
    if (f & 0x3000000) text += std::string("C") + (f & 0x1000000 ? "A" : "") + (f & 0x2000000 ? "B" : "") + " ";
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return text;
}

/// `plain`: load at the shear centre without a height. Forces follow from `moment`.
inline std::string Description(unsigned int f, Moment moment, bool plain, bool consistent)
{
    struct Preset {
        unsigned int bits;
        const char* name;
    };
    constexpr std::array<Preset, 6> presets{{{0x31004d, "Full rotational"},
                                             {0x320071, "Partial rotational"},
                                             {0x300043, "Pinned"},
                                             {0x1, "Top flange lateral"},
                                             {0x2, "Bottom flange lateral"},
                                             {0x100643, "Top and Bottom flange lateral"}}};
    if (consistent) f = Closure(f, moment);
    if (Has(Closure(f, moment), 0x3f01ff)) return "Fixed";
    if (plain && moment == Moment::None)
        for (const Preset& preset : presets)
            if (Closure(f, moment) == Closure(preset.bits, Moment::None)) return preset.name;
    if ((f & 0x33f7fff) == 0) return "Free";
    return LetterCode(f);
}

/// The bits that one word of a description adds to or makes of `bits`; nothing for a word that is not understood.
inline std::optional<unsigned int> ParseWord(const std::string& word, unsigned int bits)
{
    struct Named {
        const char* name;
        unsigned int preset;
    };
    constexpr std::array<Named, 13> names{{{"FREE", 0},
                                           {"NONE", 0},
                                           {"TOP_FLANGE_LATERAL", 0x1},
                                           {"BOTTOM_FLANGE_LATERAL", 0x2},
                                           {"TOP_AND_BOTTOM_FLANGE_LATERAL", 0x100643},
                                           {"PINNED", 0x300043},
                                           {"PIN", 0x300043},
                                           {"PARTIAL_ROTATIONAL", 0x320071},
                                           {"FULL_ROTATIONAL", 0x31004d},
                                           {"FIXED", 0x3f01ff},
                                           {"FIX", 0x3f01ff},
                                           {"ENCASTRE", 0x3f01ff},
                                           {"ENC", 0x3f01ff}}};
    if (word.empty()) return bits;
    for (const Named& named : names)
        if (word == named.name) return (bits & ~0x33f7fffU) | named.preset;
    const auto has = [&word](char letter) { return word.find(letter) != std::string::npos; };
    switch (word[0]) {
    case 'C':
        if (word.find('A', 1) != std::string::npos) bits |= 0x1000000;
        if (word.find('B', 1) != std::string::npos) bits |= 0x2000000;
        return bits;
    case 'F': {
        struct Flange {
            char name;
            FlangeGroup group;
        };
        for (const Flange& flange :
             {Flange{'1', flange1}, Flange{'2', flange2}, Flange{'C', compressionFlange}, Flange{'T', tensionFlange}}) {
            if (!has(flange.name)) continue;
            if (!has('L') && !has('W') && !has('P')) return std::nullopt;
            if (has('L')) bits |= flange.group.lateral;
            if (has('W')) bits |= flange.group.warping;
            if (has('P')) bits |= flange.group.part;
        }
        return bits;
    }
    case 'M':
        if (word.substr(1, 2) == "AJ") {
            if (!has('R') && !has('P') && !has('V')) return std::nullopt;
            bits |= has('R') ? 0x10000U : has('P') ? 0x20000U : 0U;
            return bits | (has('V') ? 0x200000U : 0U);
        }
        if (word.substr(1, 2) == "IN") {
            bits |= has('R') ? 0x40000U : has('P') ? 0x80000U : 0U;
            return bits | (has('V') ? 0x100000U : 0U);
        }
        return std::nullopt;
    case 'T':
        if (word.size() > 1 && word[1] == 'R') return bits | 0x40;
        if (word.size() > 1 && word[1] == 'P') return bits | 0x80;
        if (word.size() > 1 && word[1] == 'F') return bits | 0x100;
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

/// The bits of a description in ASCII, or nothing when it is refused.
inline std::optional<unsigned int> Parse(std::string text)
{
    constexpr std::string_view white = " \t\r\n\v\f";
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    const auto first = text.find_first_not_of(white);
    text = first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(white) - first + 1);

    bool known = false;
    for (const char* name : {"FREE", "NONE", "PIN", "PINNED", "FIX", "FIXED", "ENC", "ENCASTRE"})
        known = known || text == name;
    struct Spaced {
        const char* spaced;
        const char* word;
    };
    constexpr std::array<Spaced, 7> spacedNames{{{"TOP FLANGE LATERAL", "TOP_FLANGE_LATERAL"},
                                                 {"BOTTOM FLANGE LATERAL", "BOTTOM_FLANGE_LATERAL"},
                                                 {"TOP AND BOTTOM FLANGE LATERAL", "TOP_AND_BOTTOM_FLANGE_LATERAL"},
                                                 {"PARTIAL ROTATIONAL", "PARTIAL_ROTATIONAL"},
                                                 {"PARTIAL ROTATIONAL RESTRAINT", "PARTIAL_ROTATIONAL"},
                                                 {"FULL ROTATIONAL", "FULL_ROTATIONAL"},
                                                 {"FULL ROTATIONAL RESTRAINT", "FULL_ROTATIONAL"}}};
    for (const Spaced& name : spacedNames) {
        if (known || text != name.spaced) continue;
        text = name.word;
        known = true;
    }
    if (!known && text.find_first_not_of("12ABCEFHIJLMNOPRSTVW*, ") != std::string::npos) return std::nullopt;

    std::string clean;
    for (const char c : text)
        if (c != '*') clean += c == ',' ? ' ' : c;
    unsigned int bits = 0;
    for (std::size_t start = 0; start <= clean.size();) {
        const std::size_t end = std::min(clean.find(' ', start), clean.size());
        const auto next = ParseWord(clean.substr(start, end - start), bits);
        if (!next) return std::nullopt;
        bits = *next;
        start = end + 1;
    }
    return bits;
}

inline constexpr std::array<unsigned int, 23> restraintBits{
    0x1,    0x2,    0x4,    0x8,     0x10,    0x20,    0x40,    0x80,     0x100,    0x200,     0x400,    0x800,
    0x1000, 0x2000, 0x4000, 0x10000, 0x20000, 0x40000, 0x80000, 0x100000, 0x200000, 0x1000000, 0x2000000};

/// No bit, each of the 32 bits, and each pair of restraint bits.
inline std::vector<unsigned int> SmallSets()
{
    std::vector<unsigned int> sets{0};
    for (unsigned int i = 0; i < 32; ++i)
        sets.push_back(1U << i);
    for (std::size_t i = 0; i < restraintBits.size(); ++i)
        for (std::size_t j = i + 1; j < restraintBits.size(); ++j)
            sets.push_back(restraintBits[i] | restraintBits[j]);
    return sets;
}

/// Every combination of the 16 bits on which closing depends in more than one way: the flange bits, torsion and minor
/// shear. Index 0 to 65535.
inline unsigned int FlangeTorsionShearSet(unsigned int index)
{
    return (index & 0x7fff) | ((index & 0x8000) ? 0x100000U : 0U);
}

inline bool SameDouble(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

/// Every field of both objects agrees, not-a-number counting as equal to itself.
inline bool Identical(const CRestraint& a, const CRestraint& b)
{
    Vec3<double> forceA, momentA, forceB, momentB;
    bool signA = false;
    bool signB = false;
    const bool hasA = a.GetForcesAndMoments(forceA, momentA, signA);
    const bool hasB = b.GetForcesAndMoments(forceB, momentB, signB);
    const auto same = [](const Vec3<double>& p, const Vec3<double>& q) {
        return SameDouble(p.x, q.x) && SameDouble(p.y, q.y) && SameDouble(p.z, q.z);
    };
    return Bits(a) == Bits(b) && a.RefLoadHeight() == b.RefLoadHeight() && SameDouble(a.LoadHeight(), b.LoadHeight()) &&
           same(forceA, forceB) && same(momentA, momentB) && signA == signB && hasA == hasB;
}

} // namespace RestraintOracle
