#include "beamfile/BeamFile.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "beamfile/BeamReader.h"
#include "beamfile/SafeToml.h"
#include "memberfile/CodelessMember.h"
#include "sections/SectionCatalogue.h"
#include "sections/SectionShapes.h"
#include "text/BadInput.h"
#include "text/SourceText.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

class BeamFileReader {
public:
    BeamFileReader(const std::string& name, const Design::DesignCode* code) : m_code(code) { m_file.name = name; }

    BeamFile Read(std::string_view bytes)
    {
        SafeToml toml = ReadBeamToml(bytes);
        if (toml.fault.empty())
            ReadRoot(toml.root);
        else
            Say(toml.line, {}, std::move(toml.fault));
        std::stable_sort(m_file.defects.begin(), m_file.defects.end(),
                         [](const Defect& a, const Defect& b) { return a.line < b.line; });
        return std::move(m_file);
    }

private:
    void Say(LineNumber line, std::string key, std::string text)
    {
        Defect defect;
        defect.line = std::max<LineNumber>(line, 1);
        defect.code = "beam-file";
        defect.keyword = std::move(key);
        defect.advice = std::move(text);
        m_file.defects.push_back(std::move(defect));
    }

    void ReadRoot(const toml::table& root)
    {
        TomlKeys keys(root, {}, m_file.defects);
        m_file.title = keys.Text("title").value_or("Beam");
        ReadGrade(keys);
        ReadSection(keys);
        ReadFactors(keys);
        ReadSupports(keys, m_file, m_lines);
        ReadLoads(keys, m_file, m_lines);
        ReadCombinations(keys, m_file);
        ReadServiceability(keys);
        keys.Finish();
        FindFaults();
    }

    // A section's values need none of what the file says elsewhere but the grade, which gives the modulus.
    void ReadSection(TomlKeys& keys)
    {
        constexpr const char* types[] = {"ROLLED", "WELDED", "FORMED"};
        const std::optional<std::size_t> type = keys.Word("type", {"rolled", "welded", "formed"});
        m_file.type = type ? types[*type] : "UNDEF";
        m_file.sectionLine = keys.LineOf("section");
        const std::optional<std::string> name = keys.Text("section", "a section, as \"UB 457x191x67\"");
        if (!keys.Has("section")) keys.Missing("section", "a section, as section = \"UB 457x191x67\"");
        if (!name) return;
        if (name->find(',') != std::string::npos)
            return keys.Error(m_file.sectionLine, "section", Quote(Wide(*name).View()), "a section without a comma");
        try {
            const NamedSection section = FindSection(*name);
            SetSectionOf(m_file, section, m_code);
            JudgeSection(section.section);
        } catch (const BadInput& failure) {
            Say(m_file.sectionLine, "section", failure.what());
        }
    }

    void JudgeSection(const CSection& section)
    {
        if (!m_code) return;
        const CString refusal = m_code->SectionRefusal(section);
        if (!refusal.IsEmpty()) Say(m_file.sectionLine, "section", Utf8(refusal));
    }

    void ReadGrade(TomlKeys& keys)
    {
        m_file.gradeLine = keys.LineOf("grade");
        const toml::node* const node = keys.Find("grade");
        if (!node) return keys.Missing("grade", "a steel grade, as grade = \"S275\"");
        const std::size_t before = m_file.defects.size();
        if (const toml::table* const own = node->as_table()) {
            ReadOwnGrade(*own);
        } else if (const std::optional<std::string> name = keys.Text("grade", "a steel grade, as \"S275\"")) {
            if (name->find(',') != std::string::npos)
                return keys.Error(m_file.gradeLine, "grade", Quote(Wide(*name).View()), "a grade without a comma");
            m_file.grade = CSteelGrade(Wide(*name), 0.0, 0.0, 0.0, 1.0);
        }
        if (m_file.defects.size() == before) JudgeGrade();
    }

    void ReadOwnGrade(const toml::table& table)
    {
        constexpr NumberRange stress{0.0, 1e5, "a stress in N/mm² above 0", true};
        constexpr NumberRange modulus{0.0, 1e7, "a modulus in N/mm² above 0", true};
        constexpr NumberRange factor{0.0, 100.0, "a factor above 0", true};
        TomlKeys keys(table, "grade", m_file.defects);
        const auto required = [&](const char* key, const NumberRange& range) {
            if (!keys.Has(key)) keys.Missing(key, range.expected);
            return keys.Number(key, range).value_or(0.0) * 1e6;
        };
        const double yield = required("yield", stress);
        const double ultimate = required("ultimate", stress);
        const double E = required("modulus", modulus);
        m_file.grade = CSteelGrade(L"User_defined", yield, ultimate, E, keys.Number("factor", factor).value_or(1.0));
        keys.Finish();
    }

    void JudgeGrade()
    {
        if (!m_code) return;
        const CString name = m_file.grade.Name();
        if (!m_code->HasGrade(name)) {
            std::string list;
            for (const Design::Term& grade : m_code->Description().grades)
                list += (list.empty() ? "" : ", ") + Utf8(grade.name);
            return Say(m_file.gradeLine, "grade", "got " + Quote(name.View()) + ", expected one of " + list);
        }
        const CString refusal = m_code->GradeRefusal(m_file.grade);
        if (!refusal.IsEmpty()) Say(m_file.gradeLine, "grade", Utf8(refusal));
    }

    void ReadFactors(TomlKeys& keys)
    {
        constexpr NumberRange share{0.0, 1.0, "a ratio above 0, at most 1", true};
        constexpr NumberRange ratio{1.0, 1.5, "a ratio from 1 to 1.5"};
        constexpr NumberRange factor{0.0, 10.0, "a factor above 0, at most 10", true};
        m_file.netToGross = keys.Number("net-to-gross", share).value_or(1.0);
        m_file.plasticToElastic = keys.Number("plastic-to-elastic", ratio).value_or(1.2);
        m_file.shearLag = keys.Number("shear-lag", share).value_or(0.7);
        m_file.momentFactor = keys.Number("moment-factor", factor);
        const toml::node* const lengths = keys.Find("effective-lengths");
        if (!lengths) return;
        const toml::table* const table = lengths->as_table();
        if (!table)
            return keys.Error(keys.LineOf("effective-lengths"), "effective-lengths", GotOf(*lengths),
                              "{ major = ..., minor = ..., lt = ... } in m");
        TomlKeys inner(*table, "effective-lengths", m_file.defects);
        std::array<double, 3> values{};
        const char* const names[] = {"major", "minor", "lt"};
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (!inner.Has(names[i])) inner.Missing(names[i], LENGTH.expected);
            values[i] = inner.Number(names[i], LENGTH).value_or(0.0);
        }
        inner.Finish();
        m_file.effectiveLengths = values;
    }

    void ReadServiceability(TomlKeys& keys)
    {
        constexpr NumberRange rise{-10.0, 10.0, "a camber in m, -10 to 10"};
        m_file.brittle = keys.Flag("brittle");
        m_file.camber = keys.Numbers("camber", rise, MOST_SPANS);
        DeflectionWishes& wishes = m_file.deflection;
        wishes.line = keys.LineOf("deflection");
        const toml::node* const node = keys.Find("deflection");
        if (!node) return;
        if (const auto* const flag = node->as_boolean(); flag && !flag->get()) {
            wishes.isOff = true;
            return;
        }
        const toml::table* const table = node->as_table();
        if (!table)
            return keys.Error(wishes.line, "deflection", GotOf(*node),
                              "{ imposed = 360, total = 250, cantilever = 180 }, or false");
        ReadLimits(*table);
    }

    void ReadLimits(const toml::table& table)
    {
        // 0.0028 for 1/360 would be no limit at all.
        constexpr NumberRange ratio{10.0, 1e5, "a ratio from 10 on: the span over it is the limit"};
        TomlKeys keys(table, "deflection", m_file.defects);
        DeflectionWishes& wishes = m_file.deflection;
        wishes.isAsked = true;
        wishes.imposed = keys.Number("imposed", ratio).value_or(0.0);
        wishes.total = keys.Number("total", ratio).value_or(0.0);
        wishes.cantilever = keys.Number("cantilever", ratio).value_or(wishes.imposed > 0.0 ? 180.0 : 0.0);
        wishes.totalCantilever = keys.Number("total-cantilever", ratio).value_or(0.0);
        keys.Finish();
        if (wishes.imposed + wishes.total + wishes.cantilever + wishes.totalCantilever == 0.0)
            keys.Error(keys.Line(), "", "no limit", "imposed, total, cantilever or total-cantilever");
    }

    // What keeps the beam from being analysed. A section that is not known has no values to judge.
    void FindFaults()
    {
        if (m_file.beam.length <= 0.0 || m_file.section.empty()) return;
        for (const Statics::Fault& fault : Statics::FindFaults(m_file.beam)) {
            const auto [key, line] = PlaceOf(fault);
            const bool isOfLoad = fault.part == Statics::Part::Load && fault.index < m_file.beam.loads.size();
            const std::string ofFlange =
                isOfLoad ? FlangeHeightFault(m_file, m_file.beam.loads[fault.index]) : std::string();
            Say(line, key, ofFlange.empty() ? Utf8(fault.text) : ofFlange);
        }
    }

    std::pair<const char*, LineNumber> PlaceOf(const Statics::Fault& fault) const
    {
        const auto at = [&](const std::vector<LineNumber>& lines) {
            return fault.index < lines.size() ? lines[fault.index] : LineNumber(1);
        };
        switch (fault.part) {
        case Statics::Part::Section:
            return {"section", m_file.sectionLine};
        case Statics::Part::Support:
            return {"supports", at(m_lines.supports)};
        case Statics::Part::Hinge:
            return {"hinges", at(m_lines.hinges)};
        case Statics::Part::Restraint:
            return {"restraint", at(m_lines.restraints)};
        case Statics::Part::Case:
            return {"case", at(m_lines.cases)};
        case Statics::Part::Load:
            return {"load", at(m_lines.loads)};
        default:
            return {"length", m_file.supportsLine};
        }
    }

    const Design::DesignCode* m_code;
    BeamFile m_file;
    PartLines m_lines;
};

} // namespace

bool BeamFile::HasErrors() const
{
    return std::any_of(defects.begin(), defects.end(),
                       [](const Defect& defect) { return defect.severity == Severity::Error; });
}

void SetSectionOf(BeamFile& file, const NamedSection& named, const Design::DesignCode* code)
{
    const std::unique_ptr<Steel::CDesSectGeom> geometry = MakeGeometry(named.section);
    file.section = named.name;
    Statics::Section& section = file.beam.section;
    section = Statics::Section();
    const bool isOwn = !code && file.grade.GetUserE() > 0.0;
    section.E = code ? code->ElasticModulus(file.grade) : isOwn ? file.grade.GetUserE() : STEEL_E;
    section.Iy = geometry->Ixx();
    section.Iz = geometry->Iyy();
    section.mass = MassPerMetre(named);
    const CSecComp& component = named.section.Component(0);
    const std::string shape = ShapeName(component.Shape());
    const bool isHalved = shape == "RHS" || shape == "CHS" || shape == "channel" ||
                          (component.Shape() & CSecGeom::SHAPE_MASK) == CSecGeom::SHAPE_I;
    if (!isHalved) return; // the shear centre is not at half the depth
    section.topFlange = component.Dimension(0.0, CSecGeom::DEPTH) / 2.0;
    section.bottomFlange = -section.topFlange;
}

BeamFile ReadBeamFile(const std::string& name, std::string_view bytes, const Design::DesignCode* code)
{
    if (bytes.size() <= LARGEST_BEAM_FILE) DecodeText(name, bytes); // for its messages
    return BeamFileReader(name, code).Read(bytes);
}

std::string FlangeHeightFault(const BeamFile& file, const Statics::Load& load)
{
    const Statics::Section& section = file.beam.section;
    const bool isUnknown = (load.reference == Steel::TOP_FLANGE && std::isnan(section.topFlange)) ||
                           (load.reference == Steel::BOT_FLANGE && std::isnan(section.bottomFlange));
    if (!isUnknown) return {};
    return "height from a flange: tees, angles and sections with flanges of two sizes have their shear centre at "
           "another height than "
           "half the depth; give height = in m above the shear centre";
}

std::string BeamMessage(const Defect& defect, const std::string& file)
{
    return file + ':' + std::to_string(defect.line) + ": " + SeverityWord(defect.severity) + ": " + defect.Statement();
}

} // namespace Keltrix::Host
