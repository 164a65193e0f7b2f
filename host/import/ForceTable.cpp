#include "import/ForceTable.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include "text/Text.h"

namespace Keltrix::Host {

namespace {

enum ForceColumn : std::size_t { FORCES_MEMBER, FORCES_CASE, FORCES_STATION, FORCES_FIRST_ACTION };

// Places that differ by less than this share of the length are one.
constexpr double SAME_PLACE = 1e-6;

class ForceReader {
public:
    ForceReader(ImportTable& table, const ForceReading& reading, ImportFindings& findings) :
        m_table(table), m_reading(reading), m_findings(findings)
    {}

    std::vector<MemberForces> Read()
    {
        if (!m_table.Find(ForceFields(), m_reading.names)) return {};
        std::string others;
        for (const std::string& caption : m_table.Others())
            others += (others.empty() ? "" : ", ") + caption;
        if (!others.empty())
            m_findings.Say(Severity::Note, m_table.Name(), m_table.HeaderLine(),
                           "columns that are not used: " + others);
        if (m_table.Rows().empty())
            m_findings.Error(m_table.Name(), m_table.HeaderLine(), {}, "no row", "rows of forces below the captions");
        for (const ImportTable::Row& row : m_table.Rows())
            ReadRow(row);
        ShareRounding();
        for (MemberForces& member : m_members)
            if (!member.isBroken) MakeStations(member);
        RequireAllCases();
        return std::move(m_members);
    }

private:
    std::string NameOf(const ImportTable::Row& row, ForceColumn field)
    {
        std::string name = m_table.Text(row, field);
        if (name.empty())
            m_findings.Error(m_table.Name(), row.line, m_table.CaptionOf(field), "nothing",
                             field == FORCES_MEMBER ? "the name of a member" : "the name of a case");
        return name;
    }

    void ReadRow(const ImportTable::Row& row)
    {
        ForceRow read;
        read.line = row.line;
        const std::string member = NameOf(row, FORCES_MEMBER);
        const std::string name = NameOf(row, FORCES_CASE);
        bool isSound = !member.empty() && !name.empty();
        if (const auto station = m_table.Number(row, FORCES_STATION))
            read.station = *station;
        else
            isSound = false;
        for (std::size_t i = 0; i < IMPORTED_ACTIONS; ++i) {
            if (!m_table.Has(FORCES_FIRST_ACTION + i)) continue; // said to be none
            const auto number = m_table.Number(row, FORCES_FIRST_ACTION + i);
            if (!number) {
                isSound = false;
                continue;
            }
            read.value[i] = number->value;
            read.half[i] = number->half;
        }
        if (member.empty()) return;
        MemberForces& forces = MemberOf(member, row.line);
        if (isSound)
            CaseOf(forces, name).rows.push_back(read);
        else
            forces.isBroken = true;
    }

    template <class Use>
    void ForEachRow(const Use& use)
    {
        for (MemberForces& member : m_members)
            for (ForceCase& one : member.cases)
                for (ForceRow& row : one.rows)
                    use(row);
    }

    // A number without decimals is rounded no more than its column is.
    void ShareRounding()
    {
        constexpr double coarsestStation = 0.005;
        double station = coarsestStation;
        std::array<double, IMPORTED_ACTIONS> finest;
        finest.fill(std::numeric_limits<double>::infinity());
        ForEachRow([&](const ForceRow& row) {
            station = std::min(station, row.station.half);
            for (std::size_t i = 0; i < IMPORTED_ACTIONS; ++i)
                if (row.value[i] != 0.0) finest[i] = std::min(finest[i], row.half[i]);
        });
        for (double& half : finest)
            if (std::isinf(half)) half = 0.0;
        ForEachRow([&](ForceRow& row) {
            row.station.half = station;
            row.half = finest;
        });
    }

    MemberForces& MemberOf(const std::string& name, LineNumber line)
    {
        const auto [at, isNew] = m_places.emplace(name, m_members.size());
        if (!isNew) return m_members[at->second];
        m_cases.emplace_back();
        MemberForces& forces = m_members.emplace_back();
        forces.name = name;
        forces.line = line;
        return forces;
    }

    ForceCase& CaseOf(MemberForces& forces, const std::string& name)
    {
        auto& cases = m_cases[static_cast<std::size_t>(&forces - m_members.data())];
        const auto [place, isNewCase] = cases.emplace(name, forces.cases.size());
        if (isNewCase) forces.cases.emplace_back().name = name;
        return forces.cases[place->second];
    }

    void Fault(const ForceRow& row, std::string got, std::string expected, std::string advice = {})
    {
        m_findings.Error(m_table.Name(), row.line, m_table.CaptionOf(FORCES_STATION), std::move(got),
                         std::move(expected), std::move(advice));
    }

    void MakeStations(MemberForces& member)
    {
        for (const ForceCase& one : member.cases)
            for (const ForceRow& row : one.rows)
                member.stations.push_back(row.station.value);
        std::sort(member.stations.begin(), member.stations.end());
        const double near = member.Tolerance();
        const auto isSame = [&](double a, double b) { return b - a <= near; };
        member.stations.erase(std::unique(member.stations.begin(), member.stations.end(), isSame),
                              member.stations.end());
        for (ForceCase& one : member.cases) {
            MakeStations(member, one);
            RequireAllStations(member, one);
        }
    }

    // Two rows at a place are the actions on its left and on its right, in this order.
    void MakeStations(const MemberForces& member, ForceCase& one)
    {
        const double near = member.Tolerance();
        for (const ForceRow& row : one.rows) {
            const std::string at = "a row at " + PlaceText(row.station.value);
            if (!one.stations.empty() && row.station.value < one.stations.back().at - near) {
                Fault(row, at + " below one at " + PlaceText(one.stations.back().at),
                      "stations of a member and case that ascend");
            } else if (one.stations.empty() || row.station.value > one.stations.back().at + near) {
                const auto place =
                    std::lower_bound(member.stations.begin(), member.stations.end(), row.station.value - near);
                one.stations.push_back({*place, &row, &row});
            } else {
                Repeat(one.stations.back(), row);
            }
        }
        if (one.stations.empty()) return;
        for (const ForceStation* end : {&one.stations.front(), &one.stations.back()})
            if (end->left != end->right)
                Fault(*end->right,
                      "two rows at the end at " + PlaceText(end->at) + ", the other in line " +
                          std::to_string(end->left->line),
                      "one row at each end");
    }

    void Repeat(ForceStation& station, const ForceRow& row)
    {
        const std::string where =
            "row at " + PlaceText(station.at) + " after line " + std::to_string(station.left->line);
        if (station.left != station.right) return Fault(row, "a third " + where, "one row, or two where actions jump");
        station.right = &row;
        if (station.left->value == row.value && !m_reading.allowRepeats)
            Fault(row, "the same " + where, "one row, or two where actions jump",
                  "--allow-repeats where the table has the ends of segments");
    }

    void RequireAllStations(const MemberForces& member, const ForceCase& one)
    {
        if (one.rows.empty()) return;
        const double near = member.Tolerance();
        std::string missing;
        std::size_t count = 0;
        for (const double at : member.stations) {
            const bool isThere =
                std::any_of(one.stations.begin(), one.stations.end(),
                            [&](const ForceStation& station) { return std::abs(station.at - at) <= near; });
            if (isThere) continue;
            if (count++ < 3) missing += (missing.empty() ? "" : ", ") + PlaceText(at);
        }
        if (count == 0) return;
        Fault(one.rows.front(),
              "no row of member " + Quoted(member.name) + " in case " + Quoted(one.name) + " at " + missing +
                  (count > 3 ? " and " + std::to_string(count - 3) + " more" : ""),
              "the same stations in all cases of a member");
    }

    // A case that a member lacks would be a load that nobody checks.
    void RequireAllCases()
    {
        std::vector<std::string> names;
        for (const MemberForces& member : m_members)
            for (const ForceCase& one : member.cases)
                if (std::find(names.begin(), names.end(), one.name) == names.end()) names.push_back(one.name);
        for (const MemberForces& member : m_members)
            for (const std::string& name : names) {
                if (member.isBroken) continue;
                const bool isThere = std::any_of(member.cases.begin(), member.cases.end(),
                                                 [&](const ForceCase& one) { return one.name == name; });
                if (isThere) continue;
                m_findings.Error(m_table.Name(), member.line, m_table.CaptionOf(FORCES_CASE),
                                 "no row of member " + Quoted(member.name) + " in case " + Quoted(name),
                                 "the same cases for all members");
            }
    }

    ImportTable& m_table;
    const ForceReading& m_reading;
    ImportFindings& m_findings;
    std::vector<MemberForces> m_members;
    std::map<std::string, std::size_t> m_places;
    std::vector<std::map<std::string, std::size_t>> m_cases; // of each member
};

} // namespace

double MemberForces::Tolerance() const
{
    return stations.empty() ? 0.0 : SAME_PLACE * (stations.back() - stations.front());
}

double MemberForces::EndTolerance() const { return Tolerance() + cases.front().rows.front().station.half; }

std::vector<MemberForces> ReadForces(ImportTable& table, const ForceReading& reading, ImportFindings& findings)
{
    return ForceReader(table, reading, findings).Read();
}

const std::vector<ImportField>& ForceFields()
{
    using Kind = ImportUnitKind;
    static const std::vector<ImportField> fields{
        {"member", {"member", "bar", "beam", "element"}, std::nullopt},
        {"case", {"case", "loadcase", "combination", "loadcombination"}, std::nullopt},
        {"station", {"station", "x", "position", "distance"}, Kind::Length},
        {"N", {"n", "fx", "nx"}, Kind::Force},
        {"Vy", {"vy", "fy", "qy"}, Kind::Force},
        {"Vz", {"vz", "fz", "qz"}, Kind::Force},
        {"T", {"t", "mx", "mxx", "mt"}, Kind::Moment},
        {"My", {"my", "myy"}, Kind::Moment},
        {"Mz", {"mz", "mzz"}, Kind::Moment},
    };
    return fields;
}

} // namespace Keltrix::Host
