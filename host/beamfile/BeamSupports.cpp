#include <algorithm>
#include <cmath>
#include <numbers>

#include "beamfile/BeamReader.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Statics::Support;
using Steel::CRestraint;

constexpr char HOLDS[] =
    "what is held, as \"Pinned\", \"Fixed\", \"Vertical\", \"Top flange lateral\" or a code as \"F1L TR\"";

CRestraint RestraintOf(int bits) { return {bits, Steel::SHR_CENTRE, 0.0}; }

// A restraint from its words; nothing, with an error, where they mean none.
std::optional<CRestraint> ReadHold(TomlKeys& keys, const char* key)
{
    const std::optional<std::string> text = keys.Text(key, HOLDS);
    if (!text) return std::nullopt;
    CRestraint restraint;
    const CString words = Wide(*text);
    if (words.CompareNoCase(L"Vertical") == 0) return RestraintOf(CRestraint::MAJOR_SHEAR);
    const bool isFree = words.CompareNoCase(L"Free") == 0 || words.CompareNoCase(L"None") == 0;
    if (restraint.SetDescription(words) && (restraint.RestFlag() != 0 || isFree))
        return RestraintOf(restraint.RestFlag());
    keys.Error(keys.LineOf(key), key, Quote(words.View()), HOLDS);
    return std::nullopt;
}

class SupportReader {
public:
    SupportReader(TomlKeys& keys, BeamFile& file, PartLines& lines) : m_keys(keys), m_file(file), m_lines(lines) {}

    void Read()
    {
        ReadLength();
        ReadSupports();
        for (const double at : m_keys.Numbers("hinges", PLACE, MOST_SPANS)) {
            Statics::Hinge hinge;
            hinge.at = at;
            m_file.beam.hinges.push_back(hinge);
            m_lines.hinges.push_back(m_keys.LineOf("hinges"));
        }
        for (const toml::table* table : m_keys.Tables("restraint", MOST_PARTS))
            ReadRestraint(*table);
        ReadPosition();
    }

private:
    void ReadLength()
    {
        Statics::Beam& beam = m_file.beam;
        m_spans = m_keys.Numbers("spans", LENGTH, MOST_SPANS);
        const std::optional<double> length = m_keys.Number("length", LENGTH);
        m_file.supportsLine = m_keys.LineOf(m_keys.Has("supports") ? "supports"
                                            : m_keys.Has("spans")  ? "spans"
                                                                   : "length");
        if (m_keys.Has("spans") && m_keys.Has("length"))
            m_keys.Error(m_keys.LineOf("length"), "length", "length and spans", "one of both");
        if (!m_keys.Has("spans") && !m_keys.Has("length"))
            m_keys.Missing("length", "length = 9.0 in m, or spans = [8.0, 8.0]");
        if (m_spans.empty() && length) m_spans = {*length};
        for (const double span : m_spans)
            beam.length += span;
        m_isBySpans = m_keys.Has("spans");
    }

    void ReadSupports()
    {
        const toml::node* const node = m_keys.Find("supports");
        const bool isList = node && !node->is_string();
        int preset = CRestraint::PINNED;
        if (!node) {
            m_keys.Say(Severity::Note, m_file.supportsLine, "supports",
                       "not given: pinned at the ends" + std::string(m_isBySpans ? " of each span" : ""));
        } else if (!isList) {
            const std::optional<CRestraint> hold = ReadHold(m_keys, "supports");
            if (hold) preset = hold->RestFlag();
        }
        std::vector<Support> supports;
        if (!isList || m_isBySpans) supports = AtSpanEnds(preset);
        std::vector<LineNumber> lines(supports.size(), m_file.supportsLine);
        if (isList) ReadList(supports, lines);
        m_file.beam.supports = std::move(supports);
        m_lines.supports = std::move(lines);
    }

    std::vector<Support> AtSpanEnds(int preset) const
    {
        std::vector<Support> supports(1);
        double at = 0.0;
        for (const double span : m_spans) {
            at += span;
            supports.emplace_back().at = at;
        }
        for (Support& support : supports)
            support.holds = RestraintOf(preset);
        return supports;
    }

    // A support of the list at the end of a span takes the place of the one that is there.
    void ReadList(std::vector<Support>& supports, std::vector<LineNumber>& lines)
    {
        const std::size_t given = supports.size();
        for (const toml::table* table : m_keys.Tables("supports", MOST_SPANS + 1)) {
            const std::optional<Support> support = ReadSupport(*table);
            if (!support) continue;
            const auto end = supports.begin() + static_cast<std::ptrdiff_t>(given);
            const auto same = std::find_if(supports.begin(), end, [&](const Support& one) {
                return std::abs(one.at - support->at) <= 1e-9 * m_file.beam.length;
            });
            if (same != end) {
                lines[static_cast<std::size_t>(same - supports.begin())] = TomlKeys::LineOf(*table);
                *same = *support;
                continue;
            }
            supports.push_back(*support);
            lines.push_back(TomlKeys::LineOf(*table));
        }
    }

    std::optional<Support> ReadSupport(const toml::table& table)
    {
        TomlKeys keys(table, "supports", m_file.defects);
        Support support;
        const std::optional<double> at = keys.Number("at", PLACE);
        if (!keys.Has("at")) keys.Missing("at", PLACE.expected);
        const std::optional<CRestraint> hold = ReadHold(keys, "holds");
        if (hold) support.holds = *hold;
        support.vertical = keys.Number("vertical", STIFFNESS).value_or(0.0) * KILO;
        support.rotation = keys.Number("rotation", STIFFNESS).value_or(0.0) * KILO;
        support.lateral = keys.Number("lateral", STIFFNESS).value_or(0.0) * KILO;
        support.lateralRotation = keys.Number("lateral-rotation", STIFFNESS).value_or(0.0) * KILO;
        keys.Finish();
        if (!at) return std::nullopt;
        support.at = *at;
        return support;
    }

    void ReadRestraint(const toml::table& table)
    {
        TomlKeys keys(table, "restraint", m_file.defects);
        const std::vector<double> places = keys.Numbers("at", PLACE, MOST_PARTS);
        const std::optional<double> from = keys.Number("from", PLACE);
        const std::optional<double> to = keys.Number("to", PLACE);
        const std::optional<CRestraint> hold = ReadHold(keys, "holds");
        if (!keys.Has("holds")) keys.Missing("holds", HOLDS);
        if (keys.Has("at") == (keys.Has("from") || keys.Has("to")))
            keys.Error(keys.Line(), "", keys.Has("at") ? "at with from or to" : "no place", "at, or from and to");
        keys.Finish();
        if (!hold || IsCarrying(keys, *hold)) return;
        if (!places.empty()) return AddPlaces(keys, places, *hold);
        if (keys.Has("at")) return;
        m_file.beam.restraints.push_back({from.value_or(0.0), to.value_or(m_file.beam.length), *hold});
        m_lines.restraints.push_back(keys.Line());
    }

    // Whether a hold would carry loads, which is an error at a place as along a length.
    static bool IsCarrying(TomlKeys& keys, const CRestraint& hold)
    {
        constexpr unsigned int carrying =
            CRestraint::MAJOR_SHEAR | CRestraint::MAJOR_ROTATION | CRestraint::MAJOR_ROTATION_PART;
        if (hold.IsFree(carrying, true)) return false;
        keys.Error(keys.LineOf("holds"), "holds", "a hold that carries loads",
                   "one that holds the member across alone, as \"Top flange lateral\"",
                   "what holds up or against rotation belongs to supports");
        return true;
    }

    // What holds a place without carrying loads is a support without a vertical hold to the statics.
    void AddPlaces(TomlKeys& keys, const std::vector<double>& places, const CRestraint& hold)
    {
        for (const double at : places) {
            Support support;
            support.at = at;
            support.holds = hold;
            m_file.beam.supports.push_back(support);
            m_lines.supports.push_back(keys.Line());
        }
    }

    void ReadPosition()
    {
        constexpr NumberRange angle{-90.0, 90.0, "an angle in degrees, -90 to 90"};
        Statics::Beam& beam = m_file.beam;
        const std::optional<double> inclination = m_keys.Number("inclination", angle);
        const std::optional<bool> column = m_keys.Flag("column");
        if (inclination && column)
            m_keys.Error(m_keys.LineOf("column"), "column", "column and inclination", "one of both");
        const double degrees = column.value_or(false) ? 90.0 : inclination.value_or(0.0);
        beam.inclination = degrees * std::numbers::pi / 180.0;
        beam.selfWeight = m_keys.Flag("self-weight").value_or(true);
        beam.axiallyHeldAt = m_keys.Number("axially-held-at", PLACE);
        if (!beam.axiallyHeldAt) return;
        const auto isThere = [&](const Support& support) {
            return std::abs(support.at - *beam.axiallyHeldAt) <= 1e-9 * beam.length;
        };
        if (std::none_of(beam.supports.begin(), beam.supports.end(), isThere))
            m_keys.Error(m_keys.LineOf("axially-held-at"), "axially-held-at", Shortest(*beam.axiallyHeldAt) + " m",
                         "the place of a support");
    }

    TomlKeys& m_keys;
    BeamFile& m_file;
    PartLines& m_lines;
    std::vector<double> m_spans;
    bool m_isBySpans = false;
};

} // namespace

void ReadSupports(TomlKeys& keys, BeamFile& file, PartLines& lines) { SupportReader(keys, file, lines).Read(); }

} // namespace Keltrix::Host
