#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "keltrix/design/Export.h"
#include "keltrix/design/Findings.h"
#include "keltrix/platform/KxData.h"
#include "keltrix/steel/SteelMember.h"

// A design code as a host sees it. A host names no code: it takes what a DesignCode says of itself, makes members with it and
// reads their findings. docs/writing-a-design-code.md shows how one is written.
namespace Keltrix::Design {

/// Raised with every change of what stands in this header, in Findings.h or in the classes of the steel library: a module that was
/// compiled against another number is not loaded.
inline constexpr int INTERFACE_VERSION = 7;

/// A name and what it means: a value of an option, a grade, a family of sections, a national annex.
struct Term {
    const wchar_t* name = L"";
    const wchar_t* meaning = L"";
};

/// Flag: yes or no. Choice: one of its values. Length: m.
enum class OptionKind { Flag, Choice, Length };

/// Something that an engineer says about a member beyond the input file.
struct CodeOption {
    OptionKind kind = OptionKind::Flag;
    const wchar_t* name = L"";    ///< one word, small letters and hyphens: "simple-column"
    const wchar_t* meaning = L""; ///< one line, with the clause
    std::vector<Term> values;     ///< of a choice
    double least = 0.0;           ///< of a length that is given
    double most = 0.0;
};

/// A value that a standard leaves to the countries. A file of national choices names it by its key.
struct NationalChoice {
    const wchar_t* key = L"";     ///< one word: "gamma-M0"
    const wchar_t* clause = L"";  ///< "6.1(1)"
    const wchar_t* meaning = L""; ///< "γM0"
    double least = 0.0;           ///< of a number
    double most = 0.0;
    std::vector<Term> values; ///< of a choice among words; empty for a number
};

/// What a design code says of itself.
struct CodeDescription {
    const wchar_t* id = L"";      ///< by which it is chosen: "bs5950"; letter case does not matter
    const wchar_t* title = L"";   ///< "BS 5950-1:2000"
    const wchar_t* edition = L""; ///< what the title leaves open: "with its 2001 corrigendum"; may be empty
    std::vector<CodeOption> options;
    std::vector<Term> annexes;  ///< national annexes, the first is the default; empty where the code has none
    std::vector<Term> grades;   ///< the names that a grade may have, the first is the default
    std::vector<Term> families; ///< the kinds of sections that it takes
    /// Effective lengths for lateral-torsional buckling are those of Tables 13 and 14 of BS 5950-1:2000 (FindLateralLength).
    bool lateralLengthsByTables = false;
    /// Whose combinations of actions go with it, by their name in beam files: "bs5950", "en1990", "en1990-uk"; empty where a beam file has to
    /// say so.
    const wchar_t* combinations = L"";
    /// The same of each annex, in their order; `combinations` for those beyond the end.
    std::vector<const wchar_t*> annexCombinations;
    std::vector<NationalChoice> nationalChoices; ///< that a file can make; empty where the code takes no such file
    /// Capacity tables of lateral-torsional resistance are made with a factor C1 of the moment's shape (CodeSettings::C1).
    bool tablesTakeC1 = false;
    /// JSON output has its resistances by name as well, with the list inside; kept for compatibility with readers of BS 5950-1's output.
    bool resistancesByName = false;
    const wchar_t* scope = L""; ///< what is checked and what is not, in a sentence or two
};

/// The annex and the options that a member is checked with.
struct CodeSettings {
    std::size_t annex = 0; ///< place in CodeDescription::annexes
    /// One value for each option of CodeDescription::options, in their order: 1 for a flag that is set, the place of the value of a
    /// choice counted from 1, a length in m; 0 where nothing is given. Options beyond the end are not given.
    std::vector<double> options;
    double C1 = 1.0; ///< of capacity tables: elastic critical moment over that under uniform moment
    /// Choices of a file in place of those of the annex, one for each of CodeDescription::nationalChoices, in their order: a number, or the place of
    /// a word counted from 1; not-a-number where the annex's own holds. Choices beyond the end are the annex's.
    std::vector<double> nationalChoices = {};
    CString annexTitle = {};        ///< what the file calls itself; empty without a file
    CString annexCombinations = {}; ///< whose combinations the file says go with it; empty where it does not

    double Length(std::size_t option) const { return option < options.size() ? options[option] : 0.0; }
    bool Flag(std::size_t option) const { return Length(option) != 0.0; }
    double National(std::size_t choice) const
    {
        return choice < nationalChoices.size() ? nationalChoices[choice] : std::numeric_limits<double>::quiet_NaN();
    }
    /// The place of the value, counted from 1; 0 where none is given.
    std::size_t Choice(std::size_t option) const { return static_cast<std::size_t>(Length(option)); }
};

/// Whose combinations of actions go with a code under these settings, by their name in beam files; empty where a beam file has to say so.
inline CString CombinationsOf(const CodeDescription& code, const CodeSettings& settings)
{
    if (!settings.annexCombinations.IsEmpty()) return settings.annexCombinations;
    return settings.annex < code.annexCombinations.size() ? code.annexCombinations[settings.annex] : code.combinations;
}

/// The findings of a member: the second base of a design code's member class, whose first is CSteelMemberGen.
class KELTRIX_DESIGN_API CodeMember {
public:
    virtual ~CodeMember();
    /// The member itself.
    virtual Steel::CSteelMemberGen& Member() = 0;
    /// The findings of the last check, empty before one.
    virtual MemberFindings Findings() const = 0;
    /// Figures beside the rules of the last check, such as those of a way that the options do not take: rules of status Information, which neither
    /// pass nor fail. Computed when they are asked for, which can take longer than the check. Empty where a code has none, and before a check.
    virtual std::vector<RuleFinding> Information() const;

protected:
    CodeMember() = default;
    CodeMember(const CodeMember&) = default;
    CodeMember& operator=(const CodeMember&) = default;
};

/// A class of the cross-section and the state that it belongs to.
struct CapacityClass {
    const wchar_t* state = L""; ///< "in compression"
    int cls = 0;
};

/// A capacity that does not depend on a length, with the significant figures that handbooks give it.
struct Capacity {
    Resistance resistance;
    int figures = 3;
};

/// A capacity for each of a list of numbers, effective lengths or shares of an axial force; nothing where it has none.
struct CapacityCurve {
    const wchar_t* symbol = L"";
    Quantity quantity = Quantity::None;
    std::vector<std::optional<double>> values;
};

/// Capacities of one section in one grade, as printed handbooks tabulate them.
struct CapacityTable {
    CString refusal; ///< why there is no table; empty where there is one
    Resistance designStrength;
    std::vector<CapacityClass> classes;
    const wchar_t* fabrication = L"";     ///< how the section is made: "rolled"
    const wchar_t* fabricationNote = L""; ///< what was assumed of it; empty where nothing was
    std::vector<Capacity> crossSection;
    const wchar_t* shareName = L""; ///< "F/(A py)"
    std::vector<double> shares;     ///< of an axial force, for `reduced`
    std::vector<CapacityCurve> reduced;
    std::vector<CapacityCurve> buckling; ///< for each effective length that was asked for
    const wchar_t* bearingName = L"";    ///< "ss"
    std::vector<double> bearings;        ///< stiff bearing lengths for `bearing`, m
    std::vector<CapacityCurve> bearing;  ///< of the web under a concentrated load or reaction
    std::vector<CString> notes;          ///< what a reader of the table must know, a sentence each
};

/// A design code.
class KELTRIX_DESIGN_API DesignCode {
public:
    virtual ~DesignCode();
    DesignCode(const DesignCode&) = delete;
    DesignCode& operator=(const DesignCode&) = delete;

    /// The same object at each call.
    virtual const CodeDescription& Description() const = 0;
    /// An empty member with the settings; never null.
    virtual std::unique_ptr<CodeMember> NewMember(const CodeSettings& settings) const = 0;
    /// Whether the name means a grade of the code at all, with a quality as well ("S355J2H").
    virtual bool HasGrade(const CString& name) const = 0;
    /// Whether the grade's strengths are the user's own, so that its numbers count beside its name.
    virtual bool IsUserGrade(const CSteelGrade& grade) const = 0;
    /// Why the code does not take a grade, whatever the section; empty where it does.
    virtual CString GradeRefusal(const CSteelGrade& grade) const = 0;
    /// Why the code does not take a section, whatever the grade; empty where it does.
    virtual CString SectionRefusal(const CSection& section) const = 0;
    /// Modulus of elasticity and shear modulus of a grade, Pa; of a grade that the code does not take, those of its steels.
    virtual double ElasticModulus(const CSteelGrade& grade) const = 0;
    virtual double ShearModulus(const CSteelGrade& grade) const = 0;
    /// The capacity table of a section for effective lengths in m.
    virtual CapacityTable Capacities(const CSection& section, const CSteelGrade& grade,
                                     const std::vector<double>& lengths, const CodeSettings& settings) const = 0;

protected:
    DesignCode() = default;
};

/// What a shared library that holds a design code returns from its one entry point.
struct CodeModule {
    int interfaceVersion = INTERFACE_VERSION; ///< read before anything else; stays the first field
    const DesignCode* code = nullptr;         ///< owned by the module, as long as the process runs
};

/// Name of the entry point of a module: extern "C" const CodeModule* keltrix_design_code().
inline constexpr char CODE_MODULE_ENTRY[] = "keltrix_design_code";

} // namespace Keltrix::Design

#if defined(_WIN32)
#define KELTRIX_MODULE_EXPORT __declspec(dllexport)
#elif defined(__GNUC__)
#define KELTRIX_MODULE_EXPORT __attribute__((visibility("default")))
#else
#define KELTRIX_MODULE_EXPORT
#endif

/// Defines the entry point of a module. CODE is an expression of type const DesignCode&. Stands once in a module, outside of any
/// namespace.
#define KELTRIX_DESIGN_CODE_MODULE(CODE)                                                                               \
    extern "C" KELTRIX_MODULE_EXPORT const Keltrix::Design::CodeModule* keltrix_design_code()                          \
    {                                                                                                                  \
        static const Keltrix::Design::CodeModule module{Keltrix::Design::INTERFACE_VERSION, &(CODE)};                  \
        return &module;                                                                                                \
    }
