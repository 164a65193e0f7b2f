#include "keltrix/ec3/DesignCode.h"

#include "NationalChoices.h"
#include "keltrix/ec3/Capacity.h"
#include "keltrix/ec3/SteelMemberEC3.h"

namespace Keltrix::EC3 {

namespace {

using Design::CapacityCurve;
using Design::CapacityTable;
using Design::CodeSettings;
using Design::OptionKind;
using Design::Quantity;

// Places in the list of options.
enum Option : std::size_t { MCR, BEARING, INTERACTION, LTB, SIMPLE_COLUMN };
// Places in the list of values, counted from 1.
enum MomentValue : std::size_t { ELASTIC = 1, C1 };
enum InteractionValue : std::size_t { ANNEX_B = 1, ANNEX_A, GENERAL };
enum LateralValue : std::size_t { CURVES = 1, SIMPLIFIED };
// Places in the list of annexes.
enum AnnexPlace : std::size_t { UK, RECOMMENDED };

Annex AnnexOf(const CodeSettings& settings)
{
    return AnnexWith(settings.annex == RECOMMENDED ? RecommendedAnnex() : UkAnnex(), settings);
}

Design::CodeDescription MakeDescription()
{
    Design::CodeDescription d;
    d.id = L"ec3";
    d.title = L"EN 1993-1-1:2005+A1:2014";
    d.edition = L"with EN 1993-1-5 for slender plates and webs";
    d.options = {
        {OptionKind::Choice,
         L"mcr",
         L"Elastic critical moments (6.3.2): of the member as it is held and loaded, or by C1 between forks",
         {{L"elastic", L"elastic analysis of the member with its restraints and load heights"},
          {L"c1", L"closed form with k = kw = 1 and the tables' C1, loads at the shear centre"}}},
        {OptionKind::Length,
         L"bearing",
         L"Stiff bearing length at supports and loads, m (EN 1993-1-5 6)",
         {},
         0.001,
         1.0},
        {OptionKind::Choice,
         L"interaction",
         L"Bending and compression of members (6.3.3, 6.3.4)",
         {{L"annex-b", L"(6.61) and (6.62) with the factors of Annex B"},
          {L"annex-a", L"(6.61) and (6.62) with the factors of Annex A"},
          {L"general", L"general method of 6.3.4, for bending in the plane of the web"}}},
        {OptionKind::Choice,
         L"ltb",
         L"Lateral-torsional buckling by reduction factors (6.3.2.2, 6.3.2.3) or by the compression flange (6.3.2.4)",
         {{L"curves", L"reduction factors with the elastic critical moment"},
          {L"simplified", L"the compression flange as a strut between its lateral supports"}}},
        {OptionKind::Flag, L"simple-column", L"Column in simple construction, nominal moments (NCCI SN048)", {}}};
    d.annexes = {{L"uk", L"UK National Annex"}, {L"recommended", L"the values that the standard recommends"}};
    d.grades = {{L"S275", L"EN 10025-2, EN 10210-1, EN 10219-1"},
                {L"S355", L"EN 10025-2, EN 10210-1, EN 10219-1"},
                {L"S235", L"EN 10025-2, EN 10210-1, EN 10219-1"},
                {L"S420", L"EN 10025-3, EN 10025-4, EN 10210-1, EN 10219-1"},
                {L"S460", L"EN 10025-3, EN 10025-4, EN 10210-1, EN 10219-1"},
                {L"User_defined", L"with the strengths of the member file, up to 460 N/mm²"}};
    d.families = {{L"I and H sections", L"rolled or welded, equal or unequal flanges"},
                  {L"channels", L"hot rolled or welded"},
                  {L"tees", L"cut from rolled sections or welded"},
                  {L"angles", L"equal and unequal legs"},
                  {L"rectangular hollow sections", L"hot finished, cold formed or welded boxes"},
                  {L"circular hollow sections", L"hot finished, cold formed or welded"}};
    d.combinations = L"en1990-uk";
    d.annexCombinations = {L"en1990-uk", L"en1990"};
    d.nationalChoices = ChoicesOfFiles();
    d.tablesTakeC1 = true;
    d.scope =
        L"Cross-section and member buckling checks of prismatic members under axial force, biaxial moment and shear, "
        L"webs under concentrated loads; no torsion, connections, frames or serviceability limits";
    return d;
}

template <class Value>
CapacityCurve CurveOf(const wchar_t* symbol, Quantity quantity, const std::vector<double>& numbers, Value value)
{
    CapacityCurve curve{symbol, quantity, {}};
    for (const double number : numbers)
        curve.values.push_back(value(number));
    return curve;
}

class CodeEC3 : public Design::DesignCode {
public:
    const Design::CodeDescription& Description() const override { return m_description; }

    std::unique_ptr<Design::CodeMember> NewMember(const CodeSettings& settings) const override
    {
        auto member = std::make_unique<CSteelMemberEC3>();
        member->SetAnnex(AnnexOf(settings));
        DesignOptions options;
        if (settings.Choice(MCR) == C1) options.mcr = CriticalMoment::C1;
        options.stiffBearing = settings.Length(BEARING);
        if (settings.Choice(INTERACTION) == ANNEX_A) options.interaction = InteractionMethod::AnnexA;
        if (settings.Choice(INTERACTION) == GENERAL) options.interaction = InteractionMethod::General;
        if (settings.Choice(LTB) == SIMPLIFIED) options.lateral = LateralMethod::Simplified;
        options.simpleColumn = settings.Flag(SIMPLE_COLUMN);
        member->SetOptions(options);
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
        const wchar_t* const refusal = EC3::SectionRefusal(section);
        return refusal ? refusal : L"";
    }
    double ElasticModulus(const CSteelGrade& grade) const override { return MaterialOf(grade).E; }
    double ShearModulus(const CSteelGrade& grade) const override { return MaterialOf(grade).G; }

    CapacityTable Capacities(const CSection& section, const CSteelGrade& grade, const std::vector<double>& lengths,
                             const CodeSettings& settings) const override
    {
        const Annex annex = AnnexOf(settings);
        const SectionCapacity c(section, grade, annex);
        CapacityTable table;
        if (!c.IsValid()) {
            table.refusal = c.Refusal();
            return table;
        }
        table.designStrength = {L"fy", Quantity::Stress, c.Steel().fy};
        const bool isAngle = c.Section().shape == Shape::Angle;
        table.classes = {{isAngle ? L"in bending about u-u" : L"in bending about y-y", c.MajorBending().cls},
                         {isAngle ? L"about v-v" : L"about z-z", c.MinorBending().cls},
                         {L"in compression", c.Compression().cls}};
        table.fabrication = Design::FabricationName(c.Section().fabrication);
        if (const wchar_t* const note = Design::FabricationNote(c.Section().basis)) table.fabricationNote = note;
        const auto add = [&](const wchar_t* symbol, Quantity quantity, const std::optional<double>& value,
                             int figures) {
            if (value) table.crossSection.push_back({{symbol, quantity, *value}, figures});
        };
        add(L"NplRd", Quantity::Force, c.NplRd(), 4);
        add(L"NtRd", Quantity::Force, c.NplRd(), 4);
        add(L"NcRd", Quantity::Force, EC3::NcRd(c.Section(), c.Strengths(), c.Compression()).value, 4);
        add(L"VczRd", Quantity::Force, c.VczRd(), 3);
        add(L"VcyRd", Quantity::Force, c.VcyRd(), 3);
        add(isAngle ? L"McuRd" : L"McyRd", Quantity::Moment, c.McyRd(), 3);
        add(isAngle ? L"McvRd" : L"MczRd", Quantity::Moment, c.MczRd(), 3);
        add(L"VbwRd", Quantity::Force, c.VbwRd(), 3);
        add(L"VbwyRd", Quantity::Force, c.VbwyRd(), 3);
        if (c.VbwRd())
            table.notes.push_back(L"VczRd is not reached: the web buckles in shear (hw/tw above 72 ε/η), VbwRd is what "
                                  L"it carries, stiffened at its supports only (EN 1993-1-5 5)");
        if (c.VbwyRd())
            table.notes.push_back(L"VcyRd is not reached: the walls across buckle in shear, VbwyRd is what they carry, "
                                  L"stiffened at supports only (EN 1993-1-5 5)");
        if (const wchar_t* const assumed = CompressionCurves(c.Section().basis, c.Steel().grade).assumed) {
            CString note;
            note.Format(L"Buckling curves: %s", assumed);
            table.notes.push_back(note);
        }
        table.shareName = L"NEd/NplRd";
        for (int i = 0; i <= 10; ++i)
            table.shares.push_back(i / 10.0);
        if (c.Section().IsDoublySymmetric())
            table.reduced = {CurveOf(L"MNyRd", Quantity::Moment, table.shares, [&](double n) { return c.MNyRd(n); }),
                             CurveOf(L"MNzRd", Quantity::Moment, table.shares, [&](double n) { return c.MNzRd(n); })};
        table.buckling = {
            CurveOf(isAngle ? L"NbuRd" : L"NbyRd", Quantity::Force, lengths, [&](double L) { return c.NbyRd(L); }),
            CurveOf(isAngle ? L"NbvRd" : L"NbzRd", Quantity::Force, lengths, [&](double L) { return c.NbzRd(L); }),
            CurveOf(L"NbTRd", Quantity::Force, lengths, [&](double L) { return c.NbTRd(L); }),
            CurveOf(L"MbRd", Quantity::Moment, lengths, [&](double L) { return c.MbRd(L, settings.C1); })};
        if (!c.FRd(0.0, true)) return table;
        table.bearingName = L"ss";
        table.bearings = {0.0, 0.01, 0.02, 0.03, 0.04, 0.05, 0.075, 0.1, 0.15, 0.2, 0.25, 0.3, 0.35};
        table.bearing = {
            CurveOf(L"FRdEnd", Quantity::Force, table.bearings, [&](double ss) { return c.FRd(ss, true); }),
            CurveOf(L"FRd", Quantity::Force, table.bearings, [&](double ss) { return c.FRd(ss, false); })};
        return table;
    }

private:
    // In a thickness that every grade is made in.
    static Material MaterialOf(const CSteelGrade& grade)
    {
        return MakeMaterial(grade, 0.001, false, Fabrication::Rolled, UkAnnex());
    }

    const Design::CodeDescription m_description = MakeDescription();
};

} // namespace

const Design::DesignCode& Code()
{
    static const CodeEC3 code;
    return code;
}

} // namespace Keltrix::EC3
