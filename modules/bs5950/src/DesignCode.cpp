#include "keltrix/bs5950/DesignCode.h"

#include "keltrix/bs5950/Capacity.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"

namespace Keltrix::BS5950 {

namespace {

using Design::CapacityCurve;
using Design::CapacityTable;
using Design::CodeSettings;
using Design::OptionKind;

// Places in the list of options.
enum Option : std::size_t { EXACT, CONNECTION, MOMENTS_HOLD_ECCENTRICITY, SIMPLE_COLUMN, BEARING, STIFFENERS, LTB };
// Places in the list of values, counted from 1.
enum ConnectionValue : std::size_t { ONE_BOLT = 1, TWO_BOLTS_MORE };
enum LateralValue : std::size_t { BY_TABLES = 1, ELASTIC };

Design::CodeDescription MakeDescription()
{
    Design::CodeDescription d;
    d.id = L"bs5950";
    d.title = L"BS 5950-1:2000";
    d.edition = L"with its 2001 corrigendum";
    d.options = {
        {OptionKind::Flag, L"exact", L"The more exact interaction rules (4.8.2.3, 4.8.3.2 b, 4.8.3.3.2 and .3)", {}},
        {OptionKind::Choice,
         L"connection",
         L"Ends of single angles, channels and tees: bolt (one), or bolts (two or more in line, or welds)",
         {{L"bolt", L"one bolt"}, {L"bolts", L"two or more bolts in line, or welds of that length"}}},
        {OptionKind::Flag,
         L"moments-hold-eccentricity",
         L"The given moments hold the eccentricity of these ends: 4.6.3.1 and 4.7.10 do not apply",
         {}},
        {OptionKind::Flag, L"simple-column", L"Column in simple construction, nominal moments (4.7.7)", {}},
        {OptionKind::Length, L"bearing", L"Stiff bearing length at supports and loads, m (4.5)", {}, 0.001, 1.0},
        {OptionKind::Length, L"stiffeners", L"Distance of transverse web stiffeners, m (4.4.5)", {}, 0.01, 100.0},
        {OptionKind::Choice,
         L"ltb",
         L"Lateral-torsional buckling by Tables 13, 14 and 18, or by elastic critical moments (Annex B)",
         {{L"tables", L"effective lengths and moment factors of the standard's tables"},
          {L"elastic", L"elastic critical moment of the member as it is held and loaded"}}}};
    d.grades = {{L"S275", L"Table 9"},
                {L"S355", L"Table 9"},
                {L"S460", L"Table 9"},
                {L"User_defined", L"with the strengths of the member file"}};
    d.families = {{L"I and H sections", L"rolled or welded, flanges equal or not"},
                  {L"channels", L"rolled or welded"},
                  {L"tees", L"rolled or welded"},
                  {L"angles", L"single, rolled or welded"},
                  {L"rectangular hollow sections", L"hot finished, cold formed or welded boxes"},
                  {L"circular hollow sections", L"hot finished, cold formed or welded"}};
    d.lateralLengthsByTables = true;
    d.resistancesByName = true;
    d.combinations = L"bs5950";
    d.scope =
        L"Cross-section and member buckling checks of prismatic members under axial force, biaxial moment and shear; "
        L"no torsion, connections, frames or serviceability limits";
    return d;
}

DesignOptions OptionsOf(const CodeSettings& settings)
{
    DesignOptions options;
    const std::size_t connection = settings.Choice(CONNECTION);
    if (connection == ONE_BOLT) options.connection = Connection::OneBolt;
    if (connection == TWO_BOLTS_MORE) options.connection = Connection::TwoBoltsMore;
    options.momentsHoldEccentricity = settings.Flag(MOMENTS_HOLD_ECCENTRICITY);
    options.simpleColumn = settings.Flag(SIMPLE_COLUMN);
    options.stiffBearing = settings.Length(BEARING);
    options.stiffenerSpacing = settings.Length(STIFFENERS);
    if (settings.Choice(LTB) == ELASTIC) options.lateral = LateralMethod::Elastic;
    return options;
}

CapacityCurve CurveOf(const wchar_t* symbol, Quantity quantity, const std::vector<double>& numbers,
                      const SectionCapacity& c, double (SectionCapacity::*resistance)(double) const)
{
    CapacityCurve curve{symbol, quantity, {}};
    for (const double number : numbers)
        curve.values.emplace_back((c.*resistance)(number));
    return curve;
}

CapacityCurve CurveOf(const wchar_t* symbol, const std::vector<double>& numbers, const SectionCapacity& c,
                      std::optional<double> (SectionCapacity::*capacity)(double) const)
{
    CapacityCurve curve{symbol, Quantity::Moment, {}};
    for (const double number : numbers)
        curve.values.push_back((c.*capacity)(number));
    return curve;
}

class CodeBS5950 : public Design::DesignCode {
public:
    const Design::CodeDescription& Description() const override { return m_description; }

    std::unique_ptr<Design::CodeMember> NewMember(const CodeSettings& settings) const override
    {
        auto member = std::make_unique<CSteelMemberBS5950>();
        member->SetDesOpt(settings.Flag(EXACT) ? CSteelMemberBS5950::MORE_EXACT : CSteelMemberBS5950::SIMPLIFIED);
        member->SetOptions(OptionsOf(settings));
        return member;
    }

    bool HasGrade(const CString& name) const override { return GradeFromName(name) != Grade::None; }
    bool IsUserGrade(const CSteelGrade& grade) const override { return GradeFromName(grade.Name()) == Grade::User; }
    CString GradeRefusal(const CSteelGrade& grade) const override
    {
        const wchar_t* const refusal = MaterialOf(grade).refusal;
        return refusal ? refusal : L"";
    }
    CString SectionRefusal(const CSection& section) const override
    {
        return MakeProperties(section, nullptr) ? L"" : L"the section is not one that this standard's module covers";
    }
    double ElasticModulus(const CSteelGrade& grade) const override { return MaterialOf(grade).E; }
    /// Clause 3.1.3: G = E/(2(1 + ν)), ν = 0.30.
    double ShearModulus(const CSteelGrade& grade) const override
    {
        return ElasticModulus(grade) / (2.0 * (1.0 + 0.30));
    }

    CapacityTable Capacities(const CSection& section, const CSteelGrade& grade, const std::vector<double>& lengths,
                             const CodeSettings&) const override
    {
        const SectionCapacity c(section, grade);
        CapacityTable table;
        if (!c.IsValid()) {
            table.refusal = c.Refusal();
            return table;
        }
        table.designStrength = {L"py", Quantity::Stress, c.Steel().py};
        table.classes = {{L"in bending about x-x", c.ClassMajorBending()},
                         {L"about y-y", c.ClassMinorBending()},
                         {L"in compression", c.ClassCompression()}};
        table.fabrication = Design::FabricationName(c.Section().fabrication);
        if (const wchar_t* const note = FabricationNote(c.Section())) table.fabricationNote = note;
        table.crossSection = {{{L"Pz", Quantity::Force, c.Pz()}, 4},    {{L"Pt", Quantity::Force, c.Pt()}, 4},
                              {{L"Pvx", Quantity::Force, c.Pvx()}, 3},  {{L"Pvy", Quantity::Force, c.Pvy()}, 3},
                              {{L"Mcx", Quantity::Moment, c.Mcx()}, 3}, {{L"Mcy", Quantity::Moment, c.Mcy()}, 3}};
        table.shareName = L"F/(A py)";
        for (int i = 0; i <= 10; ++i)
            table.shares.push_back(i / 10.0);
        table.reduced = {CurveOf(L"Mrx", table.shares, c, &SectionCapacity::Mrx),
                         CurveOf(L"Mry", table.shares, c, &SectionCapacity::Mry)};
        table.buckling = {CurveOf(L"Pcx", Quantity::Force, lengths, c, &SectionCapacity::Pcx),
                          CurveOf(L"Pcy", Quantity::Force, lengths, c, &SectionCapacity::Pcy),
                          CurveOf(L"Mb", Quantity::Moment, lengths, c, &SectionCapacity::Mb)};
        return table;
    }

private:
    // In a thickness that every grade of Table 9 is made in.
    static Material MaterialOf(const CSteelGrade& grade) { return MakeMaterial(grade, 0.001); }

    const Design::CodeDescription m_description = MakeDescription();
};

} // namespace

const Design::DesignCode& Code()
{
    static const CodeBS5950 code;
    return code;
}

} // namespace Keltrix::BS5950
