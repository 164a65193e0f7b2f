#include <algorithm>
#include <limits>

#include "beamfile/BeamReader.h"
#include "text/Fields.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Statics::ActionKind;
using Statics::Category;
using Statics::Direction;
using Statics::Load;

constexpr std::size_t MOST_CASES = 30;
constexpr NumberRange LINE_LOAD{-MOST_FORCE, MOST_FORCE, "a load in kN/m"};
constexpr NumberRange FORCE{-MOST_FORCE, MOST_FORCE, "a force in kN"};
constexpr NumberRange MOMENT{-MOST_FORCE, MOST_FORCE, "a moment in kNm"};
constexpr NumberRange HEIGHT{-100.0, 100.0,
                             "a height in m above the shear centre, \"top flange\" or \"bottom flange\""};
constexpr NumberRange OFFSET{-100.0, 100.0, "a distance in m, -100 to 100"};

struct KindWord {
    const char* word;
    ActionKind kind;
};
constexpr KindWord KINDS[] = {{"permanent", ActionKind::Permanent},
                              {"dead", ActionKind::Permanent},
                              {"imposed", ActionKind::Imposed},
                              {"live", ActionKind::Imposed},
                              {"snow", ActionKind::Snow},
                              {"snow-above-1000m", ActionKind::SnowAbove1000m},
                              {"wind", ActionKind::Wind}};

std::optional<ActionKind> KindNamed(const std::string& name)
{
    for (const KindWord& known : KINDS)
        if (SameWord(Wide(name).View(), Wide(known.word).View())) return known.kind;
    return std::nullopt;
}

std::optional<ActionKind> ReadKind(TomlKeys& keys)
{
    std::vector<const char*> words;
    for (const KindWord& known : KINDS)
        words.push_back(known.word);
    const std::optional<std::size_t> place = keys.Word("kind", words);
    return place ? std::optional(KINDS[*place].kind) : std::nullopt;
}

std::optional<Category> ReadCategory(TomlKeys& keys)
{
    const std::optional<std::size_t> place = keys.Word("category", {"A", "B", "C", "D", "E", "F", "G", "H"});
    return place ? std::optional(static_cast<Category>(*place + 1)) : std::nullopt;
}

class LoadReader {
public:
    LoadReader(TomlKeys& keys, BeamFile& file, PartLines& lines) :
        m_keys(keys), m_file(file), m_lines(lines), m_pattern(keys.Flag("pattern").value_or(true))
    {}

    void Read()
    {
        for (const toml::table* table : m_keys.Tables("case", MOST_CASES))
            ReadCase(*table);
        const std::vector<const toml::table*> loads = m_keys.Tables("load", MOST_PARTS);
        for (const toml::table* table : loads)
            ReadLoad(*table);
        AddSelfWeight();
        if (m_file.beam.cases.size() > MOST_CASES)
            m_keys.Error(m_keys.LineOf("load"), "load", std::to_string(m_file.beam.cases.size()) + " cases",
                         "at most " + std::to_string(MOST_CASES));
        if (loads.empty())
            m_keys.Say(m_file.beam.selfWeight ? Severity::Warning : Severity::Error, 1, "load",
                       m_file.beam.selfWeight ? "no loads: the self weight acts alone" : "no loads");
    }

private:
    void ReadCase(const toml::table& table)
    {
        TomlKeys keys(table, "case", m_file.defects);
        const std::optional<std::string> name = keys.Text("name", "the name of a case");
        if (!keys.Has("name")) keys.Missing("name", "the name of a case");
        std::optional<ActionKind> kind = ReadKind(keys);
        const std::optional<Category> category = ReadCategory(keys);
        const std::optional<bool> bySpan = keys.Flag("by-span");
        if (!kind && name && !keys.Has("kind")) kind = KindNamed(*name);
        if (!kind && !keys.Has("kind")) keys.Missing("kind", "permanent, imposed, snow, snow-above-1000m or wind");
        keys.Finish();
        if (!name || !kind) return;
        if (PlaceOf(*name) < m_file.beam.cases.size())
            return keys.Error(keys.LineOf("name"), "name", "a second case " + Quote(Wide(*name).View()),
                              "a name of its own");
        AddCase(keys, *name, *kind, category, bySpan);
    }

    std::size_t AddCase(TomlKeys& keys, const std::string& name, ActionKind kind, std::optional<Category> category,
                        std::optional<bool> bySpan)
    {
        if (category && kind != ActionKind::Imposed)
            keys.Error(keys.LineOf("category"), "category", "a category of other loads than imposed ones",
                       "none, or kind = \"imposed\"");
        Statics::Case added;
        added.name = Wide(name);
        added.kind = kind;
        added.category = category.value_or(Category::None);
        added.bySpan = bySpan.value_or(m_pattern && kind == ActionKind::Imposed);
        m_file.beam.cases.push_back(added);
        m_lines.cases.push_back(keys.Line());
        return m_file.beam.cases.size() - 1;
    }

    std::size_t PlaceOf(const std::string& name) const
    {
        const auto& cases = m_file.beam.cases;
        const auto at = std::find_if(cases.begin(), cases.end(), [&](const Statics::Case& one) {
            return SameWord(one.name.View(), Wide(name).View());
        });
        return static_cast<std::size_t>(at - cases.begin());
    }

    // The case of a load; the first load that names one makes it.
    std::optional<std::size_t> CaseOf(TomlKeys& keys)
    {
        std::optional<std::string> name = keys.Text("case", "the name of a case");
        std::optional<ActionKind> kind = ReadKind(keys);
        const std::optional<Category> category = ReadCategory(keys);
        if (keys.Has("case") && !name) return std::nullopt;
        if (keys.Has("kind") && !kind) return std::nullopt;
        if (!name && kind) name = NameOf(*kind);
        if (!name) {
            keys.Missing("case", "the name of a case, with its kind, as case = \"floor\", kind = \"imposed\"");
            return std::nullopt;
        }
        const std::size_t place = PlaceOf(*name);
        if (place < m_file.beam.cases.size()) return Agreed(keys, place, kind, category);
        if (!kind) kind = KindNamed(*name);
        if (kind) return AddCase(keys, *name, *kind, category, std::nullopt);
        keys.Error(keys.LineOf("case"), "kind", "nothing", "permanent, imposed, snow, snow-above-1000m or wind",
                   "the case " + Quote(Wide(*name).View()) + " is not known yet");
        return std::nullopt;
    }

    static std::string NameOf(ActionKind kind)
    {
        for (const KindWord& known : KINDS)
            if (known.kind == kind) return known.word;
        return {};
    }

    std::optional<std::size_t> Agreed(TomlKeys& keys, std::size_t place, std::optional<ActionKind> kind,
                                      std::optional<Category> category)
    {
        const Statics::Case& known = m_file.beam.cases[place];
        if (kind && *kind != known.kind)
            keys.Error(keys.LineOf("kind"), "kind", "another kind than the case has so far",
                       NameOf(known.kind) + ", or a case of another name");
        else if (category && *category != known.category)
            keys.Error(keys.LineOf("category"), "category", "another category than the case has so far",
                       "the same one, or a case of another name");
        return place;
    }

    void ReadLoad(const toml::table& table)
    {
        TomlKeys keys(table, "load", m_file.defects);
        const std::optional<std::size_t> ofCase = CaseOf(keys);
        const std::size_t before = m_file.defects.size();
        std::vector<Load> loads = ReadShape(keys);
        ReadHeight(keys, loads);
        keys.Finish();
        if (!ofCase || m_file.defects.size() != before) return;
        for (Load& load : loads) {
            load.caseIndex = *ofCase;
            m_file.beam.loads.push_back(load);
            m_lines.loads.push_back(keys.Line());
        }
    }

    std::vector<Load> ReadShape(TomlKeys& keys)
    {
        const char* const shapes[] = {"udl", "trapezoid", "point", "moment", "axial", "reaction"};
        std::vector<const char*> found;
        for (const char* shape : shapes)
            if (keys.Has(shape)) found.push_back(shape);
        const Direction direction = ReadDirection(keys);
        if (found.size() != 1) {
            keys.Error(keys.Line(), "", found.empty() ? "no load" : std::to_string(found.size()) + " loads",
                       "one of udl, trapezoid, point, moment, axial or reaction");
            return {};
        }
        const std::string_view shape = found.front();
        if (shape == "udl" || shape == "trapezoid") return ReadDistributed(keys, direction);
        return ReadPlaced(keys, found.front(), direction);
    }

    Direction ReadDirection(TomlKeys& keys)
    {
        const bool minor = keys.Flag("minor").value_or(false);
        const bool major = keys.Flag("major").value_or(false);
        if (minor && major) keys.Error(keys.LineOf("minor"), "minor", "minor and major", "one of both");
        return minor ? Direction::Minor : major ? Direction::Major : Direction::Gravity;
    }

    std::vector<Load> ReadDistributed(TomlKeys& keys, Direction direction)
    {
        const double from = keys.Number("from", PLACE).value_or(0.0);
        const double to = keys.Number("to", PLACE).value_or(std::numeric_limits<double>::infinity());
        std::vector<double> values;
        if (keys.Has("trapezoid")) {
            values = keys.Numbers("trapezoid", LINE_LOAD, 2);
            if (values.size() != 2 && keys.Find("trapezoid")->is_number())
                keys.Error(keys.LineOf("trapezoid"), "trapezoid", "one number",
                           "two loads in kN/m, at its beginning and end");
            else if (values.size() == 1)
                keys.Error(keys.LineOf("trapezoid"), "trapezoid", "a list of one",
                           "two loads in kN/m, at its beginning and end");
        } else {
            values.assign(2, keys.Number("udl", LINE_LOAD).value_or(0.0));
        }
        if (values.size() != 2) return {};
        return {Statics::TrapezoidalLoad(0, from, values[0] * KILO, to, values[1] * KILO, direction)};
    }

    std::vector<Load> ReadPlaced(TomlKeys& keys, const char* shape, Direction direction)
    {
        const std::vector<double> places = keys.Numbers("at", PLACE, MOST_PARTS);
        if (!keys.Has("at")) keys.Missing("at", PLACE.expected);
        const std::string_view name = shape;
        const double value = keys.Number(shape, name == "moment" ? MOMENT : FORCE).value_or(0.0) * KILO;
        const double eccentricity = name == "reaction" ? ReadEccentricity(keys) : 0.0;
        if (name == "axial" && direction != Direction::Gravity)
            keys.Error(keys.Line(), shape, "axial with minor or major", "axial alone");
        std::vector<Load> loads;
        for (const double at : places) {
            if (name == "point") {
                loads.push_back(Statics::PointLoad(0, value, at, direction));
            } else if (name == "axial") {
                loads.push_back(Statics::PointLoad(0, value, at, Direction::Axial));
            } else {
                const Direction plane = direction == Direction::Minor ? Direction::Minor : Direction::Major;
                if (name == "moment") loads.push_back(Statics::MomentLoad(0, value, at, plane));
                if (name == "reaction")
                    for (const Load& load : Statics::EccentricReaction(0, value, at, eccentricity, plane))
                        loads.push_back(load);
            }
        }
        return loads;
    }

    // From the column's centre line; `face` is the distance of its face, from which 100 mm count.
    double ReadEccentricity(TomlKeys& keys)
    {
        const std::optional<double> face = keys.Number("face", OFFSET);
        const std::optional<double> eccentricity = keys.Number("eccentricity", OFFSET);
        if (keys.Has("face") == keys.Has("eccentricity")) {
            keys.Error(keys.Line(), "reaction", keys.Has("face") ? "face and eccentricity" : "no eccentricity",
                       "face (the 100 mm rule) or eccentricity, in m");
            return 0.0;
        }
        if (!face) return eccentricity.value_or(0.0);
        return *face < 0.0 ? -Statics::NominalEccentricity(-*face) : Statics::NominalEccentricity(*face);
    }

    static void ReadHeight(TomlKeys& keys, std::vector<Load>& loads)
    {
        const toml::node* const node = keys.Find("height");
        if (!node) return;
        if (keys.Has("moment"))
            keys.Error(keys.LineOf("height"), "height", "the height of a moment", "none", "a moment has no height");
        double height = 0.0;
        Steel::LoadPos reference = Steel::SHR_CENTRE;
        if (node->is_string()) {
            const std::optional<std::size_t> place =
                keys.Word("height", {"top flange", "bottom flange", "shear centre"});
            if (!place) return;
            reference = *place == 0 ? Steel::TOP_FLANGE : *place == 1 ? Steel::BOT_FLANGE : Steel::SHR_CENTRE;
        } else {
            height = keys.NumberOf(*node, "height", HEIGHT).value_or(0.0);
        }
        for (Load& load : loads) {
            if (load.shape == Statics::LoadShape::Moment) continue;
            load.height = height;
            load.reference = reference;
        }
    }

    // A case of its own, so that the file's own combinations can name it.
    void AddSelfWeight()
    {
        Statics::Beam& beam = m_file.beam;
        const bool hasPermanent = std::any_of(beam.cases.begin(), beam.cases.end(), [](const Statics::Case& one) {
            return one.kind == ActionKind::Permanent;
        });
        if (!beam.selfWeight || hasPermanent) return;
        beam.cases.push_back({L"Self weight", ActionKind::Permanent, Category::None, false});
        m_lines.cases.push_back(1);
    }

    TomlKeys& m_keys;
    BeamFile& m_file;
    PartLines& m_lines;
    bool m_pattern;
};

} // namespace

void ReadLoads(TomlKeys& keys, BeamFile& file, PartLines& lines) { LoadReader(keys, file, lines).Read(); }

} // namespace Keltrix::Host
