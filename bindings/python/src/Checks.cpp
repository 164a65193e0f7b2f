// Texts checked by a design code, and what came of each member.

#include <limits>
#include <memory>

#include <pybind11/stl.h>

#include "Bindings.h"
#include "check/CheckedMember.h"
#include "check/FindingsJson.h"
#include "keltrix/host/Host.h"
#include "report/HtmlReport.h"
#include "text/Sha256.h"
#include "text/Text.h"

namespace Keltrix::Python {

py::dict DiagnosticOf(const Host::Diagnostic& diagnostic)
{
    py::dict made;
    made["severity"] = TextOf(diagnostic.severity);
    made["line"] = diagnostic.line > 0 ? py::object(py::int_(diagnostic.line)) : py::none();
    made["code"] = TextOf(diagnostic.code);
    made["keyword"] = TextOf(diagnostic.keyword);
    made["field"] = TextOf(diagnostic.field);
    made["got"] = TextOf(diagnostic.got);
    made["expected"] = TextOf(diagnostic.expected);
    made["advice"] = TextOf(diagnostic.advice);
    made["message"] = TextOf(diagnostic.message);
    return made;
}

namespace {

using Host::CheckedMember;
using Host::Diagnostic;
using Host::Outcome;
using Host::Outcomes;

py::list DiagnosticsOf(const std::vector<Diagnostic>& diagnostics)
{
    py::list made;
    for (const Diagnostic& diagnostic : diagnostics)
        made.append(DiagnosticOf(diagnostic));
    return made;
}

py::tuple StepsOf(const Design::RuleFinding& finding)
{
    py::list steps;
    for (const Design::Step& step : finding.steps)
        steps.append(py::make_tuple(TextOf(step.symbol), Host::QuantityWord(step.quantity), step.value,
                                    TextOf(step.formula.GetString()), TextOf(step.values.GetString()),
                                    TextOf(step.note.GetString()), TextOf(step.clause)));
    return py::tuple(steps);
}

py::dict FindingOf(const Design::RuleFinding& finding, double demand, const std::string& combination)
{
    py::dict made;
    made["rule"] = TextOf(finding.name);
    made["clause"] = TextOf(finding.clause);
    made["topic"] = TextOf(Design::TopicName(finding.topic));
    made["status"] = TextOf(Design::StatusName(finding.status));
    made["reason"] = TextOf(finding.reason);
    made["start"] = OrNone(finding.start);
    made["end"] = OrNone(finding.end);
    made["utilisation"] = finding.utilisation;
    made["demand"] = OrNone(demand);
    made["resistance"] = OrNone(finding.resistance);
    made["symbol"] = TextOf(finding.symbol);
    made["quantity"] = Host::QuantityWord(finding.quantity);
    made["slenderness"] = OrNone(finding.slenderness);
    made["governing"] = finding.governing;
    made["combination"] = TextOf(combination);
    made["steps"] = StepsOf(finding);
    return made;
}

py::list FindingsOf(const Outcome& outcome)
{
    py::list made;
    if (!outcome.checked) return made;
    const CheckedMember& checked = *outcome.checked;
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    for (std::size_t i = 0; i < checked.findings.rules.size(); ++i) {
        const Design::RuleFinding& finding = checked.findings.rules[i];
        const double demand = i < checked.sources.size() ? checked.sources[i].demand : none;
        made.append(FindingOf(finding, demand, checked.CombinationOf(&finding)));
    }
    for (const Design::RuleFinding& finding : checked.Information())
        made.append(FindingOf(finding, none, checked.InformationCombination()));
    return made;
}

// The warnings and notes that stand in every report of the member.
py::list WarningsOf(const Outcome& outcome)
{
    py::list made;
    if (!outcome.checked) return made;
    for (const Host::MemberWarning& warning : outcome.checked->warnings) {
        Diagnostic diagnostic{Host::SeverityWord(warning.severity), warning.line, warning.code, warning.Message()};
        diagnostic.advice = warning.text;
        made.append(DiagnosticOf(diagnostic));
    }
    return made;
}

// What a refused member does not have is None.
py::dict HeadOf(const Outcome& outcome)
{
    const CheckedMember* const checked = outcome.checked.get();
    const auto text = [&](const auto& get) { return checked ? py::object(TextOf(get(*checked))) : py::none(); };
    py::dict made;
    made["title"] = TextOf(outcome.title);
    made["line"] = outcome.line;
    made["status"] = TextOf(outcome.status);
    made["utilisation"] = checked ? outcome.utilisation : std::numeric_limits<double>::quiet_NaN();
    made["summary"] = TextOf(outcome.governing);
    made["section"] = text([](const CheckedMember& one) { return one.Section(); });
    made["grade"] = text([](const CheckedMember& one) { return one.Grade(); });
    made["code"] = text([](const CheckedMember& one) { return Host::Utf8(one.code->Description().id); });
    made["annex"] = text([](const CheckedMember& one) { return one.annex; });
    made["section_class"] = checked ? py::object(py::int_(checked->member->SectionClass())) : py::none();
    made["design_strength"] = checked ? OrNone(checked->findings.designStrength.value) : py::none();
    return made;
}

py::str JsonOf(const Outcome& outcome, int depth)
{
    if (!outcome.checked) throw std::invalid_argument("the member was refused: it has no findings");
    return TextOf(depth < 0 ? Host::FindingsLine(*outcome.checked) : Host::IndentedFindings(*outcome.checked, depth));
}

// The interpreter runs on while members are checked.
py::tuple CheckText(const py::bytes& text, const std::string& name, const Host::Settings& settings)
{
    const std::string_view bytes = text;
    Outcomes outcomes;
    {
        const py::gil_scoped_release release;
        outcomes = Host::Check(bytes, name, settings);
    }
    py::list members;
    for (Outcome& outcome : outcomes.members)
        members.append(py::cast(std::make_shared<Outcome>(std::move(outcome))));
    return py::make_tuple(members, DiagnosticsOf(outcomes.diagnostics));
}

using Block = std::vector<std::pair<std::string, std::string>>;

Host::TitleBlock BlockOf(const Block& entries, bool isBrief)
{
    Host::TitleBlock block;
    block.version = KELTRIX_VERSION;
    block.isBrief = isBrief;
    const std::pair<const char*, std::string*> places[] = {{"client", &block.client},
                                                           {"job", &block.job},
                                                           {"project", &block.project},
                                                           {"revision", &block.revision},
                                                           {"member", &block.member},
                                                           {"forces", &block.forces},
                                                           {"by", &block.made.name},
                                                           {"date", &block.made.date},
                                                           {"checked_by", &block.checked.name},
                                                           {"checked_date", &block.checked.date},
                                                           {"approved_by", &block.approved.name},
                                                           {"approved_date", &block.approved.date}};
    for (const auto& [name, value] : entries)
        for (const auto& [known, place] : places)
            if (name == known) *place = value;
    return block;
}

// `inputs` are the names of the texts and their bytes.
py::str Html(const std::vector<std::shared_ptr<Outcome>>& outcomes, const std::vector<std::string>& remarks,
             const std::vector<std::pair<std::string, py::bytes>>& inputs, const Block& block, bool isBrief)
{
    Host::HtmlReport report(BlockOf(block, isBrief));
    for (const auto& [name, bytes] : inputs) {
        Host::Sha256 digest;
        digest.Add(std::string_view(bytes));
        report.AddInput(name, digest.Digest());
    }
    for (const std::shared_ptr<Outcome>& outcome : outcomes) {
        for (const Diagnostic& diagnostic : outcome->diagnostics)
            report.AddRemark(diagnostic.message);
        if (!outcome->checked) continue;
        report.Add(*outcome->checked, outcome->loads);
    }
    for (const std::string& remark : remarks)
        report.AddRemark(remark);
    std::string html;
    report.Write([&](std::string_view piece) { html += piece; });
    return TextOf(html);
}

} // namespace

void AddChecks(py::module_& module)
{
    py::class_<Outcome, std::shared_ptr<Outcome>>(module, "Outcome")
        .def_property_readonly("is_refused", [](const Outcome& outcome) { return !outcome.checked; })
        .def("head", HeadOf)
        .def("diagnostics", [](const Outcome& outcome) { return DiagnosticsOf(outcome.diagnostics); })
        .def("warnings", WarningsOf)
        .def("findings", FindingsOf)
        .def("json", JsonOf, py::arg("depth"))
        .def("report", [](const Outcome& outcome) { return TextOf(Host::Report(outcome)); });
    module.def("check", CheckText, py::arg("text"), py::arg("name"), py::arg("settings"));
    module.def("html", Html, py::arg("outcomes"), py::arg("remarks"), py::arg("inputs"), py::arg("block"),
               py::arg("brief"));
}

} // namespace Keltrix::Python
