#include "loads/LoadText.h"

#include <cmath>
#include <numbers>

#include "text/Json.h"
#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using namespace Statics;

constexpr ReactionPart ALL_PARTS[] = {ReactionPart::Vertical, ReactionPart::Horizontal,    ReactionPart::Moment,
                                      ReactionPart::Lateral,  ReactionPart::LateralMoment, ReactionPart::Across,
                                      ReactionPart::Along};

bool IsMomentPart(ReactionPart part) { return part == ReactionPart::Moment || part == ReactionPart::LateralMoment; }

std::string Number(double value) { return Rounded(value + 0.0, 5); }

std::string UserText(const CString& text) { return AsText(PrintableLine(Utf8(text))); }

// A number with the sense that its sign has.
std::string Sensed(const std::string& size, bool isAbove, const char* above, const char* below)
{
    const char* const sense = isAbove ? above : below;
    return *sense ? size + ' ' + sense : size;
}

std::string SenseOf(const Load& load, const std::string& size, bool isAbove, bool isLevel)
{
    switch (load.direction) {
    case Direction::Minor:
        return Sensed(size, isAbove, "along y", "against y");
    case Direction::Axial:
        return Sensed(size, isAbove, "along x", "against x");
    case Direction::Major:
        if (!isLevel) return Sensed(size, isAbove, "across, against z", "across, along z");
        [[fallthrough]];
    default:
        return Sensed(size, isAbove, "", "up");
    }
}

// --- For people ---

/// Rows and columns in mark-up. A column without a unit has an empty one.
class Table {
public:
    Table(const std::string& heading, const std::vector<std::string>& head, const std::vector<std::string>& units)
    {
        m_text = heading + "\n<table>" + Row(head);
        bool hasUnits = false;
        for (const std::string& unit : units)
            hasUnits = hasUnits || !unit.empty();
        if (!hasUnits) return;
        std::string line = Row(units);
        line.pop_back();
        m_text += "<tablewrap><i>" + line + "</i></tablewrap>\n";
    }

    void Add(const std::vector<std::string>& cells)
    {
        m_text += Row(cells);
        ++m_rows;
    }
    /// Nothing without rows.
    std::string Text() const { return m_rows == 0 ? std::string() : m_text + "</table>\n"; }

private:
    static std::string Row(const std::vector<std::string>& cells)
    {
        std::string text;
        for (std::size_t i = 0; i < cells.size(); ++i)
            text += (i == 0 ? "" : "\t") + cells[i];
        return text + '\n';
    }

    std::string m_text;
    std::size_t m_rows = 0;
};

class LoadMarkupText {
public:
    LoadMarkupText(const LoadReport& report, const char* heading) : m_report(report), m_heading(heading) {}

    std::string Text() const
    {
        std::string text = "<h4>" + AsText(PrintableLine(m_report.title)) + "</h4>\n" + Member() + Cases() + Loads() +
                           Combinations(m_report.combinations.size()) + Results();
        if (!m_report.notes.empty()) text += Heading("Notes") + '\n';
        for (const std::string& note : m_report.notes)
            text += AsText(PrintableLine(note)) + '\n';
        return text;
    }

    std::string Tables(bool isBrief) const
    {
        constexpr std::size_t most = 20;
        return isBrief ? ReactionsByCase() + ReactionRanges() : Cases() + Loads() + Combinations(most) + Results();
    }

private:
    std::string Heading(const char* text) const
    {
        return std::string("<") + m_heading + '>' + text + "</" + m_heading + '>';
    }

    std::string Results() const { return ReactionsByCase() + ReactionRanges() + Envelopes() + Deflections(); }

    std::string Member() const
    {
        std::string text = AsText(PrintableLine(m_report.section));
        if (!m_report.grade.empty()) text += " in " + AsText(PrintableLine(m_report.grade));
        text += (text.empty() ? "" : ", ") + Metres(m_report.length);
        if (m_report.spans.size() > 1) {
            std::string spans;
            for (const Span& span : m_report.spans)
                spans += (spans.empty() ? "" : ", ") + Metres(span.Length()) + (span.IsOverhang() ? " overhang" : "");
            text += ": " + spans;
        }
        if (!m_report.IsLevel())
            text += ", " + Rounded(m_report.inclination * 180.0 / std::numbers::pi, 4) + "° above the horizontal";
        return text + '\n';
    }

    std::string Cases() const
    {
        bool right = false;
        bool lateral = false;
        bool category = false;
        for (std::size_t i = 0; i < m_report.cases.size(); ++i) {
            right = right || m_report.sums[i].right != 0.0;
            lateral = lateral || m_report.sums[i].lateral != 0.0;
            category = category || m_report.cases[i].category != Category::None;
        }
        std::vector<std::string> head{"Case", "Kind"};
        if (category) head.emplace_back("Category");
        head.emplace_back("Acts");
        std::vector<std::string> units(head.size());
        const auto column = [&](const char* name) {
            head.emplace_back(name);
            units.emplace_back("kN");
        };
        column("Down");
        if (right) column("To the right");
        if (lateral) column("Along y");
        Table table(Heading("Load cases, sums of their loads"), head, units);
        for (std::size_t i = 0; i < m_report.cases.size(); ++i) {
            const Case& c = m_report.cases[i];
            std::vector<std::string> cells{UserText(c.name), NameOf(c.kind)};
            if (category) cells.emplace_back(NameOf(c.category));
            cells.emplace_back(c.bySpan && m_report.spans.size() > 1 ? "span by span" : "as a whole");
            cells.push_back(Number(m_report.sums[i].down / 1e3));
            if (right) cells.push_back(Number(m_report.sums[i].right / 1e3));
            if (lateral) cells.push_back(Number(m_report.sums[i].lateral / 1e3));
            table.Add(cells);
        }
        return table.Text();
    }

    std::string Loads() const
    {
        Table table(Heading("Loads"), {"Case", "Load", "Where"}, {});
        for (const Load& load : m_report.loads)
            table.Add({UserText(m_report.cases[load.caseIndex].name), SizeOf(load, m_report.IsLevel()), PlaceOf(load)});
        return table.Text();
    }

    // Whether a combination has an extreme of an action or a reaction, or the largest deflection of a check.
    std::vector<bool> Governing() const
    {
        std::vector<bool> governs(m_report.combinations.size(), false);
        const auto add = [&](int combination) {
            if (combination >= 0) governs[static_cast<std::size_t>(combination)] = true;
        };
        const auto addRange = [&](const GovernedRange& range) {
            add(range.greatest.combination);
            add(range.least.combination);
        };
        for (const SupportReactions& support : m_report.supports)
            for (const GovernedRange& range : support.range)
                addRange(range);
        for (const ActionEnvelope& envelope : m_report.envelopes)
            for (const GovernedRange& range : envelope.spans)
                addRange(range);
        for (const DeflectionCheck& check : m_report.checks)
            add(check.combination);
        return governs;
    }

    // All of them, or where there are more than `most` those that govern something.
    std::string Combinations(std::size_t most) const
    {
        const std::size_t count = m_report.combinations.size();
        const std::vector<bool> shown = count > most ? Governing() : std::vector<bool>(count, true);
        Table table(Heading("Combinations"), {"No.", "Limit state", "Clause", "Combination"}, {});
        std::size_t left = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const Combination& one = m_report.combinations[i];
            if (shown[i])
                table.Add({std::to_string(i + 1), NameOf(one.state), UserText(one.clause), UserText(one.name)});
            else
                ++left;
        }
        if (left == 0) return table.Text();
        return table.Text() + std::to_string(left) + " more combinations govern nothing below.\n";
    }

    std::vector<ReactionPart> Parts() const
    {
        std::vector<ReactionPart> parts;
        for (const ReactionPart part : ALL_PARTS) {
            const bool isOwn = part == ReactionPart::Across || part == ReactionPart::Along;
            if (m_report.HasReaction(part) && !(isOwn && m_report.IsLevel())) parts.push_back(part);
        }
        return parts;
    }

    std::string ReactionsByCase() const
    {
        const std::vector<ReactionPart> parts = Parts();
        std::vector<std::string> head{"Support", "Case"};
        std::vector<std::string> units{"m", ""};
        for (const ReactionPart part : parts) {
            std::string name = NameOf(part);
            name[0] = static_cast<char>(name[0] - 'a' + 'A');
            head.push_back(name);
            units.emplace_back(IsMomentPart(part) ? "kNm" : "kN");
        }
        Table table(Heading("Reactions by case, unfactored, each case on all spans"), head, units);
        std::string idle;
        for (const SupportReactions& support : m_report.supports) {
            if (support.IsIdle()) {
                idle += (idle.empty() ? "" : ", ") + Metres(support.at);
                continue;
            }
            for (std::size_t i = 0; i < m_report.cases.size(); ++i) {
                std::vector<std::string> cells{Number(support.at), UserText(m_report.cases[i].name)};
                for (const ReactionPart part : parts)
                    cells.push_back(Number(support.OfCase(i, part) / 1e3));
                table.Add(cells);
            }
        }
        return table.Text() + (idle.empty() ? idle : "No reaction at what holds the member at " + idle + ".\n");
    }

    // Number and name of a combination, at the end of a row.
    void AddRow(std::vector<std::string> cells, int combination, Table& table) const
    {
        const bool has = combination >= 0;
        cells.push_back(has ? std::to_string(combination + 1) : "-");
        cells.push_back(has ? UserText(m_report.combinations[static_cast<std::size_t>(combination)].name) : "-");
        table.Add(cells);
    }

    std::string ReactionRanges() const
    {
        Table table(Heading("Reactions over the ultimate combinations"),
                    {"Support", "Reaction", "", "Value", "No.", "Combination"}, {});
        for (const SupportReactions& support : m_report.supports) {
            for (const ReactionPart part : Parts()) {
                const GovernedRange& range = support.RangeOf(part);
                if (!m_report.HasUltimate() || range.IsZero()) continue;
                AddRow({Metres(support.at), NameOf(part), "greatest", ValueText(part, range.greatest.value)},
                       range.greatest.combination, table);
                const bool lifts = part == ReactionPart::Vertical && range.least.value < 0.0;
                AddRow({Metres(support.at), NameOf(part), lifts ? "least, <orange>uplift</orange>" : "least",
                        ValueText(part, range.least.value)},
                       range.least.combination, table);
            }
        }
        return table.Text();
    }

    static const char* WordFor(Action action, bool isGreatest)
    {
        if (action == Action::Moment) return isGreatest ? "sagging" : "hogging";
        if (action == Action::Axial) return isGreatest ? "tension" : "compression";
        return isGreatest ? "greatest" : "least";
    }

    void AddRange(Action action, const std::string& span, const GovernedRange& range, Table& table) const
    {
        const auto add = [&](const Governed& one, bool isGreatest) {
            const bool hasSense = action == Action::Moment || action == Action::Axial;
            if (one.value == 0.0 || (hasSense && (one.value > 0.0) != isGreatest)) return;
            AddRow({NameOf(action), WordFor(action, isGreatest), span, ValueText(action, one.value), Metres(one.at)},
                   one.combination, table);
        };
        add(range.greatest, true);
        add(range.least, false);
    }

    std::string Envelopes() const
    {
        Table table(Heading("Envelopes over the ultimate combinations"),
                    {"Action", "", "Span", "Value", "At", "No.", "Combination"}, {});
        for (const ActionEnvelope& envelope : m_report.envelopes)
            for (std::size_t s = 0; s < envelope.spans.size(); ++s)
                AddRange(envelope.action, std::to_string(s + 1), envelope.spans[s], table);
        return table.Text();
    }

    std::string Deflections() const
    {
        Table table(
            Heading("Deflections"),
            {"Limit", "Clause", "Span", "Deflection", "At", "Allowed", "Utilisation", "Result", "No.", "Combination"},
            {"", "", "", "mm", "m", "mm", "", "", "", ""});
        for (const DeflectionCheck& check : m_report.checks) {
            const DeflectionLimit& limit = m_report.limits[check.limit];
            const std::string name = UserText(limit.name);
            const std::string span = std::to_string(check.span + 1);
            const std::string allowed = std::isfinite(check.allowed) ? Number(check.allowed * 1e3) : "-";
            if (!check.IsEvaluated()) {
                AddRow({name, UserText(limit.clause), span, "-", "-", allowed, "-",
                        "<red>not evaluated</red>: " + UserText(check.reason)},
                       -1, table);
                continue;
            }
            AddRow({name, UserText(limit.clause), span, Number(check.deflection * 1e3), Number(check.at), allowed,
                    Utf8(CDesFormat().Util(check.utilisation)), check.IsPassed() ? "pass" : "<red>fail</red>"},
                   check.combination, table);
        }
        return table.Text();
    }

    const LoadReport& m_report;
    const char* m_heading;
};

// --- For programs ---

Json TextOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

Json NumberOf(int combination) { return combination < 0 ? Json() : Json(combination + 1); }

Json FiniteOrNull(double value) { return std::isfinite(value) ? Json(value) : Json(); }

Json SpansOf(const Term& term)
{
    if (term.spans.empty()) return {};
    Json numbers = Json::array();
    for (std::size_t i = 0; i < term.spans.size(); ++i)
        if (term.spans[i]) numbers.push_back(i + 1);
    return numbers;
}

Json JsonOf(const Span& span) { return JsonObject("from", span.from, "to", span.to, "overhang", span.IsOverhang()); }

Json JsonOf(const Case& c, const LoadSum& sum)
{
    return JsonObject("name", Utf8(c.name), "kind", NameOf(c.kind), "category", TextOrNull(NameOf(c.category)),
                      "by_span", c.bySpan, "down", sum.down, "right", sum.right, "lateral", sum.lateral);
}

Json JsonOf(const Load& load)
{
    static constexpr const char* SHAPES[] = {"distributed", "point", "moment"};
    static constexpr const char* DIRECTIONS[] = {"gravity", "major", "minor", "axial"};
    static constexpr const char* REFERENCES[] = {"shear centre", "top flange", "bottom flange"};
    const bool isDistributed = load.shape == LoadShape::Distributed;
    return JsonObject("case", load.caseIndex + 1, "shape", SHAPES[static_cast<std::size_t>(load.shape)], "direction",
                      DIRECTIONS[static_cast<std::size_t>(load.direction)], "from", load.from, "to",
                      isDistributed ? load.to : load.from, "value", load.value, "value_to",
                      isDistributed ? load.valueTo : load.value, "height", load.height, "reference",
                      REFERENCES[static_cast<std::size_t>(load.reference)]);
}

Json JsonOf(const Combination& combination, std::size_t number)
{
    Json terms = Json::array();
    for (std::size_t i = 0; i < combination.terms.size(); ++i) {
        const Term& term = combination.terms[i];
        terms.push_back(JsonObject("case", term.caseIndex + 1, "factor", term.factor, "spans", SpansOf(term), "source",
                                   i < combination.sources.size() ? Json(Utf8(combination.sources[i])) : Json()));
    }
    return JsonObject("number", number, "name", Utf8(combination.name), "clause", Utf8(combination.clause),
                      "limit_state", NameOf(combination.state), "terms", std::move(terms));
}

Json JsonOf(const GovernedRange& range)
{
    const auto one = [](const Governed& governed) {
        const bool has = governed.combination >= 0;
        return JsonObject("value", governed.value, "at", has ? Json(governed.at) : Json(), "combination",
                          NumberOf(governed.combination));
    };
    return JsonObject("greatest", one(range.greatest), "least", one(range.least));
}

std::string JsonName(std::string name)
{
    for (char& c : name)
        if (c == ' ' || c == '-') c = '_';
    return name;
}

Json JsonOf(const SupportReactions& support, bool hasUltimate)
{
    Json cases = Json::array();
    for (std::size_t i = 0; i < support.ofCase.size(); ++i) {
        Json one = JsonObject("case", i + 1);
        for (const ReactionPart part : ALL_PARTS)
            one[JsonName(NameOf(part))] = support.OfCase(i, part);
        cases.push_back(std::move(one));
    }
    Json ultimate = Json::object();
    for (const ReactionPart part : ALL_PARTS)
        ultimate[JsonName(NameOf(part))] = JsonOf(support.RangeOf(part));
    return JsonObject("at", support.at, "cases", std::move(cases), "ultimate",
                      hasUltimate ? std::move(ultimate) : Json());
}

Json JsonOf(const ActionEnvelope& envelope)
{
    Json spans = Json::array();
    for (const GovernedRange& range : envelope.spans)
        spans.push_back(JsonOf(range));
    return JsonObject("action", NameOf(envelope.action), "whole", JsonOf(envelope.whole), "spans", std::move(spans));
}

Json JsonOf(const DeflectionCheck& check, const DeflectionLimit& limit)
{
    const bool has = check.IsEvaluated();
    return JsonObject("limit", Utf8(limit.name), "clause", Utf8(limit.clause), "loads",
                      limit.counted == Counted::Variable ? "variable" : "total", "limit_state", NameOf(limit.state),
                      "axis", limit.minor ? "minor" : "major", "span", check.span + 1, "status",
                      !has               ? "not evaluated"
                      : check.IsPassed() ? "passed"
                                         : "failed",
                      "reason", TextOrNull(Utf8(check.reason)), "deflection", FiniteOrNull(check.deflection), "at",
                      FiniteOrNull(check.at), "allowed", FiniteOrNull(check.allowed), "utilisation",
                      FiniteOrNull(check.utilisation), "combination", NumberOf(check.combination));
}

template <class Items, class One>
Json ArrayOf(const Items& items, One one)
{
    Json array = Json::array();
    for (std::size_t i = 0; i < items.size(); ++i)
        array.push_back(one(items[i], i));
    return array;
}

} // namespace

std::string KiloNewtons(double newtons) { return Number(newtons / 1e3) + " kN"; }

std::string KiloNewtonMetres(double newtonMetres) { return Number(newtonMetres / 1e3) + " kNm"; }

std::string MilliMetres(double metres) { return Number(metres * 1e3) + " mm"; }

std::string Metres(double metres) { return Number(metres) + " m"; }

std::string SizeOf(const Load& load, bool isLevel)
{
    const bool isAbove = load.value > 0.0 || (load.value == 0.0 && load.valueTo >= 0.0);
    const std::string size = Number(std::fabs(load.value) / 1e3);
    if (load.shape == LoadShape::Moment)
        return load.direction == Direction::Minor ? Number(load.value / 1e3) + " kNm about z"
                                                  : size + (isAbove ? " kNm clockwise" : " kNm anticlockwise");
    if (load.shape == LoadShape::Point) return SenseOf(load, size + " kN", isAbove, isLevel);
    if (load.value == load.valueTo) return SenseOf(load, size + " kN/m", isAbove, isLevel);
    if (load.value * load.valueTo < 0.0)
        return SenseOf(load, Number(load.value / 1e3) + " to " + Number(load.valueTo / 1e3) + " kN/m", true, isLevel);
    return SenseOf(load, size + " to " + Number(std::fabs(load.valueTo) / 1e3) + " kN/m", isAbove, isLevel);
}

std::string HeightOf(const Load& load)
{
    if (load.reference == Steel::SHR_CENTRE && load.height == 0.0) return {};
    const char* const reference = load.reference == Steel::TOP_FLANGE   ? "the top flange"
                                  : load.reference == Steel::BOT_FLANGE ? "the bottom flange"
                                                                        : "the shear centre";
    if (load.height == 0.0) return std::string("on ") + reference;
    return Metres(std::fabs(load.height)) + (load.height > 0.0 ? " above " : " below ") + reference;
}

std::string PlaceOf(const Load& load)
{
    const std::string text =
        load.shape == LoadShape::Distributed ? Metres(load.from) + " to " + Metres(load.to) : "at " + Metres(load.from);
    const std::string height = HeightOf(load);
    return height.empty() ? text : text + ", " + height;
}

const char* NameOf(ReactionPart part)
{
    switch (part) {
    case ReactionPart::Vertical:
        return "vertical";
    case ReactionPart::Horizontal:
        return "horizontal";
    case ReactionPart::Moment:
        return "moment";
    case ReactionPart::Lateral:
        return "lateral";
    case ReactionPart::LateralMoment:
        return "lateral moment";
    case ReactionPart::Across:
        return "across";
    case ReactionPart::Along:
        return "along";
    }
    return "";
}

const char* NameOf(Action action)
{
    switch (action) {
    case Action::Moment:
        return "moment";
    case Action::Shear:
        return "shear";
    case Action::Axial:
        return "axial force";
    case Action::MinorMoment:
        return "minor-axis moment";
    case Action::MinorShear:
        return "minor-axis shear";
    }
    return "";
}

std::string ValueText(ReactionPart part, double value)
{
    return IsMomentPart(part) ? KiloNewtonMetres(value) : KiloNewtons(value);
}

std::string ValueText(Action action, double value)
{
    return action == Action::Moment || action == Action::MinorMoment ? KiloNewtonMetres(value) : KiloNewtons(value);
}

std::string LoadMarkup(const LoadReport& report) { return LoadMarkupText(report, "h5").Text(); }

std::string LoadTables(const LoadReport& report, bool isBrief) { return LoadMarkupText(report, "h4").Tables(isBrief); }

Json JsonOf(const LoadReport& report)
{
    const auto plain = [](const auto& one, std::size_t) { return JsonOf(one); };
    const bool hasUltimate = report.HasUltimate();
    return JsonObject(
        "title", report.title, "section", report.section, "grade", report.grade, "length", report.length, "inclination",
        report.inclination, "spans", ArrayOf(report.spans, plain), "cases",
        ArrayOf(report.cases, [&](const Case& c, std::size_t i) { return JsonOf(c, report.sums[i]); }), "loads",
        ArrayOf(report.loads, plain), "combinations",
        ArrayOf(report.combinations, [](const Combination& one, std::size_t i) { return JsonOf(one, i + 1); }),
        "reactions",
        ArrayOf(report.supports,
                [&](const SupportReactions& support, std::size_t) { return JsonOf(support, hasUltimate); }),
        "envelopes", hasUltimate ? ArrayOf(report.envelopes, plain) : Json::array(), "deflections",
        ArrayOf(report.checks,
                [&](const DeflectionCheck& check, std::size_t) { return JsonOf(check, report.limits[check.limit]); }),
        "notes", Json(report.notes));
}

} // namespace Keltrix::Host
