#include "beamfile/BeamMembers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <stdexcept>
#include <string_view>

#include "beamfile/BeamCamber.h"
#include "beamfile/BeamReader.h"
#include "memberfile/MemberText.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Statics::CombinationStandard;
using Statics::LimitState;

// Units (spans of cases) beyond which the search for patterns takes longer than anybody waits.
constexpr std::size_t MOST_UNITS = 60;

Severity SeverityOf(const Statics::Note& note) { return note.isUnsafe ? Severity::Warning : Severity::Note; }

class MemberMaker {
public:
    MemberMaker(const BeamFile& file, const Design::DesignCode* code, const Design::CodeSettings& settings) :
        m_file(file), m_code(code), m_combinations(code ? CombinationsOf(code->Description(), settings) : CString())
    {
        m_made.defects = file.defects;
    }

    BeamMembers Make()
    {
        if (m_file.HasErrors()) return std::move(m_made);
        for (const Statics::Load& load : m_file.beam.loads) {
            const std::string fault = FlangeHeightFault(m_file, load);
            if (fault.empty()) continue;
            Say(Severity::Error, m_file.sectionLine, "load", fault);
            return std::move(m_made);
        }
        m_made.analysis = std::make_unique<Statics::Analysis>(m_file.beam);
        if (!Analysis().IsAnswered()) {
            Say(Severity::Error, m_file.supportsLine, "supports", Utf8(Analysis().Reason()));
        } else if (Analysis().Units().size() > MOST_UNITS) {
            Say(Severity::Error, m_file.combinationsLine, "pattern",
                std::to_string(Analysis().Units().size()) +
                    " spans with loads of their own, all cases together; at most " + std::to_string(MOST_UNITS) +
                    " can be combined: give pattern = false, or fewer cases");
        } else {
            Combine();
        }
        if (m_made.HasErrors()) m_made.members.clear();
        std::stable_sort(m_made.defects.begin(), m_made.defects.end(),
                         [](const Defect& a, const Defect& b) { return a.line < b.line; });
        return std::move(m_made);
    }

private:
    const Statics::Analysis& Analysis() const { return *m_made.analysis; }

    void Say(Severity severity, LineNumber line, const char* key, std::string text)
    {
        Defect defect;
        defect.severity = severity;
        defect.line = line;
        defect.code = "beam";
        defect.keyword = key;
        defect.advice = std::move(text);
        m_made.defects.push_back(std::move(defect));
    }

    void Combine()
    {
        for (const CString& note : Analysis().Notes())
            Say(Severity::Note, 1, "statics", Utf8(note));
        std::vector<Statics::CombinationRule> rules;
        if (const CombinationStandard* const standard = Standard()) rules = MakeRules(Analysis(), standard->options);
        rules.insert(rules.end(), m_file.own.begin(), m_file.own.end());
        try {
            m_made.combinations = Expand(Analysis(), rules);
            if (m_made.combinations.list.size() > MOST_COMBINATIONS)
                return Say(Severity::Error, m_file.combinationsLine, "combinations",
                           std::to_string(m_made.combinations.list.size()) + " of them, at most " +
                               std::to_string(MOST_COMBINATIONS) + ": give pattern = false, or fewer cases");
            NoteCombinations();
            NoteAlternatives();
            NoteLoads();
            MakeMembers();
            CheckDeflections();
        } catch (const std::overflow_error& failure) {
            Say(Severity::Error, m_file.combinationsLine, "combinations", failure.what());
        }
    }

    // Those that the design code goes with; null where it names none.
    const CombinationStandard* StandardOfCode() const
    {
        return m_combinations.IsEmpty() ? nullptr : StandardNamed(m_combinations.View());
    }

    // Factors of one standard are balanced with the resistances of that standard.
    void NoteForeignStandard(const CombinationStandard& standard)
    {
        const CombinationStandard* const own = StandardOfCode();
        if (!own || own->options.basis == standard.options.basis) return;
        if (std::wstring_view(own->factors) == standard.factors)
            return Say(Severity::Note, m_file.combinationsLine, "combinations",
                       "the annex of the resistances goes with " + Utf8(own->title));
        Say(Severity::Warning, m_file.combinationsLine, "combinations",
            "factors of " + Utf8(standard.factors) + " with the resistances of " + Utf8(m_code->Description().title) +
                ": loads and resistances are of different standards");
    }

    // Nothing where the file has combinations of its own alone, and where nobody says which.
    const CombinationStandard* Standard()
    {
        if (m_file.standard) NoteForeignStandard(*m_file.standard);
        if (m_file.standard || !m_file.own.empty()) return m_file.standard;
        const CombinationStandard* const standard = StandardOfCode();
        if (!standard) {
            Say(Severity::Error, m_file.combinationsLine, "combinations",
                "got nothing, expected " + StandardWords() + ", or [[combination]]; the design code names none");
            return nullptr;
        }
        Say(Severity::Note, m_file.combinationsLine, "combinations", "not given: those of " + Utf8(standard->title));
        return standard;
    }

    void NoteCombinations()
    {
        for (const Statics::Note& note : m_made.combinations.notes)
            Say(SeverityOf(note), m_file.combinationsLine, "combinations", Utf8(note.text));
    }

    // Standards combine one wind with another one as little as one snow with another: parts of one action belong to one case.
    void NoteAlternatives()
    {
        if (!m_file.own.empty() && !m_file.standard) return;
        for (const bool wind : {true, false}) {
            std::string names;
            std::size_t count = 0;
            for (const Statics::Case& one : m_file.beam.cases) {
                const bool isWind = one.kind == Statics::ActionKind::Wind;
                const bool isSnow =
                    one.kind == Statics::ActionKind::Snow || one.kind == Statics::ActionKind::SnowAbove1000m;
                if (wind ? !isWind : !isSnow) continue;
                names += (count == 0 ? "" : ", ") + PrintableLine(Utf8(one.name));
                ++count;
            }
            if (count > 1)
                Say(Severity::Note, m_file.combinationsLine, "combinations",
                    std::string(wind ? "wind" : "snow") + " cases are alternatives, which never act together: " +
                        names + "; what acts together belongs to one case");
        }
    }

    // Loads that do nothing where they act, or act in another direction than their kind has.
    void NoteLoads()
    {
        const Statics::Beam& beam = m_file.beam;
        const auto isWindDown = [&](const Statics::Load& load) {
            return beam.cases[load.caseIndex].kind == Statics::ActionKind::Wind &&
                   load.direction == Statics::Direction::Gravity && load.shape != Statics::LoadShape::Moment;
        };
        if (std::abs(beam.inclination) > 1e-3 && std::any_of(beam.loads.begin(), beam.loads.end(), isWindDown))
            Say(Severity::Warning, m_file.supportsLine, "load",
                "wind acts straight down on a member that is not level; major = true is across it");
        const double held = beam.axiallyHeldAt.value_or(beam.supports.empty() ? 0.0 : beam.supports.front().at);
        const auto isLost = [&](const Statics::Load& load) {
            return load.direction == Statics::Direction::Axial && load.shape == Statics::LoadShape::Point &&
                   std::abs(load.from - held) <= 1e-9 * beam.length;
        };
        if (std::any_of(beam.loads.begin(), beam.loads.end(), isLost))
            Say(Severity::Warning, m_file.supportsLine, "load",
                "an axial load acts at " + Rounded(held, 6) +
                    " m, where the member is held along its axis: it goes into the support, and no force of it is in "
                    "the member; "
                    "axially-held-at names another place");
    }

    void MakeMembers()
    {
        std::vector<Statics::Combination> ultimate;
        std::vector<std::size_t> places;
        for (std::size_t i = 0; i < m_made.combinations.list.size(); ++i) {
            if (m_made.combinations.list[i].state != LimitState::Ultimate) continue;
            ultimate.push_back(m_made.combinations.list[i]);
            places.push_back(i);
        }
        if (ultimate.empty())
            return Say(Severity::Error, m_file.combinationsLine, "combinations",
                       "none of the ultimate limit state, so that there is nothing to check");
        const std::vector<Statics::GeneratedMember> made = Statics::MakeMembers(Analysis(), ultimate);
        for (std::size_t i = 0; i < made.size(); ++i) {
            const std::string name = PrintableLine(Utf8(ultimate[i].name));
            m_made.members.push_back({name, MemberTextOf(m_file, made[i], name), places[i]});
            for (const Statics::Note& note : made[i].notes)
                NoteMember(note, name);
        }
    }

    // Once for each text, with the first combination that it is about. What the checks do not see of the beam is a warning.
    void NoteMember(const Statics::Note& note, const std::string& combination)
    {
        const std::string text = Utf8(note.text);
        const auto isKnown = [&](const Defect& defect) {
            return defect.keyword == "members" && defect.advice.compare(0, text.size(), text) == 0;
        };
        if (std::any_of(m_made.defects.begin(), m_made.defects.end(), isKnown)) return;
        Say(SeverityOf(note), m_file.supportsLine, "members",
            note.isOfBeam ? text : text + " (first in " + combination + ')');
    }

    // --- Deflections ---

    // The standard of the limits; null where neither the file nor the design code names one.
    const CombinationStandard* StandardOfLimits() const { return m_file.standard ? m_file.standard : StandardOfCode(); }

    // Its limits; none without one.
    std::vector<Statics::DeflectionLimit> LimitsOfStandard() const
    {
        const CombinationStandard* const standard = StandardOfLimits();
        if (!standard) return {};
        return Statics::DeflectionLimitsOf(standard->options.basis, m_file.brittle.value_or(true));
    }

    bool IsColumn() const { return std::abs(m_file.beam.inclination) > std::numbers::pi / 3.0; }

    void CheckDeflections()
    {
        const DeflectionWishes& wishes = m_file.deflection;
        JudgeCamber();
        if (wishes.isOff) return Say(Severity::Note, wishes.line, "deflection", "not checked, as the file wants");
        if (wishes.isAsked)
            OwnLimits();
        else
            StandardLimits();
        NoteIdleCamber();
        AddMinorLimits();
        m_made.deflections = Statics::CheckDeflections(Analysis(), m_made.combinations.list, m_made.limits,
                                                       CamberOf(m_file, Analysis().Spans()));
        AddUnevaluated();
        NoteDeflections();
    }

    void JudgeCamber()
    {
        const std::size_t given = m_file.camber.size();
        const std::size_t spans = SpansWithCamber(Analysis().Spans());
        const std::string text =
            std::to_string(given) + " of them, and the beam has " + std::to_string(spans) + " spans between supports";
        if (given > spans) Say(Severity::Error, 1, "camber", text);
        if (given > 0 && given < spans) Say(Severity::Note, 1, "camber", text + "; the others have none");
    }

    // It is taken off the deflection under all loads alone.
    void NoteIdleCamber()
    {
        const bool counts = std::any_of(m_made.limits.begin(), m_made.limits.end(),
                                        [](const auto& limit) { return limit.counted == Statics::Counted::Total; });
        if (!m_file.camber.empty() && !counts)
            Say(Severity::Warning, 1, "camber",
                "counts nowhere, because there is no limit under all loads; give deflection = { total = 250 }");
    }

    bool HasState(LimitState state) const
    {
        const auto& list = m_made.combinations.list;
        return std::any_of(list.begin(), list.end(), [&](const auto& one) { return one.state == state; });
    }

    // Those with which limits of the file's own are checked: of a standard its rarest, of the file's own combinations all.
    std::vector<LimitState> ServiceStates() const
    {
        std::vector<LimitState> states;
        for (const LimitState state : {LimitState::Serviceability, LimitState::Characteristic, LimitState::Frequent,
                                       LimitState::QuasiPermanent}) {
            const bool isOwn = std::any_of(m_file.own.begin(), m_file.own.end(),
                                           [&](const Statics::CombinationRule& rule) { return rule.state == state; });
            if (isOwn || (states.empty() && HasState(state))) states.push_back(state);
        }
        if (states.empty()) states.push_back(LimitState::Serviceability);
        return states;
    }

    void OwnLimits()
    {
        const DeflectionWishes& wishes = m_file.deflection;
        const auto add = [&](const wchar_t* name, Statics::Counted counted, double span, double overhang) {
            if (span == 0.0 && overhang == 0.0) return;
            Statics::DeflectionLimit limit;
            limit.name = name;
            limit.clause = L"the beam file";
            limit.counted = counted;
            limit.spanRatio = span;
            limit.overhangRatio = overhang;
            for (const LimitState state : ServiceStates()) {
                limit.state = state;
                m_made.limits.push_back(limit);
            }
        };
        if (wishes.imposed == 0.0 && wishes.cantilever == 0.0) KeepVariableLimits();
        add(L"variable loads", Statics::Counted::Variable, wishes.imposed, wishes.cantilever);
        add(L"all loads", Statics::Counted::Total, wishes.total, wishes.totalCantilever);
    }

    // A limit under all loads says nothing of variable loads alone: those of the standard stay.
    void KeepVariableLimits()
    {
        if (IsColumn()) return;
        for (const Statics::DeflectionLimit& limit : LimitsOfStandard())
            if (limit.counted == Statics::Counted::Variable) m_made.limits.push_back(limit);
        if (!m_made.limits.empty())
            Say(Severity::Note, m_file.deflection.line, "deflection",
                "no limit of variable loads: that of the standard, span/" +
                    Rounded(m_made.limits.front().spanRatio, 6));
    }

    // Loads across the web have the same limits across it.
    void AddMinorLimits()
    {
        const auto& loads = m_file.beam.loads;
        const bool hasMinor = std::any_of(loads.begin(), loads.end(), [](const Statics::Load& load) {
            return load.direction == Statics::Direction::Minor;
        });
        if (!hasMinor) return;
        std::vector<Statics::DeflectionLimit> across = m_made.limits;
        for (Statics::DeflectionLimit& limit : across) {
            limit.minor = true;
            limit.name += L", across the web";
        }
        m_made.limits.insert(m_made.limits.end(), across.begin(), across.end());
    }

    // What a limit of the file does not reach keeps the beam from passing: overhangs of a limit of spans alone, and spans beside supports that
    // sink, for whose sinking there is no limit.
    void AddUnevaluated()
    {
        const std::size_t evaluated = m_made.deflections.size();
        for (std::size_t i = 0; i < m_made.limits.size(); ++i)
            for (std::size_t k = 0; k < Analysis().Spans().size(); ++k) {
                const Statics::Span& span = Analysis().Spans()[k];
                const auto isChecked = [&](const Statics::DeflectionCheck& check) {
                    return check.limit == i && check.span == k;
                };
                const auto begin = m_made.deflections.begin();
                const auto end = begin + static_cast<std::ptrdiff_t>(evaluated);
                const auto found = std::find_if(begin, end, isChecked);
                if (found != end) {
                    if (!IsSprung(span, m_made.limits[i].minor)) continue;
                    Statics::DeflectionCheck sprung = *found;
                    if (found->IsEvaluated() && !found->IsPassed()) continue; // fails as it is
                    sprung.combination = -1;
                    sprung.utilisation = std::numeric_limits<double>::infinity();
                    sprung.reason = L"a support of the span is a spring, and its sinking is not in the deflection from "
                                    L"the supports";
                    *found = sprung;
                    continue;
                }
                Statics::DeflectionCheck check;
                check.limit = i;
                check.span = k;
                check.reason = span.IsOverhang()
                                   ? L"there is no such limit for an overhang; give cantilever and total-cantilever"
                                   : L"there is no such limit for a span";
                m_made.deflections.push_back(check);
            }
    }

    // Whether a support of the span gives way in the plane of the limit.
    bool IsSprung(const Statics::Span& span, bool isMinor) const
    {
        const auto& supports = m_file.beam.supports;
        return std::any_of(supports.begin(), supports.end(), [&](const Statics::Support& support) {
            const double near = 1e-9 * m_file.beam.length;
            const double stiffness = isMinor ? support.lateral : support.vertical;
            return stiffness > 0.0 && support.at >= span.from - near && support.at <= span.to + near;
        });
    }

    void StandardLimits()
    {
        const LineNumber line = m_file.deflection.line;
        if (IsColumn())
            return Say(Severity::Note, line, "deflection", "no limits of beams for a column; give your own");
        m_made.limits = LimitsOfStandard();
        const CombinationStandard* const standard = StandardOfLimits();
        if (m_made.limits.empty())
            return Say(
                Severity::Warning, line, "deflection",
                "not checked: " +
                    (standard ? Utf8(standard->limits) + " gives no limits" : "no standard is named that has limits") +
                    "; give deflection = { imposed = 360, total = 250 }");
        if (!m_file.brittle)
            Say(Severity::Note, line, "deflection",
                "not given: span/360 under variable loads, as with a brittle finish; brittle = false is span/200");
    }

    void NoteDeflections()
    {
        const auto& deflections = m_made.deflections;
        const bool isMissing =
            std::any_of(deflections.begin(), deflections.end(), [](const auto& check) { return !check.IsEvaluated(); });
        if (isMissing)
            Say(Severity::Warning, m_file.deflection.line, "deflection",
                "not evaluated: " + Utf8(std::find_if(deflections.begin(), deflections.end(), [](const auto& check) {
                                             return !check.IsEvaluated();
                                         })->reason));
    }

    const BeamFile& m_file;
    const Design::DesignCode* m_code;
    CString m_combinations; ///< that go with code and annex; empty where they name none
    BeamMembers m_made;
};

} // namespace

bool BeamMembers::HasErrors() const
{
    return std::any_of(defects.begin(), defects.end(),
                       [](const Defect& defect) { return defect.severity == Severity::Error; });
}

BeamMembers MembersOf(const BeamFile& file, const Design::DesignCode* code, const Design::CodeSettings& settings)
{
    return MemberMaker(file, code, settings).Make();
}

std::string MemberTextOf(const BeamFile& file, const Statics::GeneratedMember& member, const std::string& combination)
{
    MemberContent content;
    content.title = file.title + ": " + combination;
    content.section = file.section;
    content.type = file.type;
    content.grade = GradeFields(file.grade);
    content.netToGross = file.netToGross;
    content.plasticToElastic = file.plasticToElastic;
    content.shearLag = file.shearLag;
    content.effectiveLengths = file.effectiveLengths;
    content.momentFactor = file.momentFactor;
    content.points = member.points;
    content.subSpans = member.subSpans;
    return MemberFileText(content);
}

} // namespace Keltrix::Host
