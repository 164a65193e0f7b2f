#include "import/MemberTable.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "keltrix/platform/NumberText.h"
#include "sections/SectionCatalogue.h"
#include "text/BadInput.h"
#include "text/Fields.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Steel::CRestraint;

struct Column {
    enum Place : std::size_t {
        MEMBER,
        SECTION,
        GRADE,
        TYPE,
        LENGTH,
        START,
        END,
        RESTRAINTS,
        LOAD_HEIGHT,
        NET_TO_GROSS,
        PLASTIC_TO_ELASTIC,
        SHEAR_LAG
    };
};

constexpr const char* RESTRAINT_EXPECTED =
    "Pinned, Fixed, Free, Top flange lateral, Bottom flange lateral ... or a code such as F1L TR";

std::optional<CRestraint> RestraintOf(std::string_view text)
{
    const CString words = Wide(text);
    CRestraint restraint;
    const bool isFree = SameWord(words.View(), L"Free") || SameWord(words.View(), L"None");
    if (restraint.SetDescription(words) && (restraint.RestFlag() != 0 || isFree)) return restraint;
    return std::nullopt;
}

class MemberReader {
public:
    MemberReader(ImportTable& table, const ImportNames& names, ImportFindings& findings) :
        m_table(table), m_names(names), m_findings(findings)
    {}

    std::vector<ImportedMember> Read()
    {
        if (!m_table.Find(MemberFields(), m_names)) return {};
        RefuseOthers();
        NoteMissing();
        if (m_table.Rows().empty())
            m_findings.Error(m_table.Name(), m_table.HeaderLine(), {}, "no row", "members below the captions");
        for (const ImportTable::Row& row : m_table.Rows())
            ReadRow(row);
        return std::move(m_members);
    }

private:
    // A column that nobody reads could be an effective length.
    void RefuseOthers()
    {
        std::vector<std::wstring> kept;
        for (const ImportField& field : MemberFields())
            kept.push_back(std::wstring(Wide(field.name).View()));
        const std::vector<std::wstring_view> known(kept.begin(), kept.end());
        for (const std::string& caption : m_table.Others()) {
            const std::optional<std::wstring> nearest = Nearest(Wide(caption).View(), known);
            std::string all;
            for (const ImportField& field : MemberFields())
                all += (all.empty() ? "" : ", ") + std::string(field.name);
            m_findings.Error(m_table.Name(), m_table.HeaderLine(), {}, "unknown column " + Quoted(caption), all,
                             nearest ? "did you mean " + Utf8(*nearest) : "");
        }
    }

    void NoteMissing()
    {
        if (!m_table.Has(Column::LENGTH))
            m_findings.Say(Severity::Warning, m_table.Name(), m_table.HeaderLine(),
                           "no column length: the last station of each member is taken as its end");
        if (!m_table.Has(Column::LOAD_HEIGHT))
            m_findings.Say(Severity::Note, m_table.Name(), m_table.HeaderLine(),
                           "no column load-height: loads act at the shear centre");
    }

    void Fault(const ImportTable::Row& row, Column::Place field, std::string got, std::string expected,
               std::string advice = {})
    {
        m_findings.Error(m_table.Name(), row.line, m_table.CaptionOf(field), std::move(got), std::move(expected),
                         std::move(advice));
    }

    void ReadRow(const ImportTable::Row& row)
    {
        ImportedMember member;
        member.line = row.line;
        member.name = m_table.Text(row, Column::MEMBER);
        if (member.name.empty()) Fault(row, Column::MEMBER, "nothing", "the name of a member");
        if (!member.name.empty() && !m_known.insert(member.name).second)
            return Fault(row, Column::MEMBER, Quoted(member.name) + " once more", "each member in one row");
        ReadSection(row, member.content);
        ReadGrade(row, member.content);
        ReadFactor(row, Column::NET_TO_GROSS, NET_TO_GROSS, member.content.netToGross);
        ReadFactor(row, Column::PLASTIC_TO_ELASTIC, PLASTIC_TO_ELASTIC, member.content.plasticToElastic);
        ReadFactor(row, Column::SHEAR_LAG, SHEAR_LAG, member.content.shearLag);
        if (m_table.Has(Column::LENGTH)) member.length = m_table.Number(row, Column::LENGTH);
        if (member.length && !(member.length->value > 0.0))
            Fault(row, Column::LENGTH, m_table.Text(row, Column::LENGTH), "a length above 0");
        if (m_table.Has(Column::LOAD_HEIGHT))
            if (const auto height = m_table.Number(row, Column::LOAD_HEIGHT)) member.loadHeight = height->value;
        member.start = End(row, Column::START);
        member.end = End(row, Column::END);
        ReadHeld(row, member);
        m_members.push_back(std::move(member));
    }

    void ReadSection(const ImportTable::Row& row, MemberContent& content)
    {
        const std::string section = m_table.Text(row, Column::SECTION);
        try {
            if (section.empty()) throw BadInput("got nothing, expected a section");
            content.section = FindSection(section).name;
        } catch (const BadInput& fault) {
            Fault(row, Column::SECTION, {}, {}, fault.what());
        }
        const std::string type = m_table.Text(row, Column::TYPE);
        content.type = "UNDEF";
        if (type.empty()) return;
        for (const char* word : {"ROLLED", "WELDED", "FORMED", "UNDEF"})
            if (SameWord(Wide(word).View(), Wide(type).View())) {
                content.type = word;
                return;
            }
        Fault(row, Column::TYPE, Quoted(type), "rolled, welded or formed, or nothing: as the catalogue has it");
    }

    void ReadGrade(const ImportTable::Row& row, MemberContent& content)
    {
        content.grade = m_table.Text(row, Column::GRADE);
        if (content.grade.empty()) Fault(row, Column::GRADE, "nothing", "a steel grade");
        if (content.grade.find(',') != std::string::npos)
            Fault(row, Column::GRADE, Quoted(content.grade), "the name of a grade, which has no comma");
    }

    // What the factors of a member can be. No design code takes another.
    struct Share {
        double least;
        double most;
        bool isLeastAllowed;
        const char* expected;
    };
    static constexpr Share NET_TO_GROSS{0.0, 1.0, false, "a ratio above 0, at most 1"};
    static constexpr Share PLASTIC_TO_ELASTIC{1.0, 1.5, true, "a ratio from 1 to 1.5, as a rule 1.2 or 1.5"};
    static constexpr Share SHEAR_LAG{0.0, 1.0, true, "a factor from 0 to 1"};

    void ReadFactor(const ImportTable::Row& row, Column::Place field, const Share& share, double& value)
    {
        if (!m_table.Has(field)) return;
        const auto number = m_table.Number(row, field);
        if (!number) return;
        value = number->value;
        if (value < share.least || value > share.most || (value == share.least && !share.isLeastAllowed))
            Fault(row, field, m_table.Text(row, field), share.expected);
    }

    std::optional<CRestraint> End(const ImportTable::Row& row, Column::Place field)
    {
        if (!m_table.Has(field)) return std::nullopt;
        const std::string text = m_table.Text(row, field);
        const std::optional<CRestraint> restraint = RestraintOf(text);
        if (!restraint) Fault(row, field, text.empty() ? "nothing" : Quoted(text), RESTRAINT_EXPECTED);
        return restraint;
    }

    // "Top flange lateral@3 | Bottom flange lateral@0:6".
    void ReadHeld(const ImportTable::Row& row, ImportedMember& member)
    {
        const std::string text = m_table.Text(row, Column::RESTRAINTS);
        std::string_view rest = Trimmed(text);
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find('|'), rest.size());
            ReadHeldPlace(row, Trimmed(rest.substr(0, end)), member);
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }

    void ReadHeldPlace(const ImportTable::Row& row, std::string_view item, ImportedMember& member)
    {
        const std::size_t at = item.rfind('@');
        const std::string_view places = at == std::string_view::npos ? std::string_view() : item.substr(at + 1);
        const std::size_t colon = std::min(places.find(':'), places.size());
        const std::optional<double> from = Place(places.substr(0, colon));
        const std::optional<double> to = colon < places.size() ? Place(places.substr(colon + 1)) : from;
        if (!from || !to || *from < 0.0 || *to < *from || (colon < places.size() && *to == *from))
            return Fault(row, Column::RESTRAINTS, Quoted(item),
                         "RESTRAINT@PLACE or RESTRAINT@FROM:TO in m, as Top flange lateral@3 | Top flange lateral@0:6");
        const std::optional<CRestraint> restraint = RestraintOf(Trimmed(item.substr(0, at)));
        if (!restraint) return Fault(row, Column::RESTRAINTS, Quoted(item), RESTRAINT_EXPECTED);
        member.held.push_back({*from, *to, *restraint, colon == places.size()});
    }

    std::optional<double> Place(std::string_view text)
    {
        text = Trimmed(text);
        double value = 0.0;
        const auto [end, error] = ReadNumber(text.data(), text.data() + text.size(), value);
        if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
        return value;
    }

    ImportTable& m_table;
    const ImportNames& m_names;
    ImportFindings& m_findings;
    std::vector<ImportedMember> m_members;
    std::set<std::string> m_known;
};

} // namespace

std::vector<ImportedMember> ReadMembers(ImportTable& table, const ImportNames& names, ImportFindings& findings)
{
    return MemberReader(table, names, findings).Read();
}

const std::vector<ImportField>& MemberFields()
{
    static const std::vector<ImportField> fields{
        {"member", {"member", "bar", "beam", "element", "name"}, std::nullopt},
        {"section", {"section"}, std::nullopt},
        {"grade", {"grade", "material"}, std::nullopt},
        {"type", {"type"}, std::nullopt, false},
        {"length", {"length", "l"}, ImportUnitKind::Length, false},
        {"start", {"start", "left"}, std::nullopt, false},
        {"end", {"end", "right"}, std::nullopt, false},
        {"restraints", {"restraints", "restraint"}, std::nullopt, false},
        {"load-height", {"loadheight"}, ImportUnitKind::Length, false},
        {"net-to-gross", {"nettogross"}, std::nullopt, false},
        {"plastic-to-elastic", {"plastictoelastic"}, std::nullopt, false},
        {"shear-lag", {"shearlag"}, std::nullopt, false},
    };
    return fields;
}

} // namespace Keltrix::Host
