#include "CheckedMember.h"

#include <algorithm>
#include <cmath>

#include "Failure.h"
#include "Text.h"

namespace Keltrix::App {

namespace {

using BS5950::LedgerEntry;
using Steel::CMemberResult;
using Steel::SubspanEffectiveLengthData;

struct FlagWord {
    int flag;
    const char* word;
};

// In the order and the words of the summary report.
constexpr FlagWord FLAG_WORDS[] = {
    {CMemberResult::NOTIFY, "NOTIFY"},
    {CMemberResult::WARNING, "WARNING"},
    {CMemberResult::FAIL, "FAIL"},
    {CMemberResult::NOT_CHECKED, "NOT CHECKED"},
    {CMemberResult::FAIL_LOCAL, "FAIL LOCAL"},
    {CMemberResult::FAIL_BUCKLE, "FAIL BUCKLE"},
    {CMemberResult::FAIL_BUCKLE_LAT_TORS, "FAIL BUCKLE LAT_TORS"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_MAJOR, "FAIL BUCKLE AXIAL MAJOR"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_MINOR, "FAIL BUCKLE AXIAL MINOR"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_TORSION, "FAIL BUCKLE AXIAL TORSION"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_FLEXURAL_TORSION, "FAIL BUCKLE AXIAL FLEXURAL TORSION"},
    {CMemberResult::FAIL_LOCAL_AXIAL, "FAIL LOCAL AXIAL"},
    {CMemberResult::FAIL_LOCAL_BENDING_MAJOR, "FAIL LOCAL BENDING MAJOR"},
    {CMemberResult::FAIL_LOCAL_BENDING_MINOR, "FAIL LOCAL BENDING MINOR"},
    {CMemberResult::FAIL_LOCAL_SHEAR_MAJOR, "FAIL LOCAL SHEAR MAJOR"},
    {CMemberResult::FAIL_LOCAL_SHEAR_MINOR, "FAIL LOCAL SHEAR MINOR"},
    {CMemberResult::FAIL_LOCAL_TORSION, "FAIL LOCAL TORSION"},
    {CMemberResult::INFO_LOCAL_SLENDER, "INFO LOCAL SLENDER"},
    {CMemberResult::INFO_LOCAL_SLENDER_WEB, "INFO LOCAL SLENDER WEB"},
    {CMemberResult::INFO_LOCAL_SLENDER_FLANGE, "INFO LOCAL SLENDER FLANGE"},
    {CMemberResult::INFO_MEMBER_SLENDER, "INFO MEMBER SLENDER"},
};

std::string Wording(const wchar_t* text) { return Utf8(std::wstring_view(text)); }

Json OrNull(double value) { return std::isnan(value) ? Json() : Json(value); }

Json EntryJson(const LedgerEntry& entry)
{
    return JsonObject("rule", Wording(BS5950::RuleName(entry.rule)), "clause", Wording(entry.clause), "status",
                      Wording(BS5950::StatusName(entry.status)), "reason", Wording(entry.reason), "start", entry.start,
                      "end", entry.end, "utilisation", entry.utilisation, "symbol", Wording(entry.symbol), "resistance",
                      entry.resistance, "governing", entry.governing);
}

const char* PlaceName(BS5950::Place place)
{
    switch (place) {
    case BS5950::Place::LeftEnd:
        return "left end";
    case BS5950::Place::RightEnd:
        return "right end";
    default:
        return "inside";
    }
}

// Entry 0 of the result is the member's, the last one the buckling checks': positions lie between.
Json LocalUtilisations(const CheckedMember& checked)
{
    const CMemberResult& result = *checked.result;
    Json list = Json::array();
    const auto& positions = checked.member->Positions();
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const int k = static_cast<int>(i) + 1;
        list.push_back(JsonObject("position", positions[i].x, "sub_span", positions[i].subSpan + 1, "place",
                                  PlaceName(positions[i].place), "combined", result.UtilLocalCombined(k), "axial",
                                  result.UtilLocalAxial(k), "moment_major", result.UtilLocalMomMajor(k), "moment_minor",
                                  result.UtilLocalMomMinor(k), "shear_major", result.UtilLocalShearMajor(k),
                                  "shear_minor", result.UtilLocalShearMinor(k), "torsion", result.UtilLocalTorsion(k)));
    }
    return list;
}

Json BucklingUtilisations(const CMemberResult& result)
{
    return JsonObject("combined", result.UtilBucklingCombined(), "lateral_torsional", result.UtilBucklingLT(),
                      "axial_major", result.UtilBucklingAxialMajor(), "axial_minor", result.UtilBucklingAxialMinor(),
                      "axial_torsion", result.UtilBucklingAxialTorsion(), "axial_flexural_torsion",
                      result.UtilBucklingAxialFlexuralTorsion());
}

Json LengthsJson(const std::map<int, SubspanEffectiveLengthData::Entry>& entries)
{
    Json list = Json::array();
    for (const auto& [key, entry] : entries) {
        list.push_back(JsonObject("start", entry.GetStartPosition(), "end", entry.GetEndPosition(), "effective_length",
                                  entry.GetEffectiveLength(), "radius_of_gyration", entry.GetRadiusOfGyration(),
                                  "slenderness", entry.GetSlendernessRatio()));
    }
    return list;
}

const char* ResistanceSymbol(BS5950::BucklingMode mode)
{
    switch (mode) {
    case BS5950::BucklingMode::Major:
        return "Pcx";
    case BS5950::BucklingMode::Minor:
        return "Pcy";
    default:
        return "Mb";
    }
}

Json ResistancesJson(const BS5950::CSteelMemberBS5950& member)
{
    const BS5950::ResistanceSummary r = member.Resistances();
    Json list = Json::array();
    for (const BS5950::SpanResult& span : member.Spans()) {
        // A span that is held all along, or has no action to check, has no resistance.
        list.push_back(JsonObject("start", span.start, "end", span.end, ResistanceSymbol(span.mode),
                                  span.resistance > 0.0 ? Json(span.resistance) : Json()));
    }
    return JsonObject("Pz", OrNull(r.Pz), "Pt", OrNull(r.Pt), "Pvx", OrNull(r.Pvx), "Pvy", OrNull(r.Pvy), "Mcx",
                      OrNull(r.Mcx), "Mcy", OrNull(r.Mcy), "spans", std::move(list));
}

} // namespace

std::string CheckedMember::Section() const { return Utf8(member->GetKeltrixSec().Component(0).Description(true)); }

std::string CheckedMember::Grade() const { return Utf8(member->GetGrade().Name()); }

std::string CheckedMember::Status() const
{
    if (result->HasFailed() || member->Checks().HasFailed()) return "fail";
    return passed ? "pass" : "not checked";
}

std::string CheckedMember::Governing() const
{
    const LedgerEntry* const entry = member->Checks().Governing();
    return entry ? DescribeEntry(*entry) : "nothing";
}

CheckedMember CheckMember(const MemberFile& file, std::size_t i, int option, bool withText)
{
    CheckedMember checked;
    checked.file = file.Name();
    checked.line = file.Member(i).firstLine;
    checked.name = file.NameOf(i);
    checked.member = std::make_unique<BS5950::CSteelMemberBS5950>();
    checked.result = std::make_unique<CMemberResult>();
    checked.member->SetDesOpt(option);
    const CSteelGrade grade = file.ReadInto(i, *checked.member);
    checked.title = Utf8(checked.member->GetTitle());
    if (!checked.member->SetGrade(grade))
        throw BadInput(checked.name + ": GRADE: got " + Quote(grade.Name().View()) +
                       ", expected S275, S355, S460 or User_defined with strengths above 0");
    if (!withText) checked.result->EnableText(false);
    checked.member->SetResult(checked.result.get());
    checked.passed = checked.member->Check();
    return checked;
}

CheckedMember Envelope(std::vector<CheckedMember> cases)
{
    const auto worst = std::max_element(cases.begin(), cases.end(), [](const CheckedMember& a, const CheckedMember& b) {
        return a.result->UtilOverAll() < b.result->UtilOverAll();
    });
    CMemberResult merged = *cases.front().result;
    bool passed = cases.front().passed;
    for (std::size_t i = 1; i < cases.size(); ++i) {
        merged += *cases[i].result;
        passed = passed && cases[i].passed;
    }
    CheckedMember envelope = std::move(*worst);
    *envelope.result = std::move(merged);
    envelope.passed = passed;
    return envelope;
}

std::vector<std::string> FlagWords(int flags)
{
    std::vector<std::string> words;
    for (const FlagWord& known : FLAG_WORDS) {
        if (flags & known.flag) words.emplace_back(known.word);
    }
    return words;
}

std::string DescribeRule(const LedgerEntry& entry)
{
    return Wording(BS5950::RuleName(entry.rule)) + " (" + Wording(entry.clause) + ")";
}

std::string DescribePlace(const LedgerEntry& entry)
{
    if (std::isnan(entry.start)) return {};
    if (entry.start == entry.end) return "at " + Rounded(entry.start, 5) + " m";
    return Rounded(entry.start, 5) + " m to " + Rounded(entry.end, 5) + " m";
}

std::string DescribeEntry(const LedgerEntry& entry)
{
    const std::string place = DescribePlace(entry);
    if (place.empty()) return DescribeRule(entry);
    return DescribeRule(entry) + (entry.start == entry.end ? " " : ", ") + place;
}

Json HeadlineJson(const CheckedMember& checked)
{
    const LedgerEntry* const governing = checked.member->Checks().Governing();
    return JsonObject("file", checked.file, "line", checked.line, "title", checked.title, "section", checked.Section(),
                      "grade", checked.Grade(), "status", checked.Status(), "overall", checked.result->UtilOverAll(),
                      "governing", governing ? EntryJson(*governing) : Json(), "flags",
                      FlagWords(checked.result->GetFlags()), "class", checked.member->SectionClass(), "design_strength",
                      checked.member->DesignStrength());
}

Json JsonOf(const CheckedMember& checked)
{
    const BS5950::CSteelMemberBS5950& member = *checked.member;
    const SubspanEffectiveLengthData lengths = member.GetEffectiveLengths();
    Json checks = Json::array();
    for (const LedgerEntry& entry : member.Checks().Entries())
        checks.push_back(EntryJson(entry));
    Json assumptions = Json::array();
    for (const BS5950::Assumption& assumption : member.Assumptions())
        assumptions.push_back(JsonObject("name", Wording(assumption.name), "text", Wording(assumption.text), "value",
                                         OrNull(assumption.value)));
    Json json = HeadlineJson(checked);
    json["utilisation"] =
        JsonObject("local", LocalUtilisations(checked), "buckling", BucklingUtilisations(*checked.result));
    json["effective_lengths"] = JsonObject("major", LengthsJson(lengths.GetMajorAxisEntries()), "minor",
                                           LengthsJson(lengths.GetMinorAxisEntries()), "lateral_torsional",
                                           LengthsJson(lengths.GetLateralTorsionalEntries()));
    json["resistances"] = ResistancesJson(member);
    json["checks"] = std::move(checks);
    json["assumptions"] = std::move(assumptions);
    return json;
}

} // namespace Keltrix::App
