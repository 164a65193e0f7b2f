#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "keltrix/steel/MemberResult.h"
#include "support/Text.h"

namespace Keltrix::Steel {

/// Opens the private fields and operations of a result to the tests.
class CMemberResultTestAccess {
public:
    static constexpr std::size_t numLocal = 7;
    static constexpr std::size_t numBuckling = 6;

    /// In field order: combined, axial, major bending, minor bending, major shear, minor shear, torsion.
    static std::vector<double>& Local(CMemberResult& r, std::size_t i)
    {
        const std::array<std::vector<double>*, numLocal> arrays = {
            &r.m_vUtilLocalCombined,   &r.m_vUtilLocalAxial,      &r.m_vUtilLocalMomMajor, &r.m_vUtilLocalMomMinor,
            &r.m_vUtilLocalShearMajor, &r.m_vUtilLocalShearMinor, &r.m_vUtilLocalTorsion};
        return *arrays[i];
    }
    /// In field order: combined, lateral-torsional, major, minor, torsion, flexural torsion.
    static double& Buckling(CMemberResult& r, std::size_t i)
    {
        const std::array<double*, numBuckling> values = {
            &r.m_dUtilBucklingCombined,   &r.m_dUtilBucklingLT,           &r.m_dUtilBucklingAxialMajor,
            &r.m_dUtilBucklingAxialMinor, &r.m_dUtilBucklingAxialTorsion, &r.m_dUtilBucklingAxialFlexuralTorsion};
        return *values[i];
    }
    static double& OverAll(CMemberResult& r) { return r.m_dUtilOverAll; }
    static const std::vector<CString>& Texts(const CMemberResult& r) { return r.m_vstrVerbose; }
    static const std::vector<int>& Indents(const CMemberResult& r) { return r.m_viIndent; }
    static void Push(CMemberResult& r, int levels) { r.PushIndentVerbose(levels); }
    static int Pop(CMemberResult& r) { return r.PopIndentVerbose(); }
    static int Indent(const CMemberResult& r) { return r.GetIndentVerbose(); }
    static void ClearIndent(CMemberResult& r) { r.ClearIndentVerbose(); }
    static void ReallyAddVerbose(CMemberResult& r, const CString& text) { r.ReallyAddVerbose(text); }
};

} // namespace Keltrix::Steel

namespace Keltrix::Steel::Test {

inline constexpr double infinity = std::numeric_limits<double>::infinity();
inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

using ResultAccess = CMemberResultTestAccess;

inline std::vector<std::string> Texts(const CMemberResult& result)
{
    std::vector<std::string> texts;
    for (const CString& text : ResultAccess::Texts(result))
        texts.push_back(Utf8(text));
    return texts;
}

/// Every field of a result, laid open, with the rules of the record stated a second time over plain values.
struct Record {
    int loadFlags = 15;
    int flags = 0;
    bool textEnabled = true;
    int current = 0;
    bool includeBuckling = true;
    double overall = 0.0;
    std::array<std::vector<double>, ResultAccess::numLocal> local;
    std::array<double, ResultAccess::numBuckling> buckling{};
    CDesFormat format;
    std::vector<std::string> texts{""};
    std::vector<int> indents;

    Record()
    {
        for (std::vector<double>& values : local)
            values = {0.0};
    }
    explicit Record(CMemberResult result) :
        loadFlags(result.GetLoadFlags()), flags(result.GetFlags()), textEnabled(result.TextEnabled()),
        current(result.CurSubSpan()), includeBuckling(result.IncBuckChk()), overall(result.UtilOverAll()),
        format(result.DesFormat()), texts(Test::Texts(result)), indents(ResultAccess::Indents(result))
    {
        for (std::size_t i = 0; i < local.size(); ++i)
            local[i] = ResultAccess::Local(result, i);
        for (std::size_t i = 0; i < buckling.size(); ++i)
            buckling[i] = ResultAccess::Buckling(result, i);
    }

    static double Infinitised(double value) { return std::isnan(value) ? infinity : value; }
    void RaiseOverAll(double value)
    {
        if (value > overall) overall = value;
    }
    void RaiseBucklingCombined(double value)
    {
        if (!(value > buckling[0])) return;
        buckling[0] = value;
        RaiseOverAll(value);
        if (value > 1.0) flags |= 0x27;
    }
    void RaiseLocalCombined(double value)
    {
        double& combined = local[0][static_cast<std::size_t>(current)];
        if (!(value > combined)) return;
        combined = value;
        RaiseOverAll(value);
        if (value >= 1.0) flags |= 0x17;
    }
    /// Component 0 is the combined value.
    void SetLocal(std::size_t component, double util)
    {
        static constexpr std::array<int, 7> bit = {0, 0x1000, 0x2000, 0x4000, 0x8000, 0x10000, 0x20000};
        const double value = Infinitised(util);
        if (component == 0) {
            RaiseLocalCombined(value);
            return;
        }
        double& stored = local[component][static_cast<std::size_t>(current)];
        if (!(value > stored)) return;
        stored = value;
        RaiseLocalCombined(value);
        if (value >= 1.0) flags |= 0x17 | bit[component];
    }
    void SetBuckling(std::size_t component, double util)
    {
        static constexpr std::array<int, 6> bit = {0, 0x100, 0x200, 0x400, 0x1000000, 0x2000000};
        const double value = Infinitised(util);
        if (component == 0) {
            RaiseBucklingCombined(value);
            return;
        }
        if (!(value > buckling[component])) return;
        buckling[component] = value;
        RaiseBucklingCombined(value);
        const bool fails = component == 1 ? value > 1.0 : value >= 1.0;
        if (fails) flags |= 0x27 | bit[component];
    }

    static Record Merged(const Record& a, const Record& b)
    {
        Record r;
        r.loadFlags = b.loadFlags;
        r.flags = a.flags | b.flags;
        r.overall = b.overall > a.overall ? b.overall : a.overall;
        for (std::size_t i = 0; i < r.local.size(); ++i)
            r.local[i] = Less(a.local[i], b.local[i]) ? b.local[i] : a.local[i];
        for (std::size_t i = 0; i < r.buckling.size(); ++i)
            r.buckling[i] = b.buckling[i] > a.buckling[i] ? b.buckling[i] : a.buckling[i];
        r.format = a.format;
        r.indents = a.indents;
        if (a.textEnabled && b.textEnabled) {
            r.texts.resize(a.texts.size());
            for (std::size_t k = 0; k < a.texts.size(); ++k)
                r.texts[k] = a.texts[k] + b.texts[k];
            r.current = a.current;
        } else {
            r.textEnabled = false;
            for (std::size_t k = 0; k < std::min(a.texts.size(), b.texts.size()); ++k)
                r.texts.emplace_back("Verbose results not stored\n");
        }
        return r;
    }

    /// Lexicographic order: the first difference decides, a prefix is less; a pair with not-a-number in it decides for
    /// not less.
    static bool Less(const std::vector<double>& a, const std::vector<double>& b)
    {
        const std::size_t common = std::min(a.size(), b.size());
        for (std::size_t i = 0; i < common; ++i) {
            if (a[i] < b[i]) return true;
            if (a[i] != b[i]) return false;
        }
        return a.size() < b.size();
    }

    /// Bit for bit, so that not-a-number equals itself and the zeros differ.
    friend bool operator==(const Record& a, const Record& b)
    {
        return a.loadFlags == b.loadFlags && a.flags == b.flags && a.textEnabled == b.textEnabled &&
               a.current == b.current && a.includeBuckling == b.includeBuckling && SameBits(a.overall, b.overall) &&
               std::ranges::equal(a.local, b.local,
                                  [](const auto& u, const auto& v) { return std::ranges::equal(u, v, SameBits); }) &&
               std::ranges::equal(a.buckling, b.buckling, SameBits) && SameFormat(a.format, b.format) &&
               a.texts == b.texts && a.indents == b.indents;
    }
    static bool SameBits(double a, double b)
    {
        return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
    }
    static bool SameFormat(const CDesFormat& a, const CDesFormat& b)
    {
        const auto same = [](const CUnit::Entry& u, const CUnit::Entry& v) {
            return u.label == v.label && SameBits(u.factor, v.factor);
        };
        return same(a.Unit().Length(), b.Unit().Length()) && same(a.Unit().LengthSmall(), b.Unit().LengthSmall()) &&
               same(a.Unit().Force(), b.Unit().Force()) && same(a.Unit().Moment(), b.Unit().Moment()) &&
               same(a.Unit().Stress(), b.Unit().Stress());
    }

    friend std::ostream& operator<<(std::ostream& out, const Record& r)
    {
        out << "load flags " << r.loadFlags << ", flags 0x" << std::hex << r.flags << std::dec << ", text "
            << r.textEnabled << ", position " << r.current << ", include buckling " << r.includeBuckling << ", overall "
            << r.overall << "\nlocal";
        for (const std::vector<double>& values : r.local) {
            out << " {";
            for (const double value : values)
                out << ' ' << value;
            out << " }";
        }
        out << "\nbuckling";
        for (const double value : r.buckling)
            out << ' ' << value;
        out << "\ntexts " << r.texts.size() << ':';
        for (const std::string& text : r.texts)
            out << " [" << text << ']';
        out << "\nindents";
        for (const int level : r.indents)
            out << ' ' << level;
        return out << '\n';
    }
};

using Random = std::mt19937;

inline int Pick(Random& random, int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

/// A utilisation below, at or above the limit, or none at all.
inline double RandomUtil(Random& random)
{
    static constexpr std::array<double, 12> special = {0.0, -0.0, 0.5,      0.999999,  1.0,        1.000001,
                                                       1.5, -1.0, infinity, -infinity, notANumber, 1e300};
    if (Pick(random, 0, 1) == 0) return special[static_cast<std::size_t>(Pick(random, 0, 11))];
    return std::uniform_real_distribution<double>(0.0, 1.6)(random);
}

using ResultSetter = void (CMemberResult::*)(double);

/// In the order of the fields, the combined value first.
inline constexpr std::array<ResultSetter, 7> localSetters = {
    &CMemberResult::SetUtilLocalCombined,   &CMemberResult::SetUtilLocalAxial,
    &CMemberResult::SetUtilLocalMomMajor,   &CMemberResult::SetUtilLocalMomMinor,
    &CMemberResult::SetUtilLocalShearMajor, &CMemberResult::SetUtilLocalShearMinor,
    &CMemberResult::SetUtilLocalTorsion};
inline constexpr std::array<ResultSetter, 6> bucklingSetters = {
    &CMemberResult::SetUtilBucklingCombined,     &CMemberResult::SetUtilBucklingLT,
    &CMemberResult::SetUtilBucklingAxialMajor,   &CMemberResult::SetUtilBucklingAxialMinor,
    &CMemberResult::SetUtilBucklingAxialTorsion, &CMemberResult::SetUtilBucklingAxialFlexuralTorsion};

/// A result after a random run of public operations: several positions, texts with and without a final line break,
/// open indentation, text switched off (and perhaps on again), utilisations that may be infinite.
inline CMemberResult RandomResult(Random& random, int positions)
{
    CMemberResult result;
    result.IniDynaArray(positions);
    if (Pick(random, 0, 2) == 0) result.SetLoadFlags(Pick(random, 0, 15));
    if (Pick(random, 0, 3) == 0) result.AddFlags(1 << Pick(random, 0, 30));
    if (Pick(random, 0, 3) == 0) result.SetIncBuckChk(false);
    if (Pick(random, 0, 3) == 0) {
        CUnit unit;
        unit.SetForce(L"N", 1.0);
        result.SetDesFormat(CDesFormat(unit));
    }
    static const std::array<const wchar_t*, 6> pieces = {L"x", L"y\n", L"a\nb", L"", L"\n", L"c\nd\n"};
    for (int k = Pick(random, 0, 8); k > 0; --k) {
        result.SetCurSubSpan(Pick(random, 0, positions - 1));
        switch (Pick(random, 0, 3)) {
        case 0:
            (result.*localSetters[static_cast<std::size_t>(Pick(random, 0, 6))])(RandomUtil(random));
            break;
        case 1:
            (result.*bucklingSetters[static_cast<std::size_t>(Pick(random, 0, 5))])(RandomUtil(random));
            break;
        case 2:
            result.AddOutputString(pieces[static_cast<std::size_t>(Pick(random, 0, 5))]);
            break;
        default:
            ResultAccess::Push(result, Pick(random, 0, 2));
            break;
        }
    }
    if (Pick(random, 0, 2) == 0) {
        result.EnableText(false);
        if (Pick(random, 0, 3) == 0) result.EnableText(true);
    }
    result.SetCurSubSpan(Pick(random, 0, positions - 1));
    return result;
}

/// A result with a text for each entry of its record.
inline CMemberResult WithTexts(std::initializer_list<const wchar_t*> texts)
{
    CMemberResult result;
    result.IniDynaArray(static_cast<int>(texts.size()));
    int i = 0;
    for (const wchar_t* text : texts) {
        result.SetCurSubSpan(i++);
        result.AddOutputString(text);
    }
    result.SetCurSubSpan(0);
    return result;
}

} // namespace Keltrix::Steel::Test
