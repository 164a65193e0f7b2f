#include "import/Import.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "import/ForceBalance.h"
#include "import/MemberTable.h"
#include "memberfile/MemberFile.h"
#include "text/BadInput.h"
#include "text/Fields.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Steel::CRestraint;
using Actions = std::array<double, IMPORTED_ACTIONS>;

constexpr TablePlane PLANES[] = {TablePlane::XZ, TablePlane::XY};
// Share of the largest moment that loads between stations may hide without a word.
constexpr double MOST_COARSE = 0.05;
// More gaps than these tell nothing new.
constexpr std::size_t MOST_GAPS = 5;
// A restraint that is nearer to a station or to another restraint than this is at the same place, m.
constexpr double SAME_RESTRAINT = 1e-3;

std::string MomentText(double value) { return Rounded(value / 1e3, 5) + " kNm"; }

std::string LawText(TablePlane plane, int law)
{
    return plane == TablePlane::XZ ? (law > 0 ? "dMy/dx = Vz" : "dMy/dx = -Vz")
                                   : (law > 0 ? "dMz/dx = Vy" : "dMz/dx = -Vy");
}

const ImportField* FieldNamed(const std::vector<ImportField>& fields, const std::string& name)
{
    for (const ImportField& field : fields)
        if (SameWord(Wide(field.name).View(), Wide(name).View())) return &field;
    return nullptr;
}

std::string ReadUnit(const std::string& key, ImportUnitKind kind, const std::string& value, ImportSettings& settings)
{
    const ImportUnit* const unit = ImportUnitNamed(value);
    if (!unit || unit->kind != kind) return key + "=" + PrintableLine(value) + ": expected " + ImportUnitWords(kind);
    if (!settings.forces.names.units.emplace(kind, unit).second) return key + " is given twice";
    if (kind == ImportUnitKind::Length) settings.members.units[kind] = unit;
    return {};
}

std::string ReadPair(const std::string& key, std::string value, ImportSettings& settings)
{
    if (SameWord(Wide(value).View(), L"none")) value = "none";
    if (value.empty()) return PrintableLine(key) + "=: expected a caption of the table, or none";
    if (key == "length") return ReadUnit(key, ImportUnitKind::Length, value, settings);
    if (key == "force") return ReadUnit(key, ImportUnitKind::Force, value, settings);
    if (key == "moment") return ReadUnit(key, ImportUnitKind::Moment, value, settings);
    const std::string prefix = "members.";
    const bool isOfMembers = key.compare(0, prefix.size(), prefix) == 0;
    const ImportField* const field =
        isOfMembers ? FieldNamed(MemberFields(), key.substr(prefix.size())) : FieldNamed(ForceFields(), key);
    if (!field) {
        std::string names;
        for (const ImportField& one : ForceFields())
            names += std::string(one.name) + ", ";
        return PrintableLine(key) + ": expected one of " + names +
               "length, force, moment, or members. and a column of the members";
    }
    ImportNames& target = isOfMembers ? settings.members : settings.forces.names;
    if (value == "none" && !isOfMembers && !field->unit)
        return PrintableLine(key) + "=none: there are no forces without it";
    if (value == "none" && isOfMembers && field->isRequired)
        return PrintableLine(key) + "=none: there are no members without it";
    if (!target.columns.emplace(field->name, value).second) return PrintableLine(key) + " is given twice";
    return {};
}

// Members of both tables, made into text.
class Importer {
public:
    Importer(const ImportFile& forces, const ImportFile& members, const ImportSettings& settings) :
        m_settings(settings), m_forceTable(forces.name, forces.bytes, m_findings),
        m_memberTable(members.name, members.bytes, m_findings)
    {}

    Import Make()
    {
        m_forces = ReadForces(m_forceTable, m_settings.forces, m_findings);
        m_members = ReadMembers(m_memberTable, m_settings.members, m_findings);
        if (m_settings.hasGrade) CheckGrades();
        // What is missing in a table that was not understood says nothing.
        if (!m_forces.empty() && !m_members.empty()) Match();
        if (!m_findings.HasErrors()) CheckBalance();
        if (!m_findings.HasErrors()) {
            TellCouples();
            TellCoarse();
        }
        if (!m_findings.HasErrors())
            for (const ImportedMember& member : m_members)
                Write(member);
        return Finish();
    }

private:
    Import Finish()
    {
        m_import.findings = m_findings.Take();
        if (m_settings.isStrict)
            for (ImportFinding& finding : m_import.findings)
                if (finding.defect.severity == Severity::Warning) finding.defect.severity = Severity::Error;
        if (m_import.HasErrors()) {
            m_import.text.clear();
            m_import.members = m_import.cases = 0;
        }
        return std::move(m_import);
    }

    void FaultOfForces(LineNumber line, std::string column, std::string got, std::string expected,
                       std::string advice = {})
    {
        m_findings.Error(m_forceTable.Name(), line, std::move(column), std::move(got), std::move(expected),
                         std::move(advice));
    }
    void FaultOfMember(const ImportedMember& member, std::string column, std::string got, std::string expected)
    {
        m_findings.Error(m_memberTable.Name(), member.line, std::move(column), std::move(got), std::move(expected));
    }

    // Every command would refuse the member.
    void CheckGrades()
    {
        for (const ImportedMember& member : m_members)
            if (!member.content.grade.empty() && !m_settings.hasGrade(member.content.grade))
                FaultOfMember(member, "grade", Quoted(member.content.grade),
                              "a grade of a design code of this program: " + m_settings.grades);
    }

    // --- Which forces belong to which member ---

    void Match()
    {
        std::vector<std::wstring> names;
        for (const ImportedMember& member : m_members) {
            names.emplace_back(Wide(member.name).View());
            m_byName[member.name] = nullptr;
        }
        const std::vector<std::wstring_view> known(names.begin(), names.end());
        for (const MemberForces& forces : m_forces) {
            const auto at = m_byName.find(forces.name);
            if (at != m_byName.end()) {
                at->second = &forces;
                continue;
            }
            const std::optional<std::wstring> nearest = Nearest(Wide(forces.name).View(), known);
            FaultOfForces(forces.line, "member", "unknown member " + Quoted(forces.name),
                          "a member of " + m_memberTable.Name(), nearest ? "did you mean " + Utf8(*nearest) : "");
        }
        for (const ImportedMember& member : m_members) {
            const MemberForces* const forces = m_byName[member.name];
            if (!forces)
                FaultOfMember(member, "member", Quoted(member.name) + " without a row in " + m_forceTable.Name(),
                              "forces of each member");
            else if (!forces->isBroken)
                CheckPlaces(member, *forces);
        }
    }

    // Stations from one end to the other, and restraints between them.
    void CheckPlaces(const ImportedMember& member, const MemberForces& forces)
    {
        const ForceRow& row = forces.cases.front().rows.front();
        const double first = forces.stations.front();
        const double last = forces.stations.back();
        const double near = forces.EndTolerance();
        if (forces.stations.size() < 2)
            FaultOfForces(row.line, "station", "one station of member " + Quoted(member.name), "two at least");
        else if (std::abs(first) > near)
            FaultOfForces(row.line, "station",
                          "the first station of member " + Quoted(member.name) + " at " + PlaceText(first),
                          "a row at 0, its start");
        else if (member.length && std::abs(last - member.length->value) > near + member.length->half)
            FaultOfForces(row.line, "station",
                          "the last station of member " + Quoted(member.name) + " at " + PlaceText(last),
                          "a row at its length, " + PlaceText(member.length->value));
        for (const HeldPlace& held : member.held)
            if (held.to > last + near)
                FaultOfMember(member, "restraints", "a place at " + PlaceText(held.to),
                              "places within the member, which ends at " + PlaceText(last));
        const auto isHeldAt = [&](double x) {
            return std::any_of(member.held.begin(), member.held.end(),
                               [&](const HeldPlace& held) { return held.isPlace && std::abs(held.from - x) <= near; });
        };
        if (!member.start && !isHeldAt(0.0)) FaultOfMember(member, "start", "nothing", "what holds the start, or Free");
        if (!member.end && !isHeldAt(last)) FaultOfMember(member, "end", "nothing", "what holds the end, or Free");
    }

    // --- Balance ---

    bool Balances(TablePlane plane, int law) const
    {
        for (const MemberForces& forces : m_forces)
            for (const ForceCase& one : forces.cases)
                if (FindGap(one, plane, law)) return false;
        return true;
    }

    void CheckBalance()
    {
        std::map<std::pair<TablePlane, int>, bool> balances;
        for (const TablePlane plane : PLANES)
            for (const int law : {1, -1})
                balances[{plane, law}] = Balances(plane, law);
        std::string others;
        for (const SignConvention& other : SignConventions()) {
            const bool isBalanced = std::all_of(std::begin(PLANES), std::end(PLANES), [&](TablePlane plane) {
                return balances[{plane, other.LawOf(plane)}];
            });
            if (isBalanced && &other != m_settings.convention)
                others += (others.empty() ? "" : ", ") + std::string(other.name);
        }
        const SignConvention& chosen = *m_settings.convention;
        bool isBalanced = true;
        for (const TablePlane plane : PLANES)
            isBalanced = isBalanced && balances[{plane, chosen.LawOf(plane)}];
        if (isBalanced) {
            m_findings.Say(Severity::Note, m_forceTable.Name(), m_forceTable.HeaderLine(),
                           std::string("read as ") + chosen.name + ": " + chosen.meaning +
                               (others.empty() ? ""
                                               : "; the forces balance as " + others +
                                                     " as well, so that what these differ in is not checked"));
            for (const TablePlane plane : PLANES)
                if (balances[{plane, 1}] && balances[{plane, -1}]) TellUnchecked(plane);
            return;
        }
        m_findings.Say(Severity::Error, m_forceTable.Name(), m_forceTable.HeaderLine(),
                       std::string("the forces do not balance as ") + chosen.name + "; " +
                           (others.empty() ? "no preset balances them: is there a load between two stations, an "
                                             "envelope instead of a case, a column that belongs to another one?"
                                           : "they would as " + others));
        for (const TablePlane plane : PLANES)
            TellGaps(plane, chosen.LawOf(plane));
    }

    // Figures that are so coarse, or stations so few, that either sign would do.
    void TellUnchecked(TablePlane plane)
    {
        bool hasShear = false;
        bool hasMoment = false;
        for (const MemberForces& forces : m_forces)
            for (const ForceCase& one : forces.cases)
                for (const ForceRow& row : one.rows) {
                    hasShear = hasShear || row.value[ShearOf(plane)] != 0.0;
                    hasMoment = hasMoment || row.value[MomentOf(plane)] != 0.0;
                }
        if (!hasShear || !hasMoment) return;
        m_findings.Say(Severity::Warning, m_forceTable.Name(), m_forceTable.HeaderLine(),
                       std::string("the signs of ") + (plane == TablePlane::XZ ? "My" : "Mz") +
                           " are not checked: its figures balance with " + LawText(plane, 1) + " and with " +
                           LawText(plane, -1) + "; export more digits, or more stations");
    }

    void TellGaps(TablePlane plane, int law)
    {
        std::size_t found = 0;
        for (const MemberForces& forces : m_forces)
            for (const ForceCase& one : forces.cases) {
                const std::optional<ForceGap> gap = FindGap(one, plane, law);
                if (!gap || ++found > MOST_GAPS) continue;
                FaultOfForces(gap->row->line, plane == TablePlane::XZ ? "My" : "Mz",
                              "a change by " + MomentText(gap->byMoments) + " from " + PlaceText(gap->from) + " to " +
                                  PlaceText(gap->to) + " of member " + Quoted(forces.name) + " in case " +
                                  Quoted(one.name),
                              MomentText(gap->byShears) + " by its shears, " + LawText(plane, law));
            }
        if (found > MOST_GAPS)
            m_findings.Say(Severity::Error, m_forceTable.Name(), m_forceTable.HeaderLine(),
                           LawText(plane, law) + " is not met in " + std::to_string(found - MOST_GAPS) +
                               " more cases of members");
    }

    void TellCouples()
    {
        for (const MemberForces& forces : m_forces)
            for (const ForceCase& one : forces.cases)
                for (const TablePlane plane : PLANES)
                    for (const ForceCouple& couple : FindCouples(one, plane))
                        m_findings.Say(Severity::Warning, m_forceTable.Name(), couple.station->right->line,
                                       std::string(plane == TablePlane::XZ ? "My" : "Mz") + " of member " +
                                           Quoted(forces.name) + " in case " + Quoted(one.name) + " jumps by " +
                                           MomentText(couple.moment) + " at " + PlaceText(couple.station->at) +
                                           ": a couple, or is something lost?");
    }

    // What a force at one place between two stations would add to the moment that is read, and where it would add most.
    struct Coarse {
        double moment = 0.0;
        double share = 0.0; // of the largest moment of the plane and case
        const ForceCase* one = nullptr;
        const ForceStation* to = nullptr;
    };

    static void FindCoarse(const ForceCase& one, TablePlane plane, Coarse& worst)
    {
        Coarse coarse;
        double largest = 0.0;
        for (std::size_t k = 1; k < one.stations.size(); ++k) {
            const ForceRow& a = *one.stations[k - 1].right;
            const ForceRow& b = *one.stations[k].left;
            // Uniform loads bulge by w h²/8, a force of the same size in the middle by twice that.
            const double load = std::abs(b.value[ShearOf(plane)] - a.value[ShearOf(plane)]);
            const double bulge = load * (one.stations[k].at - one.stations[k - 1].at) / 8.0;
            const double ends = std::max(std::abs(a.value[MomentOf(plane)]), std::abs(b.value[MomentOf(plane)]));
            largest = std::max(largest, ends + bulge);
            if (bulge > coarse.moment) coarse = {bulge, 0.0, &one, &one.stations[k]};
        }
        if (largest > 0.0) coarse.share = coarse.moment / largest;
        if (coarse.share > worst.share) worst = coarse;
    }

    void TellCoarse()
    {
        for (const MemberForces& forces : m_forces) {
            Coarse worst;
            for (const ForceCase& one : forces.cases)
                for (const TablePlane plane : PLANES)
                    FindCoarse(one, plane, worst);
            if (worst.share <= MOST_COARSE) continue;
            m_findings.Say(Severity::Warning, m_forceTable.Name(), worst.to->left->line,
                           "the load between two stations of member " + Quoted(forces.name) + " in case " +
                               Quoted(worst.one->name) + ", the second at " + PlaceText(worst.to->at) +
                               ", is read as uniform: a force at one place would add up to " +
                               MomentText(worst.moment) + ", " + Rounded(100.0 * worst.share, 2) +
                               " % of the largest moment; export a station at every force, or more stations");
        }
    }

    // --- Members as text ---

    // Places of restraints that are those of an end, of a station or of another restraint are exactly these.
    static std::vector<HeldPlace> HeldOf(const ImportedMember& member, const MemberForces& forces)
    {
        std::vector<double> known = forces.stations;
        const double near =
            std::min(SAME_RESTRAINT, SAME_RESTRAINT * (forces.stations.back() - forces.stations.front()));
        const auto snapped = [&](double x) {
            for (const double end : {forces.stations.front(), forces.stations.back()})
                if (std::abs(x - end) <= forces.EndTolerance()) return end;
            for (const double place : known)
                if (std::abs(x - place) <= near) return place;
            known.push_back(x);
            return x;
        };
        std::vector<HeldPlace> list = member.held;
        for (HeldPlace& held : list) {
            held.from = snapped(held.from);
            held.to = snapped(held.to);
        }
        return list;
    }

    // Stations, and the places between them where a restraint begins, ends or is.
    static std::vector<double> PlacesOf(const std::vector<HeldPlace>& list, const MemberForces& forces)
    {
        std::vector<double> places = forces.stations;
        for (const HeldPlace& held : list) {
            places.push_back(held.from);
            places.push_back(held.to);
        }
        std::sort(places.begin(), places.end());
        places.erase(std::unique(places.begin(), places.end()), places.end());
        return places;
    }

    Actions Between(const ForceRow& a, const ForceRow& b, double h, double share) const
    {
        Actions actions{};
        for (std::size_t i = 0; i < IMPORTED_ACTIONS; ++i)
            actions[i] = a.value[i] + share * (b.value[i] - a.value[i]);
        for (const TablePlane plane : PLANES) {
            const double va = a.value[ShearOf(plane)];
            const double vb = b.value[ShearOf(plane)];
            // The straight line, and the parabola that is zero at both stations.
            actions[MomentOf(plane)] +=
                m_settings.convention->LawOf(plane) * 0.5 * h * (va - vb) * share * (1.0 - share);
        }
        return actions;
    }

    // The actions at the ends of the piece between two places; stations are among the places, so that it is within one interval.
    std::pair<Actions, Actions> ActionsOf(const ForceCase& one, double from, double to) const
    {
        std::size_t k = 1;
        while (k + 1 < one.stations.size() && one.stations[k].at <= from)
            ++k;
        const ForceStation& a = one.stations[k - 1];
        const ForceStation& b = one.stations[k];
        const auto at = [&](double x) {
            if (x == a.at) return a.right->value;
            if (x == b.at) return b.left->value;
            return Between(*a.right, *b.left, b.at - a.at, (x - a.at) / (b.at - a.at));
        };
        return {m_settings.convention->InMemberFile(at(from)), m_settings.convention->InMemberFile(at(to))};
    }

    static CRestraint With(const ImportedMember& member, int bits)
    {
        CRestraint restraint(bits, Steel::SHR_CENTRE, 0.0);
        restraint.SetLoadHeight(member.loadHeight);
        return restraint;
    }

    static void AddPoints(const ImportedMember& member, const std::vector<HeldPlace>& list,
                          const std::vector<double>& places, MemberContent& content)
    {
        for (std::size_t i = 0; i < places.size(); ++i) {
            CRestraint held;
            if (i == 0 && member.start) held.Add(member.start->RestFlag());
            if (i + 1 == places.size() && member.end) held.Add(member.end->RestFlag());
            for (const HeldPlace& one : list)
                if (one.isPlace && one.from == places[i]) held.Add(one.restraint.RestFlag());
            Steel::CMemberPoint point;
            point.Set1Index(static_cast<int>(i) + 1);
            point.SetPos(i == 0 ? 0.0 : places[i]);
            point.SetRestraint(With(member, held.RestFlag()));
            content.points.push_back(point);
        }
    }

    void AddSubSpans(const ImportedMember& member, const ForceCase& one, const std::vector<HeldPlace>& list,
                     const std::vector<double>& places, MemberContent& content) const
    {
        for (std::size_t i = 0; i + 1 < places.size(); ++i) {
            CRestraint held;
            for (const HeldPlace& place : list)
                if (!place.isPlace && place.from <= places[i] && place.to >= places[i + 1])
                    held.Add(place.restraint.RestFlag());
            const auto [left, right] = ActionsOf(one, places[i], places[i + 1]);
            Steel::CSubSpan subSpan;
            subSpan.Set1Index(static_cast<int>(i) + 1);
            subSpan.SetForcesAll({left[0], left[1], left[2]}, {right[0], right[1], right[2]});
            subSpan.SetMomentsAll({left[3], left[4], left[5]}, {right[3], right[4], right[5]});
            subSpan.SetRestraint(With(member, held.RestFlag()));
            content.subSpans.push_back(subSpan);
        }
    }

    void Write(const ImportedMember& member)
    {
        const MemberForces& forces = *m_byName[member.name];
        const std::vector<HeldPlace> held = HeldOf(member, forces);
        const std::vector<double> places = PlacesOf(held, forces);
        ++m_import.members;
        for (const ForceCase& one : forces.cases) {
            MemberContent content = member.content;
            content.title = PrintableLine(member.name + ": " + one.name);
            TellTwin(member, content.title);
            AddPoints(member, held, places, content);
            AddSubSpans(member, one, held, places, content);
            std::string text = MemberFileText(content);
            RequireReadable(member, text);
            m_import.text += text;
            ++m_import.cases;
        }
    }

    // A comma in a name is a semicolon in a title.
    void TellTwin(const ImportedMember& member, std::string title)
    {
        std::replace(title.begin(), title.end(), ',', ';');
        if (!m_titles.insert(title).second)
            m_findings.Say(Severity::Warning, m_memberTable.Name(), member.line,
                           "two members are called " + Quoted(title) + " in the member file");
    }

    // What commands would refuse is refused here.
    void RequireReadable(const ImportedMember& member, const std::string& text)
    {
        const MemberFile file(SourceText{m_memberTable.Name(), Wide(text)});
        for (const Defect& defect : file.Check().defects)
            if (defect.severity == Severity::Error)
                m_findings.Say(Severity::Error, m_memberTable.Name(), member.line,
                               "member " + Quoted(member.name) + ": " + defect.Statement());
    }

    const ImportSettings& m_settings;
    ImportFindings m_findings;
    ImportTable m_forceTable;
    ImportTable m_memberTable;
    std::vector<MemberForces> m_forces;
    std::vector<ImportedMember> m_members;
    std::map<std::string, const MemberForces*> m_byName;
    std::set<std::string> m_titles;
    Import m_import;
};

} // namespace

std::string ReadImportMap(const std::vector<std::string>& items, ImportSettings& settings)
{
    for (const std::string& item : items) {
        const std::size_t equals = item.find('=');
        if (equals != std::string::npos) {
            std::string fault = ReadPair(item.substr(0, equals), item.substr(equals + 1), settings);
            if (!fault.empty()) return fault;
            continue;
        }
        const SignConvention* const convention = SignConventionNamed(item);
        if (!convention) return "unknown preset " + Quoted(item) + ", expected " + SignConventionNames();
        if (settings.convention)
            return "two presets, " + std::string(settings.convention->name) + " and " + convention->name;
        settings.convention = convention;
    }
    if (!settings.convention) return "names no preset of signs, expected " + SignConventionNames();
    return {};
}

bool Import::HasErrors() const
{
    return std::any_of(findings.begin(), findings.end(),
                       [](const ImportFinding& finding) { return finding.defect.severity == Severity::Error; });
}

Import ImportForces(const ImportFile& forces, const ImportFile& members, const ImportSettings& settings)
{
    return Importer(forces, members, settings).Make();
}

} // namespace Keltrix::Host
