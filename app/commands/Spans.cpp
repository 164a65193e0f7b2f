#include <cmath>

#include "check/SpanReport.h"
#include "commands/Commands.h"
#include "stream/MemberStream.h"
#include "text/Json.h"
#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

const char* RuleText(Split split)
{
    switch (split) {
    case Split::Minor:
        return "points restrained against minor-axis shear, and the member's ends";
    case Split::Major:
        return "points restrained against major-axis shear, and the member's ends";
    default:
        return "points restrained by minor-axis shear, either flange or torsion, and the member's ends";
    }
}

std::string Joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : ", ") + word;
    return text;
}

class SpanMarkup {
public:
    std::string Of(const SpanReport& span, std::size_t number)
    {
        m_text = "<h5>Span " + std::to_string(number) + ": " + Length(span.left.position) + " to " +
                 Length(span.right.position) + ", length " + Length(span.length) + "</h5>\n";
        Row("Left end", EndText(span.left));
        Row("Right end", EndText(span.right));
        Row("Along the span", ContinuousText(span));
        Row("Flange in compression", CompressionFlangeName(span.compressionFlange));
        Row("Load, major axis", span.major.pattern);
        Row("Load, minor axis", span.minor.pattern);
        LengthRows(span);
        Row("Moment, major axis", MomentText(span.momentMajor, true));
        Row("Moment, minor axis", MomentText(span.momentMinor, false));
        if (span.deflectionMajor) Row("Deflection, major axis", DeflectionText(*span.deflectionMajor));
        if (span.deflectionMinor) Row("Deflection, minor axis", DeflectionText(*span.deflectionMinor));
        ForceTable(span);
        return m_text;
    }

private:
    void Row(const char* label, const std::string& value) { m_text += '\t' + std::string(label) + '\t' + value + '\n'; }
    std::string Length(double metres) const { return Utf8(m_format.Length(metres)); }

    std::string EndText(const SpanEnd& end) const
    {
        return "point " + std::to_string(end.point) + ", " + end.restraint + " (" + HoldText(end.heldBy) + ")";
    }

    // Where the whole section is held, its flanges go without saying.
    static std::string HoldText(const std::vector<std::string>& rules)
    {
        if (rules.front() != "minor shear") return Joined(rules);
        std::vector<std::string> held;
        for (const std::string& rule : rules) {
            if (rule.find("flange") == std::string::npos) held.push_back(rule);
        }
        return Joined(held);
    }

    std::string ContinuousText(const SpanReport& span) const
    {
        std::string text = span.continuousRestraint;
        if (span.momentReverses) text += ", the moment reverses";
        if (span.loadHeight != 0.0) text += ", load height " + Length(span.loadHeight);
        if (span.destabilising) text += ", <orange>destabilising load</orange>";
        return text;
    }

    void LengthRows(const SpanReport& span)
    {
        constexpr const char* label = "LT effective length";
        for (const EffectiveLengthLT& lt : span.lt)
            Row(label, LengthText(lt));
        if (span.lengthsByCode)
            Row(label, "by the rules of the design code: see the check");
        else if (span.isAngle)
            Row(label, "of an angle: see the check, about its principal axes");
        else if (span.lt.empty())
            Row(label, "none to check: no moment compresses a flange that is free to buckle");
    }

    std::string LengthText(const EffectiveLengthLT& lt) const
    {
        const std::string place = Length(lt.start) + " to " + Length(lt.end);
        if (lt.table.empty()) return "<b>" + Length(lt.length) + "</b> (as given for the whole member, " + place + ")";
        const std::string of = CompressionFlangeName(lt.flange) + ", " + place;
        const std::string table = lt.standard + ' ' + lt.table + (lt.cantilever ? ", cantilever" : "");
        if (std::isinf(lt.length)) return "<red>none</red>: " + of + ": no row of " + table + " applies";
        return "<b>" + Length(lt.length) + "</b>: " + of + " (" + table + ": " + lt.row + ")";
    }

    std::string MomentText(const Design::Extremes& moments, bool isMajor) const
    {
        const auto extreme = [&](double value, double x) {
            const char* const sense = !isMajor ? "" : value < 0.0 ? " sagging" : " hogging";
            return Utf8(m_format.Moment(value)) + sense + " at " + Length(x);
        };
        std::string text;
        if (moments.least < 0.0) text = extreme(moments.least, moments.leastAt);
        if (moments.greatest > 0.0) text += (text.empty() ? "" : ", ") + extreme(moments.greatest, moments.greatestAt);
        return text.empty() ? "none" : text;
    }

    std::string DeflectionText(const Deflection& d) const
    {
        const auto mm = [](double metres) { return Figures(metres * 1e3, 4) + " mm"; };
        if (d.integrated == 0.0) return "none";
        std::string text =
            mm(d.integrated) + (d.isUpwards ? " upwards" : "") + " from the chord, at " + Length(d.integratedAt);
        if (!d.isKnown) text += ", <orange>the largest of three readings: the forces do not balance</orange>";
        if (!std::isnan(d.atPoints))
            text += "; CSpan's own figure over its points " + mm(d.atPoints) +
                    (d.hasLoadBetweenPoints ? ", without load between them" : "");
        return text + " <i>(EI = " + Figures(d.EI / 1e3, 4) + " kN·m²)</i>";
    }

    void ForceTable(const SpanReport& span)
    {
        m_text += "\t<table>At\tFx\tFy\tFz\tMxx\tMyy\tMzz\n"
                  "\t<tablewrap><i>axial\tshear (min)\tshear (maj)\ttorsion\tmom (maj)\tmom (min)</i></tablewrap>\n";
        for (const StationForces& station : span.stations)
            ForceRow(Length(station.position), station.force, station.moment);
        ForceRow("max", span.maxForce, span.maxMoment);
        ForceRow("min", span.minForce, span.minMoment);
        m_text += "\t</table>\n";
    }

    void ForceRow(const std::string& label, const Vec3<double>& force, const Vec3<double>& moment)
    {
        m_text += '\t' + label;
        for (const double f : {force.x, force.y, force.z})
            m_text += '\t' + Utf8(m_format.Force(f));
        for (const double m : {moment.x, moment.y, moment.z})
            m_text += '\t' + Utf8(m_format.Moment(m));
        m_text += '\n';
    }

    CDesFormat m_format;
    std::string m_text;
};

Json JsonOf(const SpanEnd& end)
{
    return {{"point", end.point}, {"position", end.position}, {"restraint", end.restraint}, {"held_by", end.heldBy}};
}

Json ForcesOf(const Vec3<double>& force, const Vec3<double>& moment)
{
    return {{"Fx", force.x}, {"Fy", force.y}, {"Fz", force.z}, {"Mxx", moment.x}, {"Myy", moment.y}, {"Mzz", moment.z}};
}

Json MomentsJson(const Design::Extremes& moments)
{
    return {{"greatest", moments.greatest},
            {"greatest_position", moments.greatestAt},
            {"least", moments.least},
            {"least_position", moments.leastAt}};
}

Json JsonOf(const LoadPatternReport& load)
{
    return {{"pattern", load.pattern},
            {"loaded", load.loaded},
            {"point_load", load.pointLoad},
            {"left_end_point_load_only", load.leftEndPointLoadOnly},
            {"right_end_point_load_only", load.rightEndPointLoadOnly},
            {"left_end_moment_only", load.leftEndMomentOnly},
            {"right_end_moment_only", load.rightEndMomentOnly},
            {"centre_point_load", load.centrePointLoad},
            {"uniform_load", load.uniformLoad}};
}

Json JsonOf(const std::optional<Deflection>& deflection)
{
    if (!deflection) return nullptr;
    return {{"EI", deflection->EI},
            {"max_disp", deflection->atPoints},
            {"exact", deflection->integrated},
            {"exact_position", deflection->integratedAt},
            {"upwards", deflection->isUpwards},
            {"known", deflection->isKnown},
            {"load_between_points", deflection->hasLoadBetweenPoints}};
}

Json JsonOf(const EffectiveLengthLT& lt)
{
    return {{"flange", lt.table.empty() ? Json() : Json(CompressionFlangeName(lt.flange))},
            {"start", lt.start},
            {"end", lt.end},
            {"length", lt.length},
            {"table", lt.table},
            {"row", lt.row},
            {"cantilever", lt.cantilever},
            {"nominal_rejected_left", lt.nominalRejectedLeft},
            {"nominal_rejected_right", lt.nominalRejectedRight}};
}

Json JsonOf(const SpanReport& span)
{
    Json stations = Json::array();
    for (const StationForces& station : span.stations) {
        Json entry = {{"t", station.t}, {"position", station.position}};
        entry.update(ForcesOf(station.force, station.moment));
        stations.push_back(std::move(entry));
    }
    Json lengths = Json::array();
    for (const EffectiveLengthLT& lt : span.lt)
        lengths.push_back(JsonOf(lt));
    return {{"start", span.left.position},
            {"end", span.right.position},
            {"length", span.length},
            {"left_end", JsonOf(span.left)},
            {"right_end", JsonOf(span.right)},
            {"continuous_restraint", span.continuousRestraint},
            {"moment_reverses", span.momentReverses},
            {"load_height", span.loadHeight},
            {"destabilising", span.destabilising},
            {"compression_flange", CompressionFlangeName(span.compressionFlange)},
            {"load_major", JsonOf(span.major)},
            {"load_minor", JsonOf(span.minor)},
            {"lt_effective_lengths", std::move(lengths)},
            {"deflection_major", JsonOf(span.deflectionMajor)},
            {"deflection_minor", JsonOf(span.deflectionMinor)},
            {"moment_major", MomentsJson(span.momentMajor)},
            {"moment_minor", MomentsJson(span.momentMinor)},
            {"max", ForcesOf(span.maxForce, span.maxMoment)},
            {"min", ForcesOf(span.minForce, span.minMoment)},
            {"stations", std::move(stations)}};
}

// As the design code has it, where there is one.
std::vector<SpanReport> ReportsOf(CodelessMember& member, Split split, const SpansOptions& options)
{
    const Design::DesignCode* const code = options.code.code;
    std::vector<SpanReport> spans =
        MakeSpanReports(member, split, options.EI, code ? code->ElasticModulus(member.GetGrade()) : STEEL_E);
    if (!code || code->Description().lateralLengthsByTables) return spans;
    for (SpanReport& span : spans) {
        span.lt.clear();
        span.lengthsByCode = true;
    }
    return spans;
}

} // namespace

ExitCode ShowSpans(const SpansOptions& options, const Console& console)
{
    const Split split = options.split == "major"   ? Split::Major
                        : options.split == "minor" ? Split::Minor
                                                   : Split::LateralTorsional;
    if (options.EI && !(*options.EI > 0.0 && std::isfinite(*options.EI)))
        throw BadUsage("--EI: got " + Shortest(*options.EI) + ", expected a stiffness above 0 in N.m^2");

    Json members = Json::array();
    const auto showOne = [&](const MemberFile& file, std::size_t i) {
        CodelessMember member;
        member.SetGrade(file.ReadInto(i, member));
        const std::vector<SpanReport> spans = ReportsOf(member, split, options);
        const std::string title = Utf8(member.GetTitle());
        if (options.format == Format::JSON) {
            Json list = Json::array();
            for (const SpanReport& span : spans)
                list.push_back(JsonOf(span));
            members.push_back({{"schema", JSON_SCHEMA},
                               {"file", file.Name()},
                               {"line", file.Member(i).firstLine},
                               {"title", title},
                               {"split", options.split},
                               {"rule", RuleText(split)},
                               {"warnings", WarningsJson(file.WarningsOf(i))},
                               {"spans", std::move(list)}});
            return EXIT_FINE;
        }
        std::string text = "<h4>" + AsText(title) + "</h4>\n" + WarningMarkup(file.WarningsOf(i)) + "Spans between " +
                           RuleText(split) + "\n";
        for (std::size_t k = 0; k < spans.size(); ++k)
            text += SpanMarkup().Of(spans[k], k + 1);
        console.out(RenderMarkup(text, options.rendering));
        return EXIT_FINE;
    };
    MemberStream stream(options.files, options.reading, console, BeamReading::Members, options.code);
    while (auto member = stream.Next())
        stream.Use(*member, [&] { return showOne(*member->file, member->place); });
    if (options.format == Format::JSON) console.out(JsonText(members));
    return stream.Worst();
}

} // namespace Keltrix::App
