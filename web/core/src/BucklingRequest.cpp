#include <limits>
#include <optional>

#include "Replies.h"
#include "RequestFields.h"
#include "check/BucklingReport.h"
#include "check/BucklingText.h"
#include "check/CheckedBeam.h"
#include "memberfile/CodelessMember.h"
#include "report/BucklingDrawing.h"
#include "text/BadInput.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::Web {

using Host::BadInput;
using Host::CodeChoice;
using Host::Json;
using Host::JsonObject;
using Host::Utf8;

namespace {

struct Buckled {
    std::string name;
    std::string title;
    Host::BucklingReport report;
    std::string svg;
};

Buckled BucklingOf(const Host::MemberFile& file, const CodeChoice& choice, const std::string& name)
{
    Host::CodelessMember member;
    member.SetGrade(file.ReadInto(0, member));
    Buckled buckled{name,
                    Utf8(member.GetTitle()),
                    Host::MakeBucklingReport(member, Host::ModuliOf(choice.code, member.GetGrade()), false),
                    {}};
    if (buckled.report.refusal.empty()) buckled.svg = Host::BucklingSvgFile(buckled.report, member, buckled.title);
    return buckled;
}

// Smaller is worse: not held, then by the factor; what does not buckle, and what has no answer, come last.
double RankOf(const Host::BucklingReport& report)
{
    if (!report.IsHeld()) return -1.0;
    const Stability::CriticalLoad* const critical = report.Critical();
    return critical ? critical->lambda : std::numeric_limits<double>::infinity();
}

} // namespace

// Every combination with its verdict, the drawing of the one that buckles first.
Json Buckling(const Json& request, std::string_view bytes)
{
    const Host::Settings settings = SettingsOf(request);
    const CodeChoice choice = ChoiceOf(settings);
    const Host::Beam beam = Host::ReadBeam(NameOf(request), bytes, ReadingOf(settings), choice);
    if (beam.members.empty()) throw BadInput("the beam has errors: its buckling is not known");
    Json list = Json::array();
    std::optional<Buckled> worst;
    for (std::size_t i = 0; i < beam.members.size(); ++i) {
        Buckled one = BucklingOf(beam.members[i], choice, beam.made.members[i].name);
        list.push_back(JsonObject("combination", one.name, "verdict",
                                  one.report.refusal.empty() ? Host::VerdictSentence(one.report) : one.report.refusal,
                                  "stable", one.report.IsStable(), "answered", one.report.refusal.empty()));
        if (one.report.refusal.empty() && (!worst || RankOf(one.report) < RankOf(worst->report)))
            worst = std::move(one);
    }
    return JsonObject("combinations", std::move(list), "worst", worst ? worst->name : std::string(), "verdict",
                      worst ? Host::VerdictSentence(worst->report) : std::string(), "svg",
                      worst ? worst->svg : std::string());
}

} // namespace Keltrix::Web
